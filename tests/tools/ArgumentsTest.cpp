#include "tools/common/Arguments.h"

#include <gtest/gtest.h>

#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "tests/tools/Outcome.h"

namespace {

Arguments sort(const std::vector<std::string>& arguments) {
    return Arguments(arguments, {"--json", "-v"}, {"-o", "--octave"});
}

void expectProblem(const std::function<void()>& reading, const std::string& problem) {
    const auto command = [&] { return reading(), statusDone; };
    const Outcome outcome = outcomeOf("test", command);
    EXPECT_EQ(outcome.status, statusWrongUse);
    EXPECT_EQ(outcome.errors, "test: " + problem + "\n");
}

int runTool(const CommandArguments& arguments) {
    const auto run = [](const CommandArguments& own) {
        std::cout << own.size();
        return own.empty() ? throw Failure("no file") : statusDone;
    };
    const std::vector<Command> commands = {{"do", "tool do\n", run}};
    return runCompanion("tool", "does it.", commands, arguments);
}

Outcome companion(const CommandArguments& arguments) {
    return outcomeOf("outer", [&] { return runTool(arguments); });
}

}  // namespace

TEST(Arguments, FlagsOptionsAndFilesMayComeInAnyOrder) {
    const Arguments given = sort({"a", "--json", "-o", "out", "b", "--octave", "-2"});
    EXPECT_TRUE(given.has("--json"));
    EXPECT_FALSE(given.has("-v"));
    EXPECT_EQ(given.value("-o"), "out");
    EXPECT_EQ(given.whole("--octave", -3, 3, ""), -2);
    EXPECT_FALSE(given.value("-v"));
    EXPECT_EQ(given.files(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(sort({"--", "--json", "-", "--"}).files(), (std::vector<std::string>{"--json", "-", "--"}));
}

TEST(Arguments, ProblemsAreNamedAndNumbersAreWholeWordsWithinTheirBounds) {
    expectProblem([] { sort({"--loud"}); }, "unknown option --loud");
    expectProblem([] { sort({"-o"}); }, "-o wants a value");
    expectProblem([] { sort({"-o", ""}); }, "-o wants a value");
    expectProblem([] { sort({"--json", "--json"}); }, "--json was given twice");
    expectProblem([] { sort({}).onlyFile("song"); }, "which song?");
    expectProblem([] { sort({"a", "b"}).onlyFile("song"); }, "one song at a time");
    expectProblem([] { sort({"a"}).expectNoFiles(); }, "\"a\" is not an option");
    expectProblem([] { sort({"-o", "x"}).number("-o", 0.0, 1.0, "0 to 1"); }, "-o wants 0 to 1");
    EXPECT_EQ(parseNumber("-0.5", -1.0, 1.0), -0.5);
    EXPECT_EQ(parseWhole("7", 2, 7), 7);
    for (const char* const text : {"1.1", "nan", "1s", "", " 1"}) {
        EXPECT_FALSE(parseNumber(text, -1.0, 1.0)) << text;
    }
    EXPECT_FALSE(parseWhole("8", 2, 7));
    EXPECT_FALSE(parseWhole("4.0", 2, 7));
}

TEST(Companion, RunsTheCommandNamesItInFailuresAndTellsAboutItself) {
    EXPECT_EQ(companion({"do", "a", "b"}).out, "2");
    const Outcome failed = companion({"do"});
    EXPECT_EQ(failed.status, statusFailed);
    EXPECT_EQ(failed.errors, "tool do: no file\n");
    EXPECT_EQ(companion({}).errors, "tool: no command; tool --help lists them\n");
    EXPECT_EQ(companion({"undo"}).status, statusWrongUse);
    EXPECT_EQ(companion({"--help"}).out.rfind("tool: does it.\n\ntool do\n", 0), 0u);
    EXPECT_EQ(companion({"do", "-h"}).out, "tool do\n");
    EXPECT_EQ(companion({"--version"}).out.rfind("tool ", 0), 0u);
    testing::internal::CaptureStderr();
    std::cout.setstate(std::ios::badbit);
    EXPECT_EQ(runTool({"do", "a"}), statusFailed);
    std::cout.clear();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "tool do: the output cannot be written\n");
}
