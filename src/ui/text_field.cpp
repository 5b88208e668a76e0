#include "ui/text_field.h"

#include <algorithm>

#include "base/utf.h"

namespace zo::ui {
namespace {

constexpr char32_t kUnused = U'_';
constexpr char32_t kFirstPrintable = U' ';

}  // namespace

void TextField::SetText(std::string_view utf8) {
    text_ = base::ToUtf32(utf8);
    caret_ = text_.size();
    left_ = 0;
}

std::string TextField::Text() const {
    return base::ToUtf8(text_);
}

std::size_t TextField::WordBefore() const {
    std::size_t at = caret_;
    while (at > 0 && text_[at - 1] == U' ') --at;
    while (at > 0 && text_[at - 1] != U' ') --at;
    return at;
}

std::size_t TextField::WordAfter() const {
    std::size_t at = caret_;
    while (at < text_.size() && text_[at] != U' ') ++at;
    while (at < text_.size() && text_[at] == U' ') ++at;
    return at;
}

bool TextField::Key(const KeyPress& key) {
    if (key.with.alt || key.with.shift) return false;
    const std::size_t before = caret_ == 0 ? 0 : key.with.control ? WordBefore() : caret_ - 1;
    const std::size_t after = key.with.control ? WordAfter() : std::min(caret_ + 1, text_.size());
    switch (key.key) {
        case Key::Left:
            caret_ = before;
            return true;
        case Key::Right:
            caret_ = after;
            return true;
        case Key::Home:
            caret_ = 0;
            return true;
        case Key::End:
            caret_ = text_.size();
            return true;
        case Key::Backspace:
            Erase(before, caret_);
            return true;
        case Key::Delete:
            Erase(caret_, after);
            return true;
        default:
            return false;
    }
}

void TextField::Erase(std::size_t from, std::size_t to) {
    if (from == to) return;
    text_.erase(from, to - from);
    caret_ = from;
    if (changed) changed();
}

bool TextField::Type(std::string_view utf8) {
    std::u32string typed;
    for (const char32_t c : base::ToUtf32(utf8.substr(0, utf8.find('\n')))) {
        if (c >= kFirstPrintable) typed += c;
    }
    if (typed.empty()) return false;
    text_.insert(caret_, typed);
    caret_ += typed.size();
    if (changed) changed();
    return true;
}

// Keeps the caret in sight, and off the cells that say that there is more.
void TextField::Follow() {
    const std::size_t cells = static_cast<std::size_t>(std::max(row_.width, 3));
    if (caret_ <= left_) left_ = caret_ == 0 ? 0 : caret_ - 1;
    if (caret_ + 2 > left_ + cells) left_ = caret_ + 2 - cells;
    const std::size_t most = text_.size() + 1 - std::min(cells, text_.size() + 1);
    left_ = std::min(left_, most);
}

void TextField::Draw(Canvas& canvas, Pressables& pressables, const Rect& row, bool focused) {
    row_ = row;
    Follow();
    canvas.Fill(row, kUnused, Role::Field);
    const std::size_t end = std::min(text_.size(), left_ + static_cast<std::size_t>(row.width));
    for (std::size_t at = left_; at < end; ++at) {
        canvas.Put(row.x + static_cast<int>(at - left_), row.y, text_[at], Role::Field);
    }
    if (left_ > 0) canvas.Put(row.x, row.y, U'«', Role::Field);
    if (end < text_.size()) canvas.Put(row.Right() - 1, row.y, U'»', Role::Field);
    if (focused) {
        canvas.SetCaret(
            row.x + static_cast<int>(caret_ - left_), row.y,
            canvas.CurrentLook() == Look::Modern ? CaretShape::Bar : CaretShape::LowerThird);
    }
    pressables.Add(row).press = [this](const PointerPress& press) {
        caret_ = std::min(left_ + static_cast<std::size_t>(press.at.x - row_.x), text_.size());
    };
}

}  // namespace zo::ui
