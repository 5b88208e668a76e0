#include <doctest/doctest.h>

#include "game.h"

using support::Game;
using support::kMedium;
using support::kNarrow;
using support::kWide;

namespace {

const std::filesystem::path kEchoFile = "data/firmware/1-01-echo.lc1";

}  // namespace

TEST_CASE("the first ticket at 80x25: opened, running, passed") {
    Game game("1-01-echo");
    CHECK(game.Picture() ==
          " BENCH │ 1-01 Echo, Test rig                                     Shift 1 Basics\n"
          "╔═ FIRMWARE ═ EDIT ══ Assembled  ROM 0 of 6 ═╗┌[TICKET]─HINTS─SPEC─NOTES───────┐\n"
          "║   1                                        ║│ Echo                     ♦♦··· │\n"
          "║                                            ║│ Test rig                       │\n"
          "║                                            ║│                                │\n"
          "║                                            ║│ Send back what arrives.        │\n"
          "║                                            ║│                                │\n"
          "║                                            ║│ Every byte that arrives goes   │\n"
          "║                                            ║│ out again.                     │\n"
          "║                                            ║│                                │\n"
          "║                                            ║│                                │\n"
          "║                                            ║│                                │\n"
          "║                                            ║│                                │\n"
          "║                                            ║│                                │\n"
          "║                                            ║│                                │\n"
          "║                                            ║│                                │\n"
          "╚══════════════════════════════ Ln 1, Col 1 ═╝└────────────────────────────────┘\n"
          " TEST  1   2\n"
          "TICK     0              5              10             15             20\n"
          "SPEC TX              $48'H'      $69'i'\n"
          "TX\n"
          "RX\n"
          "CARD\n"
          " Assembled: 0 errors, 0 lines.                                            F5 F8\n"
          " F5 Run  F8 Verify  Esc Menu\n");
    game.Keys("rx a<Enter>tx a<F5>");
    game.Wait(0.25);
    CHECK(fake::Text(game.shell.Draw(), {0, 1, 80, 3}) ==
          "╔═ FIRMWARE ═ EDIT ══ Assembled  ROM 2 of 6 ═╗┌[TICKET]─HINTS─SPEC─NOTES───────┐\n"
          "║   1► rx a                                  ║│ Echo                     ♦♦··· │\n"
          "║   2  tx a                                  ║│ Test rig                       │\n");
    CHECK(fake::Text(game.shell.Draw(), {0, 17, 80, 8}) ==
          " TEST  1   2\n"
          "TICK     0              5              10             15             20\n"
          "SPEC TX              $48'H'      $69'i'\n"
          "TX                   $48'H'\n"
          "RX                $48'H'\n"
          "CARD     ▄▄▄▄▄▄▄▄▄██████▄▄▄▄▄▄\n"
          " Running Test 1 of 2: Letters.                                            F5 F8\n"
          " F5 Pause  F8 Verify  Esc Pause\n");
    game.Wait(0.25);
    game.Wait(0.25);
    CHECK(game.Row(17) == " TEST  1√  2");
    CHECK(game.Status() ==
          " Test 1 of 2: PASS. Last output at tick 8.                                F5 F8");
}

