#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/scroll.h"

namespace zo::ui {

// One paragraph of a text pane, wrapped to the pane's width.
struct Paragraph {
    std::string text = {};  // empty: an empty row
    Role role = Role::Panel;
    std::string label = {};  // before the first row; the rows after it are indented by its width
    Role label_role = Role::PanelDim;
    std::string right = {};  // at the right end of the first row
    std::string hint = {};
    std::function<void()> act = {};  // a link: underlined, pressed by pointer or Enter
};

// Text that wraps and scrolls: ticket prose, hints, notes, pages. Plain wrap, at most 84 columns
// however wide the pane.
class TextPane {
public:
    static constexpr int kMeasure = 84;

    // Keeps the place in the text when `keep_place` is set.
    enum class Place : std::uint8_t { FromTop, Keep };
    void Set(std::vector<Paragraph> paragraphs, Place place = Place::FromTop);

    // The pane's frame is drawn already; the text goes inside it with a blank on each side, the
    // scrollbar into its right side.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& pane);
    bool Key(const KeyPress& key) { return scroll_.Key(key); }
    Scroll& View() { return scroll_; }

private:
    struct Row {
        std::size_t paragraph;
        bool first;  // of its paragraph
        std::string text;
    };
    void Layout(int width);
    void DrawRow(Canvas& canvas, Pressables& pressables, const Rect& at, const Row& row);

    std::vector<Paragraph> paragraphs_;
    std::vector<Row> rows_;
    int width_ = -1;  // that rows_ were wrapped to; -1 when they must be wrapped again
    Scroll scroll_;
};

}  // namespace zo::ui
