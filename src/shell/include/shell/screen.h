#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "cells/input.h"
#include "music/song_player.h"
#include "shell/speech.h"
#include "ui/canvas.h"
#include "ui/pressables.h"
#include "ui/widgets.h"

namespace Kest {

class Shell;

// What a button of the game controller does, as a key.
struct PadKey {
    zo::ui::PadButton button;
    zo::ui::KeyPress key;
};

// What the rows around a screen's body show: the only source of the top bar, the key bar and the
// right end of the status line. Filled anew with each frame.
struct FrameRecord {
    bool bars = true;     // without them the screen has every row to itself
    std::string title;    // without one there is no top bar, and row 0 is body
    std::string context;  // behind the title
    std::string detail;   // behind the context, dropped first
    std::string place;    // where the player is, right-aligned
    std::string mode;     // before the status message
    std::string entry;    // that is being typed in the status line, in place of the message
    // What the status line says while no message shows. An overlay finds here what the screen under
    // it said and may leave it.
    std::string standing;
    bool standing_alert = false;
    std::string right;                  // the status line's right end while nothing is hovered
    std::vector<zo::ui::KeyItem> keys;  // most needed first

    void ClearAllButStanding();
};

// One screen of the game, either the current one or an overlay on it. The pointer reaches a screen
// through what it registers as pressable when it draws.
class Screen {
public:
    explicit Screen(Shell& shell) : shell_(shell) {}
    virtual ~Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    // A fixed lower-case word.
    virtual std::string_view Name() const = 0;

    virtual void Entered() {}    // it became current or was pushed as an overlay
    virtual void Left() {}       // it is about to be removed
    virtual void Covered() {}    // an overlay is about to open over it
    virtual void Uncovered() {}  // it is on top again

    // Called before each frame with the frame clock's seconds, also under an overlay.
    virtual void Update(double /*now*/) {}
    // When the screen wants a frame although nobody touches it; now or earlier means the next one.
    virtual std::optional<double> NextFrameAt() const { return std::nullopt; }

    virtual void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) = 0;
    virtual void DescribeFrame(FrameRecord& /*record*/) const {}

    // Each returns whether it was used. A key that was used does not arrive as text too.
    virtual bool Key(const zo::ui::KeyPress& /*key*/) { return false; }
    virtual bool Text(std::string_view /*utf8*/) { return false; }
    // A file of this name and text was dropped on the window.
    virtual bool TakesFile(std::string_view /*name*/, std::string_view /*text*/) { return false; }

    // What the controller's buttons do here other than everywhere.
    virtual std::span<const PadKey> PadKeys() const { return {}; }
    // The pane that has focus, as drawn last: the controller's right stick scrolls it. Without one
    // it scrolls what is in the middle, where overlays are.
    virtual std::optional<zo::ui::Rect> FocusedPane() const { return std::nullopt; }

    // A button of the mouse or the controller went down; true where any of them will do.
    virtual bool AnyButton() { return false; }

    // Where the highlight stands: a number that changes when it moves, which is heard.
    virtual int Highlight() const { return 0; }
    // Puts what the screen knows better into what its cells say of the place that has the focus.
    virtual void Describe(Speech& /*speech*/) const {}
    // What the music is to go with; nothing for a small thing over a screen, which changes nothing.
    virtual std::optional<MusicScene> Music() const { return std::nullopt; }

    // Saves what the player would lose with the screen. The failure is a sentence to show.
    virtual base::Status SaveWork() { return {}; }
    // Brings the screen into the state that a request of a capture names; false when it is unknown.
    virtual bool CaptureRequest(std::string_view /*request*/) { return false; }

protected:
    bool IsOnTop() const;

    Shell& shell_;
};

}  // namespace Kest
