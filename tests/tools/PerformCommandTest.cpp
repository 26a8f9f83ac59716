#include <sndfile.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/tools/CommandFixture.h"
#include "tools/zanto-song/EmbeddedSound.h"
#include "tools/zanto-song/SoundRecording.h"

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr double c5Hz = 523.25;

class PerformCommandTest : public CommandFixture {
protected:
    PerformCommandTest() : CommandFixture(performCommand) { folder.write("song.txt", "1 1\nC\n"); }

    static void writeSamples(const std::string& name, const std::vector<float>& samples, int rate,
                             int channels, int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT) {
        SF_INFO info{};
        info.samplerate = rate;
        info.channels = channels;
        info.format = format;
        const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(name.c_str(), SFM_WRITE, &info),
                                                               sf_close);
        ASSERT_NE(file, nullptr);
        sf_writef_float(file.get(), samples.data(), static_cast<sf_count_t>(samples.size()) / channels);
    }
    // A sine from 1.75 s to 2.2 s of `seconds`, on every channel but the second.
    static void writeSound(const std::string& name, int rate, int channels, int format, double seconds = 4.0,
                           double frequencyHz = c5Hz) {
        std::vector<float> samples;
        for (int frame = 0; frame < seconds * rate; ++frame) {
            const double t = static_cast<double>(frame) / rate;
            const double sample = t >= 1.75 && t < 2.2 ? std::sin(6.283185307179586 * frequencyHz * t) : 0.0;
            for (int channel = 0; channel < channels; ++channel) {
                samples.push_back(channel != 1 ? static_cast<float>(0.3 * sample) : 0.0f);
            }
        }
        writeSamples(name, samples, rate, channels, format);
    }
};

constexpr int wav = SF_FORMAT_WAV | SF_FORMAT_FLOAT;

}  // namespace

