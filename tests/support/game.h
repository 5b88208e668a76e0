#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "base/format.h"
#include "shell/shell.h"
#include "support/fake_system.h"
#include "support/keys.h"
#include "support/picture.h"

namespace fake {

// A campaign of one shift whose tickets have an id and a title and nothing else.
inline kp::Content Campaign(
    std::initializer_list<std::pair<std::string_view, std::string_view>> tickets) {
    kp::Shift shift;
    for (const auto& [id, title] : tickets) {
        kp::LoadedTicket& loaded = shift.tickets.emplace_back();
        loaded.ticket.id = id;
        loaded.ticket.title = title;
    }
    kp::Content content;
    content.shifts.push_back(std::move(shift));
    return content;
}

// Notes what is to be heard: the effects by number, a byte as ">4F" from the card or "<4F" to it.
struct Sounds final : Kest::Sounds {
    void Play(Kest::Effect effect, std::uint16_t) override {
        Note(std::to_string(static_cast<int>(effect)));
    }
    void PlayByte(std::uint8_t byte, bool toward_card) override {
        Note((toward_card ? "<" : ">") + base::Format("%02X", byte));
    }
    void SetScene(Kest::MusicScene now) override { scene = now; }
    void Note(const std::string& sound) { heard += (heard.empty() ? "" : " ") + sound; }

    std::string heard;
    Kest::MusicScene scene = Kest::MusicScene::Title;
};

// The shell on a small system, with a window of 80 by 25 cells.
struct Game {
    static constexpr zo::ui::PixelSize kSize = {640, 400};

    explicit Game(kp::Content campaign, Kest::Places places = {}, int closed = -1,
                  bool persistent = true)
        : content(std::move(campaign)),
          window(system.screen, system.clock),
          shell({.content = content,
                 .clock = system.clock,
                 .disk = system.disk,
                 .window = &window,
                 .data_folder = system.DataFolder(),
                 .persistent = persistent,
                 .closed_override = closed,
                 .places = std::move(places),
                 .sounds = &sounds}) {
        shell.OverrideSettings([](Kest::Settings& settings) { settings.modern_look = false; });
        shell.SetWindow(kSize, 1);
    }

    // So many columns and rows, in a window whose cells are one pixel wide and two high.
    void SetCells(int columns, int rows) {
        shell.OverrideSettings([](Kest::Settings& settings) { settings.large_text = false; });
        shell.SetWindow({columns, 2 * rows}, 1);
    }
    // Each event meets a drawn screen, as in the frame loop.
    void Handle(const zo::ui::InputEvent& event) {
        Draw();
        shell.Handle(event);
    }
    void Press(std::string_view script) {
        for (const zo::ui::InputEvent& event : Keys(script)) Handle(event);
        shell.Advance();
    }
    // The pointer at a cell.
    void Point(zo::ui::Point at, zo::ui::PointerAction action, int button = 1, int wheel = 0) {
        const zo::ui::Grid& grid = shell.Grid();
        Handle(zo::ui::PointerInput{
            .action = action,
            .x = grid.LeftPixels() + at.x * grid.cell_width + grid.cell_width / 2,
            .y = grid.RowTop(at.y) + 1,
            .button = button,
            .wheel = wheel,
            .with = {}});
    }
    void Click(zo::ui::Point at, int button = 1) {
        Point(at, zo::ui::PointerAction::Press, button);
        Point(at, zo::ui::PointerAction::Release, button);
    }
    // What is said from now on is in `said`, a line each.
    void Listen() {
        shell.SpeakTo([this](std::string_view line) { said += std::string(line) + "\n"; });
    }
    void Wait(double seconds) {
        system.clock.seconds += seconds;
        shell.Advance();
    }
    const zo::ui::Frame& Draw() {
        shell.Advance();
        return shell.Draw();
    }
    std::string Text() { return fake::Text(Draw()); }
    std::string Row(int y) { return fake::Row(Draw(), y); }
    std::string_view TopName() {
        shell.Advance();
        return shell.Top() ? shell.Top()->Name() : std::string_view("none");
    }

    System system;
    Sounds sounds;
    std::string said;
    kp::Content content;
    Window window;
    Kest::Shell shell;
};

}  // namespace fake
