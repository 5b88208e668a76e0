#include "signs.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

namespace zo::gpu {
namespace {

// A block's edges in eighths of the cell.
struct Eighths {
    int left, top, right, bottom;
};

constexpr char32_t kFirstBlock = 0x2580;
constexpr std::array kBlocks = std::to_array<Eighths>({
    {0, 0, 8, 4},  // U+2580, the upper half
    {0, 7, 8, 8},  // U+2581, from one eighth below to the full block
    {0, 6, 8, 8},
    {0, 5, 8, 8},
    {0, 4, 8, 8},
    {0, 3, 8, 8},
    {0, 2, 8, 8},
    {0, 1, 8, 8},
    {0, 0, 8, 8},
    {0, 0, 7, 8},  // U+2589, from seven eighths at the left to one
    {0, 0, 6, 8},
    {0, 0, 5, 8},
    {0, 0, 4, 8},
    {0, 0, 3, 8},
    {0, 0, 2, 8},
    {0, 0, 1, 8},
    {4, 0, 8, 8},  // U+2590, the right half
});
constexpr Eighths kUpperEighth = {0, 0, 8, 1};
constexpr Eighths kRightEighth = {7, 0, 8, 8};

constexpr char32_t kUpperEighthGlyph = 0x2594, kRightEighthGlyph = 0x2595;

enum Quadrant : unsigned { kUpperLeft = 1, kUpperRight = 2, kLowerLeft = 4, kLowerRight = 8 };
constexpr char32_t kFirstQuadrants = 0x2596;
constexpr std::array<unsigned, 10> kQuadrants = {
    kLowerLeft,
    kLowerRight,
    kUpperLeft,
    kUpperLeft | kLowerLeft | kLowerRight,
    kUpperLeft | kLowerRight,
    kUpperLeft | kUpperRight | kLowerLeft,
    kUpperLeft | kUpperRight | kLowerRight,
    kUpperRight,
    kUpperRight | kLowerLeft,
    kUpperRight | kLowerLeft | kLowerRight,
};

void FillEighths(const Eighths& block, Mask& cell) {
    const auto part = [](int length, int eighths) { return (length * eighths + 4) / 8; };
    cell.Fill(part(cell.Width(), block.left), part(cell.Height(), block.top),
              part(cell.Width(), block.right), part(cell.Height(), block.bottom));
}

// Pixels are sampled in so many places a side; corners stand between those.
constexpr int kSamples = 8;
constexpr int kPixel = 2 * kSamples;

struct Point {
    int x, y;  // kPixel to a pixel
};

// The four corners of a pointer, clockwise, in a square from -1 to 1; a triangle has one twice.
struct Pointer {
    char32_t glyph;
    std::array<Point, 4> corners;
};
constexpr char32_t kBullet = 0x2022;
constexpr Pointer kPointers[] = {
    {0x25B2, {{{0, -1}, {1, 1}, {-1, 1}, {-1, 1}}}},
    {0x25BA, {{{-1, -1}, {1, 0}, {-1, 1}, {-1, 1}}}},
    {0x25BC, {{{-1, -1}, {1, -1}, {0, 1}, {0, 1}}}},
    {0x25C4, {{{1, -1}, {1, 1}, {-1, 0}, {-1, 0}}}},
    {0x2666, {{{0, -1}, {1, 0}, {0, 1}, {-1, 0}}}},
};

const Pointer* FindPointer(char32_t glyph) {
    const auto* found = std::find_if(std::begin(kPointers), std::end(kPointers),
                                     [=](const Pointer& row) { return row.glyph == glyph; });
    return found == std::end(kPointers) ? nullptr : found;
}

bool IsBetween(const std::array<Point, 4>& corners, Point point) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Point from = corners[i], to = corners[(i + 1) % corners.size()];
        const int side =
            (to.x - from.x) * (point.y - from.y) - (to.y - from.y) * (point.x - from.x);
        if (side < 0) return false;
    }
    return true;
}

