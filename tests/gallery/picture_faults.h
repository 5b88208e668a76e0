#pragma once

#include <string>

#include "cells/frame.h"

namespace gallery {

// What no picture may show: a glyph that the display has not got, a frame that a text has run into
// or that does not close, two panes with focus. A line for each, with its place; empty when there
// is none.
std::string Faults(const zo::ui::Frame& frame);

}  // namespace gallery
