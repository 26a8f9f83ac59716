#include <sndfile.h>

#include <memory>
#include <string>

#include "tests/tools/CommandFixture.h"

namespace {

class RenderCommandTest : public CommandFixture {
protected:
    RenderCommandTest() : CommandFixture(renderCommand) { folder.write("song.txt", "1 1\nC\nE2"); }
};

}  // namespace

TEST_F(RenderCommandTest, WritesOneChannelOf16BitAt48kHz) {
    const Outcome outcome = run({"song.txt", "-o", "song.wav"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out + outcome.errors, "");
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open("song.wav", SFM_READ, &info), sf_close);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(info.samplerate, 48000);
    EXPECT_EQ(info.channels, 1);
    EXPECT_EQ(info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    EXPECT_EQ(info.frames, 48000 * 5);  // lead-in, two slots, two seconds
}

TEST_F(RenderCommandTest, EveryOptionChangesTheSound) {
    run({"song.txt", "-o", "plain.wav"});
    const Outcome high = run({"song.txt", "-o", "high.wav", "--octave", "6"});
    EXPECT_EQ(high.status, 0);
    EXPECT_THAT(high.errors, testing::HasSubstr("the game hears hardly any note of octave 6"));
    EXPECT_NE(read("high.wav"), read("plain.wav"));
    for (const CommandArguments& options :
         {CommandArguments{"--metronome"}, CommandArguments{"--instrument", "piano"},
          CommandArguments{"--ahead", "-0.1"}, CommandArguments{"--gap", "0.2"}}) {
        CommandArguments arguments = options;
        arguments.insert(arguments.end(), {"--force", "-o", "song.wav", "--", "song.txt"});
        EXPECT_EQ(run(arguments).status, 0);
        EXPECT_NE(read("song.wav"), read("plain.wav")) << options.front();
    }
}

TEST_F(RenderCommandTest, ProblemsAndWrongUse) {
    const auto option = [](const std::string& name, const std::string& value) {
        return CommandArguments{"song.txt", "-o", "a.wav", name, value};
    };
    folder.write("broken.txt", "1 1\nC \n");
    folder.write("days.txt", "1 1\n" + std::string(80001, '\n'));
    folder.write("old.wav", "precious");
    expectFailure({}, 2, "which song?");
    expectFailure({"song.txt"}, 2, "where to? -o OUT.wav is missing");
    expectFailure(option("--instrument", "kazoo"), 2, "there is no instrument \"kazoo\"");
    expectFailure(option("--octave", "8"), 2, "--octave wants a whole number, 2 to 7");
    expectFailure(option("--ahead", "nan"), 2, "--ahead wants seconds, -1 to 1");
    expectFailure(option("--gap", "0.5"), 2, "--gap wants seconds, 0 to 0.4");
    expectFailure({"broken.txt", "-o", "a.wav"}, 1, "broken.txt: does not load; zanto-song check says why");
    expectFailure({"none.txt", "-o", "a.wav"}, 1, "none.txt: there is no such file");
    expectFailure({".", "-o", "a.wav"}, 1, ".: this is a folder");
    expectFailure({"days.txt", "-o", "a.wav"}, 1,
                  "days.txt: the song has more than 80000 slots, which is 11 hours");
    expectFailure({"song.txt", "-o", "old.wav"}, 1, "old.wav: there is such a file; --force replaces it");
    expectFailure({"song.txt", "-o", "song.txt", "--force"}, 1,
                  "song.txt: this is the file that is read; choose another name");
    expectFailure({"song.txt", "-o", "a.mp3"}, 1, "a.mp3: this writes WAV; choose a name that ends in .wav");
    EXPECT_FALSE(std::filesystem::exists("a.wav"));
    EXPECT_EQ(read("old.wav"), "precious");
    EXPECT_THAT(run({"song.txt", "-o", "/dev/full"}).errors,
                testing::StartsWith("zanto-song render: /dev/full: "));
}
