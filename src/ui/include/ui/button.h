#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/canvas.h"
#include "ui/pressables.h"

namespace zo::ui {

enum class ButtonForm : std::uint8_t {
    Wide,     // in dialogs: "[ Cancel ]", with a shadow under it in the classic look
    Flat,     // the same on a pane, where nothing casts a shadow
    Compact,  // in strips and frames: "[Reset]"
};

struct Button {
    std::string_view label;  // with its hotkey between tildes
    std::string_view hint = {};
    ButtonForm form = ButtonForm::Wide;
    bool enabled = true;
    bool focused = false;
};
int ButtonCells(const Button& button);
// Draws the button in its state and registers it. Returns the column behind it.
int DrawButton(Canvas& canvas, Pressables& pressables, Point at, const Button& button,
               std::function<void()> act);

// A row of wide buttons of which one has focus.
class ButtonRow {
public:
    struct Item {
        std::string label;  // with its hotkey between tildes, if it has one
        std::string hint = {};
        std::function<void()> act = {};
    };
    void Set(std::vector<Item> items, int focused = 0);
    // Left, Right, Tab, Enter, Space, the marked letters and, for labels without one, their first
    // letters.
    bool Key(const KeyPress& key);
    // Centred in the row of an overlay. Wide buttons take the row below for their shadow.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& row,
              ButtonForm form = ButtonForm::Wide);
    int Cells() const;
    int Focused() const { return focused_; }
    std::string_view FocusedHint() const;

private:
    char32_t HotkeyOf(int index) const;
    void Act(int index);

    std::vector<Item> items_;
    int focused_ = 0;
};

}  // namespace zo::ui
