#pragma once

#include <cstdint>

namespace zo::term {

enum class Charset : std::uint8_t { Ascii, Unicode };

// What a terminal prints in exactly one column in a glyph's place: the glyph itself where every
// terminal agrees on its width, else a stand-in.
char32_t OneColumn(char32_t glyph, Charset charset);

}  // namespace zo::term
