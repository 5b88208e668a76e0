// The whole campaign on the bench.

#include <sstream>

#include "bench/results.h"
#include "game.h"

using namespace Kest;

namespace {

kp::Content Campaign() {
    return kp::LoadContent(kp::ContentStore::BuiltIn());
}

struct BuiltInGame : fake::Game {
    BuiltInGame(int columns, int rows, int closed = -1)
        : fake::Game(Campaign(), support::BenchAndMenu(), closed, closed < 0) {
        SetCells(columns, rows);
    }
    void Open(std::string_view ticket) {
        shell.SwitchTo(MakeBench(shell, ticket));
        shell.Advance();
    }
    // Presses what stands under these words.
    void ClickOn(std::string_view words) {
        const std::string text = Text();
        const std::size_t at = text.find(words);
        REQUIRE_MESSAGE(at != std::string::npos, words);
        const std::size_t row = text.rfind('\n', at) + 1;
        const auto y = std::count(text.begin(), text.begin() + static_cast<long>(at), '\n');
        const auto x = base::CodePoints(std::string_view(text).substr(row, at - row));
        Click({static_cast<int>(x) + 1, static_cast<int>(y)});
    }
    bool Closed(const kp::LoadedTicket& loaded) {
        return shell.Progress().IsClosed(loaded.ticket.id);
    }
};

// As keys, in place of the starter.
std::string Typed(const kp::LoadedTicket& loaded) {
    std::string keys = "<Ctrl+End>";
    for (std::size_t k = loaded.ticket.starter.size(); k > 0; --k) keys += "<Backspace>";
    for (const char c : loaded.reference_text) {
        keys += c == '\n' ? "<Enter><Home>" : std::string(1, c);
    }
    return keys;
}

}  // namespace

TEST_CASE("a shift is solved by keys alone") {
    BuiltInGame game(80, 25);
    const kp::Shift& shift = game.content.shifts.front();
    game.Open(shift.tickets.front().ticket.id);
    for (const kp::LoadedTicket& loaded : shift.tickets) {
        CAPTURE(loaded.ticket.id);
        CHECK(game.shell.Progress().current == loaded.ticket.id);
        game.Press(Typed(loaded) + "<F8>");
        game.Wait(2);
        CHECK(game.TopName() == "results");
        CHECK(game.Closed(loaded));
        game.Press("<Enter>");  // the next ticket
        game.shell.Advance();
    }
    CHECK(game.shell.Progress().current == game.content.shifts[1].tickets.front().ticket.id);
}

TEST_CASE("a shift whose firmware is written is solved by the pointer alone") {
    BuiltInGame game(160, 50);
    const kp::Shift& shift = game.content.shifts.front();
    for (const kp::LoadedTicket& loaded : shift.tickets) {
        game.system.disk.files["data/firmware/" + loaded.ticket.id + ".lc1"] =
            loaded.reference_text;
    }
    game.Open(shift.tickets.front().ticket.id);
    for (const kp::LoadedTicket& loaded : shift.tickets) {
        CAPTURE(loaded.ticket.id);
        game.ClickOn("[Run]");
        game.ClickOn("[Pause]");
        game.ClickOn("[Verify]");
        game.Wait(2);
        CHECK(game.TopName() == "results");
        CHECK(game.Closed(loaded));
        game.ClickOn("Next ticket");
        game.shell.Advance();
    }
    CHECK(game.shell.Progress().current == game.content.shifts[1].tickets.front().ticket.id);
}

TEST_CASE("every ticket is read through at 80 by 25, and no word of it is cut") {
    BuiltInGame game(80, 25, 0);
    for (const kp::LoadedTicket* loaded : game.content.Tickets()) {
        CAPTURE(loaded->ticket.id);
        game.Open(loaded->ticket.id);
        game.Click({60, 3});  // gives the pane the keys
        std::string seen;
        for (std::string before = "none"; before != game.Text(); game.Press("<PgDn>")) {
            before = game.Text();
            seen += fake::Text(game.Draw(), {48, 2, 30, 20}) + "\n";
        }
        std::string text = loaded->ticket.brief + " " + loaded->ticket.note;
        for (const std::string& paragraph : loaded->ticket.text) text += " " + paragraph;
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            CHECK_MESSAGE(seen.find(word) != std::string::npos, word);
        }
    }
}

TEST_CASE("a key of a stage that is not reached changes nothing") {
    for (const BenchKey& key : BenchKeys()) {
        if (key.stage == 0) continue;
        CAPTURE(zo::ui::KeyName(key.key));
        for (const int columns : {80, 160}) {
            BuiltInGame game(columns, columns == 80 ? 25 : 50, key.stage - 1);
            game.Open("1-02-loopback");
            game.Press("rx a<Enter>tx a<F5>");
            const std::string before = game.Text();
            game.Handle(key.key);
            CHECK(game.Text() == before);
            CHECK(game.TopName() == "bench");
        }
    }
}
