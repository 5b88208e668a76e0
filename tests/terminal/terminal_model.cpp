#include "terminal_model.h"

#include <algorithm>
#include <utility>

#include "base/format.h"
#include "base/utf.h"

namespace fake {
namespace {

using zo::term::Charset;
using zo::term::Depth;
using zo::term::Pen;
using zo::term::Repeats;

constexpr Pen kPlain = {77, 77, false};  // the terminal's own colours, which no theme has

}  // namespace

TerminalModel::TerminalModel(int columns, int rows, const zo::term::Abilities& abilities)
    : columns_(columns),
      rows_(rows),
      abilities_(abilities),
      cells_(static_cast<std::size_t>(columns * rows)) {}

const TerminalModel::Cell& TerminalModel::At(int x, int y) const {
    return cells_[static_cast<std::size_t>(y * columns_ + x)];
}

void TerminalModel::Fault(std::string_view what) {
    faults_ += std::string(what) + "\n";
}

void TerminalModel::Read(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if (byte == 0x1B) {
            at += Sequence(bytes.substr(at));
        } else if (byte == '\r') {
            x_ = 0;
            behind_ = false;
            ++at;
        } else if (byte == '\n') {
            if (y_ + 1 >= rows_) Fault("a line feed scrolls");
            y_ = std::min(y_ + 1, rows_ - 1);
            ++at;
        } else if (byte < 0x20) {
            Fault(base::Format("byte %d", byte));
            ++at;
        } else {
            Print(base::NextCodePoint(bytes, at));
        }
    }
    if (held_back_) Fault("the picture is never shown");
}

void TerminalModel::Print(char32_t glyph) {
    if (behind_) Fault("a character behind the last column");
    if (glyph >= 0x80 && abilities_.charset == Charset::Ascii) Fault("not ASCII");
    last_ = glyph;
    cells_[static_cast<std::size_t>(y_ * columns_ + x_)] = {glyph, pen_};
    behind_ = x_ + 1 == columns_;
    if (!behind_) ++x_;
}

std::size_t TerminalModel::Sequence(std::string_view bytes) {
    std::size_t at = 2;
    if (bytes.size() < 3 || bytes[1] != '[') {
        Fault("not a control sequence");
        return 1;
    }
    std::string prefix;
    if (bytes[at] == '?') prefix = bytes[at++];
    std::vector<int> numbers;
    for (; at < bytes.size() && (bytes[at] == ';' || (bytes[at] >= '0' && bytes[at] <= '9'));
         ++at) {
        if (numbers.empty()) numbers.push_back(0);
        if (bytes[at] == ';') {
            numbers.push_back(0);
        } else {
            numbers.back() = numbers.back() * 10 + bytes[at] - '0';
        }
    }
    if (at < bytes.size() && bytes[at] == ' ') prefix += bytes[at++];
    if (at == bytes.size()) {
        Fault("a sequence is cut off");
        return bytes.size();
    }
    Control(bytes[at], prefix, numbers);
    return at + 1;
}

void TerminalModel::Control(char last, std::string_view prefix, const std::vector<int>& numbers) {
    const auto number = [&](std::size_t k) { return k < numbers.size() ? numbers[k] : 1; };
    if (prefix == "?" && (last == 'h' || last == 'l')) return SetMode(number(0), last == 'h');
    if (prefix == " " && last == 'q') {
        shape_ = number(0);
        return;
    }
    const bool was_behind = std::exchange(behind_, behind_ && (last == 'm' || last == 'b'));
    switch (prefix.empty() ? last : '?') {
        case 'm':
            return TakePen(numbers);
        case 'J':
            return Clear();
        case 'H':
            x_ = number(1) - 1;
            y_ = number(0) - 1;
            break;
        case 'B':
            y_ += number(0);
            break;
        case 'C':
            x_ += number(0);
            break;
        case 'D':
            x_ -= number(0);
            break;
        case 'b':
            if (abilities_.repeats < (last_ < 0x80 ? Repeats::Letters : Repeats::Everything)) {
                Fault("a character cannot be printed again");
            }
            for (int k = number(0); k > 0; --k) Print(last_);
            return;
        default:
            Fault(base::Format("sequence %c", last));
            return;
    }
    if (was_behind && last != 'H') Fault("a move from behind the last column");
    if (x_ < 0 || x_ >= columns_ || y_ < 0 || y_ >= rows_) {
        Fault("a move out of the terminal");
        x_ = y_ = 0;
    }
}

