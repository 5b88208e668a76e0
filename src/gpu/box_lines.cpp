#include "box_lines.h"

#include <array>
#include <string_view>

namespace zo::gpu {
namespace {

constexpr char32_t kFirst = 0x2500;

// The lines that leave the middle of each glyph, up, right, down and left: light, heavy or double.
// clang-format off
constexpr std::string_view kArms =
    ".l.l .h.h l.l. h.h. .l.l .h.h l.l. h.h. "  // U+2500 ─━│┃┄┅┆┇
    ".l.l .h.h l.l. h.h. .ll. .hl. .lh. .hh. "  // U+2508 ┈┉┊┋┌┍┎┏
    "..ll ..lh ..hl ..hh ll.. lh.. hl.. hh.. "  // U+2510 ┐┑┒┓└┕┖┗
    "l..l l..h h..l h..h lll. lhl. hll. llh. "  // U+2518 ┘┙┚┛├┝┞┟
    "hlh. hhl. lhh. hhh. l.ll l.lh h.ll l.hl "  // U+2520 ┠┡┢┣┤┥┦┧
    "h.hl h.lh l.hh h.hh .lll .llh .hll .hlh "  // U+2528 ┨┩┪┫┬┭┮┯
    ".lhl .lhh .hhl .hhh ll.l ll.h lh.l lh.h "  // U+2530 ┰┱┲┳┴┵┶┷
    "hl.l hl.h hh.l hh.h llll lllh lhll lhlh "  // U+2538 ┸┹┺┻┼┽┾┿
    "hlll llhl hlhl hllh hhll llhh lhhl hhlh "  // U+2540 ╀╁╂╃╄╅╆╇
    "lhhh hlhh hhhl hhhh .l.l .h.h l.l. h.h. "  // U+2548 ╈╉╊╋╌╍╎╏
    ".d.d d.d. .dl. .ld. .dd. ..ld ..dl ..dd "  // U+2550 ═║╒╓╔╕╖╗
    "ld.. dl.. dd.. l..d d..l d..d ldl. dld. "  // U+2558 ╘╙╚╛╜╝╞╟
    "ddd. l.ld d.dl d.dd .dld .ldl .ddd ld.d "  // U+2560 ╠╡╢╣╤╥╦╧
    "dl.l dd.d ldld dldl dddd .ll. ..ll l..l "  // U+2568 ╨╩╪╫╬╭╮╯
    "ll.. .... .... .... ...l l... .l.. ..l. "  // U+2570 ╰╱╲╳╴╵╶╷
    "...h h... .h.. ..h. .h.l l.h. .l.h h.l. ";  // U+2578 ╸╹╺╻╼╽╾╿
// clang-format on
constexpr std::size_t kArmsStride = 5;
static_assert(kArms.size() == 128 * kArmsStride);

enum Direction { kUp, kRight, kDown, kLeft };

constexpr Direction Turned(Direction direction, int quarters) {
    return static_cast<Direction>((direction + quarters) % 4);
}
constexpr bool IsVertical(Direction direction) {
    return direction == kUp || direction == kDown;
}

// What a line takes across its direction; the gap between the strokes of a double line is empty
// for any other.
struct Band {
    int low, high;
    int gap_low, gap_high;
};

class BoxLine {
public:
    BoxLine(std::string_view arms, const LineStyle& style, Mask& mask)
        : arms_(arms), style_(style), mask_(mask) {}

    // Double lines are drawn as bars, and a channel is cut into them; then light and heavy lines go
    // over both, so that junctions come out right whatever meets in them.
    void Draw() {
        for (const Direction arm : kDirections) {
            if (Stroke(arm) == 'd') Fill(arm, BarEnd(arm), BandOf(arm, 'd'), kFull);
        }
        for (const Direction arm : kDirections) {
            if (Stroke(arm) == 'd') Fill(arm, ChannelEnd(arm), Gap(BandOf(arm, 'd')), 0);
        }
        for (const Direction arm : kDirections) {
            if (const char stroke = Stroke(arm); stroke == 'l' || stroke == 'h') {
                Fill(arm, LineEnd(arm), BandOf(arm, stroke), kFull);
            }
        }
    }

private:
    static constexpr std::array kDirections = {kUp, kRight, kDown, kLeft};

    char Stroke(Direction arm) const { return arms_[static_cast<std::size_t>(arm)]; }
    char Opposite(Direction arm) const { return Stroke(Turned(arm, 2)); }

    int DoublesAcross(Direction arm) const {
        return (Stroke(Turned(arm, 1)) == 'd') + (Stroke(Turned(arm, 3)) == 'd');
    }

    // The thickest line that crosses the arm's direction; '.' when none does.
    char Across(Direction arm) const {
        for (const char stroke : {'d', 'h', 'l'}) {
            if (Stroke(Turned(arm, 1)) == stroke || Stroke(Turned(arm, 3)) == stroke) return stroke;
        }
        return '.';
    }

