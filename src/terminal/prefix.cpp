#include "prefix.h"

#include <utility>

namespace zo::term {

using ui::Key;
using ui::KeyPress;

std::optional<KeyPress> Prefix::Apply(KeyPress press) {
    constexpr int kMost = 3;
    if (press.IsControl(U'o')) {
        times_ = times_ == kMost ? 0 : times_ + 1;
        return std::nullopt;
    }
    const int times = std::exchange(times_, 0);
    if (times == 0) return press;
    if (press.key == Key::Escape) return std::nullopt;
    if (times < kMost) {
        (times == 1 ? press.with.control : press.with.alt) = true;
        return press;
    }
    constexpr std::u32string_view kRow = U"1234567890-=";
    const auto at =
        press.key == Key::Character ? kRow.find(press.character) : std::u32string_view::npos;
    if (at == kRow.npos) return std::nullopt;
    press.key = static_cast<Key>(static_cast<std::size_t>(Key::F1) + at);
    press.character = 0;
    return press;
}

}  // namespace zo::term
