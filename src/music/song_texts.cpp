#include "music/song_texts.h"

#include <string>

#include "base/embedded.h"

extern "C" const base::EmbeddedFile kest_songs[];

namespace Kest {
namespace {

std::string_view TextOf(std::string_view key) {
    const std::string name = std::string(key) + ".hum";
    for (const base::EmbeddedFile* file = kest_songs; file->name != nullptr; ++file) {
        if (name == file->name) return {file->data, file->size};
    }
    return {};
}

constexpr std::string_view kLibrary = "music";

}  // namespace

std::string_view SongSource(std::string_view key) {
    return key == kLibrary ? std::string_view() : TextOf(key);
}

std::string_view SongLibrary() {
    return TextOf(kLibrary);
}

}  // namespace Kest
