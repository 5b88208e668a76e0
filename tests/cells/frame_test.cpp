#include "cells/frame.h"

#include <doctest/doctest.h>

using zo::ui::Frame;
using zo::ui::Role;

TEST_CASE("a frame is dumped as its glyphs and as runs of roles") {
    Frame frame;
    frame.Resize({.columns = 5, .rows = 3});
    frame.At(1, 0).glyph = U'│';
    frame.At(4, 2).glyph = U'x';
    for (int x = 2; x < 5; ++x) frame.At(x, 1).role = Role::PanelDim;
    CHECK(zo::ui::TextDump(frame) == " │\n\n    x\n");
    CHECK(zo::ui::RoleDump(frame) == "0-4 desktop\n0-1 desktop, 2-4 panel.dim\n0-4 desktop\n");
}
