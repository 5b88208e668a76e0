#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <thread>
#include <vector>

#include "music/mixer.h"
#include "music/song_player.h"
#include "music/sounds.h"
#include "outside/audio.h"

namespace Kest {

// A song as players know it; the number of a song is its place in the list.
struct SongName {
    std::string_view key;
    std::string_view title;
};
std::span<const SongName> SongNames();

// Makes the songs ready, in the order of their list; runs on the songs' thread.
using SongLoader = std::function<std::vector<Song>()>;

// Everything that is heard, as the game sees it. Three threads touch it: the game's, which asks;
// the songs', which loads them and then renders ahead; and the output's, which mixes. None waits
// for another, except that the songs' sleeps until there is room.
class SoundEngine final : public Sounds, public zo::platform::AudioSource {
public:
    explicit SoundEngine(std::uint32_t seed) : seed_(seed) {}
    ~SoundEngine() override { Stop(); }
    SoundEngine(const SoundEngine&) = delete;
    SoundEngine& operator=(const SoundEngine&) = delete;

    // Nothing is heard before. The songs follow when they are ready; once is enough.
    void Start(SongLoader load);
    void Stop();
    // Called on the game's thread when a silence may end.
    void OnWanted(std::function<void()> wanted) { wanted_ = std::move(wanted); }

    void Play(Effect effect, std::uint16_t parameter) override;
    void PlayByte(std::uint8_t byte, bool toward_card) override;
    void SetChoices(const SoundChoices& choices) override;
    void SetFocused(bool focused) override;
    void SetScene(MusicScene scene) override {
        controls_.scene.store(scene, std::memory_order_relaxed);
    }
    void PlayNextSong() override {
        controls_.wish.store(SongControls::kNext, std::memory_order_relaxed);
    }
    void PlaySong(std::string_view key) override;
    std::string_view PlayingTitle() const override;
    std::uint64_t MissedFrames() const { return mixer_.MissedFrames(); }

    void Fill(std::span<std::int16_t> samples) override;
    bool Silent() const override;

private:
    void RunSongs(const SongLoader& load);
    void RenderAhead(SongPlayer& player);
    void Post(const Kest::Post& post);
    void Want();

    std::uint32_t seed_;
    std::function<void()> wanted_;
    SoundChoices choices_;
    bool focused_ = true;
    std::unique_ptr<const EffectTables> tables_;  // made on the songs' thread
    MixerInput input_;
    Mixer mixer_{input_};
    SongControls controls_;
    std::atomic<bool> started_ = false;
    std::atomic<bool> stopping_ = false;
    std::atomic<std::uint32_t> drained_ = 0;  // counts up when there is room
    std::thread songs_;
};

}  // namespace Kest
