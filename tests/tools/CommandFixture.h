#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "tests/tools/Outcome.h"
#include "tools/zanto-song/Command.h"

/// A command of zanto-song in an empty folder.
class CommandFixture : public testing::Test {
protected:
    using Command = int (*)(CommandArguments const&);
    explicit CommandFixture(Command command_) : command(command_) {}

    Outcome run(CommandArguments const& arguments) const {
        return outcomeOf([&] { return command(arguments); });
    }
    static std::string read(std::string const& name) {
        std::ifstream in(name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    TemporaryFolder folder;  ///< and the working directory

private:
    Command command;
};
