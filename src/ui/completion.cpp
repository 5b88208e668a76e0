#include "ui/completion.h"

#include <algorithm>

#include "ui/text_cells.h"

namespace zo::ui {
namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool BeginsWith(std::string_view text, std::string_view word) {
    return text.size() >= word.size() &&
           std::equal(word.begin(), word.end(), text.begin(),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

constexpr int kBetween = 3;  // cells between an item and its detail

}  // namespace

void Completion::Offer(std::vector<CompletionItem> items, std::string_view word, bool asked) {
    std::erase_if(items, [&](const CompletionItem& item) { return !BeginsWith(item.text, word); });
    const bool typed_already = std::ranges::any_of(
        items, [&](const CompletionItem& item) { return item.text.size() == word.size(); });
    items_ = std::move(items);
    if (typed_already && !asked) items_.clear();
    chosen_ = top_ = 0;
}

void Completion::Move(int by) {
    const int count = static_cast<int>(items_.size());
    chosen_ = static_cast<std::size_t>((static_cast<int>(chosen_) + by + count) % count);
    const std::size_t rows = kMostRows;
    top_ = std::clamp(top_, chosen_ + 1 - std::min(chosen_ + 1, rows), chosen_);
}

void Completion::Draw(Canvas& canvas, Pressables& pressables, const Rect& room, Point word,
                      const std::function<void()>& accept) {
    int texts = 0, details = 0;
    for (const CompletionItem& item : items_) {
        texts = std::max(texts, Cells(item.text));
        details = std::max(details, Cells(item.detail));
    }
    const int count = static_cast<int>(items_.size());
    const int below = room.Bottom() - word.y - 1;
    const int above = word.y - room.y;
    const int wanted = std::min(count, kMostRows) + 2;
    const bool under = below >= wanted || below >= above;
    const int height = std::min(wanted, under ? below : above);
    const int width = std::min(2 + 1 + texts + kBetween + details + 1, room.width);
    if (height < 3) return;
    const int x = std::clamp(word.x - 2, room.x, room.Right() - width);
    const Rect box = {x, under ? word.y + 1 : word.y - height, width, height};
    canvas.Fill(box, U' ', Role::Dialog);
    pressables.Add(box);
    canvas.Box(box, Lines::Single, Role::DialogFrame);
    const std::size_t rows = static_cast<std::size_t>(height - 2);
    const std::size_t top = std::max(top_, chosen_ + 1 - std::min(chosen_ + 1, rows));
    for (std::size_t k = 0; k < rows && top + k < items_.size(); ++k) {
        const CompletionItem& item = items_[top + k];
        const bool chosen = top + k == chosen_;
        const Rect row = box.Inner().Row(static_cast<int>(k));
        const Canvas::Clip clip(canvas, row);
        canvas.Fill(row, U' ', chosen ? Role::Sel : Role::Dialog);
        pressables.Add(row).act = [this, accept, which = top + k] {
            chosen_ = which;
            accept();
        };
        if (chosen) canvas.Put(row.x, row.y, U'►', Role::Sel);
        const int behind =
            canvas.Text(row.x + 1, row.y, item.text, chosen ? Role::Sel : Role::Dialog);
        const Rect rest = {behind + 1, row.y, row.Right() - behind - 2, 1};
        const int start = std::max(rest.Right() - Cells(item.detail), rest.x);
        canvas.Field({start, row.y, rest.Right() - start, 1}, item.detail,
                     chosen ? Role::Sel : Role::DialogDim);
    }
    if (count > static_cast<int>(rows)) {
        const bool more_above = top > 0;
        const bool more_below = top + rows < items_.size();
        if (more_above) canvas.Put(box.Right() - 1, box.y + 1, U'▲', Role::DialogFrame);
        if (more_below) canvas.Put(box.Right() - 1, box.Bottom() - 2, U'▼', Role::DialogFrame);
    }
}

}  // namespace zo::ui
