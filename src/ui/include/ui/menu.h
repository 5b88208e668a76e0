#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/canvas.h"
#include "ui/pressables.h"

namespace zo::ui {

// A short list of commands in an overlay's frame, with hotkeys and shortcuts.
class Menu {
public:
    struct Item {
        std::string_view label;          // with its hotkey between tildes
        std::string_view shortcut = {};  // a key by its name, shown at the right; may be empty
        std::string hint = {};
        std::function<void()> act = {};
    };
    static constexpr int kWidth = 36;

    void Set(std::vector<Item> items);
    int Height() const { return static_cast<int>(items_.size()) + 4; }
    // Up and Down wrap around; Home, End, Enter, the shortcuts and the marked letters.
    bool Key(const KeyPress& key);
    // The items alone; the box is a dialog's, kWidth wide and Height() high.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& box);
    int Chosen() const { return chosen_; }
    std::string_view ChosenHint() const;

private:
    static bool Answers(const Item& item, const KeyPress& key);
    void Act(int index);
    void DrawItem(Canvas& canvas, Pressables& pressables, const Rect& row, int index);

    std::vector<Item> items_;
    int chosen_ = 0;
};

}  // namespace zo::ui
