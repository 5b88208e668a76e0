#include "ui/text_layout.h"

#include <algorithm>

#include "base/utf.h"
#include "ui/text_cells.h"

namespace zo::ui {
namespace {

// The text with no blanks inside links that fit into a row, for these are kept in one piece. All
// bytes stay in their places.
std::string Unbroken(const Paragraph& paragraph, int width) {
    std::string text = paragraph.text;
    for (const TextLink& link : paragraph.links) {
        const std::string_view words =
            std::string_view(text).substr(link.from, link.to - link.from);
        if (Cells(words) > width) continue;
        std::replace(text.begin() + static_cast<std::ptrdiff_t>(link.from),
                     text.begin() + static_cast<std::ptrdiff_t>(link.to), ' ', '_');
    }
    return text;
}

std::vector<base::LineRange> Lines(const Paragraph& paragraph, int width) {
    switch (paragraph.wrap) {
        case Wrap::Plain:
            return base::BreakPlain(Unbroken(paragraph, width), width);
        case Wrap::Even:
            return base::BreakEven(Unbroken(paragraph, width), width);
        default:
            return {{0, paragraph.text.size()}};
    }
}

}  // namespace

void TextLayout::Set(std::vector<Paragraph> paragraphs) {
    paragraphs_ = std::move(paragraphs);
    width_ = 0;
}

void TextLayout::Break(int width) {
    width = std::max(width, 1);
    if (width == width_) return;
    width_ = width;
    widest_kept_ = 0;
    rows_.clear();
    for (std::size_t k = 0; k < paragraphs_.size(); ++k) {
        const Paragraph& paragraph = paragraphs_[k];
        const int indent = Cells(paragraph.label);
        bool first = true;
        for (const base::LineRange& line : Lines(paragraph, std::max(width - indent, 1))) {
            rows_.push_back({k, line, first, indent});
            first = false;
        }
        if (paragraph.wrap == Wrap::Kept) {
            widest_kept_ = std::max(widest_kept_, indent + Cells(paragraph.text));
        }
    }
}

int TextLayout::RowOf(const TextPlace& place) const {
    const auto after = std::ranges::upper_bound(rows_, place, {}, [](const Row& row) {
        return TextPlace{row.paragraph, row.at.from};
    });
    return std::max(static_cast<int>(after - rows_.begin()) - 1, 0);
}

TextPlace TextLayout::PlaceAt(int row, int cell) const {
    if (rows_.empty() || row < 0) return {};
    if (row >= RowCount()) return End();
    const Row& at = rows_[static_cast<std::size_t>(row)];
    const std::string& text = ParagraphOf(at).text;
    std::size_t byte = at.at.from;
    while (cell-- > 0 && byte < at.at.to) base::NextCodePoint(text, byte);
    return {at.paragraph, byte};
}

TextPlace TextLayout::End() const {
    if (paragraphs_.empty()) return {};
    return {paragraphs_.size() - 1, paragraphs_.back().text.size()};
}

std::string TextLayout::Text(const TextPlace& from, const TextPlace& to) const {
    std::string text;
    for (std::size_t k = from.paragraph; k <= to.paragraph && k < paragraphs_.size(); ++k) {
        const Paragraph& paragraph = paragraphs_[k];
        const std::size_t begin = k == from.paragraph ? from.byte : 0;
        const std::size_t end = k == to.paragraph ? to.byte : paragraph.text.size();
        if (k > from.paragraph) text += '\n';
        if (begin == 0) text += paragraph.label;
        text += paragraph.text.substr(begin, end - begin);
    }
    return text;
}

}  // namespace zo::ui
