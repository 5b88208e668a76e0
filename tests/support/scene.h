#pragma once

#include <algorithm>
#include <cstdio>
#include <utility>

#include "support/cases.h"
#include "support/game.h"
#include "support/own_paths.h"

// Scenes: what a player does and what the game then shows, as cases in text files. Their steps:
//
//     keys rx a<Enter><F5>      named keys and typed characters
//     click 56,1                a cell; `right-click` with the other button
//     drag 56,1 60,1            from a cell to another
//     point 56,1                the pointer, nothing pressed
//     wheel 56,1 -1             the wheel by so many steps
//     pad A LT                  buttons of the controller, by their names in PadNamed()
//     wait 0.25                 seconds
//     show 46,1 34x8            the picture, or a part of it: its corner and its size
//     row 17                    one row
//     status Tick 4.            what the status line begins with; or the row, behind a bar
//     keybar
//     heard 3 21                the effects since the step before it that asked
//     mood reading              what the music goes with: title, board, editing, running, reading,
//                               results
//     listen                    the game begins to say what happens
//     said Menu                 what it has said since the step before it that asked
//     top bench                 the topmost screen
//     close                     the topmost overlay
//     capture errors            a capture's request; `refuse` for one that is not known
//     quit                      the window is closed
//     clipboard tx $41          what was copied last
//     copied                    what another program has put into the clipboard
//     drop data/a.lc1           a file is dropped on the window
//     write data/a.lc1          a file, without the end of its last line
//     file data/a.lc1           the same, as it is now; `has` where its text is of no interest
//     files 0                   how many there are
//     disk No space left        writes fail from now on, for this reason
//     closed 1-01-echo          whether a ticket is closed; `open` if it is not
//     current 1-02-clerk
namespace fake {

inline zo::ui::Rect RectOf(const Game& game, const std::string& text) {
    const zo::ui::Grid& grid = game.shell.Grid();
    zo::ui::Rect rect = {0, 0, grid.columns, grid.rows};
    const int read =
        std::sscanf(text.c_str(), "%d,%d %dx%d", &rect.x, &rect.y, &rect.width, &rect.height);
    REQUIRE_MESSAGE((text.empty() || read == 4), text);
    return rect;
}

inline void CheckBar(const std::string& row, const support::Step& step) {
    if (step.text.empty()) {
        CHECK_MESSAGE((row + " ").starts_with(" " + step.value + " "), row);
    } else {
        CHECK(row + "\n" == step.text);
    }
}

inline bool PlayPointer(Game& game, const support::Step& step) {
    using zo::ui::PointerAction;
    constexpr std::string_view kKinds[] = {"click", "right-click", "drag", "point", "wheel"};
    if (std::ranges::find(kKinds, step.key) == std::end(kKinds)) return false;
    zo::ui::Point at;
    zo::ui::Point to;
    int steps = 0;
    const char* const words = step.value.c_str();
    REQUIRE(std::sscanf(words, "%d,%d %d,%d", &at.x, &at.y, &to.x, &to.y) >= 2);
    (void)std::sscanf(words, "%*d,%*d %d", &steps);
    if (step.key == "click") {
        game.Click(at);
    } else if (step.key == "right-click") {
        game.Click(at, 3);
    } else if (step.key == "point") {
        game.Point(at, PointerAction::Move);
    } else if (step.key == "wheel") {
        game.Point(at, PointerAction::Wheel, 0, steps);
    } else {
        game.Point(at, PointerAction::Press);
        game.Point(to, PointerAction::Move);
        game.Point(to, PointerAction::Release);
    }
    game.shell.Advance();
    return true;
}

// Plays a step; false when it is not one of these.
inline bool Play(Game& game, const support::Step& step) {
    Kest::Shell& shell = game.shell;
    auto& files = game.system.disk.files;
    const std::string& value = step.value;
    if (step.key == "keys") {
        game.Press(value);
    } else if (step.key == "pad") {
        std::string_view names = value;
        while (!names.empty()) {
            game.Handle(zo::ui::PadPress{.button = PadNamed(support::Cut(names, " "))});
        }
        shell.Advance();
    } else if (PlayPointer(game, step)) {
        return true;
    } else if (step.key == "heard") {
        CHECK(std::exchange(game.sounds.heard, {}) == value);
    } else if (step.key == "mood") {
        constexpr std::string_view kMoods[] = {"title",   "board",   "editing",
                                               "running", "reading", "results"};
        game.shell.Advance();
        CHECK(kMoods[static_cast<std::size_t>(game.sounds.scene)] == value);
    } else if (step.key == "listen") {
        game.Listen();
    } else if (step.key == "said") {
        game.Draw();
        const std::string wanted = step.text.empty() ? value + "\n" : step.text;
        CHECK(std::exchange(game.said, {}) == (wanted == "\n" ? "" : wanted));
    } else if (step.key == "wait") {
        game.Wait(std::stod(value));
    } else if (step.key == "show") {
        CHECK(fake::Text(game.Draw(), RectOf(game, value)) == support::OwnPaths(step.text));
    } else if (step.key == "row") {
        CHECK(game.Row(std::stoi(value)) + "\n" == step.text);
    } else if (step.key == "status") {
        CheckBar(game.Row(shell.Grid().rows - 2), step);
    } else if (step.key == "keybar") {
        CheckBar(game.Row(shell.Grid().rows - 1), step);
    } else if (step.key == "top") {
        CHECK(game.TopName() == value);
    } else if (step.key == "close") {
        shell.CloseOverlay();
    } else if (step.key == "capture" || step.key == "refuse") {
        CHECK(shell.Top()->CaptureRequest(value) == (step.key == "capture"));
    } else if (step.key == "quit") {
        shell.Quit();
        CHECK(shell.Done());
    } else if (step.key == "clipboard") {
        CHECK(shell.ClipboardText() == step.All());
    } else if (step.key == "copied") {
        shell.SetClipboardText(step.All());
    } else if (step.key == "drop") {
        game.Handle(zo::ui::FileDropped{value});
    } else if (step.key == "write") {
        files[value] = step.text.substr(0, step.text.size() - 1);
    } else if (step.key == "file") {
        CHECK((files.contains(value) ? files[value] + "\n" : "no file") == step.text);
    } else if (step.key == "has") {
        CHECK(files.contains(value));
    } else if (step.key == "files") {
        CHECK(files.size() == step.Number());
    } else if (step.key == "disk") {
        game.system.disk.full = value;
    } else if (step.key == "closed" || step.key == "open") {
        CHECK(shell.Progress().IsClosed(value) == (step.key == "closed"));
    } else if (step.key == "current") {
        CHECK(shell.Progress().current == value);
    } else {
        return false;
    }
    return true;
}

}  // namespace fake
