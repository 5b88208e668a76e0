#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "cells/grid_size.h"

namespace zo::ui {

enum class Key : std::uint8_t {
    None,
    Escape,
    Enter,
    Tab,
    Backspace,
    Delete,
    Insert,
    Home,
    End,
    PageUp,
    PageDown,
    Left,
    Right,
    Up,
    Down,
    F1,
    F2,
    F3,
    F4,
    F5,
    F6,
    F7,
    F8,
    F9,
    F10,
    F11,
    F12,
    Character,  // the letter, digit or sign in KeyPress::character, lower case
};

struct Modifiers {
    bool shift = false;
    bool control = false;
    bool alt = false;
    bool operator==(const Modifiers&) const = default;
};

// A key went down, or repeats. Text arrives apart from it, as TextInput.
struct KeyPress {
    Key key = Key::None;
    char32_t character = 0;
    Modifiers with = {};
    bool repeat = false;
    bool operator==(const KeyPress&) const = default;

    bool Is(Key k) const { return key == k && with == Modifiers{}; }
    bool IsControl(char32_t c) const {
        return key == Key::Character && character == c && with == Modifiers{.control = true};
    }
    bool IsAlt(char32_t c) const {
        return key == Key::Character && character == c && with == Modifiers{.alt = true};
    }
};

struct TextInput {
    std::string text;  // UTF-8
};

enum class PointerAction : std::uint8_t { Move, Press, Release, Wheel };

struct PointerInput {
    PointerAction action = PointerAction::Move;
    int x = 0;  // pixels of the window's client area
    int y = 0;
    int button = 0;  // 1 left, 2 middle, 3 right
    int clicks = 1;  // of a press: 1, 2 or 3 in a row
    int wheel = 0;   // steps, up positive
    Modifiers with = {};
};

// A game controller's buttons by where they are, its sticks as four buttons each. The left stick is
// the pad.
enum class PadButton : std::uint8_t {
    Up,
    Down,
    Left,
    Right,
    A,
    B,
    X,
    Y,
    LeftShoulder,
    RightShoulder,
    LeftTrigger,
    RightTrigger,
    Start,
    Back,
    RightStickUp,
    RightStickDown,
    RightStickLeft,
    RightStickRight,
};

// A button went down, or a direction that is held repeats.
struct PadPress {
    PadButton button;
    bool repeat = false;
    bool operator==(const PadPress&) const = default;
};

// The window's size, or the scale of the display that it stands on, is another.
struct WindowResized {
    PixelSize size;
    float display_scale = 1;
};
struct WindowExposed {};    // the picture can be seen, and must be presented again
struct WindowMinimised {};  // it cannot be seen until the window is exposed
struct FocusChanged {
    bool active = false;
};
struct CloseRequested {};
struct FileDropped {
    std::string path;  // UTF-8
};

using InputEvent =
    std::variant<KeyPress, TextInput, PointerInput, PadPress, WindowResized, WindowExposed,
                 WindowMinimised, FocusChanged, CloseRequested, FileDropped>;

// A key's name as the key bar writes it: "F5", "Ctrl+S", "Alt+X", "PgUp".
std::string KeyName(const KeyPress& key);

}  // namespace zo::ui
