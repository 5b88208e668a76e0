#include <charconv>
#include <iterator>

#include "hum/builtins.h"

namespace hum {
namespace {

constexpr std::string_view kKitSounds[] = {"kick", "snare", "hat", "ohat",
                                           "tom",  "clap",  "rim", "ride"};

}  // namespace

std::int32_t HostClip(std::string_view hint) {
    constexpr std::string_view kKit = "kit:";
    constexpr std::string_view kPiano = "piano:";
    if (hint.starts_with(kKit)) {
        std::int32_t number = 0;
        for (const std::string_view sound : kKitSounds) {
            if (sound == hint.substr(kKit.size())) return kFirstKitClip - number;
            ++number;
        }
    }
    if (hint.starts_with(kPiano)) {
        std::uint8_t note = 0;
        const char* end = hint.data() + hint.size();
        const auto [stop, status] = std::from_chars(hint.data() + kPiano.size(), end, note);
        if (status == std::errc() && stop == end && note <= 127) return kFirstPianoClip - note;
    }
    return 0;
}

}  // namespace hum
