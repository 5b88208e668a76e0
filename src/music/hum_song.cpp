#include "music/hum_song.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/format.h"
#include "hum/compile.h"
#include "hum/machine.h"
#include "music/song_texts.h"
#include "music/sound_engine.h"

namespace Kest {
namespace {

constexpr std::array<const char*, kMoods> kMoodParams = {"brightness", "warmth", "drums",
                                                         "bass",       "chords", "melody"};
constexpr float kUsualKey = 2;

static_assert(sizeof(Frame) == 2 * sizeof(float), "the machine writes left and right in turn");

// A program and its one playing.
class HumSong final : public SongProgram {
public:
    HumSong(hum::Program program, std::shared_ptr<const hum::Instruments> instruments)
        : instruments_(std::move(instruments)), program_(std::move(program)) {}

    // The name of a param that the song lacks, or null.
    const char* MissingParam() {
        for (std::size_t k = 0; k < kMoods; ++k) {
            const std::optional<std::size_t> param = machine_.FindParam(kMoodParams[k]);
            if (!param) return kMoodParams[k];
            moods_[k] = *param;
        }
        return nullptr;
    }

    int PitchClass() const {
        const std::optional<std::size_t> param = machine_.FindParam("key");
        const float key = param ? machine_.Param(*param) : kUsualKey;
        return key >= 0 && key < 12 ? static_cast<int>(key) : static_cast<int>(kUsualKey);
    }

    std::int64_t Length() const { return machine_.LengthSamples(); }

    bool Restart() override { return machine_.Start(); }

    void SetMoods(const Moods& moods) override {
        for (std::size_t k = 0; k < kMoods; ++k) machine_.SetParam(moods_[k], moods[k]);
    }

    std::size_t Render(std::span<Frame> frames) override {
        return machine_.Run({&frames.data()->left, 2 * frames.size()});
    }

private:
    std::shared_ptr<const hum::Instruments> instruments_;
    hum::Program program_;
    hum::Machine machine_{program_, {.instruments = instruments_.get()}};
    std::array<std::size_t, kMoods> moods_{};
};

}  // namespace

base::Result<Song> MakeSong(std::string_view name, std::string_view text,
                            const std::shared_ptr<const hum::Instruments>& instruments) {
    hum::ProgramText source;
    source.name = name;
    source.text = text;
    source.library = SongLibrary();
    hum::Program program;
    if (const auto fault = hum::Compile(source, program)) {
        return base::Failure{hum::FaultText(*fault)};
    }
    auto song = std::make_unique<HumSong>(std::move(program), instruments);
    if (const char* missing = song->MissingParam()) {
        return base::Failure{
            base::Format("%s: the song has no param %s", std::string(name).c_str(), missing)};
    }
    // The tempo and the bars are held in their ranges when the machine starts.
    song->Restart();
    const std::int64_t length = song->Length();
    const int key = song->PitchClass();
    return Song{length, key, std::move(song)};
}

std::vector<Song> LoadSongs() {
    const auto instruments = std::make_shared<const hum::Instruments>(hum::MakeInstruments());
    std::vector<Song> songs;
    for (const SongName& name : SongNames()) {
        base::Result<Song> song = MakeSong(name.key, SongSource(name.key), instruments);
        songs.push_back(song ? std::move(*song) : Song());
    }
    return songs;
}

}  // namespace Kest
