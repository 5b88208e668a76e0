#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/canvas.h"
#include "ui/pressables.h"

namespace zo::ui {

struct CompletionItem {
    std::string text;
    std::string detail = {};
};

// The list of what could stand for a word that is being typed.
class Completion {
public:
    static constexpr int kMostRows = 6;

    bool IsOpen() const { return !items_.empty(); }
    void Close() { items_.clear(); }
    // Keeps the items that begin with the word, whatever its case. One that the word is already is
    // only worth offering when it was asked for.
    void Offer(std::vector<CompletionItem> items, std::string_view word, bool asked);
    void Move(int by);  // to the next or previous item, around the end
    const CompletionItem& Chosen() const { return items_[chosen_]; }

    // Under the caret, or above it when there is no room below; inside `room`.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& room, Point word,
              const std::function<void()>& accept);

private:
    std::vector<CompletionItem> items_;
    std::size_t chosen_ = 0;
    std::size_t top_ = 0;  // the first item in sight
};

}  // namespace zo::ui
