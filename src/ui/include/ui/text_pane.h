#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/scroll.h"
#include "ui/text_layout.h"

namespace zo::ui {

// Text to read: ticket prose, hints, notes, pages. It wraps, scrolls, is selected and copied, and
// holds links. It wraps at 84 columns at most, however wide the pane.
class TextPane {
public:
    static constexpr int kMeasure = 84;

    enum class Place : std::uint8_t { FromTop, Keep };
    void Set(std::vector<Paragraph> paragraphs, Place place = Place::FromTop);
    std::function<void(const std::string& utf8)> copy;  // into the clipboard
    // Marks these words, in either case, wherever they stand; empty for none. Returns how many.
    int Find(std::string_view words);
    // Brings the next (1) or the previous (-1) of the found words into sight; its number, from 1.
    int ShowFound(int step);

    // Up and Down step through the links in sight and scroll; Left and Right scroll lines that do
    // not wrap; PgUp, PgDn, Home, End; Enter opens the chosen link; Ctrl+A and Ctrl+C.
    bool Key(const KeyPress& key);
    // The part of it that steps through the links and opens them.
    bool LinkKey(const KeyPress& key);
    Scroll& View() { return scroll_; }
    std::string_view ChosenHint() const;  // of the chosen link

    // The rows that the text takes in this width.
    int RowsIn(int width);
    // The pane's frame is drawn already; the text goes inside it with a blank on each side, the
    // scrollbar into its right side.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused = false);
    // The same where the text does not fill the pane.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& text, const Rect& pane,
              bool focused);

private:
    struct Range {
        TextPlace from;
        TextPlace to;
        bool Holds(const TextPlace& place) const { return from <= place && place < to; }
    };
    struct Link {
        Range at;
        std::size_t index;  // among the links of its paragraph
    };

    Range Selection() const;
    void SelectWord(const TextPlace& at);
    void Press(const PointerPress& press);
    void Drag(Point to);
    TextPlace PlaceAt(Point at) const;

    bool IsInSight(std::size_t link) const;
    bool StepLink(int step);
    bool ScrollSideways(int by);

    void DrawLabel(Canvas& canvas, const Rect& at, const TextLayout::Row& row) const;
    void DrawRow(Canvas& canvas, Pressables& pressables, const Rect& at, const TextLayout::Row& row,
                 bool focused);
    void AddLinks(Pressables& pressables, const TextLayout::Row& row, int start,
                  const Rect& sight) const;
    const TextLink& Of(const Link& link) const;
    const Link* LinkAt(const TextPlace& place) const;
    Role RoleAt(const TextPlace& place, const Link* link, bool focused) const;

    TextLayout layout_;
    std::vector<Link> links_;
    std::optional<std::size_t> link_;  // the chosen one
    std::vector<Range> found_;
    std::size_t found_at_ = 0;
    TextPlace anchor_;  // the selection lies between these two
    TextPlace head_;
    Rect area_;     // of the text, as drawn last
    int left_ = 0;  // the first cell in sight of lines that do not wrap
    Scroll scroll_;
};

}  // namespace zo::ui
