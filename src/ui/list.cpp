#include "ui/list.h"

#include <algorithm>

#include "ui/key_grammar.h"
#include "ui/text_cells.h"

namespace zo::ui {
namespace {

constexpr int kMargin = 1;     // rows kept in sight around the chosen one
constexpr int kMarkCells = 3;  // pointer, mark, blank
constexpr int kHeadingAt = 1;

RowState StateOf(bool chosen, bool focused) {
    if (!chosen) return RowState::Plain;
    return focused ? RowState::Chosen : RowState::ChosenWithoutFocus;
}

}  // namespace

void List::Set(std::vector<ListRow> rows) {
    rows_ = std::move(rows);
    cut_.assign(rows_.size(), {});
    Choose(chosen_);
}

bool List::CanChoose(int index) const {
    return rows_[static_cast<std::size_t>(index)].kind != RowKind::Heading;
}

int List::Nearest(int index, int direction) const {
    for (const int step : {direction, -direction}) {
        for (int at = index; at >= 0 && at < Count(); at += step) {
            if (CanChoose(at)) return at;
        }
    }
    return -1;
}

void List::Choose(int index) {
    reveal_ = true;
    chosen_ = std::max(Nearest(std::clamp(index, 0, std::max(Count() - 1, 0)), 1), 0);
}

void List::MoveTo(int index, int direction) {
    const int before = chosen_;
    const int to = Nearest(std::clamp(index, 0, std::max(Count() - 1, 0)), direction);
    if (to >= 0) chosen_ = to;
    reveal_ = true;
    if (chosen_ != before && chosen) chosen();
}

void List::JumpTo(char32_t letter) {
    for (int step = 1; step <= Count(); ++step) {
        const int index = (chosen_ + step) % Count();
        const ListRow& row = rows_[static_cast<std::size_t>(index)];
        if (!CanChoose(index) || row.cells.empty()) continue;
        if (FirstLetter(row.cells.front().text) != letter) continue;
        MoveTo(index, 1);
        return;
    }
}

bool List::Key(const KeyPress& key) {
    if (key.with != Modifiers{}) return false;
    const int page = std::max(scroll_.Shown() - 1, 1);
    switch (key.key) {
        case Key::Up:
            MoveTo(chosen_ - 1, -1);
            return true;
        case Key::Down:
            MoveTo(chosen_ + 1, 1);
            return true;
        case Key::PageUp:
            MoveTo(chosen_ - page, -1);
            return true;
        case Key::PageDown:
            MoveTo(chosen_ + page, 1);
            return true;
        case Key::Home:
            MoveTo(0, 1);
            return true;
        case Key::End:
            MoveTo(Count() - 1, -1);
            return true;
        case Key::Enter:
            if (open && Count() > 0) open();
            return bool(open);
        case Key::Character:
            JumpTo(key.character);
            return true;
        default:
            return false;
    }
}

void List::Press(const PointerPress& press) {
    const int index = scroll_.Top() + press.at.y - area_.y;
    if (index >= Count() || !CanChoose(index)) return;
    MoveTo(index, 1);
    if (press.clicks == 2 && open) open();
}

std::string_view List::ChosenHint() const {
    if (rows_.empty()) return {};
    const std::size_t index = static_cast<std::size_t>(chosen_);
    return rows_[index].hint.empty() ? cut_[index] : rows_[index].hint;
}

bool List::IsTable() const {
    return std::ranges::any_of(form_.columns, [](const Column& c) { return !c.head.empty(); });
}

// Columns without a width of their own share what the others leave.
void List::PlaceColumns(const Rect& row) {
    int rest = row.width;
    int open_columns = 0;
    for (const Column& column : form_.columns) {
        rest -= column.cells;
        if (&column != &form_.columns.back()) rest -= column.gap;
        if (column.cells == 0) ++open_columns;
    }
    places_.clear();
    int x = row.x;
    for (const Column& column : form_.columns) {
        const int cells = column.cells > 0 ? column.cells : std::max(rest / open_columns, 0);
        places_.push_back({x, std::min(cells, std::max(row.Right() - x, 0))});
        x += cells + column.gap;
    }
}

bool List::DrawCell(Canvas& canvas, const Place& place, int y, const Column& column,
                    std::string_view text, Role role) {
    const int cells = Cells(text);
    const int shift = column.align == Align::Right ? std::max(place.cells - cells, 0) : 0;
    return canvas.Field({place.x + shift, y, std::min(cells, place.cells), 1}, text, role);
}

void List::DrawHead(Canvas& canvas, const Rect& row) const {
    for (std::size_t k = 0; k < places_.size(); ++k) {
        DrawCell(canvas, places_[k], row.y, form_.columns[k], form_.columns[k].head,
                 form_.surface.dim);
    }
}

void List::DrawHeading(Canvas& canvas, const Rect& at, const ListRow& row) const {
    if (row.cells.empty()) return;
    canvas.Field({at.x + kHeadingAt, at.y, at.width - kHeadingAt - 1, 1}, row.cells.front().text,
                 form_.surface.dim);
}

void List::DrawRow(Canvas& canvas, Pressables& pressables, const Rect& at, int index,
                   bool focused) {
    const ListRow& row = rows_[static_cast<std::size_t>(index)];
    std::string& cut = cut_[static_cast<std::size_t>(index)];
    cut.clear();
    if (row.kind == RowKind::Heading) return DrawHeading(canvas, at, row);
    const bool is_chosen = index == chosen_;
    const Surface& surface = RowSurface(StateOf(is_chosen, focused), form_.surface);
    const bool locked = row.kind == RowKind::Locked;
    const Role own = locked ? surface.dim : surface.text;
    const auto role_of = [&](const ListCell& cell) {
        return is_chosen || locked ? own : cell.role.value_or(own);
    };
    canvas.Fill(at, U' ', own);
    if (is_chosen) canvas.Put(at.x, at.y, U'►', own);
    if (form_.marks) {
        canvas.Text(at.x + 1, at.y, locked ? "■" : std::string_view(row.mark.text),
                    role_of(row.mark));
    }
    for (std::size_t k = 0; k < std::min(row.cells.size(), places_.size()); ++k) {
        const ListCell& cell = row.cells[k];
        const bool fits =
            DrawCell(canvas, places_[k], at.y, form_.columns[k], cell.text, role_of(cell));
        if (!fits && cut.empty()) cut = cell.text;
    }
    pressables.Add(at, row.hint.empty() ? cut : row.hint);
}

void List::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused) {
    Draw(canvas, pressables, pane.Inner(), pane, focused);
}

void List::Draw(Canvas& canvas, Pressables& pressables, const Rect& rows, const Rect& pane,
                bool focused) {
    area_ = rows;
    const int text = rows.x + (form_.marks ? kMarkCells : form_.indent);
    PlaceColumns({text, rows.y, rows.Right() - 1 - text, 1});
    if (IsTable()) {
        DrawHead(canvas, rows.Row(0));
        area_ = {rows.x, rows.y + 1, rows.width, rows.height - 1};
    }
    if (rows_.empty()) {
        canvas.Field({text, area_.y, rows.Right() - 1 - text, 1}, form_.empty, form_.surface.dim);
        return;
    }
    scroll_.Measure(Count(), area_.height);
    if (reveal_) scroll_.Reveal(chosen_, kMargin);
    reveal_ = false;
    pressables.Add(area_).press = [this](const PointerPress& press) { Press(press); };
    const int end = std::min(scroll_.Top() + area_.height, Count());
    for (int index = scroll_.Top(); index < end; ++index) {
        DrawRow(canvas, pressables, area_.Row(index - scroll_.Top()), index, focused);
    }
    scroll_.Draw(canvas, pressables, pane);
}

}  // namespace zo::ui
