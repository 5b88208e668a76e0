// The whole mix as the game plays it: a song, the line voice and key clicks.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <thread>

#include "benchmarks.h"
#include "hum/instruments.h"
#include "music/hum_song.h"
#include "music/mixer.h"
#include "music/sound_engine.h"

namespace bench {
namespace {

using Kest::Effect;
using Kest::Frame;

constexpr std::size_t kBlock = 256;
constexpr double kBlockSeconds = static_cast<double>(kBlock) / Kest::kSampleRate;
constexpr int kSeconds = 60;
constexpr int kLongSeconds = 600;
constexpr int kByteEvery = 9;  // blocks: twenty bytes a second each way
constexpr int kKeyEvery = 23;  // eight keys a second

// What this thread alone has used, so that others on the machine count little.
double ProcessorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Plays one song again and again, with a byte and a key now and then.
class Mix {
public:
    explicit Mix(Kest::Song song)
        : player_(OnlySong(std::move(song)), Kest::SongOrder::Chance, 1, controls_) {
        controls_.scene = Kest::MusicScene::Running;
        input_->music_volume = 1;
        input_->effects_volume = 1;
        input_->line_volume = 1;
        input_->effects = &effects_;
    }

    // The seconds that the next block takes.
    double PlayBlock() {
        if (at_ % kByteEvery == 0) Post(Effect::LineByte, static_cast<std::uint16_t>(at_ % 512));
        if (at_ % kKeyEvery == 0) Post(Effect::Key, 'x');
        ++at_;
        const double start = ProcessorSeconds();
        player_.Render(music_);
        input_->music.Write(music_);
        mixer_.MixTo16Bits(samples_, Kest::Dither::Yes);
        const double taken = ProcessorSeconds() - start;
        Keep(samples_.data());
        return taken;
    }

private:
    static std::vector<Kest::Song> OnlySong(Kest::Song song) {
        std::vector<Kest::Song> songs;
        songs.push_back(std::move(song));
        return songs;
    }
    void Post(Effect effect, std::uint16_t parameter) {
        input_->posts.Write(std::array{Kest::Post{effect, 1, parameter, 1}});
    }

    Kest::EffectTables effects_;
    std::unique_ptr<Kest::MixerInput> input_ = std::make_unique<Kest::MixerInput>();
    Kest::Mixer mixer_{*input_};
    Kest::SongControls controls_;
    Kest::SongPlayer player_;
    std::array<Frame, kBlock> music_;
    std::array<std::int16_t, 2 * kBlock> samples_;
    int at_ = 0;
};

struct Load {
    double share = 0;       // of a core, in percent
    double slow_block = 0;  // the slowest but one in a thousand, in milliseconds
};

Load Play(Kest::Song song, int seconds) {
    Mix mix(std::move(song));
    std::vector<double> blocks(static_cast<std::size_t>(seconds / kBlockSeconds));
    double sum = 0;
    for (double& block : blocks) sum += block = mix.PlayBlock();
    const auto slow = blocks.begin() + static_cast<std::ptrdiff_t>(blocks.size() * 999 / 1000);
    std::nth_element(blocks.begin(), slow, blocks.end());
    return {100 * sum / seconds, *slow * 1000};
}

// The engine with all its threads against a real clock, as a device with one block in hand asks it,
// while another thread keeps a core busy.
void Soak(Report& report) {
    constexpr std::string_view kLate = "music: soak, blocks that came too late";
    constexpr std::string_view kMissed = "music: soak, frames that the music missed";
    if (std::getenv("KEST_LONG") == nullptr || !report.Wants(kLate)) return;
    std::atomic<bool> over = false;
    std::thread busy([&over] {
        while (!over.load(std::memory_order_relaxed)) Keep(&over);
    });
    Kest::SoundEngine engine(1);
    engine.SetChoices({.effects_volume = 1, .music_volume = 1, .line_volume = 1});
    engine.SetScene(Kest::MusicScene::Running);
    engine.Start(Kest::LoadSongs);
    while (engine.PlayingTitle().empty()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    using Clock = std::chrono::steady_clock;
    const auto period =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(kBlockSeconds));
    std::array<std::int16_t, 2 * kBlock> samples;
    double late = 0;
    Clock::time_point due = Clock::now();
    const auto blocks = static_cast<int>(kLongSeconds / kBlockSeconds);
    for (int block = 0; block < blocks; ++block, due += period) {
        std::this_thread::sleep_until(due);
        if (block % kByteEvery == 0) {
            engine.PlayByte(static_cast<std::uint8_t>(block), block % 2 == 0);
        }
        if (block % kKeyEvery == 0) engine.Play(Effect::Key, 'x');
        engine.Fill(samples);
        late += Clock::now() > due + 2 * period ? 1 : 0;
    }
    over = true;
    busy.join();
    report.Print(kLate, "blocks", {late});
    report.Print(kMissed, "frames", {static_cast<double>(engine.MissedFrames())});
}

}  // namespace

void RunMusic(Report& report) {
    Soak(report);
    report.Sample("music: the kit's and the piano's tables", "ms", 9, [] {
        const double start = ProcessorSeconds();
        const hum::Instruments instruments = hum::MakeInstruments();
        Keep(&instruments);
        return (ProcessorSeconds() - start) * 1000;
    });
    constexpr std::string_view kRow = "music: a core's share of ";
    const bool wanted = std::ranges::any_of(Kest::SongNames(), [&](const Kest::SongName& song) {
        return report.Wants(std::string(kRow) + std::string(song.key));
    });
    if (!wanted) return;
    const int seconds = std::getenv("KEST_LONG") != nullptr ? kLongSeconds : kSeconds;
    std::vector<Kest::Song> songs = Kest::LoadSongs();
    std::vector<double> shares;
    std::vector<double> blocks;
    for (std::size_t k = 0; k < songs.size(); ++k) {
        const std::string row = std::string(kRow) + std::string(Kest::SongNames()[k].key);
        if (!report.Wants(row) || !songs[k].program) continue;
        const Load load = Play(std::move(songs[k]), seconds);
        shares.push_back(load.share);
        blocks.push_back(load.slow_block);
        report.Print(row, "%", {load.share});
    }
    double sum = 0;
    for (const double share : shares) sum += share;
    report.Print("music: the mean of these", "%", {sum / static_cast<double>(shares.size())});
    report.Print("music: 1 in 1000 blocks of 256 takes longer", "ms", blocks);
}

}  // namespace bench
