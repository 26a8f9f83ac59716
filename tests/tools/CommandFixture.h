#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "tests/tools/Outcome.h"
#include "tools/zanto-song/commands.h"

/// A command of zanto-song in an empty folder.
class CommandFixture : public testing::Test {
protected:
    explicit CommandFixture(const Command& command_) : command(command_) {}

    Outcome run(const CommandArguments& arguments) const {
        return outcomeOf(name(), [&] { return command.run(arguments); });
    }
    /// Runs and fails the test unless the command ends with `status` and one line, `problem`, on standard
    /// error.
    void expectFailure(const CommandArguments& arguments, int status, const std::string& problem) const {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, status) << problem;
        EXPECT_EQ(outcome.errors, name() + ": " + problem + "\n");
        EXPECT_EQ(outcome.out, "");
    }
    static std::string read(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    TemporaryFolder folder;  ///< and the working directory

private:
    std::string name() const { return std::string("zanto-song ") + command.name; }

    const Command& command;
};
