#pragma once

#include <cstdint>
#include <string_view>

#include "music/effects.h"
#include "music/song_player.h"

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

// What the game asks to be heard. This one is silent.
class Sounds {
public:
    virtual ~Sounds() = default;

    // Dropped when what they belong to is switched off.
    virtual void Play(Effect /*effect*/, std::uint16_t /*parameter*/ = 0) {}
    virtual void PlayByte(std::uint8_t /*byte*/, bool /*toward_card*/) {}

    virtual void SetChoices(const SoundChoices& /*choices*/) {}
    virtual void SetFocused(bool /*focused*/) {}
    virtual void SetScene(MusicScene /*scene*/) {}
    virtual void PlayNextSong() {}
    virtual void PlaySong(std::string_view /*key*/) {}
    // Empty while no song plays.
    virtual std::string_view PlayingTitle() const { return {}; }
};

}  // namespace Kest
