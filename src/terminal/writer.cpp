#include "writer.h"

#include <algorithm>

#include "base/utf.h"
#include "numbers.h"

namespace zo::term {
namespace {

constexpr std::size_t kLarge = 512;  // bytes of a picture that is worth holding back
constexpr int kLongestRun = 1000;

std::size_t Utf8Size(char32_t glyph) {
    return glyph < 0x80 ? 1 : glyph < 0x800 ? 2 : glyph < 0x10000 ? 3 : 4;
}

// Bytes of a sequence with one number, which is left out when it is 1.
int StepCost(int steps) {
    return steps == 1 ? 3 : 3 + Digits(steps);
}

void Step(std::string& out, int steps, char direction) {
    out += "\x1b[";
    if (steps != 1) AppendNumber(out, static_cast<unsigned>(steps));
    out += direction;
}

ui::Cell CellOf(char32_t glyph) {
    ui::Cell cell;
    cell.glyph = glyph;
    return cell;
}

const char* ShapeOf(ui::CaretShape shape) {
    switch (shape) {
        case ui::CaretShape::LowerThird:
            return "\x1b[4 q";
        case ui::CaretShape::Bar:
            return "\x1b[6 q";
        default:
            return "\x1b[2 q";
    }
}

}  // namespace

void Writer::SetAbilities(const Abilities& abilities) {
    const bool looks_other =
        abilities.depth != abilities_.depth || abilities.charset != abilities_.charset;
    abilities_ = abilities;
    if (looks_other) known_ = false;
}

void Writer::Resize(int columns, int rows) {
    columns_ = std::max(columns, 1);
    rows_ = std::max(rows, 1);
    known_ = false;
}

Writer::Shown Writer::ShownAs(const ui::Cell& cell) const {
    return {OneColumn(cell.glyph, abilities_.charset), PenOf(cell, abilities_.depth)};
}

const Writer::Shown& Writer::At(int x, int y) const {
    return shown_[static_cast<std::size_t>(y * columns_ + x)];
}

// A blank shows no ink.
bool Writer::PenSuits(const Shown& cell) const {
    if (!pen_) return false;
    if (cell.glyph != U' ' || cell.pen.underline || pen_->underline) return *pen_ == cell.pen;
    return pen_->ground == cell.pen.ground;
}

void Writer::TakePen(const Shown& cell) {
    if (PenSuits(cell)) return;
    Pen pen = cell.pen;
    const bool blank = cell.glyph == U' ' && !pen.underline;
    if (pen_ && blank) pen.ink = pen_->ink;
    ChangePen(body_, pen_.value_or(Pen()), pen, abilities_.depth, !pen_);
    pen_ = pen;
}

void Writer::Draw(const ui::Frame& frame, std::string& out) {
    const auto size = static_cast<std::size_t>(columns_ * rows_);
    body_.clear();
    if (!known_) {
        cells_.assign(size, CellOf(0));
        shown_.assign(size, Shown{});
        changed_.resize(static_cast<std::size_t>(columns_));
        cursor_.reset();
        pen_.reset();
        caret_shown_ = false;
        caret_shape_ = ui::CaretShape::None;
        body_ += "\x1b[m\x1b[?25l\x1b[2J";
    }
    const ui::Cell blank = CellOf(U' ');
    for (int y = 0; y < rows_; ++y) {
        bool any = false;
        for (int x = 0; x < columns_; ++x) {
            const bool inside = x < frame.grid.columns && y < frame.grid.rows;
            const ui::Cell& cell = inside ? frame.At(x, y) : blank;
            const auto at = static_cast<std::size_t>(y * columns_ + x);
            bool changed = !known_;
            if (changed || cells_[at] != cell) {
                cells_[at] = cell;
                const Shown now = ShownAs(cell);
                const Shown& before = shown_[at];
                const bool blanks = now.glyph == U' ' && before.glyph == U' ' &&
                                    !now.pen.underline && !before.pen.underline &&
                                    now.pen.ground == before.pen.ground;
                changed =
                    changed || (!blanks && (now.glyph != before.glyph || now.pen != before.pen));
                shown_[at] = now;
            }
            changed_[static_cast<std::size_t>(x)] = changed ? 1 : 0;
            any = any || changed;
        }
        if (any) DrawRow(y);
    }
    known_ = true;
    PlaceCaret(frame.caret);
    if (!body_.empty()) Finish(out);
}

void Writer::DrawRow(int y) {
    for (int x = 0; x < columns_;) {
        if (changed_[static_cast<std::size_t>(x)] == 0) {
            ++x;
            continue;
        }
        MoveTo(x, y);
        const int run = RunFrom(x, y);
        TakePen(At(x, y));
        Print(At(x, y), run);
        x += run;
    }
}

// So many cells from here on are changed and alike.
int Writer::RunFrom(int x, int y) const {
    const Shown& first = At(x, y);
    int run = 1;
    while (x + run < columns_ && run < kLongestRun &&
           changed_[static_cast<std::size_t>(x + run)] != 0 &&
           At(x + run, y).glyph == first.glyph && At(x + run, y).pen == first.pen) {
        ++run;
    }
    return run;
}

void Writer::Print(const Shown& cell, int count) {
    base::AppendUtf8(body_, cell.glyph);
    const std::size_t rest = static_cast<std::size_t>(count - 1) * Utf8Size(cell.glyph);
    const auto least = cell.glyph < 0x80 ? Repeats::Letters : Repeats::Everything;
    if (abilities_.repeats >= least && rest > static_cast<std::size_t>(StepCost(count - 1))) {
        Step(body_, count - 1, 'b');
    } else {
        for (int k = 1; k < count; ++k) base::AppendUtf8(body_, cell.glyph);
    }
    if (!cursor_) return;
    cursor_->x += count;
    // Behind the last column terminals differ.
    if (cursor_->x >= columns_) cursor_.reset();
}

// Over a few cells that do not change the shortest way may be to print them again.
bool Writer::PrintAcross(int x, int y, std::size_t cheaper_than) {
    std::size_t cost = 0;
    for (int k = cursor_->x; k < x; ++k) {
        const Shown& cell = At(k, y);
        cost += Utf8Size(cell.glyph);
        if (cost >= cheaper_than || !PenSuits(cell)) return false;
    }
    for (int k = cursor_->x; k < x; ++k) base::AppendUtf8(body_, At(k, y).glyph);
    return true;
}

void Writer::MoveTo(int x, int y) {
    if (cursor_ && cursor_->x == x && cursor_->y == y) return;
    const int whole = y == 0 && x == 0 ? 3
                      : x == 0         ? 3 + Digits(y + 1)
                                       : 4 + Digits(y + 1) + Digits(x + 1);
    const bool same_row = cursor_ && cursor_->y == y;
    if (same_row && x > cursor_->x) {
        const int cost = std::min(StepCost(x - cursor_->x), whole);
        if (!PrintAcross(x, y, static_cast<std::size_t>(cost))) {
            if (cost == whole) {
                cursor_.reset();
            } else {
                Step(body_, x - cursor_->x, 'C');
            }
        }
    } else if (same_row && x == 0) {
        body_ += '\r';
    } else if (same_row && StepCost(cursor_->x - x) < whole) {
        Step(body_, cursor_->x - x, 'D');
    } else if (cursor_ && y == cursor_->y + 1 && (x == 0 || x == cursor_->x)) {
        if (x == 0) body_ += '\r';
        body_ += '\n';
    } else if (cursor_ && x == cursor_->x && y > cursor_->y && StepCost(y - cursor_->y) < whole) {
        Step(body_, y - cursor_->y, 'B');
    } else {
        cursor_.reset();
    }
    if (!cursor_) {
        body_ += "\x1b[";
        if (y > 0 || x > 0) AppendNumber(body_, static_cast<unsigned>(y + 1));
        if (x > 0) {
            body_ += ';';
            AppendNumber(body_, static_cast<unsigned>(x + 1));
        }
        body_ += 'H';
    }
    cursor_ = Place{x, y};
}

void Writer::PlaceCaret(const ui::Caret& caret) {
    const bool shown = caret.shape != ui::CaretShape::None && caret.x >= 0 && caret.x < columns_ &&
                       caret.y >= 0 && caret.y < rows_;
    if (shown) {
        MoveTo(caret.x, caret.y);
        if (caret.shape != caret_shape_) body_ += ShapeOf(caret.shape);
        caret_shape_ = caret.shape;
    }
    if (shown != caret_shown_) body_ += shown ? "\x1b[?25h" : "\x1b[?25l";
    caret_shown_ = shown;
}

// A large picture must not be seen while it grows: the terminal holds it back, or at least its
// cursor does not run about.
void Writer::Finish(std::string& out) {
    const bool large = body_.size() > kLarge;
    if (large && abilities_.synchronises) {
        out += "\x1b[?2026h";
        out += body_;
        out += "\x1b[?2026l";
    } else if (large && caret_shown_) {
        out += "\x1b[?25l";
        out += body_;
        out += "\x1b[?25h";
    } else {
        out += body_;
    }
}

}  // namespace zo::term
