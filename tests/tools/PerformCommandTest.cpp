#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/tools/CommandFixture.h"
#include "tools/zanto-song/SoundRecording.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr double c5Hz = 523.25;

class PerformCommandTest : public CommandFixture {
protected:
    PerformCommandTest() : CommandFixture(performCommand) {}

    // A C5 from 1.75 s to 2.2 s of `seconds`, on every channel but the second.
    void writeSound(std::string const& name, int rate, int channels, int format, double seconds = 4.0) {
        SF_INFO info{};
        info.samplerate = rate;
        info.channels = channels;
        info.format = format;
        std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> const file(sf_open(name.c_str(), SFM_WRITE, &info),
                                                               sf_close);
        ASSERT_NE(file, nullptr);
        std::vector<float> samples;
        for (int frame = 0; frame < seconds * rate; ++frame) {
            double const t = static_cast<double>(frame) / rate;
            bool const sounds = t >= 1.75 && t < 2.2;
            for (int channel = 0; channel < channels; ++channel) {
                double const sample = std::sin(6.283185307179586 * c5Hz * t);
                samples.push_back(sounds && channel != 1 ? static_cast<float>(0.3 * sample) : 0.0f);
            }
        }
        sf_writef_float(file.get(), samples.data(), static_cast<sf_count_t>(samples.size()) / channels);
    }

    std::string song = folder.write("song.txt", "1 1\nC\n");
    std::string data = ZANTO_DATA_FOLDER;
};

constexpr int wav = SF_FORMAT_WAV | SF_FORMAT_FLOAT;

}  // namespace

TEST_F(PerformCommandTest, printsTheReportAndNothingElse) {
    writeSound("take.wav", 48000, 1, wav);
    Outcome const outcome = run({"song.txt", "take.wav", "--data", data});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out,
                StartsWith("take.wav plays song.txt: 100 points, 1 of 1 note awarded, 0 penalties\n"));
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(PerformCommandTest, readsOtherRatesChannelsAndFormats) {
    writeSound("44.wav", 44100, 2, wav);
    writeSound("96.flac", 96000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    writeSound("16.ogg", 16000, 1, SF_FORMAT_OGG | SF_FORMAT_VORBIS);
    Outcome const outcome = run({"song.txt", "44.wav", "96.flac", "16.ogg", "--data", data});
    EXPECT_EQ(outcome.status, 0);
    for (char const* name : {"44.wav", "96.flac", "16.ogg"}) {
        EXPECT_THAT(outcome.out, HasSubstr(std::string("\n") + name + ": 100 points"));
    }
}

TEST_F(PerformCommandTest, aFolderOfTakesIsGradedToTheEndWhateverIsInIt) {
    writeSound("a.wav", 48000, 1, wav);
    folder.write("b.wav", "no sound at all");
    writeSound("c.wav", 48000, 1, wav);
    Outcome const outcome = run({"song.txt", "a.wav", "b.wav", "c.wav", "none.wav", "--data", data, "--csv"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("song.txt,a.wav,note,0,C,1,"));
    EXPECT_THAT(outcome.out, HasSubstr("song.txt,c.wav,note,0,C,1,"));
    EXPECT_THAT(outcome.errors, HasSubstr("zanto-song perform: b.wav: "));
    EXPECT_THAT(outcome.errors, HasSubstr("zanto-song perform: none.wav: "));
}

TEST_F(PerformCommandTest, takesTheLeastLevelFromTheEnvironment) {
    writeSound("take.wav", 48000, 1, wav);
    setenv("ZANTO_MIN_DECIBEL", "-5", 1);
    Outcome const outcome = run({"song.txt", "take.wav", "--data", data});
    unsetenv("ZANTO_MIN_DECIBEL");
    EXPECT_THAT(outcome.out, HasSubstr("-5.0 dB are needed"));
}

TEST_F(PerformCommandTest, withoutANoteTableNothingIsGraded) {
    writeSound("take.wav", 48000, 1, wav);
    Outcome const outcome = run({"song.txt", "take.wav", "--data", folder.path().string()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("notes.txt is not found"));
    EXPECT_EQ(outcome.out, "");
}

TEST_F(PerformCommandTest, theDataFolderIsFoundWhereTheBuildIs) {
    writeSound("take.wav", 48000, 1, wav);
    EXPECT_EQ(run({"song.txt", "take.wav"}).status, 0);
}

TEST_F(PerformCommandTest, songsThatDoNotLoadAreRefused) {
    writeSound("take.wav", 48000, 1, wav);
    folder.write("bad.txt", "1 1\nX\n");
    Outcome const outcome = run({"bad.txt", "take.wav", "--data", data});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "zanto-song perform: bad.txt: does not load; zanto-song check says why\n");
}

TEST_F(PerformCommandTest, theSongMustBeginWithinTheRecording) {
    writeSound("take.wav", 48000, 1, wav);
    EXPECT_THAT(run({"song.txt", "take.wav", "--start", "4", "--data", data}).errors,
                HasSubstr("take.wav: it is over before the song begins"));
}

TEST_F(PerformCommandTest, wrongUseIsStatus2) {
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({"song.txt"}).errors, "zanto-song perform: which recording?\n");
    EXPECT_EQ(run({"song.txt", "a.wav", "--json", "--csv"}).status, 2);
    EXPECT_EQ(run({"song.txt", "a.wav", "--start", "-1"}).status, 2);
    EXPECT_EQ(run({"song.txt", "a.wav", "--start", "soon"}).status, 2);
}

TEST_F(PerformCommandTest, recordingsThatCannotServeAreNamedWithTheReason) {
    std::string problem;
    EXPECT_FALSE(readRecording("none.wav", problem));
    EXPECT_NE(problem, "");
    writeSound("slow.wav", 4000, 1, wav);
    EXPECT_FALSE(readRecording("slow.wav", problem));
    EXPECT_THAT(problem, HasSubstr("recorded at 4000 Hz"));
    writeSound("empty.wav", 48000, 1, wav, 0.0);
    EXPECT_FALSE(readRecording("empty.wav", problem));
    EXPECT_EQ(problem, "there is no sound in it");
}

TEST_F(PerformCommandTest, convertedRecordingsKeepTheirLengthAndTheirPitch) {
    writeSound("44.wav", 44100, 1, wav);
    std::string problem;
    std::optional<SoundRecording> const recording = readRecording("44.wav", problem);
    ASSERT_TRUE(recording);
    EXPECT_EQ(recording->fileRate, 44100);
    EXPECT_NEAR(recording->seconds(), 4.0, 0.001);
    double real = 0.0;
    double imaginary = 0.0;
    for (std::size_t index = 88000; index < 100000; ++index) {  // a quarter of a second
        double const angle = 6.283185307179586 * c5Hz * static_cast<double>(index) / 48000.0;
        real += static_cast<double>(recording->samples.at(index)) * std::cos(angle);
        imaginary += static_cast<double>(recording->samples.at(index)) * std::sin(angle);
    }
    EXPECT_NEAR(2.0 * std::hypot(real, imaginary) / 12000.0, 0.3, 0.003);
}
