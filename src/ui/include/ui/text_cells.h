#pragma once

#include <string_view>

#include "base/utf.h"

namespace zo::ui {

// The cells that a text takes, one a character.
inline int Cells(std::string_view utf8) {
    return static_cast<int>(base::CodePoints(utf8));
}

}  // namespace zo::ui