void TerminalModel::SetMode(int mode, bool on) {
    if (mode == 25) {
        cursor_on_ = on;
    } else if (mode == 2026 && abilities_.synchronises && held_back_ != on) {
        held_back_ = on;
    } else {
        Fault(base::Format("mode %d", mode));
    }
}

void TerminalModel::Clear() {
    for (Cell& cell : cells_) cell = {U' ', pen_};
}

void TerminalModel::TakePen(const std::vector<int>& numbers) {
    if (numbers.empty()) pen_ = kPlain;
    for (std::size_t k = 0; k < numbers.size(); ++k) {
        const int n = numbers[k];
        const auto next = [&] { return static_cast<zo::term::Colour>(numbers.at(++k)); };
        if (n == 4 || n == 24) {
            pen_.underline = n == 4;
        } else if (n == 38 || n == 48) {
            const zo::term::Colour kind = next();
            zo::term::Colour colour = next();
            if (kind == 2) {
                colour = colour << 16 | next() << 8;
                colour |= next();
            }
            const Depth depth = kind == 2 ? Depth::Direct : Depth::Palette;
            if (depth != abilities_.depth) Fault("a colour of another kind");
            (n == 38 ? pen_.ink : pen_.ground) = colour;
        } else if ((n >= 30 && n < 38) || (n >= 90 && n < 98)) {
            pen_.ink = static_cast<zo::term::Colour>(n < 90 ? n - 30 : n - 82);
        } else if ((n >= 40 && n < 48) || (n >= 100 && n < 108)) {
            pen_.ground = static_cast<zo::term::Colour>(n < 100 ? n - 40 : n - 92);
        } else {
            Fault(base::Format("pen %d", n));
        }
    }
}

std::string TerminalModel::Row(int y) const {
    std::string row;
    for (int x = 0; x < columns_; ++x) base::AppendUtf8(row, At(x, y).glyph);
    return row;
}

std::string TerminalModel::Differences(const zo::ui::Frame& frame) const {
    constexpr int kMost = 5;
    std::string text;
    int count = 0;
    for (int y = 0; y < std::min(rows_, frame.grid.rows); ++y) {
        for (int x = 0; x < std::min(columns_, frame.grid.columns); ++x) {
            const Pen pen = zo::term::PenOf(frame.At(x, y), abilities_.depth);
            const char32_t glyph = zo::term::OneColumn(frame.At(x, y).glyph, abilities_.charset);
            const Cell& cell = At(x, y);
            const bool blank = glyph == U' ' && !pen.underline && !cell.pen.underline;
            const bool equal =
                cell.glyph == glyph && cell.pen.ground == pen.ground && (blank || cell.pen == pen);
            if (!equal && ++count <= kMost) {
                text +=
                    base::Format("%d,%d is %x %x/%x, not %x %x/%x\n", x, y,
                                 static_cast<unsigned>(cell.glyph), cell.pen.ink, cell.pen.ground,
                                 static_cast<unsigned>(glyph), pen.ink, pen.ground);
            }
        }
    }
    const zo::ui::Caret& caret = frame.caret;
    const bool shown = caret.shape != zo::ui::CaretShape::None && caret.x >= 0 && caret.y >= 0 &&
                       caret.x < columns_ && caret.y < rows_;
    if (shown != cursor_on_) text += "the cursor is on or off\n";
    if (!shown) return text;
    constexpr int kShapes[] = {0, 2, 4, 6};
    if (x_ != caret.x || y_ != caret.y || behind_) text += "the cursor is elsewhere\n";
    if (shape_ != kShapes[static_cast<int>(caret.shape)]) text += "the cursor's shape\n";
    return text;
}

}  // namespace fake
