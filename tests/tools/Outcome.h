#pragma once

#include <gtest/gtest.h>

#include <string>

/// What a command left behind: its status and what it wrote on its two outputs.
struct Outcome {
    int status;
    std::string out;
    std::string errors;
};

/// Calls `command`, which gives a status, and keeps what it writes.
template <class Command>
Outcome outcomeOf(Command const& command) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int const status = command();
    return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}
