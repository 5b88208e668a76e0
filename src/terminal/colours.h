#pragma once

#include <cstdint>
#include <string>

#include "cells/frame.h"

namespace zo::term {

enum class Depth : std::uint8_t { Sixteen, Palette, Direct };

// A colour as the terminal is told it: 0x00RRGGBB, or an index of its palette.
using Colour = std::uint32_t;

struct Pen {
    Colour ink = 0;
    Colour ground = 0;
    bool underline = false;
    bool operator==(const Pen&) const = default;
};

// The nearest of the 240 fixed colours of the palette of 256: its cube and its greys.
Colour NearestOfPalette(ui::Rgb colour);

// What a cell is drawn with. In sixteen colours the role decides: the VGA monitor's colours are the
// sixteen, and what is read there can be read here.
Pen PenOf(const ui::Cell& cell, Depth depth);

// Appends what changes the terminal's pen to another; the parts of which `all` is true are sent
// even if equal.
void ChangePen(std::string& out, const Pen& from, const Pen& to, Depth depth, bool all);

}  // namespace zo::term
