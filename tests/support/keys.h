#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/utf.h"
#include "cells/input.h"

namespace fake {

// A key by the name that the key bar gives it: "F5", "Ctrl+S", "Alt+PgUp", "x".
inline zo::ui::KeyPress KeyNamed(std::string_view name) {
    zo::ui::KeyPress key;
    const auto take = [&](std::string_view prefix) {
        const bool there = name.size() > prefix.size() && name.starts_with(prefix);
        if (there) name.remove_prefix(prefix.size());
        return there;
    };
    key.with.control = take("Ctrl+");
    key.with.alt = take("Alt+");
    key.with.shift = take("Shift+");
    for (int k = 1; k < static_cast<int>(zo::ui::Key::Character); ++k) {
        key.key = static_cast<zo::ui::Key>(k);
        if (zo::ui::KeyName({.key = key.key}) == name) return key;
    }
    key.key = zo::ui::Key::Character;
    std::size_t at = 0;
    const char32_t c = base::NextCodePoint(name == "Space" ? " " : name, at);
    key.character = c >= U'A' && c <= U'Z' ? c - U'A' + U'a' : c;
    return key;
}

// A button of the controller by a short name.
inline zo::ui::PadButton PadNamed(std::string_view name) {
    using zo::ui::PadButton;
    constexpr std::pair<std::string_view, PadButton> kNames[] = {
        {"Up", PadButton::Up},
        {"Down", PadButton::Down},
        {"Left", PadButton::Left},
        {"Right", PadButton::Right},
        {"A", PadButton::A},
        {"B", PadButton::B},
        {"X", PadButton::X},
        {"Y", PadButton::Y},
        {"LB", PadButton::LeftShoulder},
        {"RB", PadButton::RightShoulder},
        {"LT", PadButton::LeftTrigger},
        {"RT", PadButton::RightTrigger},
        {"Start", PadButton::Start},
        {"Back", PadButton::Back},
        {"stick-up", PadButton::RightStickUp},
        {"stick-down", PadButton::RightStickDown},
    };
    return std::ranges::find(kNames, name, [](const auto& row) { return row.first; })->second;
}

// What a keyboard sends: plain characters as a key and as text, names in angle brackets as keys
// ("ab<Enter><Ctrl+Home>"). "<<>" types a "<".
inline std::vector<zo::ui::InputEvent> Keys(std::string_view script) {
    std::vector<zo::ui::InputEvent> events;
    for (std::size_t at = 0; at < script.size();) {
        const std::size_t from = at;
        const std::size_t close = script.find('>', at);
        if (script[at] == '<' && close != std::string_view::npos && script[at + 1] != '<') {
            events.emplace_back(KeyNamed(script.substr(at + 1, close - at - 1)));
            at = close + 1;
            continue;
        }
        base::NextCodePoint(script, at);
        const std::string_view typed = script.substr(from, at - from);
        if (typed == "<") at += 2;
        events.emplace_back(KeyNamed(typed));
        events.emplace_back(zo::ui::TextInput{std::string(typed)});
    }
    return events;
}

}  // namespace fake