TEST_CASE("a failed test on the wide bench names its tick, its byte and its line") {
    Game game("1-02-clerk", kWide, 2);
    game.Keys("tx $4C<Enter>nop<Enter>nop<Enter>tx 1<F7>");
    CHECK(fake::Text(game.shell.Draw(), {116, 1, 44, 23}) ==
          "┌─ CARD ───────────────────────────────────┐\n"
          "│ Test failed               Tick 3  Line 4 │\n"
          "│ a $0000      0      crc $FFFF     -1     │\n"
          "│ b $0000      0      clk $0003      3◄    │\n"
          "│ c $0000      0      rxn $0000      0     │\n"
          "│ d $0000      0      TX   busy 2          │\n"
          "│ TIMER stopped                            │\n"
          "│ STACK 0 of 2                             │\n"
          "│ RX    0 of 8                             │\n"
          "│ RAM   12 cells                           │\n"
          "│   0 0000 0000 0000 0000                  │\n"
          "│   4 0000 0000 0000 0000                  │\n"
          "│   8 0000 0000 0000 0000                  │\n"
          "└──────────────────────────────────────────┘\n"
          "┌─ SPEC ───────────────────────────────────┐\n"
          "│ SPEC TX  2 of 5 bytes sent               │\n"
          "│ spec  4C 4F 47 07 08                     │\n"
          "│ card  4C!01                              │\n"
          "│ RX       0 of 1 byte read                │\n"
          "│       06                                 │\n"
          "│                                          │\n"
          "│                                          │\n"
          "│                                          │\n");
    CHECK(fake::Text(game.shell.Draw(), {0, 36, 100, 5}) ==
          " TESTS [1!]  Two messages\n"
          "┌─ TRACE ─ Test 1 of 1: Two messages ──────────────────────────────────────────────────"
          "─────────────\n"
          "│ TICK     0        FAIL  5              10             15             20             25"
          "\n"
          "│ SPEC TX           │        $4C'L'            $4F'O'            $47'G'\n"
          "│ TX       $4C'L'   $01\n");
    CHECK(fake::Text(game.shell.Draw(), {100, 36, 60, 5}) ==
          "        [Reset] [Step] [Run] [Fast] [Verify] Speed ◄Brisk ►\n"
          "───────────────┐┌─ NOTES ──────────────────────────────────┐\n"
          " 30            ││ Test 1 of 1: FAIL. Tick 3: transmitted   │\n"
          "               ││ $01 as byte 2; the specification calls   │\n"
          "               ││ for $4F ('O').                           │\n");
    CHECK(game.Status().starts_with(" ! Test 1 of 1: FAIL. Tick 3: transmitted $01 as byte 2; "));
    CHECK(game.KeyBar() ==
          " F5 Run  F6 Step  F7 Fast  F8 Verify  F10 Menu  Ctrl+R Reset  Ctrl+S Save");
}

TEST_CASE("a verify that fails says the first failure in NOTES and closes nothing") {
    Game game("1-01-echo");
    game.Keys("rx a<Enter>tx 0<F8>");
    CHECK(game.Top() == "bench");
    CHECK(fake::Text(game.shell.Draw(), {46, 1, 34, 7}) ==
          "┌TICKET─HINTS─SPEC─[NOTES]───────┐\n"
          "│ Test 1 of 2: Tick 4:           │\n"
          "│ transmitted $00 as byte 1; the │\n"
          "│ specification calls for $48    │\n"
          "│ ('H').                         │\n"
          "│                                │\n"
          "│                                │\n");
    CHECK(game.Row(17) == " TEST  1!  2√");
    CHECK_FALSE(game.shell.Progress().IsClosed("1-01-echo"));
    CHECK(game.system.disk.files.at(kEchoFile) == "rx a\ntx 0");
}

TEST_CASE("a verify that passes closes the ticket, names the new keys and leads on") {
    Game game("1-01-echo");
    game.Keys("rx a<Enter>tx a<F8>");
    REQUIRE(game.Top() == "results");
    CHECK(fake::Text(game.shell.Draw(), {10, 3, 60, 17}) ==
          "╔═ VERIFY ═════════════════════════════════════════════════╗\n"
          "║                                                          ║\n"
          "║  2 of 2 passed. First solve.                             ║\n"
          "║                                                          ║\n"
          "║             This run      Best  Reference                ║\n"
          "║  Tests        2 of 2    2 of 2     2 of 2                ║\n"
          "║  Ticks            13        13         13   √ at par     ║\n"
          "║  Lines             2         2          2   √ at par     ║\n"
          "║                                                          ║\n"
          "║  Achievements: Both Scores, First Ticket                 ║\n"
          "║  Closed in shift 1: 1 of 2                               ║\n"
          "║  New keys: F2 Card, F6 Step, Ctrl+R Reset.               ║\n"
          "║                                                          ║\n"
          "╟──────────────────────────────────────────────────────────╢\n"
          "║            ► Next ticket ◄▄ [ Keep editing ]▄            ║\n"
          "║             ▀▀▀▀▀▀▀▀▀▀▀▀▀▀▀  ▀▀▀▀▀▀▀▀▀▀▀▀▀▀▀▀            ║\n"
          "╚══════════════════════════════════════════════════════════╝\n");
    CHECK(game.system.disk.files.at(kEchoFile) == "rx a\ntx a");
    CHECK(game.system.disk.files.contains("data/progress.json"));
    game.Keys("<Esc>");
    CHECK(game.Top() == "bench");
    CHECK(game.Status() ==
          " Achievement: First Ticket                                          F2 F5 F6 F8");
    CHECK(game.KeyBar() == " F2 Card  F5 Run  F6 Step  F8 Verify  Esc Menu");

    // The second close is no first solve, and a longer program is not at par.
    game.Keys("<Ctrl+Home>nop<Enter><F8>");
    CHECK(fake::Text(game.shell.Draw(), {10, 6, 60, 6}) ==
          "║  2 of 2 passed                                           ║\n"
          "║                                                          ║\n"
          "║             This run      Best  Reference                ║\n"
          "║  Tests        2 of 2    2 of 2     2 of 2                ║\n"
          "║  Ticks            13        13         13   √ at par     ║\n"
          "║  Lines             3         2          2                ║\n");
    game.Keys("<Enter>");
    CHECK(game.Top() == "bench");
    CHECK(game.shell.Progress().current == "1-02-clerk");
}

