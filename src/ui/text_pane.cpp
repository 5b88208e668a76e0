#include "ui/text_pane.h"

#include <algorithm>

#include "base/utf.h"
#include "ui/key_grammar.h"
#include "ui/text_cells.h"

namespace zo::ui {
namespace {

constexpr int kSidewaysCells = 4;
constexpr int kFoundMargin = 2;  // rows kept in sight around a found word

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) { return Lower(c); });
    return lower;
}

}  // namespace

void TextPane::Set(std::vector<Paragraph> paragraphs, Place place) {
    layout_.Set(std::move(paragraphs));
    links_.clear();
    for (std::size_t k = 0; k < layout_.Paragraphs().size(); ++k) {
        std::size_t index = 0;
        for (const TextLink& link : layout_.Paragraphs()[k].links) {
            links_.push_back({{{k, link.from}, {k, link.to}}, index++});
        }
    }
    link_.reset();
    found_.clear();
    anchor_ = head_ = {};
    if (place == Place::Keep) return;
    scroll_.To(0);
    left_ = 0;
}

int TextPane::Find(std::string_view words) {
    found_.clear();
    found_at_ = 0;
    const std::string wanted = Lower(words);
    if (wanted.empty()) return 0;
    for (std::size_t k = 0; k < layout_.Paragraphs().size(); ++k) {
        const std::string text = Lower(layout_.Paragraphs()[k].text);
        for (std::size_t at = text.find(wanted); at != std::string::npos;
             at = text.find(wanted, at + wanted.size())) {
            found_.push_back({{k, at}, {k, at + wanted.size()}});
        }
    }
    return static_cast<int>(found_.size());
}

int TextPane::ShowFound(int step) {
    if (found_.empty()) return 0;
    const std::size_t count = found_.size();
    if (found_at_ == 0) {
        found_at_ = step > 0 ? 1 : count;
    } else {
        found_at_ = (found_at_ - 1 + (step > 0 ? 1 : count - 1)) % count + 1;
    }
    scroll_.Reveal(layout_.RowOf(found_[found_at_ - 1].from), kFoundMargin);
    return static_cast<int>(found_at_);
}

TextPane::Range TextPane::Selection() const {
    return {std::min(anchor_, head_), std::max(anchor_, head_)};
}

bool TextPane::Key(const KeyPress& key) {
    if (key.IsControl(U'a')) {
        anchor_ = {};
        head_ = layout_.End();
        return true;
    }
    if (key.IsControl(U'c')) {
        const Range selected = Selection();
        if (selected.from == selected.to || !copy) return false;
        copy(layout_.Text(selected.from, selected.to));
        return true;
    }
    if (LinkKey(key)) return true;
    if (const int step = StepOf(key); step != 0) return ScrollSideways(step * kSidewaysCells);
    return scroll_.Key(key);
}

bool TextPane::LinkKey(const KeyPress& key) {
    if (key.Is(Key::Up)) return StepLink(-1);
    if (key.Is(Key::Down)) return StepLink(1);
    if (!key.Is(Key::Enter) || !link_ || !IsInSight(*link_)) return false;
    const std::function<void()> act = Of(links_[*link_]).act;
    act();
    return true;
}

bool TextPane::IsInSight(std::size_t link) const {
    const int row = layout_.RowOf(links_[link].at.from);
    return row >= scroll_.Top() && row < scroll_.Top() + scroll_.Shown();
}

// To the next link in sight; none is chosen by going up that was not reached by going down.
bool TextPane::StepLink(int step) {
    const bool here = link_ && IsInSight(*link_);
    if (!here && step < 0) return false;
    const std::size_t count = links_.size();
    for (std::size_t k = here ? *link_ + static_cast<std::size_t>(step) : 0; k < count;
         k += static_cast<std::size_t>(step)) {
        if (!IsInSight(k)) {
            if (here) return false;
            continue;
        }
        link_ = k;
        return true;
    }
    return false;
}

bool TextPane::ScrollSideways(int by) {
    const int most = std::max(layout_.WidestKept() - area_.width, 0);
    const int to = std::clamp(left_ + by, 0, most);
    if (to == left_) return false;
    left_ = to;
    return true;
}

std::string_view TextPane::ChosenHint() const {
    return link_ && IsInSight(*link_) ? std::string_view(Of(links_[*link_]).hint)
                                      : std::string_view();
}

TextPlace TextPane::PlaceAt(Point at) const {
    const int row = scroll_.Top() + at.y - area_.y;
    if (row < 0 || row >= layout_.RowCount()) return layout_.PlaceAt(row, 0);
    const TextLayout::Row& found = layout_.Rows()[static_cast<std::size_t>(row)];
    const bool kept = layout_.ParagraphOf(found).wrap == Wrap::Kept;
    return layout_.PlaceAt(row, at.x - area_.x - found.indent + (kept ? left_ : 0));
}

void TextPane::SelectWord(const TextPlace& at) {
    const std::string& text = layout_.Paragraphs()[at.paragraph].text;
    const std::size_t before = at.byte == 0 ? std::string::npos : text.rfind(' ', at.byte - 1);
    anchor_ = {at.paragraph, before == std::string::npos ? 0 : before + 1};
    head_ = {at.paragraph, std::min(text.find(' ', at.byte), text.size())};
}

