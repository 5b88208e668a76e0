#include "gpu/renderer.h"

#include <doctest/doctest.h>

#include <random>

#include "canvas.h"

using namespace gpu_test;
using zo::platform::PixelBuffer;
using zo::platform::PixelRect;
using zo::ui::CaretShape;
using zo::ui::Frame;
using Rects = std::vector<PixelRect>;

namespace {

// A renderer with its buffer, as a window has them.
struct Screen {
    explicit Screen(zo::ui::PixelSize size) { buffer.size = size; }
    Rects Paint(const Frame& frame) { return renderer->Paint(frame, buffer); }

    std::unique_ptr<zo::platform::Painter> renderer = zo::gpu::MakeRenderer();
    PixelBuffer buffer;
};

}  // namespace

TEST_CASE("only what changed is painted and told, in few rectangles") {
    Frame frame = Blank(Classic(8, 40, 10));
    Screen screen({320, 160});
    CHECK(screen.Paint(frame) == Rects{{0, 0, 320, 160}});
    CHECK(screen.Paint(frame).empty());

    frame.At(2, 1).glyph = U'a';
    CHECK(screen.Paint(frame) == Rects{{16, 16, 8, 16}});
    frame.At(2, 1).glyph = U'b';
    frame.At(5, 1).glyph = U'b';
    frame.At(30, 1).glyph = U'b';
    CHECK(screen.Paint(frame) == Rects{{16, 16, 32, 16}, {240, 16, 8, 16}});
    for (int y = 3; y < 7; ++y) {
        for (int x = 10; x < 20; ++x) frame.At(x, y).glyph = U'c';
    }
    CHECK(screen.Paint(frame) == Rects{{80, 48, 80, 64}});

    frame.caret = {CaretShape::Block, 4, 2, {kGround, kInk}};
    CHECK(screen.Paint(frame) == Rects{{32, 32, 8, 16}});
    frame.caret.x = 33;
    CHECK(screen.Paint(frame) == Rects{{32, 32, 8, 16}, {264, 32, 8, 16}});
    frame.margin = kInk;
    CHECK(screen.Paint(frame).front() == PixelRect{0, 0, 320, 160});
}

TEST_CASE("a frame painted change by change is the frame painted at once") {
    std::mt19937 random(1996);
    const auto below = [&](std::size_t end) { return static_cast<int>(random() % end); };
    const std::u32string glyphs = U" aé│═╬█░▒▼■日";
    const zo::ui::PixelSize size = {211, 141};  // cuts the last cells off, or leaves a margin
    for (const zo::ui::Grid& grid :
         {Classic(8, 27, 9), Classic(9, 22, 8), Classic(5, 40, 14), Modern(9, 22, 7)}) {
        CAPTURE(grid.cell_width);
        for (const bool crt : {false, true}) {
            Frame frame = Blank(grid);
            frame.crt = crt;
            Screen screen(size);
            for (int step = 0; step < 60; ++step) {
                for (int edits = below(30); edits > 0; --edits) {
                    zo::ui::Cell& cell = frame.cells[random() % frame.cells.size()];
                    cell.glyph = glyphs[random() % glyphs.size()];
                    cell.ink.r = static_cast<std::uint8_t>(random());
                    cell.style = zo::ui::Style(below(2));
                }
                frame.caret = {CaretShape(below(4)), below(30) - 1, below(10) - 1, {kGround, kInk}};
                screen.Paint(frame);
            }
            CHECK(screen.buffer.pixels == Painted(frame, size).pixels);
        }
    }
}

TEST_CASE("every changed pixel lies in a rectangle told") {
    std::mt19937 random(7);
    Frame frame = Blank(Classic(8, 60, 60));
    Screen screen({480, 960});
    screen.Paint(frame);
    for (int step = 0; step < 20; ++step) {
        PixelBuffer shown = screen.buffer;
        for (int edit = 0; edit < 200; ++edit) {
            frame.cells[random() % frame.cells.size()].glyph = U'A' + random() % 26;
        }
        const Rects rects = screen.Paint(frame);
        CHECK(rects.size() <= 32);
        for (const PixelRect& rect : rects) {
            for (int y = rect.y; y < rect.y + rect.height; ++y) {
                for (int x = rect.x; x < rect.x + rect.width; ++x) {
                    shown.pixels[static_cast<std::size_t>(y * 480 + x)] = At(screen.buffer, x, y);
                }
            }
        }
        CHECK(shown.pixels == screen.buffer.pixels);
    }
}

TEST_CASE("the margin surrounds a centred grid") {
    zo::ui::Grid grid = Classic(8, 2, 1);
    grid.left_margin = 3 * 9 / 8.0F;
    grid.top_margin = 5 * 9 / 8.0F;
    const PixelBuffer buffer = Painted(Text(grid, {"██"}), {22, 26});
    for (int y = 0; y < 26; ++y) {
        for (int x = 0; x < 22; ++x) {
            const bool inside = x >= 3 && x < 19 && y >= 5 && y < 21;
            REQUIRE(At(buffer, x, y) == (inside ? kWhite : 0x010203U));
        }
    }
}

TEST_CASE("carets and underlines") {
    Frame frame = Text(Classic(8, 1, 1), {"I"});
    frame.caret = {CaretShape::None, 0, 0, {{255, 0, 0}, {0, 255, 0}}};
    const PixelBuffer plain = Painted(frame);
    const auto rows_changed = [&] {
        const PixelBuffer buffer = Painted(frame);
        std::string rows;
        for (int y = 0; y < 16; ++y) {
            int changed = 0;
            for (int x = 0; x < 8; ++x) changed += At(buffer, x, y) != At(plain, x, y);
            rows += static_cast<char>('0' + changed);
        }
        return rows;
    };
    CHECK(rows_changed() == "0000000000000000");
    frame.caret.shape = CaretShape::Block;
    CHECK(rows_changed() == "8888888888888888");
    frame.caret.shape = CaretShape::LowerThird;
    CHECK(rows_changed() == "0000000000088888");
    frame.caret.shape = CaretShape::Bar;
    CHECK(rows_changed() == "2222222222222222");
    frame.caret.shape = CaretShape::None;
    frame.At(0, 0).style = zo::ui::Style::Underline;
    CHECK(rows_changed() == "0000000000000008");
}
