#pragma once

#include <doctest/doctest.h>

#include <memory>
#include <string>

#include "bench/bench.h"
#include "shell/shell.h"
#include "small_campaign.h"
#include "support/fake_system.h"
#include "support/keys.h"
#include "support/picture.h"

namespace support {

// Columns and rows. In windows this small a cell is one pixel wide and two high.
inline constexpr zo::ui::PixelSize kNarrow = {80, 25};
inline constexpr zo::ui::PixelSize kMedium = {106, 30};
inline constexpr zo::ui::PixelSize kWide = {160, 50};

// The bench in a small system, driven by keys and read as text. A menu stands behind Esc.
struct Game {
    struct Menu final : Kest::Screen {
        using Screen::Screen;
        std::string_view Name() const override { return "pause"; }
        void Draw(zo::ui::Canvas&, zo::ui::Pressables&) override {}
    };

    kp::Content content = SmallCampaign();
    fake::System system;
    Kest::Shell shell;

    // With `closed` below 0 the progress is the player's own, and is saved; else it is a capture's.
    explicit Game(std::string_view ticket, zo::ui::PixelSize grid = kNarrow, int closed = -1)
        : shell(Parts(closed)) {
        shell.OverrideSettings([](Kest::Settings& settings) {
            settings.modern_look = false;
            settings.large_text = false;
        });
        shell.SetWindow({grid.width, 2 * grid.height}, 1);
        Open(ticket);
    }
    void Open(std::string_view ticket) {
        shell.SwitchTo(Kest::MakeBench(shell, ticket));
        shell.Advance();
    }
    void AddTicket(const std::string& id, std::string_view ticket, std::string_view reference) {
        kp::ContentStore store;
        store.Add(kp::TicketFile(id), std::string(ticket));
        store.Add(kp::ReferenceFile(id), std::string(reference));
        const base::Result<kp::LoadedTicket> loaded = kp::LoadOneTicket(store, id);
        INFO(loaded.Message());
        REQUIRE(loaded);
        content.shifts.front().tickets.push_back(*loaded);
    }
    void Keys(std::string_view script) {
        for (const zo::ui::InputEvent& event : fake::Keys(script)) shell.Handle(event);
        shell.Advance();
    }
    void Click(int x, int y) {
        shell.Draw();
        zo::ui::PointerInput pointer{
            .action = zo::ui::PointerAction::Press, .x = x, .y = 2 * y, .button = 1};
        shell.Handle(pointer);
        pointer.action = zo::ui::PointerAction::Release;
        shell.Handle(pointer);
        shell.Advance();
    }
    void Wait(double seconds) {
        system.clock.seconds += seconds;
        shell.Advance();
    }
    std::string Picture() { return fake::Text(shell.Draw()); }
    std::string Row(int y) { return fake::Row(shell.Draw(), y); }
    std::string Status() { return Row(shell.Grid().rows - 2); }
    std::string KeyBar() { return Row(shell.Grid().rows - 1); }
    std::string_view Top() { return shell.Top()->Name(); }

private:
    Kest::ShellParts Parts(int closed) {
        Kest::ShellParts parts{.content = content,
                               .clock = system.clock,
                               .disk = system.disk,
                               .data_folder = "data",
                               .persistent = closed < 0,
                               .closed_override = closed};
        const auto place = [&](Kest::Place which) -> Kest::MakeScreen& {
            return parts.places[static_cast<std::size_t>(which)];
        };
        place(Kest::Place::Bench) = Kest::MakeBench;
        place(Kest::Place::Pause) = [](Kest::Shell& owner, std::string_view) {
            return std::make_unique<Menu>(owner);
        };
        return parts;
    }
};

}  // namespace support
