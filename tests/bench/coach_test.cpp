// The coach on the tickets of the game. More steps of scenes:
//
//     start 160x50              a new player's game on a grid of this size, or 80x25
//     vi                        with vi keys
//     close 1-01-carrier-check  tickets that are closed already
//     coaching off              the setting
//     visit 1-01-carrier-check  the bench on this ticket
//     coach F8 Verify.          the coach's line; without a text there is none
//     marks SPEC TX◄ F6 Step◄   what is pointed out, in the order of the screen

#include "bench/coach.h"

#include "bench/bench_commands.h"
#include "bench/coach_keys.h"
#include "game.h"
#include "support/scene.h"

using namespace Kest;

namespace {

const kp::Content& GameContent() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

struct CoachGame : fake::Game {
    explicit CoachGame(zo::ui::Rect cells)
        : fake::Game(GameContent(), support::BenchAndMenu(), -1, true) {
        SetCells(cells.width, cells.height);
    }
};

// The texts in the coach's colours, those of a row of its own apart.
std::string Marked(const zo::ui::Frame& frame) {
    const zo::ui::Rgb ground = zo::ui::Colours(frame.grid.look, 0, zo::ui::Role::CoachMark).ground;
    std::string marks;
    for (int y = 0; y < frame.grid.rows; ++y) {
        if (y == frame.grid.rows - 3) continue;
        std::string text;
        for (int x = 0; x < frame.grid.columns; ++x) {
            const zo::ui::Cell& cell = frame.At(x, y);
            if (cell.ground == ground) {
                base::AppendUtf8(text, cell.glyph);
            } else if (!text.empty() && text.back() != ' ') {
                text += ' ';
            }
        }
        marks += text;
        if (!text.empty() && text.back() != ' ') marks += ' ';
    }
    return marks.substr(0, marks.find_last_not_of(' ') + 1);
}

}  // namespace

TEST_CASE("the coach shows its scenes") {
    for (const support::Case& scene : support::Cases("bench/coach.txt")) {
        std::unique_ptr<CoachGame> game;
        for (const support::Step& step : scene) {
            INFO(step.where);
            if (step.key == "start") {
                zo::ui::Rect cells = {0, 0, 80, 25};
                std::sscanf(step.value.c_str(), "%dx%d", &cells.width, &cells.height);
                game = std::make_unique<CoachGame>(cells);
                continue;
            }
            REQUIRE(game);
            Shell& shell = game->shell;
            if (step.key == "vi") {
                shell.ChangeSettings([](Settings& settings) { settings.vi_keys = true; });
            } else if (step.key == "coaching") {
                shell.ChangeSettings([](Settings& settings) { settings.coaching = false; });
            } else if (step.key == "done") {
                shell.Progress().tickets[step.value].closed = true;
            } else if (step.key == "visit") {
                shell.SwitchTo(MakeBench(shell, step.value));
                shell.Advance();
            } else if (step.key == "coach") {
                const std::string row = game->Row(shell.Grid().rows - 3);
                CHECK(row == (step.value.empty() ? "" : " COACH │ " + step.value));
            } else if (step.key == "marks") {
                CHECK(Marked(game->Draw()) == step.value);
            } else if (!fake::Play(*game, step)) {
                FAIL("unknown key ", step.key);
            }
        }
    }
}

TEST_CASE("the coach names no key that does nothing, whatever he sees") {
    CHECK(LintCoachKeys(GameContent()).empty());
    for (const kp::CoachEntry& entry : GameContent().coach) {
        for (int bits = 0; bits < 4 << 9; ++bits) {
            const auto is = [bits](int bit) { return (bits >> bit & 1) != 0; };
            const CoachSight sight = {.stage = bits >> 9,
                                      .tests = is(7) ? 2U : 1U,
                                      .has_instructions = is(0),
                                      .is_right = is(0) && is(1),
                                      .first_passed = is(2),
                                      .second_chosen = is(7) && is(8),
                                      .second_run = is(3),
                                      .stepped = is(4),
                                      .commands = is(5),
                                      .card_hidden = is(6),
                                      .ghost = is(0) ? "" : "tx $55"};
            const std::string line = CoachLine(entry, sight);
            CAPTURE(line);
            CHECK(base::CodePoints(line) <= 70);
            for (const BenchKey& key : BenchKeys()) {
                if (!NamesKey(line, zo::ui::KeyName(key.key))) continue;
                CHECK(key.stage <= sight.stage);
                CHECK((key.command != Command::ToggleCard || sight.card_hidden));
                CHECK((key.command != Command::NextTest ||
                       (sight.tests > 1 && !sight.second_chosen)));
            }
        }
    }
}
