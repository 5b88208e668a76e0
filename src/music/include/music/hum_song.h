#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "hum/instruments.h"
#include "music/song_player.h"

namespace Kest {

// A song from its text, with the library before it; why not, if it does not compile or lacks a
// param that the player drives. `name` stands in the messages.
base::Result<Song> MakeSong(std::string_view name, std::string_view text,
                            const std::shared_ptr<const hum::Instruments>& instruments);

// The songs of the game in the order of their list, with the instruments that they share; one that
// cannot be played has no program.
std::vector<Song> LoadSongs();

}  // namespace Kest