TEST_CASE("keys of stages not reached do nothing, and what cannot run says why") {
    const struct {
        int closed;
        std::string_view keys;
        std::string_view status;
    } cases[] = {
        {0, "<F6>", "Assembled: 0 errors, 1 line."},
        {0, "<F7>", "Assembled: 0 errors, 1 line."},
        {0, "<Ctrl+R>", "Assembled: 0 errors, 1 line."},
        {0, "<Ctrl+PgDn>", "Assembled: 0 errors, 1 line."},
        {0, "<F10>", "Assembled: 0 errors, 1 line."},
        {0, "<Ctrl+S>", "Firmware saved."},
        {0, "<F5>", "Running Test 1 of 2: Letters."},
        {0, "<F5><F5>", "Paused at tick 0."},
        {0, "<F5><Esc>", "Paused at tick 0."},
        {1, "<F6>", "Tick 4. Next line 1."},
        {1, "<F7>", "Tick 4. Next line 1."},
        {1, "<Ctrl+R>", "Reset to tick 0."},
        {1, "<Ctrl+PgDn>", "Test 2 of 2: A zero."},
        {1, "<Ctrl+PgDn><Ctrl+PgDn><Ctrl+PgUp>", "Test 1 of 2: Letters."},
        {2, "<Enter>shr a<F5>", "! Line 2: shr takes 2 operands."},
    };
    for (const auto& c : cases) {
        CAPTURE(c.closed);
        CAPTURE(c.keys);
        Game game("1-01-echo", kNarrow, c.closed);
        game.Keys("rx a");
        if (c.closed == 1 && c.keys == "<F7>") game.Keys("<F6>");
        game.Keys(c.keys);
        CHECK(game.Status().starts_with(" " + std::string(c.status) + " "));
        CHECK(game.Top() == "bench");
    }
}

TEST_CASE("Esc opens the menu when nothing runs, and a menu pauses a running test") {
    Game game("1-01-echo", kNarrow, 2);
    game.Keys("rx a<Esc>");
    CHECK(game.Top() == "pause");
    game.shell.CloseOverlay();
    game.Keys("<F5><F10>");
    CHECK(game.Top() == "pause");
    game.shell.CloseOverlay();
    CHECK(game.Status().starts_with(" Paused at tick 0. "));
}

TEST_CASE("side panes come to the front by key and pointer; focus goes around") {
    Game game("1-02-clerk", kNarrow, 1);
    const auto tabs = [&] { return game.Row(1).substr(game.Row(1).find("╗") + 3); };
    game.Keys("<Alt+O>");
    CHECK(fake::Text(game.shell.Draw(), {46, 1, 34, 8}) ==
          "┌TICKET─HINTS─SPEC─[HOST]─NOTES──┐\n"
          "│ HOST IN  message 1 of 2        │\n"
          "│          0 of 3 read           │\n"
          "│   1  \"LOG\"  from tick 0        │\n"
          "│   2  07 08  from tick 20       │\n"
          "│ SPEC OUT 0 of 1 byte delivered │\n"
          "│ spec  06                       │\n"
          "│ card                           │\n");
    game.Keys("<F2>");
    CHECK(tabs() == "┌─ CARD ──────────────────── F2 ─┐");
    game.Keys("<F2>");
    CHECK(tabs() == "┌TICKET─HINTS─SPEC─[HOST]─NOTES──┐");
    game.Click(56, 1);
    CHECK(game.Row(1).ends_with("╔TICKET═[HINTS]═SPEC═HOST═NOTES══╗"));
    CHECK(game.Row(2).ends_with("║ none                           ║"));
    game.Keys("<Right>");
    CHECK(game.Row(1).ends_with("╔TICKET═HINTS═[SPEC]═HOST═NOTES══╗"));
    game.Click(10, 5);
    CHECK(tabs() == "┌TICKET─HINTS─[SPEC]─HOST─NOTES──┐");
    // Pane, strip, trace, and the editor again.
    game.Keys("<Ctrl+Tab><Ctrl+Tab> ");
    CHECK(game.Row(13).ends_with(" ►Reset◄ Speed ◄Brisk ►"));
    CHECK(game.Status().starts_with(" Reset to tick 0. "));
    game.Keys("<Tab><Tab>x");
    CHECK(game.Row(2).starts_with("║!  1  x"));
}

