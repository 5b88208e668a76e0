#include <doctest/doctest.h>

#include "call.h"

TEST_CASE("each command writes text that a person can read") {
    const Bench bench;
    AddEcho(bench);
    bench.Write("deaf.lc1", " tx 'H'\nl: jmp l\n");
    bench.Write("bad.lc1", " tx a\n  hlat\n");
    bench.Write("a.json", "[1,]");
    bench.Write("b.json", "[1");
    const std::string echo = kEcho;
    const struct {
        std::string arguments;
        int code;
        std::string text;
    } cases[] = {
        {"json a.json", 0, "[\n  1\n]\n"},
        {"json b.json", 1, "b.json:1:3: unterminated array\n"},
        {"asm --ticket echo.json bad.lc1", 1, "bad.lc1:2:3: Unknown instruction \"hlat\".\n"},
        {"asm --ticket echo.json mine.lc1", 0,
         "index  line  op    operands     target\n"
         "    0     1  rx    a\n"
         "    1     2  tx    a\n"
         "    2     3  jne   a, 33 ($21)  0 (loop)\n"
         "    3     4  halt\n"
         "ROM 4 of 8\n"},
        {"run --test 1 mine.lc1 " + echo, 0,
         "Test 1 of 3: Word\n\n"
         "tick  line  card to far end  far end to card      notes\n"
         "   3     1                   $48 'H', rx $48 'H'  word\n"
         "   4     2  $48 'H'\n"
         "   8     1                   $49 'I', rx $49 'I'\n"
         "   9     2  $49 'I'\n"
         "  13     1                   $21 '!', rx $21 '!'\n"
         "  14     2  $21 '!'\n"
         "  16     4                                        the card halts\n\n"
         "√ passed in 15 ticks\n"},
        {"verify mine.lc1 " + echo, 0,
         "√  Word     15 ticks\n"
         "√  Noise 1  22 ticks\n"
         "√  Noise 2  22 ticks\n\n"
         "All 3 tests pass in 59 ticks with 4 lines.\n"
         "The reference takes 59 ticks with 4 lines.\n"},
        {"verify deaf.lc1 " + echo, 1,
         "!  Word     failed\n"
         "!  Noise 1  failed\n"
         "!  Noise 2  failed\n\n"
         "Test 1 of 3: The test reached its limit of 200 ticks before it finished. The card was "
         "running at line 2.\n"
         "Your program ran 200 ticks and produced 1 of 3 expected bytes. Line 2 repeats and never "
         "reaches a halt.\n"
         "0 of 3 passed.\n"},
        {"verify bad.lc1 " + echo, 1, "Line 2: Unknown instruction \"hlat\".\n"},
        {"bytes --ticket echo.json", 0,
         "Word  0xa02502fdc1710000\n"
         "  line  at 3  48 49 21  gap 5  (word)\n"
         "Noise 1  0xa02503fdc17101b3\n"
         "  line  at 0   34 33 32\n"
         "  line  at 20  21\n"
         "Noise 2  0xa02504fdc1710366\n"
         "  line  at 0   30 33 32 37\n"
         "  line  at 20  21\n"},
        {"show --ticket echo.json --hints 1", 0,
         "t-01-echo  Echo\n"
         "Test  ♦♦···\n\n"
         "Send what arrives.\n\n"
         "Stop at $21.\n\n"
         "Card\n"
         "  ROM             8 lines\n"
         "  RAM             2 cells\n"
         "  Registers       a b\n"
         "  Units           host timer\n"
         "  Receive buffer  16 bytes\n"
         "  Transmitter     1 tick a byte\n"
         "  Call stack      8 deep\n\n"
         "Tests\n"
         "  1  Word\n"
         "  2  Noise 1\n"
         "  3  Noise 2\n\n"
         "Hints\n"
         "  1. One.\n"},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.arguments));
        const Answer answer = bench.Call(c.arguments);
        CHECK(answer.code == c.code);
        CHECK(answer.err.empty());
        CHECK(answer.out == c.text);
    }
}

TEST_CASE("a built-in ticket is named by its id or its first four characters") {
    const Bench bench;
    bench.Write("two.lc1", "rx a\ntx a\n");
    for (const char* name : {"1-02", "1-02-loopback"}) {
        const Answer answer = bench.Call("verify " + std::string(name) + " two.lc1");
        CHECK(answer.code == 0);
        CHECK(answer.out.find("tests pass in") != std::string::npos);
    }
    const Answer list = bench.Call("list");
    CHECK(list.code == 0);
    CHECK(list.out.find("1-02-loopback") != std::string::npos);
}