TEST_F(PerformCommandTest, ReadsOtherRatesChannelsAndFormatsToTheEndWhateverIsAmongThem) {
    writeSound("48.wav", 48000, 1, wav);
    writeSound("44.wav", 44100, 2, wav);
    writeSound("96.flac", 96000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    writeSound("16.ogg", 16000, 1, SF_FORMAT_OGG | SF_FORMAT_VORBIS);
    folder.write("text.wav", "no sound at all");
    EXPECT_EQ(run({"song.txt", "48.wav"}).status, 0);
    const Outcome outcome =
        run({"song.txt", "48.wav", "44.wav", "text.wav", "none.wav", "96.flac", "16.ogg"});
    EXPECT_EQ(outcome.status, 1);
    for (const char* name : {"48.wav", "44.wav", "96.flac", "16.ogg"}) {
        EXPECT_THAT(outcome.out, HasSubstr(std::string(name) + " plays song.txt: 100 points"));
    }
    EXPECT_THAT(outcome.errors,
                HasSubstr("zanto-song perform: text.wav: it is no sound file, or a damaged one ("));
    EXPECT_THAT(outcome.errors, HasSubstr("zanto-song perform: none.wav: "));
}

TEST_F(PerformCommandTest, ListensWithTheEarAndTheLeastLevelThatAreChosen) {
    // An A4 lies between two lines of the spectrum, where this note table has nothing.
    writeSound("take.wav", 48000, 1, wav, 4.0, 440.0);
    folder.write("song.txt", "1 1\nA\n");
    folder.write("notes.txt", "C 1 523.25\n");
    EXPECT_THAT(run({"song.txt", "take.wav", "--data", ".", "--ear", "fine", "--csv"}).out,
                HasSubstr("awarded"));
    EXPECT_THAT(run({"song.txt", "take.wav", "--data", ".", "--ear", "plain", "--csv"}).out,
                Not(HasSubstr("awarded")));
    EXPECT_EQ(run({"song.txt", "take.wav", "--ear", "coarse"}).status, 2);
    setenv("ZANTO_EAR", "best", 1);
    EXPECT_EQ(run({"song.txt", "take.wav", "take.wav", "--data", "."}).errors,
              "ZANTO_EAR: \"best\" is not one of plain fine. plain is used.\n");
    unsetenv("ZANTO_EAR");
    setenv("ZANTO_MIN_DECIBEL", "-5", 1);
    EXPECT_THAT(run({"song.txt", "take.wav", "--data", "."}).out, HasSubstr("-5.0 dB are needed"));
    unsetenv("ZANTO_MIN_DECIBEL");
}

TEST_F(PerformCommandTest, WrongUseAndWhatKeepsATakeFromBeingGradedAreNamed) {
    writeSound("take.wav", 48000, 1, wav);
    writeSound("slow.wav", 4000, 1, wav);
    writeSound("empty.wav", 48000, 1, wav, 0.0);
    writeSamples("opposite.wav", std::vector<float>{0.5f, -0.5f}, 48000, 2);
    writeSamples("none.wav", std::vector<float>{0.5f, std::nanf("")}, 48000, 1);
    writeSound("damaged.flac", 48000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    std::filesystem::resize_file("damaged.flac", std::filesystem::file_size("damaged.flac") / 2);
    folder.write("nothing.wav", "");
    folder.write("bad.txt", "1 1\nX\n");
    expectFailure({"song.txt", "take.wav", "--data", "."}, 1,
                  "the game's notes.txt is not found; say where it is with --data FOLDER");
    expectFailure({"bad.txt", "take.wav"}, 1, "bad.txt: does not load; zanto-song check says why");
    expectFailure({"song.txt", "take.wav", "--start", "4"}, 1, "take.wav: it is over before the song begins");
    expectFailure({"song.txt", "slow.wav"}, 1,
                  "slow.wav: recorded at 4000 Hz; at least 8000 Hz are needed, 48000 Hz are best");
    expectFailure({"song.txt", "empty.wav"}, 1, "empty.wav: there is no sound in it");
    expectFailure(
        {"song.txt", "opposite.wav"}, 1,
        "opposite.wav: its channels cancel each other out; record one channel, or turn one of them around");
    expectFailure({"song.txt", "none.wav"}, 1, "none.wav: a sample after 0.0 s is no number");
    expectFailure({"song.txt", "nothing.wav"}, 1, "nothing.wav: the file is empty");
    expectFailure({"song.txt", "/dev/zero"}, 1, "/dev/zero: this is a device or a pipe, not a file");
    expectFailure({}, 2, "which song?");
    expectFailure({"song.txt"}, 2, "which recording?");
    expectFailure({"song.txt", "a.wav", "--json", "--csv"}, 2, "--json or --csv, not both");
    expectFailure({"song.txt", "a.wav", "--start", "-1"}, 2, "--start wants seconds, 0 to 86400");
    EXPECT_THAT(run({"song.txt", "damaged.flac"}).errors, HasSubstr("damaged.flac: it is damaged after "));
}

TEST_F(PerformCommandTest, DrawsAllTakesOnOnePictureAndReplacesNothingUnasked) {
    writeSound("anna.wav", 48000, 1, wav);
    writeSound("ben.wav", 48000, 1, wav, 4.0, 660.0);
    EXPECT_EQ(run({"song.txt", "anna.wav", "none.wav", "ben.wav", "--picture", "a.svg"}).status, 1);
    EXPECT_THAT(read("a.svg"), testing::AllOf(HasSubstr(">anna.wav plays song<"), HasSubstr(">C +100<"),
                                              HasSubstr(">ben.wav plays song<"), HasSubstr(">heard E<"),
                                              HasSubstr("the moment of an award")));
    expectFailure({"song.txt", "ben.wav", "--picture", "a.svg"}, 1,
                  "a.svg: there is such a file; --force replaces it");
    expectFailure({"song.txt", "ben.wav", "--picture", "ben.wav", "--force"}, 2,
                  "--picture wants a name that ends in .png or .svg");
    EXPECT_EQ(run({"song.txt", "ben.wav", "--picture", "a.svg", "--force"}).status, 0);
    EXPECT_THAT(read("a.svg"), Not(HasSubstr("anna.wav")));
    EXPECT_EQ(run({"song.txt", "none.wav", "--picture", "b.svg"}).status, 1);
    EXPECT_FALSE(std::filesystem::exists("b.svg"));
}

TEST_F(PerformCommandTest, WritesAReportWithTheSoundIfThatIsAskedFor) {
    writeSound("anna.wav", 48000, 1, wav);
    EXPECT_EQ(run({"song.txt", "anna.wav", "--report", "a.html"}).status, 0);
    EXPECT_THAT(read("a.html"), testing::AllOf(HasSubstr("<h1>song</h1>"), Not(HasSubstr("<audio"))));
    EXPECT_EQ(run({"song.txt", "anna.wav", "--report", "b.html", "--with-sound"}).status, 0);
    EXPECT_THAT(read("b.html"), HasSubstr("src=\"data:audio/mpeg;base64,"));
    expectFailure({"song.txt", "anna.wav", "--with-sound"}, 2, "--with-sound belongs to --report");
    expectFailure({"song.txt", "anna.wav", "--report", "a.htm"}, 2,
                  "--report wants a name that ends in .html");
    expectFailure({"song.txt", "anna.wav", "--report", "a.html"}, 1,
                  "a.html: there is such a file; --force replaces it");
}

TEST_F(PerformCommandTest, ASoundThatCannotBeWrittenAsMp3IsPutIntoTheReportOtherwise) {
    writeSound("anna.wav", 48000, 1, wav);
    const std::vector<SoundKind> kinds = soundKinds();
    EXPECT_EQ(embeddedSound("anna.wav", {{"none", 0, ""}, kinds[1], kinds[2]})
                  .rfind("data:audio/flac;base64,ZkxhQ", 0),
              0u);
    EXPECT_EQ(embeddedSound("anna.wav", {{"none", 0, ""}, kinds[2]}).rfind("data:audio/wav;base64,UklGR", 0),
              0u);
    const auto noKind = [] { embeddedSound("anna.wav", {{"none", 0, ""}}); };
    EXPECT_THAT(failureOf(noKind), testing::StartsWith("it cannot be written; none: "));
}

TEST_F(PerformCommandTest, ATakeWhoseSoundCannotBeHadToItsEndStaysInTheReportWithoutIt) {
    writeSound("anna.wav", 48000, 1, wav);
    // Damaged where the song is over.
    std::vector<float> samples(10 * 48000);
    samples.back() = std::nanf("");
    writeSamples("ben.wav", samples, 48000, 1);
    const Outcome outcome = run({"song.txt", "anna.wav", "ben.wav", "--report", "a.html", "--with-sound"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "zanto-song perform: ben.wav: its sound is left out of the report: a sample after 10.0 s is no "
              "number\n");
    const std::string page = read("a.html");
    EXPECT_THAT(page, testing::AllOf(HasSubstr(">anna.wav</h2>"), HasSubstr(">ben.wav</h2>")));
    EXPECT_EQ(page.find("<audio "), page.rfind("<audio "));
}

TEST_F(PerformCommandTest, ConvertedRecordingsKeepTheirLengthAndTheirPitch) {
    writeSound("44.wav", 44100, 1, wav);
    SoundRecording recording("44.wav");
    std::vector<float> samples(5 * SampleSource::sampleRate);
    EXPECT_NEAR(static_cast<double>(recording.read(samples.data(), samples.size())), 4.0 * 48000.0, 48.0);
    for (std::size_t index = 88000; index < 100000; ++index) {  // a quarter of a second
        const double angle = 6.283185307179586 * c5Hz * static_cast<double>(index) / 48000.0;
        ASSERT_NEAR(static_cast<double>(samples.at(index)), 0.3 * std::sin(angle), 0.003) << index;
    }
}
