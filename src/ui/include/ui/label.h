#pragma once

#include <string_view>

namespace zo::ui {

// A label with its hotkey between tildes, such as "E~x~it to DOS". The tildes are not drawn.
struct Label {
    explicit Label(std::string_view marked);

    std::string_view before;
    std::string_view hot;  // the marked character, as it is written; empty without tildes
    std::string_view after;

    int Cells() const;
    // The key in lower case; 0 without tildes.
    char32_t Hotkey() const;
};

}  // namespace zo::ui
