#include "text.h"

#include <algorithm>
#include <cstdio>

#include "base/utf.h"

namespace lc1 {
namespace {

constexpr std::string_view kGap = "  ";

// The escape sequences of ECMA-48, in the order of Ink.
constexpr std::string_view kInkOn[] = {"", "\x1b[32m", "\x1b[31m", "\x1b[2m"};
constexpr std::string_view kInkOff = "\x1b[0m";

// A row as it is printed: padded cells, without blanks at its end.
class RowText {
public:
    explicit RowText(bool colour) : colour_(colour) {}

    void Add(std::string_view cell, std::size_t width, TextTable::Align align, Ink ink) {
        if (!first_) pending_ += kGap;
        first_ = false;
        const std::string blanks(width - std::min(width, base::CodePoints(cell)), ' ');
        if (align == TextTable::Align::Right) pending_ += blanks;
        if (!cell.empty()) {
            text_ += pending_;
            text_ += Inked(cell, ink, colour_);
            pending_.clear();
        }
        if (align == TextTable::Align::Left) pending_ += blanks;
    }

    const std::string& Text() const { return text_; }

private:
    bool colour_;
    bool first_ = true;
    std::string text_;
    std::string pending_;  // blanks that stand only before more text
};

}  // namespace

std::string Inked(std::string_view text, Ink ink, bool colour) {
    if (!colour || ink == Ink::Plain) return std::string(text);
    std::string inked(kInkOn[static_cast<std::size_t>(ink)]);
    inked += text;
    inked += kInkOff;
    return inked;
}

void PutLine(std::string_view text) {
    if (!text.empty()) std::fwrite(text.data(), 1, text.size(), stdout);
    std::putchar('\n');
}

void TextTable::Add(std::vector<std::string> cells, Ink ink) {
    rows_.push_back({std::move(cells), ink});
}

std::vector<std::size_t> TextTable::Widths() const {
    std::vector<std::size_t> widths(columns_.size(), 0);
    for (const Row& row : rows_) {
        for (std::size_t k = 0; k < widths.size(); ++k) {
            widths[k] = std::max(widths[k], base::CodePoints(row.cells[k]));
        }
    }
    for (std::size_t k = 0; k < widths.size(); ++k) {
        if (widths[k] > 0) widths[k] = std::max(widths[k], columns_[k].title.size());
    }
    return widths;
}

void TextTable::Print(bool colour) const {
    const std::vector<std::size_t> widths = Widths();
    RowText head(colour);
    for (std::size_t k = 0; k < columns_.size(); ++k) {
        if (widths[k] > 0) head.Add(columns_[k].title, widths[k], columns_[k].align, Ink::Dim);
    }
    if (!head.Text().empty()) PutLine(head.Text());
    for (const Row& row : rows_) {
        RowText line(colour);
        for (std::size_t k = 0; k < columns_.size(); ++k) {
            if (widths[k] == 0) continue;
            const Ink ink = k == 0 ? row.ink : Ink::Plain;
            line.Add(row.cells[k], widths[k], columns_[k].align, ink);
        }
        PutLine(line.Text());
    }
}

}  // namespace lc1
