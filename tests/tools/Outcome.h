#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tools/common/Command.h"

/// What a command left behind: its status and what it wrote on its two outputs.
struct Outcome {
    int status;
    std::string out;
    std::string errors;
};

/// Runs a command by the name that its messages begin with, and keeps what it writes.
inline Outcome outcomeOf(const std::string& name, const std::function<int()>& command) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status = runCommand(name, command);
    return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

/// What the Failure that `action` throws says; empty when it throws none.
inline std::string failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "";
}
