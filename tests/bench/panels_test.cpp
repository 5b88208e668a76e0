#include <doctest/doctest.h>

#include "bench/firmware_colours.h"
#include "bench/results.h"
#include "game.h"

using namespace Kest;
using support::Game;
using zo::ui::Role;

TEST_CASE("firmware is coloured token by token") {
    const std::pair<char, Role> letters[] = {
        {'L', Role::CodeLabel}, {'o', Role::CodeOp},    {'r', Role::CodeReg}, {'n', Role::CodeNum},
        {'s', Role::CodeStr},   {',', Role::CodePunct}, {'d', Role::CodeDef}, {';', Role::CodeNote},
    };
    const struct {
        std::u32string_view line;
        std::string_view roles;  // a letter a character, a blank for what has no role
    } cases[] = {
        {U"loop:  rx a   ; wait", "LLLL,  oo r   ;;;;;;"},
        {U"jeq a, -1, ready", "ooo r, nn, LLLLL"},
        {U"DEF ack $06", "ddd LLL nnn"},
        {U"tx ';' ; one", "oo sss ;;;;;"},
        {U"tx '\\'' , %101", "oo ssss , nnnn"},
        {U"mov [c], 'x", "ooo ,r,, ss"},
        {U"a-b", "r,r"},
        {U"TX CRC", "oo rrr"},
        {U"crc: crc b", "LLL, ooo r"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.roles);
        std::vector<zo::ui::Span> spans;
        ColourFirmware(c.line, spans);
        std::string roles(c.line.size(), ' ');
        for (const zo::ui::Span& span : spans) {
            const auto* letter =
                std::ranges::find(letters, span.role, &std::pair<char, Role>::second);
            REQUIRE(letter != std::end(letters));
            roles.replace(static_cast<std::size_t>(span.column),
                          static_cast<std::size_t>(span.length),
                          static_cast<std::size_t>(span.length), letter->first);
        }
        CHECK(roles == c.roles);
    }
}

TEST_CASE("the card panel shows timer, stack, buffer and RAM as a run fills them") {
    Game game("1-02-clerk", support::kMedium, 2);
    game.Keys("call s<Enter>s: call t<Enter>t: tmr 9<Enter>mov [1], $41<Enter>mov a, [1]<Enter>");
    game.Keys("tx a<Enter>wait 20<Enter>");
    const zo::ui::Rect card{79, 1, 27, 17};
    game.Keys("<F6><F6><F6><F6><F6><F6>");
    CHECK(fake::Text(game.shell.Draw(), card) ==
          "┌─ CARD ──────────────────┐\n"
          "│ Test failed             ▲\n"
          "│ Tick 5  Line 6          █\n"
          "│ a   $0041     65 'A'    █\n"
          "│ b   $0000      0        █\n"
          "│ c   $0000      0        █\n"
          "│ d   $0000      0        █\n"
          "│ crc $FFFF     -1        █\n"
          "│ clk $0005      5◄       █\n"
          "│ rxn $0000      0        █\n"
          "│ TX  busy 2              █\n"
          "│ TIMER 5 of 9 left       █\n"
          "│ STACK 2 of 2  2 3       █\n"
          "│ RX    0 of 8            ░\n"
          "│ RAM   12 cells          ░\n"
          "│   0 0000 0041 0000 0000 ▼\n"
          "└─────────────────────────┘\n");
}

TEST_CASE("many tests scroll in the strip so that the chosen one is in sight") {
    std::string tests;
    for (int i = 1; i <= 24; ++i) {
        tests += std::string(i > 1 ? ", " : "") + R"({"name": "T)" + std::to_string(i) + "\"}";
    }
    Game game("1-01-echo", support::kNarrow, 2);
    game.AddTicket("1-03-many", R"({"id": "1-03-many", "tests": [)" + tests + "]}", "tx 1\nhalt\n");
    game.Open("1-03-many");
    CHECK(game.Row(18) ==
          " TEST [1 ] 2   3   4   5   6   7   8   9   10   11  »    [Reset] Speed ◄Brisk ►");
    for (int i = 0; i < 12; ++i) game.Keys("<Ctrl+PgDn>");
    CHECK(game.Row(18) ==
          " TEST « 4   5   6   7   8   9   10   11   12  [13 ]»     [Reset] Speed ◄Brisk ►");
    for (int i = 0; i < 12; ++i) game.Keys("<Ctrl+PgDn>");
    CHECK(game.Row(18) ==
          " TEST « 16   17   18   19   20   21   22   23  [24 ]     [Reset] Speed ◄Brisk ►");
}

TEST_CASE("tests and speed are chosen in the strip with the pointer, without losing the editor") {
    Game game("1-01-echo", support::kNarrow, 2);
    CHECK(game.Row(17) ==
          " TEST [1 ] 2                                             [Reset] Speed ◄Brisk ►");
    game.Click(12, 17);
    game.Click(79, 17);
    game.Click(78, 17);
    CHECK(game.Row(17) ==
          " TEST  1  [2 ]                                           [Reset] Speed ◄Fast  ►");
    game.Click(78, 17);
    CHECK(game.Row(17) ==
          " TEST  1  [2 ]                                           [Reset] Speed ◄Rapid");
    game.Keys("x");
    CHECK(game.Row(2).starts_with("║!  1  x"));
}

TEST_CASE("a verify under the reference says so in a wider overlay") {
    ResultsSummary summary;
    summary.passed = summary.total = 3;
    summary.ticks = {99, 99, 100};
    summary.lines = {12, 9, 11};
    Game game("1-02-clerk", support::kNarrow, 2);
    game.shell.Push(std::make_unique<Results>(game.shell, summary));
    CHECK(fake::Text(game.shell.Draw(), {5, 6, 70, 6}) ==
          "║  3 of 3 passed                                                     ║\n"
          "║                                                                    ║\n"
          "║             This run      Best  Reference                          ║\n"
          "║  Tests        3 of 3    3 of 3     3 of 3                          ║\n"
          "║  Ticks            99        99        100   √ under the reference  ║\n"
          "║  Lines            12         9         11                          ║\n");
}
