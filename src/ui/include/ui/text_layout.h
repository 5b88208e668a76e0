#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/wrap.h"
#include "cells/theme.h"

namespace zo::ui {

enum class Wrap : std::uint8_t {
    Plain,  // ragged right
    Even,   // breaks evened, for messages
    Kept,   // one row, which scrolls sideways
};

// Bytes [from, to) of a paragraph's text.
struct TextSpan {
    std::size_t from = 0;
    std::size_t to = 0;
    Role role = Role::Panel;
};
struct TextLink {
    std::size_t from = 0;
    std::size_t to = 0;
    std::string hint = {};
    std::function<void()> act = {};
};

struct Paragraph {
    std::string text = {};  // empty: an empty row
    Role role = Role::Panel;
    std::string label = {};  // before the first row; the rows after it are indented by its width
    Role label_role = Role::PanelDim;
    std::string right = {};  // at the right end of the first row
    Wrap wrap = Wrap::Plain;
    std::vector<TextSpan> spans = {};
    std::vector<TextLink> links = {};  // in the order of the text
};

// A place between characters.
struct TextPlace {
    std::size_t paragraph = 0;
    std::size_t byte = 0;
    auto operator<=>(const TextPlace&) const = default;
};

// Paragraphs, broken into rows of a width.
class TextLayout {
public:
    struct Row {
        std::size_t paragraph;
        base::LineRange at;  // of the paragraph's text
        bool first;          // of its paragraph
        int indent;          // cells before the text
    };

    void Set(std::vector<Paragraph> paragraphs);
    void Break(int width);  // cells; does nothing when the rows are of that width already

    const std::vector<Paragraph>& Paragraphs() const { return paragraphs_; }
    const Paragraph& ParagraphOf(const Row& row) const { return paragraphs_[row.paragraph]; }
    const std::vector<Row>& Rows() const { return rows_; }
    int RowCount() const { return static_cast<int>(rows_.size()); }
    int WidestKept() const { return widest_kept_; }  // cells

    int RowOf(const TextPlace& place) const;
    // The place nearest to this cell of a row, counted behind its indent.
    TextPlace PlaceAt(int row, int cell) const;
    TextPlace End() const;
    // The text between two places, with the breaks of the paragraphs and not those of the rows.
    std::string Text(const TextPlace& from, const TextPlace& to) const;

private:
    std::vector<Paragraph> paragraphs_;
    std::vector<Row> rows_;
    int width_ = 0;  // that rows_ were broken to; 0 when they must be broken again
    int widest_kept_ = 0;
};

}  // namespace zo::ui
