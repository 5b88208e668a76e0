#include <doctest/doctest.h>

#include "canvas.h"

using namespace gpu_test;
using zo::platform::PixelBuffer;
using zo::ui::Grid;

namespace {

std::vector<Grid> Grids(int columns, int rows) {
    std::vector<Grid> grids;
    for (int width = 1; width <= 36; ++width) grids.push_back(Classic(width, columns, rows));
    for (const int width : {5, 7, 8, 9, 11, 15, 18}) grids.push_back(Modern(width, columns, rows));
    return grids;
}

// Whether each pixel of ink at the seam has its like on the other side, and there is some.
bool JoinsAtColumn(const PixelBuffer& buffer, int x, int top, int bottom) {
    int inked = 0;
    for (int y = top; y < bottom; ++y) {
        if (At(buffer, x - 1, y) != At(buffer, x, y)) return false;
        inked += At(buffer, x, y) == kWhite;
    }
    return inked > 0;
}

bool JoinsAtRow(const PixelBuffer& buffer, int y, int left, int right) {
    int inked = 0;
    for (int x = left; x < right; ++x) {
        if (At(buffer, x, y - 1) != At(buffer, x, y)) return false;
        inked += At(buffer, x, y) == kWhite;
    }
    return inked > 0;
}

}  // namespace

TEST_CASE("frames join across cells of every size") {
    const std::vector<std::string> frames[] = {
        {"┌┬┐", "├┼┤", "└┴┘"}, {"╔╦╗", "╠╬╣", "╚╩╝"}, {"╒╤╕", "╞╪╡", "╘╧╛"},
        {"╓╥╖", "╟╫╢", "╙╨╜"}, {"┏┳┓", "┣╋┫", "┗┻┛"}, {"╔╤╗", "╟┼╢", "╚╧╝"},
    };
    for (const Grid& grid : Grids(3, 3)) {
        CAPTURE(grid.cell_width);
        if (grid.cell_width < 5) continue;  // double lines lie on the seam itself
        for (const auto& frame : frames) {
            CAPTURE(frame.front());
            const PixelBuffer buffer = Painted(Text(grid, frame));
            for (int at = 1; at < 3; ++at) {
                for (int cell = 0; cell < 3; ++cell) {
                    CHECK(JoinsAtColumn(buffer, at * grid.cell_width, grid.RowTop(cell),
                                        grid.RowTop(cell + 1)));
                    CHECK(JoinsAtRow(buffer, grid.RowTop(at), cell * grid.cell_width,
                                     (cell + 1) * grid.cell_width));
                }
            }
        }
    }
}

TEST_CASE("junctions of double lines open inwards") {
    CHECK(
        Art(Painted(Text(Classic(8, 1, 1), {"╔"}))) ==
        "........\n........\n........\n........\n........\n........\n.#######\n.##.....\n.##.####\n"
        ".##.##..\n.##.##..\n.##.##..\n.##.##..\n.##.##..\n.##.##..\n.##.##..\n");
    CHECK(Art(Painted(Text(Classic(6, 1, 1), {"╟"}))) ==
          "..#.#.\n..#.#.\n..#.#.\n..#.#.\n..#.#.\n..#.#.\n..#.##\n..#.#.\n..#.#.\n..#.#.\n..#.#.\n"
          "..#.#.\n");
    CHECK(Art(Painted(Text(Classic(6, 1, 1), {"╪"}))) ==
          "...#..\n...#..\n...#..\n...#..\n...#..\n######\n...#..\n######\n...#..\n...#..\n...#..\n"
          "...#..\n");
    CHECK(Art(Painted(Text(Classic(6, 1, 1), {"╥"}))) ==
          "......\n......\n......\n......\n......\n......\n######\n..#.#.\n..#.#.\n..#.#.\n..#.#.\n"
          "..#.#.\n");
}

TEST_CASE("blocks fill cells of every size without holes or overlaps") {
    for (const Grid& grid : Grids(2, 3)) {
        CAPTURE(grid.cell_width);
        const PixelBuffer full = Painted(Text(grid, {"██", "██", "██"}));
        CHECK(Art(full).find_first_of(".+") == std::string::npos);
        for (const auto& [one, other] :
             {std::pair{"▀", "▄"}, {"▌", "▐"}, {"▖", "▜"}, {"▚", "▞"}, {"▘", "▟"}, {"▝", "▙"}}) {
            const PixelBuffer a = Painted(Text(grid, {one}));
            const PixelBuffer b = Painted(Text(grid, {other}));
            for (int y = 0; y < grid.RowTop(1); ++y) {
                for (int x = 0; x < grid.cell_width; ++x) {
                    REQUIRE(At(a, x, y) + At(b, x, y) == kWhite);
                }
            }
        }
    }
}

TEST_CASE("shades are one pattern over cells, of a quarter, a half and three quarters") {
    for (const int width : {3, 7, 8, 9, 18}) {
        CAPTURE(width);
        const Grid grid = Classic(width, 8, 2);
        const int dot = std::max(1, grid.font_pixel);
        int quarters = 0;
        for (const char* const shade : {"░░░░░░░░", "▒▒▒▒▒▒▒▒", "▓▓▓▓▓▓▓▓"}) {
            CAPTURE(shade);
            const PixelBuffer buffer = Painted(Text(grid, {shade, shade}));
            int inked = 0;
            for (int y = 0; y < buffer.size.height; ++y) {
                for (int x = 0; x < buffer.size.width; ++x) {
                    inked += At(buffer, x, y) == kWhite;
                    if (x >= 4 * dot) REQUIRE(At(buffer, x, y) == At(buffer, x - 4 * dot, y));
                    if (y >= 2 * dot) REQUIRE(At(buffer, x, y) == At(buffer, x, y - 2 * dot));
                }
            }
            ++quarters;
            CHECK(inked * 4 == quarters * buffer.size.width * buffer.size.height);
        }
    }
}

TEST_CASE("shades of the modern look are flat mixes") {
    const PixelBuffer buffer = Painted(Text(Modern(9, 3, 1), {"░▒▓"}));
    for (int shade = 0; shade < 3; ++shade) {
        const std::uint32_t pixel = At(buffer, shade * 9, 0);
        const int percent[] = {15, 30, 60};
        CHECK(static_cast<int>(pixel & 0xFF) * 100 / 255 ==
              doctest::Approx(percent[shade]).epsilon(0.05));
        for (int y = 0; y < buffer.size.height; ++y) {
            for (int x = 0; x < 9; ++x) REQUIRE(At(buffer, shade * 9 + x, y) == pixel);
        }
    }
}
