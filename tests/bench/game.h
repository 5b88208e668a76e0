#pragma once

#include "bench/bench.h"
#include "native/system_disk.h"
#include "support/cases.h"
#include "support/game.h"

namespace support {

// The small tickets of campaign/.
inline kp::Content SmallCampaign() {
    zo::platform::SystemDisk disk;
    const auto store = kp::ContentStore::FromFolder(disk, PathOf("bench/campaign"));
    INFO(store.Message());
    REQUIRE(store);
    return kp::LoadContent(*store);
}

// Stands for a place to which the bench leads.
struct Elsewhere final : Kest::Screen {
    Elsewhere(Kest::Shell& shell, std::string name) : Screen(shell), name_(std::move(name)) {}
    std::string_view Name() const override { return name_; }
    void Draw(zo::ui::Canvas&, zo::ui::Pressables&) override {}

private:
    std::string name_;
};

// The bench and the menu, and at wish all that the bench leads to.
inline Kest::Places BenchAndMenu(bool everything = false) {
    Kest::Places places;
    const auto offer = [&](Kest::Place place, std::string name) {
        places[static_cast<std::size_t>(place)] = [name](Kest::Shell& shell, std::string_view at) {
            const std::string about = at.empty() ? "" : " " + std::string(at);
            return std::make_unique<Elsewhere>(shell, name + about);
        };
    };
    places[static_cast<std::size_t>(Kest::Place::Bench)] = Kest::MakeBench;
    offer(Kest::Place::Pause, "pause");
    if (everything) {
        offer(Kest::Place::Title, "title");
        offer(Kest::Place::Board, "board");
        offer(Kest::Place::Binder, "binder");
    }
    return places;
}

// The bench in a small system. With `closed` below 0 the progress is the player's own, and is
// saved; else it is a capture's.
struct Game : fake::Game {
    explicit Game(int columns = 80, int rows = 25, int closed = -1, bool everything = false)
        : fake::Game(SmallCampaign(), BenchAndMenu(everything), closed, closed < 0) {
        SetCells(columns, rows);
    }
    void Visit(std::string_view ticket) {
        shell.SwitchTo(Kest::MakeBench(shell, ticket));
        shell.Advance();
    }
};

}  // namespace support
