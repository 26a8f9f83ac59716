#include "tools/zanto-song/Take.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cmath>
#include <fstream>
#include <limits>

#include "analysis/NoteEstimation.h"
#include "analysis/SpectrumRules.h"
#include "audio/AudioInput.h"
#include "audio/RingBuffer.h"
#include "game/Rules.h"
#include "game/Score.h"
#include "game/Song.h"
#include "tools/zanto-song/TakeCauses.h"

namespace {

constexpr int noteCount = Notes::noteCount;
constexpr long framesPerSecond = Take::framesPerSecond;
constexpr long samplesPerFrame = SampleSource::sampleRate / framesPerSecond;
constexpr double frameSeconds = 1.0 / framesPerSecond;
constexpr std::size_t samplesPerBlock = 1024;  // as the game's audio input delivers them

using rules::leadInSeconds;
using rules::lookBackSlots;
using rules::slotsPerSecond;
constexpr double awardPoints = rules::awardPoints;
constexpr double penaltyPoints = rules::penaltyPoints;

class TakePlayer {
public:
    TakePlayer(Song& song_, SampleSource& recording_, double startSeconds);
    Take play();

private:
    double recordingSeconds(double t) const { return t + leadInSeconds + take.startSeconds; }

    void listNotes();
    void record(long frame);
    void hear(long frame, std::size_t slot);
    double levelOf(const Notes::NoteID& note, double loudestDb) const;
    void lookAtHolds(std::size_t slot);
    void collectAwards(double t, std::size_t slot);
    void collectPenalties(double t, std::size_t slot, std::size_t marksBefore);

