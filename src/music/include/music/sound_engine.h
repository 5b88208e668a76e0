#pragma once

#include <atomic>
#include <functional>
#include <span>
#include <string_view>
#include <thread>
#include <vector>

#include "music/mixer.h"
#include "music/song_player.h"
#include "outside/audio.h"

namespace Kest {

// What the player has chosen to hear. Volumes are 0 to 1.
struct SoundChoices {
    bool effects_on = true;
    float effects_volume = 0;
    bool music_on = true;
    float music_volume = 0;
    bool line_on = true;
    float line_volume = 0;
    bool key_clicks = true;
    bool mute_unfocused = true;
};

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
class SoundEngine final : public zo::platform::AudioSource {
public:
    explicit SoundEngine(std::uint32_t seed) : seed_(seed) {}
    ~SoundEngine() override { Stop(); }
    SoundEngine(const SoundEngine&) = delete;
    SoundEngine& operator=(const SoundEngine&) = delete;

    // Songs are heard from when they are ready; once is enough.
    void Start(SongLoader load);
    void Stop();

    void SetChoices(const SoundChoices& choices);
    void SetFocused(bool focused);
    void SetScene(MusicScene scene) { controls_.scene.store(scene, std::memory_order_relaxed); }
    void PlayNext() { controls_.wish.store(SongControls::kNext, std::memory_order_relaxed); }
    void PlaySong(std::string_view key);
    // Empty while no song plays.
    std::string_view PlayingTitle() const;

    // Dropped when what it belongs to is switched off.
    void Post(Effect effect, std::uint16_t parameter = 0);
    void PostByte(std::uint8_t byte, bool toward_card);

    void Fill(std::span<std::int16_t> samples) override;

private:
    void RunSongs(const SongLoader& load);
    void RenderAhead(SongPlayer& player);

    std::uint32_t seed_;
    SoundChoices choices_;
    bool focused_ = true;
    EffectTables tables_;
    MixerInput input_;
    Mixer mixer_{input_, tables_};
    SongControls controls_;
    std::atomic<bool> started_ = false;
    std::atomic<bool> stopping_ = false;
    std::atomic<std::uint32_t> drained_ = 0;  // counts up when there is room
    std::thread songs_;
};

}  // namespace Kest
