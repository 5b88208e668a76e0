#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/canvas.h"
#include "ui/frame_line.h"
#include "ui/pressables.h"

namespace zo::ui {

// Clears a pane and draws its frame: double with a title chip when focused, else single. Facts for
// the frame's lines go through a FrameLine of the same box; the title stands there already.
FrameLine DrawPane(Canvas& canvas, const Rect& box, std::string_view title, bool focused);

// An overlay's ground, double frame, title chip and its shade over what lies under it.
void DrawOverlay(Canvas& canvas, const Rect& box, std::string_view title);

enum class ButtonForm : std::uint8_t {
    Wide,     // in dialogs: "[ Cancel ]"
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
    // Centred in the row of an overlay.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& row);
    std::string_view FocusedHint() const;

private:
    char32_t HotkeyOf(int index) const;
    void Act(int index);

    std::vector<Item> items_;
    int focused_ = 0;
};

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
    void Draw(Canvas& canvas, Pressables& pressables, Point at, std::string_view title);
    std::string_view ChosenHint() const;

private:
    static bool Answers(const Item& item, const KeyPress& key);
    void Act(int index);
    void DrawItem(Canvas& canvas, Pressables& pressables, const Rect& row, int index);

    std::vector<Item> items_;
    int chosen_ = 0;
};

// One item of the key bar. Pressing it does what its key does.
struct KeyItem {
    KeyPress key = {};          // Key::None: only shown
    std::string_view cap = {};  // empty: the key's own name
    std::string_view word = {};
    std::string_view hint = {};
    bool enabled = true;
    bool marked = false;  // pointed out by the coach
};
// Items that do not fit whole are left out from the right. The items and `press` outlive the frame.
void DrawKeyBar(Canvas& canvas, Pressables& pressables, std::span<const KeyItem> items,
                const std::function<void(const KeyPress&)>& press);

struct TopBar {
    std::string_view title = {};
    std::string_view context = {};  // cut last
    std::string_view detail = {};   // behind the context, dropped first
    std::string_view place = {};    // right-aligned
};
void DrawTopBar(Canvas& canvas, const TopBar& bar);

struct StatusLine {
    std::string_view mode = {};     // a label before the message, may be empty
    std::string_view message = {};  // may take up to three rows, upward
    bool alert = false;
    std::string_view hint = {};   // of what the pointer is over; the message gives way to it
    std::string_view right = {};  // the screen's own text, which gives way to the message
};
void DrawStatusLine(Canvas& canvas, const StatusLine& line);

}  // namespace zo::ui
