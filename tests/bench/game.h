#pragma once

#include "bench/bench.h"
#include "support/cases.h"
#include "support/game.h"

namespace support {

// The small tickets of campaign/.
inline kp::Content SmallCampaign() {
    base::SystemDisk disk;
    const auto store = kp::ContentStore::FromFolder(disk, PathOf("bench/campaign"));
    INFO(store.Message());
    REQUIRE(store);
    return kp::LoadContent(*store);
}

// Stands behind Esc.
struct Menu final : Kest::Screen {
    using Screen::Screen;
    std::string_view Name() const override { return "pause"; }
    void Draw(zo::ui::Canvas&, zo::ui::Pressables&) override {}
};

inline Kest::Places BenchAndMenu() {
    Kest::Places places;
    places[static_cast<std::size_t>(Kest::Place::Bench)] = Kest::MakeBench;
    places[static_cast<std::size_t>(Kest::Place::Pause)] =
        [](Kest::Shell& shell, std::string_view) { return std::make_unique<Menu>(shell); };
    return places;
}

// The bench in a small system. With `closed` below 0 the progress is the player's own, and is
// saved; else it is a capture's.
struct Game : fake::Game {
    explicit Game(int columns = 80, int rows = 25, int closed = -1)
        : fake::Game(SmallCampaign(), BenchAndMenu(), closed, closed < 0) {
        SetCells(columns, rows);
    }
    void Visit(std::string_view ticket) {
        shell.SwitchTo(Kest::MakeBench(shell, ticket));
        shell.Advance();
    }
};

}  // namespace support