void TextPane::Press(const PointerPress& press) {
    if (layout_.Rows().empty()) return;
    const TextPlace at = PlaceAt(press.at);
    if (press.clicks == 2) {
        SelectWord(at);
    } else if (press.clicks == 3) {
        anchor_ = {at.paragraph, 0};
        head_ = {at.paragraph, layout_.Paragraphs()[at.paragraph].text.size()};
    } else {
        head_ = at;
        if (!press.with.shift) anchor_ = at;
    }
}

// Above and below the pane the text scrolls under the pointer.
void TextPane::Drag(Point to) {
    if (to.y < area_.y) scroll_.By(-1);
    if (to.y >= area_.Bottom()) scroll_.By(1);
    head_ = PlaceAt({to.x, std::clamp(to.y, area_.y, area_.Bottom() - 1)});
}

int TextPane::RowsIn(int width) {
    layout_.Break(std::min(width, kMeasure));
    return layout_.RowCount();
}

void TextPane::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused) {
    const Rect inner = pane.Inner();
    Draw(canvas, pressables, {inner.x + 1, inner.y, inner.width - 2, inner.height}, pane, focused);
}

void TextPane::Draw(Canvas& canvas, Pressables& pressables, const Rect& text, const Rect& pane,
                    bool focused) {
    if (text.Empty()) return;
    area_ = text;
    scroll_.Measure(RowsIn(text.width), text.height);
    Pressable& whole = pressables.Add(text);
    whole.press = [this](const PointerPress& press) { Press(press); };
    whole.drag = [this](Point to) { Drag(to); };
    const int end = std::min(scroll_.Top() + text.height, layout_.RowCount());
    for (int row = scroll_.Top(); row < end; ++row) {
        DrawRow(canvas, pressables, text.Row(row - scroll_.Top()),
                layout_.Rows()[static_cast<std::size_t>(row)], focused);
    }
    scroll_.Draw(canvas, pressables, pane);
    if (layout_.WidestKept() <= text.width) return;
    pressables.Add(text).wheel = [this](int steps, const Modifiers& with) {
        if (with.shift) {
            ScrollSideways(-steps * kSidewaysCells);
        } else {
            scroll_.Wheel(steps);
        }
    };
}

const TextLink& TextPane::Of(const Link& link) const {
    return layout_.Paragraphs()[link.at.from.paragraph].links[link.index];
}

const TextPane::Link* TextPane::LinkAt(const TextPlace& place) const {
    for (const Link& link : links_) {
        if (link.at.Holds(place)) return &link;
    }
    return nullptr;
}

// What claims a character, the strongest first.
Role TextPane::RoleAt(const TextPlace& place, const Link* link, bool focused) const {
    if (Selection().Holds(place)) return Role::EditSel;
    for (const Range& range : found_) {
        if (range.Holds(place)) return Role::Find;
    }
    if (link) return focused && link_ && link == &links_[*link_] ? Role::Sel : Role::Link;
    const Paragraph& paragraph = layout_.Paragraphs()[place.paragraph];
    for (const TextSpan& span : paragraph.spans) {
        if (span.from <= place.byte && place.byte < span.to) return span.role;
    }
    return paragraph.role;
}

void TextPane::DrawLabel(Canvas& canvas, const Rect& at, const TextLayout::Row& row) const {
    const Paragraph& paragraph = layout_.ParagraphOf(row);
    const bool selected = Selection().Holds({row.paragraph, 0});
    canvas.Text(at.x, at.y, paragraph.label, selected ? Role::EditSel : paragraph.label_role);
    canvas.TextRight(at.Right(), at.y, paragraph.right, paragraph.label_role);
}

void TextPane::DrawRow(Canvas& canvas, Pressables& pressables, const Rect& at,
                       const TextLayout::Row& row, bool focused) {
    if (row.first) DrawLabel(canvas, at, row);
    const Paragraph& paragraph = layout_.ParagraphOf(row);
    const Rect text = {at.x + row.indent, at.y, at.width - row.indent, 1};
    const Canvas::Clip clip(canvas, text);
    const int start = text.x - (paragraph.wrap == Wrap::Kept ? left_ : 0);
    int x = start;
    for (std::size_t byte = row.at.from; byte < row.at.to; ++x) {
        const TextPlace place = {row.paragraph, byte};
        const Link* link = LinkAt(place);
        canvas.Put(x, at.y, base::NextCodePoint(paragraph.text, byte), RoleAt(place, link, focused),
                   link ? Style::Underline : Style::Plain);
    }
    if (start < text.x && x > text.x) canvas.Put(text.x, at.y, U'«', Role::PanelDim);
    if (x > text.Right()) canvas.Put(text.Right() - 1, at.y, U'»', Role::PanelDim);
    AddLinks(pressables, row, start, text);
}

// The parts of links in a row whose characters begin at this column, as far as they are in sight.
void TextPane::AddLinks(Pressables& pressables, const TextLayout::Row& row, int start,
                        const Rect& sight) const {
    const std::string_view text = layout_.ParagraphOf(row).text;
    for (const Link& link : links_) {
        if (link.at.from.paragraph != row.paragraph) continue;
        const std::size_t from = std::max(link.at.from.byte, row.at.from);
        const std::size_t to = std::min(link.at.to.byte, row.at.to);
        if (from >= to) continue;
        const int x = start + Cells(text.substr(row.at.from, from - row.at.from));
        const Rect area = {x, sight.y, Cells(text.substr(from, to - from)), 1};
        pressables.Add(Intersect(area, sight), Of(link).hint).act = Of(link).act;
    }
}

}  // namespace zo::ui