TEST_CASE("hints are shown one by one and counted") {
    Game game("1-01-echo", kWide);
    CHECK(game.Row(31).starts_with("┌─ HINTS ─ 0 of 2 ─"));
    game.Click(40, 38);
    CHECK(fake::Text(game.shell.Draw(), {0, 31, 48, 9}) ==
          "╔═ HINTS ═ 1 of 2 ═════════════════════════════╗\n"
          "║ 1  Read a byte.                              ║\n"
          "║                                              ║\n"
          "║                                              ║\n"
          "║                                              ║\n"
          "║                                              ║\n"
          "║                                              ║\n"
          "║                                ► Show hint ◄ ║\n"
          "╚══════════════════════════════════════════════╝\n");
    game.Keys("<Enter><Enter>");
    CHECK(game.Row(38).starts_with("║                                · Show hint · ║"));
    CHECK(game.shell.Progress().tickets.at("1-01-echo").hints_revealed == 2);
}

TEST_CASE("firmware is loaded from its file and saved on leaving, and on closing") {
    Game game("1-01-echo");
    game.system.disk.files[kEchoFile] = "tx 7\n";
    game.Open("1-01-echo");
    CHECK(game.Row(2).starts_with("║   1  tx 7"));
    game.Keys("<Ctrl+Home>nop<Enter>");
    game.Open("1-02-clerk");
    CHECK(game.system.disk.files.at(kEchoFile) == "nop\ntx 7\n");
    game.Open("1-01-echo");
    game.Keys(";");
    game.shell.Quit();
    CHECK(game.shell.Done());
    CHECK(game.system.disk.files.at(kEchoFile) == ";nop\ntx 7\n");

    Game full("1-01-echo");
    full.system.disk.full = "No space left on device";
    full.Keys("nop<Ctrl+S>");
    CHECK(fake::Text(full.shell.Draw(), {0, 22, 80, 2}) ==
          " ! Firmware could not be saved: cannot write\n"
          " data/firmware/1-01-echo.lc1 (No space left on device)\n");
}

TEST_CASE("a ticket that does not exist is named") {
    Game game("9-99-nothing");
    CHECK(game.Top() == "bench");
    CHECK(game.Row(2).find("║ Ticket not found: 9-99-nothing") != std::string::npos);
    game.Keys("x<Esc>");
    CHECK(game.Top() == "pause");
}

TEST_CASE("captures reach their states without touching the player's firmware") {
    const struct {
        std::string_view request;
        std::string_view screen;
        std::string_view status;
    } cases[] = {
        {"empty", "bench", "Assembled: 0 errors, 0 lines."},
        {"errors", "bench", "! Line 2: "},
        {"running", "bench", "Running Test 1 of 2: Letters."},
        {"failed", "bench", "! Test 1 of 2: FAIL. "},
        {"passed", "bench", "Test 1 of 2: PASS. Last output at tick 8."},
        {"results", "results", "Verify: 2 of 2 passed."},
    };
    for (const auto& c : cases) {
        CAPTURE(c.request);
        Game game("1-01-echo", kMedium, 0);
        CHECK(game.shell.Top()->CaptureRequest(c.request));
        CHECK(game.Top() == c.screen);
        CHECK(game.Status().starts_with(" " + std::string(c.status)));
        game.shell.Quit();
        CHECK(game.system.disk.files.empty());
    }
    Game game("1-01-echo");
    CHECK_FALSE(game.shell.Top()->CaptureRequest("unknown"));
}
