#include <doctest/doctest.h>

#include "bench/firmware_colours.h"
#include "bench/help_page.h"
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
        std::u16string_view line;
        std::string_view roles;  // a letter a character, a blank for what has no role
    } cases[] = {
        {u"loop:  rx a   ; wait", "LLLL,  oo r   ;;;;;;"},
        {u"jeq a, -1, ready", "ooo r, nn, LLLLL"},
        {u"DEF ack $06", "ddd LLL nnn"},
        {u"tx ';' ; one", "oo sss ;;;;;"},
        {u"tx '\\'' , %101", "oo ssss , nnnn"},
        {u"mov [c], 'x", "ooo ,r,, ss"},
        {u"a-b", "r,r"},
        {u"TX CRC", "oo rrr"},
        {u"crc: crc b", "LLL, ooo r"},
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

TEST_CASE("help on a word of firmware is the page on what the word is") {
    const struct {
        std::u16string_view line;
        int column;
        std::string_view page;
    } cases[] = {
        {u"loop: jeq a, CRC, loop", 2, "labels"},
        {u"loop: jeq a, CRC, loop", 7, "op-jeq"},
        {u"loop: jeq a, CRC, loop", 10, "registers"},
        {u"loop: jeq a, CRC, loop", 14, "crc-engine"},
        {u"loop: jeq a, CRC, loop", 20, "labels"},
        {u"crc a", 0, "op-crc"},
        {u"def ACK $06", 1, "labels"},
        {u"def ACK $06", 9, ""},
        {u"tx a ; jmp", 8, ""},
        {u"", 0, ""},
    };
    for (const auto& c : cases) {
        CAPTURE(c.column);
        CHECK(HelpPageAt(c.line, c.column) == c.page);
    }
}

TEST_CASE("a verify under the reference says so in a wider overlay") {
    ResultsSummary summary;
    summary.passed = summary.total = 3;
    summary.ticks = {99, 99, 100};
    summary.lines = {12, 9, 11};
    Game game;
    game.Visit("1-02-clerk");
    game.shell.Push(std::make_unique<Results>(game.shell, summary));
    game.Wait(1);
    CHECK(fake::Text(game.shell.Draw(), {5, 6, 70, 6}) ==
          "║  3 of 3 passed                                                     ║\n"
          "║                                                                    ║\n"
          "║             This run      Best  Reference                          ║\n"
          "║  Tests        3 of 3    3 of 3     3 of 3                          ║\n"
          "║  Ticks            99        99        100   √ under the reference  ║\n"
          "║  Lines            12         9         11                          ║\n");
}

TEST_CASE("what is selected is the system's to give, and the middle button takes it from there") {
    support::Game game;
    game.Visit("1-01-echo");
    game.Press("nop<Shift+Left>");
    CHECK(game.system.screen.selected == "p");
    const zo::ui::Grid& grid = game.shell.Grid();
    const auto press = [&](int button) {
        game.Handle(zo::ui::PointerInput{.action = zo::ui::PointerAction::Press,
                                         .x = grid.LeftPixels() + 7 * grid.cell_width,
                                         .y = grid.RowTop(2) + 1,
                                         .button = button});
    };
    press(3);
    press(2);
    CHECK(game.Row(2).starts_with("║!  1  pnop  !"));
}