    // Across a vertical line runs x, across a horizontal one y.
    Band BandOf(Direction arm, char stroke) const {
        const int thick = IsVertical(arm) ? style_.across : style_.along;
        const int middle = (IsVertical(arm) ? mask_.Width() : mask_.Height()) / 2;
        const Band light = {middle - thick / 2, middle - thick / 2 + thick, middle, middle};
        const int wider = std::max(1, thick / 2);
        if (stroke == 'h') return {light.low - wider, light.high + wider, middle, middle};
        if (stroke != 'd') return light;
        if (style_.solid_double) return {light.low, light.high + thick, middle, middle};
        if (middle == 0) return light;  // a cell too small for a gap
        // The strokes of a horizontal double line are one dot high, as text modes have them.
        const int stroke_width = IsVertical(arm) ? thick : 1;
        return {light.low - stroke_width, light.low + 1 + stroke_width, light.low, light.low + 1};
    }

    static Band Gap(const Band& band) { return {band.gap_low, band.gap_high, 0, 0}; }

    // An arm comes from the edge; the far side of what it meets is the one behind the middle.
    static bool FromHighEdge(Direction arm) { return arm == kRight || arm == kDown; }
    static int FarSide(Direction arm, const Band& band) {
        return FromHighEdge(arm) ? band.low : band.high;
    }
    static int NearSide(Direction arm, const Band& band) {
        return FromHighEdge(arm) ? band.high : band.low;
    }

    Band Crossing(Direction arm, char stroke) const { return BandOf(Turned(arm, 1), stroke); }

    int BarEnd(Direction arm) const {
        const char across = Across(arm);
        return FarSide(arm, Crossing(arm, across == '.' ? 'd' : across));
    }

    int ChannelEnd(Direction arm) const {
        const char across = Across(arm);
        if (across == 'd' || across == '.') return FarSide(arm, Gap(Crossing(arm, 'd')));
        const Band line = Crossing(arm, across);
        return Opposite(arm) == 'd' ? FarSide(arm, line) : NearSide(arm, line);
    }

    // A light line stops at the near stroke of a double line that passes, unless it goes on behind.
    int LineEnd(Direction arm) const {
        const char across = Across(arm);
        if (DoublesAcross(arm) == 2 && Opposite(arm) == '.') {
            return NearSide(arm, Gap(Crossing(arm, 'd')));
        }
        return FarSide(arm, Crossing(arm, across == '.' ? 'l' : across));
    }

    // Fills the band from the arm's edge to where the arm ends.
    void Fill(Direction arm, int end, const Band& band, Level level) {
        const int length = IsVertical(arm) ? mask_.Height() : mask_.Width();
        const int from = FromHighEdge(arm) ? end : 0;
        const int to = FromHighEdge(arm) ? length : end;
        if (IsVertical(arm)) {
            mask_.Fill(band.low, from, band.high, to, level);
        } else {
            mask_.Fill(from, band.low, to, band.high, level);
        }
    }

    std::string_view arms_;
    const LineStyle& style_;
    Mask& mask_;
};

struct Dashes {
    char32_t first, last;
    int count;
};
constexpr Dashes kDashes[] = {{0x2504, 0x2507, 3}, {0x2508, 0x250B, 4}, {0x254C, 0x254F, 2}};

// Cuts a straight line, the arms of which are given, into dashes.
void CutDashes(int count, bool vertical, Mask& mask) {
    const int length = vertical ? mask.Height() : mask.Width();
    const int gap = std::max(1, length / (count * 3));
    for (int dash = 1; dash <= count; ++dash) {
        const int end = dash * length / count;
        if (vertical) {
            mask.Fill(0, end - gap, mask.Width(), end, 0);
        } else {
            mask.Fill(end - gap, 0, end, mask.Height(), 0);
        }
    }
}

enum class Slope { Rising, Falling };

void DrawDiagonal(Slope slope, int thick, Mask& mask) {
    const int last = mask.Width() - thick;
    for (int y = 0; y < mask.Height(); ++y) {
        const int x = mask.Height() > 1 ? (y * last + mask.Height() / 2) / (mask.Height() - 1) : 0;
        const int left = slope == Slope::Falling ? x : last - x;
        mask.Fill(left, y, left + thick, y + 1);
    }
}

}  // namespace

void DrawBoxLine(char32_t glyph, const LineStyle& style, Mask& mask) {
    constexpr char32_t kRising = 0x2571, kFalling = 0x2572, kBoth = 0x2573;
    if (glyph == kRising || glyph == kBoth) DrawDiagonal(Slope::Rising, style.across, mask);
    if (glyph == kFalling || glyph == kBoth) DrawDiagonal(Slope::Falling, style.across, mask);
    const std::string_view arms = kArms.substr((glyph - kFirst) * kArmsStride, 4);
    BoxLine(arms, style, mask).Draw();
    for (const Dashes& dashes : kDashes) {
        const bool vertical = arms[kUp] != '.';
        if (glyph >= dashes.first && glyph <= dashes.last) CutDashes(dashes.count, vertical, mask);
    }
}

}  // namespace zo::gpu
