#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/scroll.h"
#include "ui/surface.h"

namespace zo::ui {

enum class Align : std::uint8_t { Left, Right };

// A column of a table. The names are constants.
struct Column {
    std::string_view head = {};
    int cells = 0;  // 0: what the others leave
    Align align = Align::Left;
    int gap = 2;  // blanks behind it
};

struct ListCell {
    std::string text = {};
    std::optional<Role> role = {};  // while its row is not chosen; else the row's own
};

enum class RowKind : std::uint8_t {
    Plain,
    Locked,   // dim, and marked ■
    Heading,  // of the rows below it; cannot be chosen
};

struct ListRow {
    std::vector<ListCell> cells;
    RowKind kind = RowKind::Plain;
    ListCell mark = {};     // one sign before the text, where the list has marks
    std::string hint = {};  // without one a row whose text was cut shows it whole
};

struct ListForm {
    std::vector<Column> columns = {{}};  // with heads the list is a table
    bool marks = false;
    int indent = 2;  // cells before the text of a list without marks, the pointer among them
    Surface surface = kOnPanel;
    std::string_view empty = "none";  // stands where there are no rows
};

// Rows of which one is chosen: a list or a table. What does not fit its column ends in the more
// mark.
class List {
public:
    explicit List(ListForm form = {}) : form_(std::move(form)) {}

    // Keeps the number of the chosen row where there is one of that number, and brings it into
    // sight: to be called when the rows change, not with each frame.
    void Set(std::vector<ListRow> rows);
    void SetColumns(std::vector<Column> columns) { form_.columns = std::move(columns); }
    int Count() const { return static_cast<int>(rows_.size()); }
    int Chosen() const { return chosen_; }
    // The nearest row that can be chosen, at or behind this one if there is one.
    void Choose(int index);

    std::function<void()> chosen;  // another row was chosen, by key or pointer
    std::function<void()> open;    // Enter on the chosen row, or a double click on any

    // Up, Down, Home, End, PgUp, PgDn, which stop at the ends; Enter; any other letter goes to the
    // next row that starts with it.
    bool Key(const KeyPress& key);
    // Inside a pane whose frame is drawn already; the scrollbar goes into its right side. The
    // header takes the first row.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused);
    // The same where the rows do not fill the pane.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& rows, const Rect& pane,
              bool focused);
    // For the right end of the status line while the list has focus.
    std::string_view ChosenHint() const;

private:
    struct Place {
        int x;
        int cells;
    };

    bool IsTable() const;
    bool CanChoose(int index) const;
    int Nearest(int index, int direction) const;  // -1 when no row can be chosen
    void MoveTo(int index, int direction);
    void JumpTo(char32_t letter);
    void Press(const PointerPress& press);

    void PlaceColumns(const Rect& row);
    void DrawHead(Canvas& canvas, const Rect& row) const;
    void DrawHeading(Canvas& canvas, const Rect& at, const ListRow& row) const;
    void DrawRow(Canvas& canvas, Pressables& pressables, const Rect& row, int index, bool focused);
    // Whether it fits.
    static bool DrawCell(Canvas& canvas, const Place& place, int y, const Column& column,
                         std::string_view text, Role role);

    ListForm form_;
    std::vector<ListRow> rows_;
    std::vector<std::string> cut_;  // of each row: the first text that was cut
    std::vector<Place> places_;     // of the columns, as drawn last
    int chosen_ = 0;
    bool reveal_ = true;  // the chosen row must come into sight with the next frame
    Rect area_;           // of the rows, as drawn last
    Scroll scroll_;
};

}  // namespace zo::ui
