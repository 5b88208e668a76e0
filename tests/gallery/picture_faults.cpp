#include "picture_faults.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/format.h"
#include "base/utf.h"
#include "ui/rect.h"

namespace gallery {
namespace {

using namespace zo::ui;

// Code page 437 but for the letters of ASCII.
constexpr std::u32string_view kGlyphs =
    U"☺☻♥♦♣♠•◘○◙♂♀♪♫☼►◄↕‼¶§▬↨↑↓→←∟↔▲▼⌂ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝"
    U"╜╛┐└┴"
    U"┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■";

bool IsKnown(char32_t glyph) {
    return (glyph >= U' ' && glyph <= U'~') || kGlyphs.find(glyph) != kGlyphs.npos;
}

bool IsFrame(Role role) {
    return role == Role::Frame || role == Role::FrameActive || role == Role::DialogFrame;
}

bool IsOneOf(char32_t glyph, std::u32string_view glyphs) {
    return glyphs.find(glyph) != glyphs.npos;
}

struct Lines {
    char32_t top_right, bottom_left, bottom_right;
    std::u32string_view left, right;  // sides, and what joins them from inside
};
constexpr Lines kSingle = {U'┐', U'└', U'┘', U"│├", U"│┤"};
constexpr Lines kDouble = {U'╗', U'╚', U'╝', U"║╟", U"║╢"};
constexpr std::u32string_view kScrollbar = U"▲▼█░";

class Search {
public:
    explicit Search(const Frame& frame) : frame_(frame) {}

    std::string Run() {
        CheckGlyphs();
        FindStatusRows();
        // What lies on top is looked at first: it may hide parts of the frames beneath it.
        for (const Role role : {Role::DialogFrame, Role::FrameActive, Role::Frame}) {
            for (int y = frame_.grid.rows - 1; y >= 0; --y) {
                for (int x = frame_.grid.columns - 1; x >= 0; --x) CheckCorner({x, y}, role);
            }
        }
        if (focused_ > 1) faults_ += base::Format("%d panes have focus\n", focused_);
        return std::move(faults_);
    }

private:
    const Cell& At(Point at) const { return frame_.At(at.x, at.y); }
    void Add(const char* what, Point at) {
        faults_ += base::Format("%s at %d,%d\n", what, at.x, at.y);
    }
    bool IsHidden(Point at) const {
        return std::ranges::any_of(overlays_, [&](const Rect& box) { return box.Contains(at); });
    }

    void CheckGlyphs() {
        for (int y = 0; y < frame_.grid.rows; ++y) {
            for (int x = 0; x < frame_.grid.columns; ++x) {
                if (!IsKnown(At({x, y}).glyph)) Add("a glyph outside the code page", {x, y});
            }
        }
    }

    // A long message stands over the foot of the body.
    void FindStatusRows() {
        constexpr Role kRoles[] = {Role::Status, Role::StatusAlert, Role::Chip, Role::ChipWarn};
        constexpr int kMostRows = 4;  // with the key bar
        for (int y = std::max(frame_.grid.rows - kMostRows, 0); y < frame_.grid.rows; ++y) {
            if (std::ranges::count(kRoles, At({0, y}).role) > 0) {
                overlays_.push_back({0, y, frame_.grid.columns, 1});
            }
        }
    }

    void CheckCorner(Point corner, Role role) {
        const char32_t glyph = At(corner).glyph;
        if (At(corner).role != role || !IsOneOf(glyph, U"┌╔") || IsHidden(corner)) return;
        if (role == Role::FrameActive) ++focused_;
        const Lines& lines = glyph == U'┌' ? kSingle : kDouble;
        const std::optional<Point> right = Follow(corner, {1, 0}, lines.top_right, {});
        const std::optional<Point> foot = Follow(corner, {0, 1}, lines.bottom_left, lines.left);
        if (!right || !foot) return;
        for (int y = corner.y + 1; y < foot->y; ++y) {
            const Point at = {right->x, y};
            const bool whole = IsOneOf(At(at).glyph, lines.right) ||
                               IsOneOf(At(at).glyph, kScrollbar) || IsHidden(at);
            if (!whole) Add("a text in the right side of a frame", at);
        }
        const Point last = {right->x, foot->y};
        if (At(last).glyph != lines.bottom_right && !IsHidden(last)) {
            Add("a frame is open", last);
        }
        const bool overlay = role == Role::DialogFrame;
        if (overlay)
            overlays_.push_back(
                {corner.x, corner.y, right->x - corner.x + 1, foot->y - corner.y + 1});
    }

    // Along a line of a frame to its end. `line`: what may stand in it; a title may be anything.
    std::optional<Point> Follow(Point at, Point step, char32_t end, std::u32string_view line) {
        for (bool hidden = false;;) {
            at = {at.x + step.x, at.y + step.y};
            const bool outside = at.x >= frame_.grid.columns || at.y >= frame_.grid.rows;
            if (!outside && IsHidden(at)) {
                hidden = true;
                continue;
            }
            // Behind what hides a part of it the end may be another frame's.
            if (!outside && At(at).glyph == end) return hidden ? std::nullopt : std::optional(at);
            const bool next_frame =
                outside || (IsFrame(At(at).role) && IsOneOf(At(at).glyph, U"┌╔"));
            const bool broken = !outside && !line.empty() && !IsOneOf(At(at).glyph, line);
            if (!next_frame && !broken) continue;
            if (!hidden) Add(broken ? "a text in the left side of a frame" : "a frame is open", at);
            return std::nullopt;
        }
    }

    const Frame& frame_;
    std::vector<Rect> overlays_;
    int focused_ = 0;
    std::string faults_;
};

}  // namespace

std::string Faults(const Frame& frame) {
    return Search(frame).Run();
}

}  // namespace gallery