// How much of the pixel lies where `is_inside` says.
template <class IsInside>
Level CoverageAt(int x, int y, const IsInside& is_inside) {
    int inside = 0;
    for (int row = 1; row < kPixel; row += 2) {
        for (int column = 1; column < kPixel; column += 2) {
            inside += is_inside({x * kPixel + column, y * kPixel + row});
        }
    }
    return static_cast<Level>(inside * kFull / (kSamples * kSamples));
}

template <class IsInside>
void DrawSmoothly(const IsInside& is_inside, Mask& cell) {
    for (int y = 0; y < cell.Height(); ++y) {
        for (int x = 0; x < cell.Width(); ++x) cell.Set(x, y, CoverageAt(x, y, is_inside));
    }
}

}  // namespace

void DrawBlock(char32_t glyph, Mask& cell) {
    if (glyph == kUpperEighthGlyph) return FillEighths(kUpperEighth, cell);
    if (glyph == kRightEighthGlyph) return FillEighths(kRightEighth, cell);
    if (glyph < kFirstQuadrants) return FillEighths(kBlocks[glyph - kFirstBlock], cell);
    const unsigned quadrants = kQuadrants[glyph - kFirstQuadrants];
    if ((quadrants & kUpperLeft) != 0) FillEighths({0, 0, 4, 4}, cell);
    if ((quadrants & kUpperRight) != 0) FillEighths({4, 0, 8, 4}, cell);
    if ((quadrants & kLowerLeft) != 0) FillEighths({0, 4, 4, 8}, cell);
    if ((quadrants & kLowerRight) != 0) FillEighths({4, 4, 8, 8}, cell);
}

// A triangle that points up grows by a dot on each side every second row, one that points sideways
// by two dots a row; the latter leaves a column free before the text that it points at.
void DrawTriangle(char32_t glyph, Mask& dots) {
    constexpr char32_t kUp = 0x25B2, kDown = 0x25BC, kRight = 0x25BA;
    const bool upright = glyph == kUp || glyph == kDown;
    const int width = upright ? dots.Width() : std::max(1, dots.Width() - 1);
    const int steps = (width + 1) / 2;
    const int rows = upright ? 2 * steps : 2 * steps - 1;
    const int top = dots.Height() / 2 - steps;
    for (int row = 0; row < rows; ++row) {
        const int step = upright ? (glyph == kUp ? row : rows - 1 - row) / 2
                                 : steps - 1 - std::abs(row - (steps - 1));
        const int length = width - 2 * (steps - 1 - step);
        const int left = upright           ? (width - length) / 2
                         : glyph == kRight ? 0
                                           : dots.Width() - length;
        dots.Fill(left, top + row, left + length, top + row + 1);
    }
}

bool IsPointer(char32_t glyph) {
    return glyph == kBullet || FindPointer(glyph) != nullptr;
}

void DrawPointer(char32_t glyph, int middle_row, Mask& cell) {
    const int free = std::max(1, (cell.Width() + 5) / 10);  // pixels at either side
    const int across = (cell.Width() - 2 * free) * kPixel / 2;
    const int along = (cell.Width() - 2 * free + 1) / 2 * kPixel;  // whole, for sharp edges
    const Point middle = {cell.Width() * kPixel / 2, middle_row * kPixel};
    if (glyph == kBullet) {
        const auto in_disc = [=](Point point) {
            const int x = point.x - middle.x, y = point.y - middle.y;
            return x * x + y * y <= across * across;
        };
        return DrawSmoothly(in_disc, cell);
    }
    std::array<Point, 4> corners = FindPointer(glyph)->corners;
    for (Point& corner : corners) {
        corner = {middle.x + corner.x * across, middle.y + corner.y * along};
    }
    DrawSmoothly([&](Point point) { return IsBetween(corners, point); }, cell);
}

}  // namespace zo::gpu
