#pragma once

#include <string_view>

namespace Kest {

// The text of the song of this key, empty when there is none.
std::string_view SongSource(std::string_view key);
// What is read before every song.
std::string_view SongLibrary();

}  // namespace Kest
