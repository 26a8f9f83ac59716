#include <gtest/gtest.h>
#include <sndfile.h>

#include <memory>
#include <string>

#include "tests/support/TemporaryFolder.h"
#include "tools/zanto-song/Command.h"

namespace {

struct Outcome {
    int status;
    std::string errors;
};

class RenderCommandTest : public testing::Test {
protected:
    Outcome run(CommandArguments const& arguments) {
        testing::internal::CaptureStderr();
        int const status = renderCommand(arguments);
        return {status, testing::internal::GetCapturedStderr()};
    }

    void expectWrongUse(CommandArguments const& arguments, std::string const& error) {
        Outcome const outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.errors, "zanto-song render: " + error + "\n");
    }

    TemporaryFolder folder;
    std::string song = folder.write("song.txt", "1 1\nC\nE2");
    std::string sound = (folder.path() / "song.wav").string();
};

}  // namespace

TEST_F(RenderCommandTest, writesOneChannelOf16BitAt48kHz) {
    Outcome const outcome = run({song, "-o", sound});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    SF_INFO info{};
    std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> const file(sf_open(sound.c_str(), SFM_READ, &info), sf_close);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(info.samplerate, 48000);
    EXPECT_EQ(info.channels, 1);
    EXPECT_EQ(info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    EXPECT_EQ(info.frames, 48000 * 5);  // lead-in, two slots, two seconds
}

TEST_F(RenderCommandTest, takesEveryOptionInAnyOrder) {
    EXPECT_EQ(run({"--metronome", "--octave", "4", "-o", sound, "--instrument", "piano", "--ahead", "-0.1",
                   song, "--gap", "0.2"})
                  .status,
              0);
}

TEST_F(RenderCommandTest, saysWhatIsWrongWithItsArguments) {
    expectWrongUse({}, "which song?");
    expectWrongUse({song}, "where to? -o OUT.wav is missing");
    expectWrongUse({song, "-o"}, "-o wants a file name");
    expectWrongUse({song, song, "-o", sound}, "one song at a time, \"" + song + "\" is one too many");
    expectWrongUse({song, "-o", sound, "--loud", "yes"}, "unknown option --loud");
    expectWrongUse({song, "-o", sound, "--instrument", "kazoo"}, "there is no instrument \"kazoo\"");
    expectWrongUse({song, "-o", sound, "--octave", "8"}, "--octave wants a whole number, 2 to 7");
    expectWrongUse({song, "-o", sound, "--octave", "4.5"}, "--octave wants a whole number, 2 to 7");
    expectWrongUse({song, "-o", sound, "--ahead", "nan"}, "--ahead wants seconds, -1 to 1");
    expectWrongUse({song, "-o", sound, "--gap", ""}, "--gap wants seconds, 0 to 0.4");
}

TEST_F(RenderCommandTest, aSongThatDoesNotLoadGivesItsFaultInOneLine) {
    std::string const broken = folder.write("broken.txt", "1 1\nC \n");
    Outcome const outcome = run({broken, "-o", sound});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "zanto-song render: " + broken + ": Song: Got invalid note.\n");
    EXPECT_FALSE(std::filesystem::exists(sound));

    Outcome const missing = run({"nowhere.txt", "-o", sound});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.errors, "zanto-song render: nowhere.txt: Song: input is not good.\n");
}

TEST_F(RenderCommandTest, aFileThatCannotBeWrittenIsNamed) {
    Outcome const outcome = run({song, "-o", "/dev/full"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors.rfind("zanto-song render: /dev/full: ", 0), 0u);
    EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1);
}