    Song& song;
    SampleSource& recording;
    std::size_t startSample;
    boost::shared_ptr<RingBuffer> ring;
    NoteEstimation estimation;
    Notes table;
    Score score;
    std::size_t samplesRecorded = 0;
    std::array<double, noteCount> downSince{};   // seconds of the recording
    std::vector<SlotHearing> heard;              // by slot
    std::vector<std::vector<TakenNote>> judged;  // by slot
    Take take{};
};

TakePlayer::TakePlayer(Song& song_, SampleSource& recording_, double startSeconds)
    : song(song_),
      recording(recording_),
      startSample(static_cast<std::size_t>(std::llround(startSeconds * SampleSource::sampleRate))),
      ring(boost::make_shared<RingBuffer>(static_cast<unsigned int>(samplesPerBlock) *
                                          AudioInput::blocksKept)),
      score(0.0f, 0.0f),
      heard(song_.getSlots().size()) {
    // The estimation keeps its own table to itself; this one says which peaks became which note.
    std::ifstream in("notes.txt");
    table.load(in);
    take.startSeconds = startSeconds;
    take.slotCount = song.getSlots().size();
    listNotes();
}

void TakePlayer::listNotes() {
    for (std::size_t slot = 0; slot < song.getSlots().size(); ++slot) {
        judged.emplace_back();
        for (const Song::NoteMark& mark : song.getSlots()[slot]) {
            TakenNote note{};
            note.slot = slot;
            note.note = mark.note;
            note.length = mark.length;
            note.outcome = TakenNote::Outcome::tooSoft;
            note.dueSeconds = take.slotOpens(slot);
            note.neededSeconds = rules::neededSeconds(note.length);
            judged.back().push_back(note);
        }
    }
}

// Appends the blocks that are complete by this frame. The recording is followed by silence.
void TakePlayer::record(long frame) {
    const std::size_t now = startSample + static_cast<std::size_t>(frame * samplesPerFrame);
    std::array<float, samplesPerBlock> block{};
    while (samplesRecorded + samplesPerBlock <= now) {
        block.fill(0.0f);
        const std::size_t count = recording.read(block.data(), samplesPerBlock);
        take.recordedSeconds += static_cast<double>(count) / SampleSource::sampleRate;
        ring->append(block.data(), static_cast<int>(samplesPerBlock));
        samplesRecorded += samplesPerBlock;
    }
}

void TakePlayer::hear(long frame, std::size_t slot) {
    const NoteState& state = estimation.getNoteState();
    std::array<float, noteCount> before{};
    for (int note = 0; note < noteCount; ++note) {
        before.at(static_cast<std::size_t>(note)) = state.downCount(note);
    }
    estimation.update(ring, frameSeconds);
    double loudestDb = -std::numeric_limits<double>::infinity();
    const std::vector<double>& spectrum = estimation.getPowerSpectrum();
    for (int bin = rules::lowestPeakBin; bin <= rules::lastNoteBin; ++bin) {
        loudestDb = std::max(loudestDb, spectrum.at(static_cast<std::size_t>(bin)));
    }
    HeardFrame now;
    for (int note = 0; note < noteCount; ++note) {
        const auto index = static_cast<std::size_t>(note);
        if (!state.isDown(note)) {
            continue;
        }
        if (before.at(index) == 0.0f) {
            downSince.at(index) = take.startSeconds + static_cast<double>(frame) / framesPerSecond;
        }
        if (slot < heard.size()) {
            ++heard[slot].framesDown.at(index);
        }
        const double steps = static_cast<double>(state.downCount(note) - before.at(index)) / frameSeconds;
        now.counts.at(index) = static_cast<std::uint8_t>(std::lround(steps));
        now.levelsDb.at(index) =
            static_cast<std::int8_t>(std::clamp(levelOf(note, loudestDb), -127.0, 127.0));
    }
    take.frames.push_back(now);
    if (slot < heard.size()) {
        heard[slot].loudestDb = std::max(heard[slot].loudestDb, loudestDb);
    }
}

// The fine ear also hears notes that have no peak in the table.
double TakePlayer::levelOf(const Notes::NoteID& note, double loudestDb) const {
    double level = -std::numeric_limits<double>::infinity();
    for (const auto& [levelDb, frequencyHz] : estimation.getCandidatePeaks()) {
        if (table.getKey(frequencyHz) == note) {
            level = std::max(level, static_cast<double>(levelDb));
        }
    }
    return std::isfinite(level) ? level : loudestDb;
}

// Before scoring, so that a note's hold is as long as the one that it may be awarded for.
void TakePlayer::lookAtHolds(std::size_t slot) {
    const NoteState& state = estimation.getNoteState();
    for (std::size_t start = slot - std::min<std::size_t>(slot, lookBackSlots); start <= slot; ++start) {
        for (TakenNote& note : judged[start]) {
            const double held = static_cast<double>(state.downCount(note.note));
            const bool isOpen =
                slot <= lastJudgedSlot(note, judged.size()) && note.outcome != TakenNote::Outcome::awarded;
            if (isOpen && state.isDown(note.note) && (!note.heardSeconds || held > note.heldSeconds)) {
                note.heldSeconds = held;
                note.heardSeconds = downSince.at(static_cast<std::size_t>(note.note));
            }
        }
    }
}

void TakePlayer::collectAwards(double t, std::size_t slot) {
    for (std::size_t start = slot - std::min<std::size_t>(slot, lookBackSlots); start <= slot; ++start) {
        for (std::size_t index = 0; index < judged[start].size(); ++index) {
            TakenNote& note = judged[start][index];
            if (note.outcome != TakenNote::Outcome::awarded && song.getSlots()[start][index].hit) {
                note.outcome = TakenNote::Outcome::awarded;
                note.awardedSeconds = recordingSeconds(t);
                note.points = start == slot ? awardPoints : awardPoints * note.length;
            }
        }
    }
}

void TakePlayer::collectPenalties(double t, std::size_t slot, std::size_t marksBefore) {
    const std::vector<Song::NoteMark>& marks = song.getSlots()[slot];
    for (std::size_t index = marksBefore; index < marks.size(); ++index) {
        TakenPenalty penalty{};
        penalty.slot = slot;
        penalty.note = marks[index].note;
        penalty.atSeconds = recordingSeconds(t);
        penalty.heldSeconds = static_cast<double>(estimation.getNoteState().downCount(penalty.note));
        penalty.points = penaltyPoints;
        for (const auto& [levelDb, frequencyHz] : estimation.getCandidatePeaks()) {
            if (table.getKey(frequencyHz) == penalty.note) {
                penalty.peaksHz.push_back(static_cast<double>(frequencyHz));
            }
        }
        explain(penalty, judged, downSince.at(static_cast<std::size_t>(penalty.note)));
        take.penalties.push_back(std::move(penalty));
    }
}

Take TakePlayer::play() {
    take.minDecibel = static_cast<double>(estimation.getMinDecibel());
    for (long frame = 0;; ++frame) {
        const double t = static_cast<double>(frame) / framesPerSecond - leadInSeconds;
        if (song.complete(t)) {
            break;
        }
        const auto slot = static_cast<std::size_t>(std::max(std::lround(slotsPerSecond * t), -1L));
        record(frame);
        hear(frame, slot);
        if (slot < judged.size()) {
            const std::size_t marksBefore = song.getSlots()[slot].size();
            lookAtHolds(slot);
            song.updateScore(score, t, estimation.getNoteState());
            collectAwards(t, slot);
            collectPenalties(t, slot, marksBefore);
        }
        song.animate(frameSeconds);
    }
    take.score = static_cast<double>(score.getValue());
    for (std::vector<TakenNote>& slot : judged) {
        for (TakenNote& note : slot) {
            explain(note, heard, take);
            take.notes.push_back(std::move(note));
        }
    }
    return std::move(take);
}

}  // namespace

double Take::slotOpens(std::size_t slot) const {
    return startSeconds + leadInSeconds + rules::slotOpensSeconds(static_cast<double>(slot));
}

double rescore(Song& song, const std::vector<HeardFrame>& frames) {
    Score score(0.0f, 0.0f);
    NoteState state;
    std::vector<Notes::NoteID> down;
    for (std::size_t frame = 0; frame < frames.size(); ++frame) {
        down.clear();
        for (int note = 0; note < noteCount; ++note) {
            down.insert(down.end(), frames[frame].counts.at(static_cast<std::size_t>(note)), note);
        }
        state.notesDown(down, static_cast<float>(frameSeconds));
        song.updateScore(score, static_cast<double>(frame) / framesPerSecond - leadInSeconds, state);
        song.animate(frameSeconds);
    }
    return static_cast<double>(score.getValue());
}

Take playTake(Song& song, SampleSource& recording, double startSeconds) {
    return TakePlayer(song, recording, startSeconds).play();
}
