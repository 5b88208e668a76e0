#include "card/assembler.h"

#include <doctest/doctest.h>

#include "listing.h"

TEST_CASE("an instruction's error is marked and worded") {
    const struct {
        std::string_view source, error;
    } cases[] = {
        {"frob a", "1:1+4 Unknown instruction \"frob\"."},
        {"  Frob,x", "1:3+6 Unknown instruction \"Frob,x\"."},
        {"5: nop", "1:1+2 Unknown instruction \"5:\"."},
        {"ret 1", "1:1+3 ret takes no operands."},
        {"RX", "1:1+2 rx takes 1 or 2 operands."},
        {"hin a, x, y", "1:1+3 hin takes 1 or 2 operands."},
        {"tx a,", "1:1+2 tx takes 1 operand."},
        {"jeq a, 1", "1:1+3 jeq takes 3 operands."},
        {"mov a", "1:1+3 mov takes 2 operands."},
        {"rx a,", "1:6+0 An operand is missing here."},
        {"rx a ,  ; late", "1:7+0 An operand is missing here."},
        {"mov , a", "1:5+0 An operand is missing here."},
        {"mov [], a", "1:5+2 An operand is missing here."},
        {"mov a, [1", "1:8+2 This RAM cell is missing its closing bracket."},
        {"mov a, [", "1:8+1 This RAM cell is missing its closing bracket."},
        {"tx [0", "1:4+2 This RAM cell is missing its closing bracket."},
        {"add [0], 1", "1:5+3 Only mov can read or write a RAM cell."},
        {"tx [ 0 ]", "1:4+5 Only mov can read or write a RAM cell."},
        {"jmp [0]", "1:5+3 Only mov can read or write a RAM cell."},
        {"mov [16], a", "1:5+4 RAM address 16 is outside this card's RAM (0 to 15)."},
        {"mov a, [ -1 ]", "1:8+6 RAM address -1 is outside this card's RAM (0 to 15)."},
        {"mov a, [70000]", "1:8+7 The number 70000 does not fit in 16 bits."},
        {"mov a, [$]", "1:8+3 \"$\" is not a valid number."},
        {"mov a, [it]", "1:8+4 Unknown name \"it\"."},
        {"mov clk, 0", "1:5+3 Register clk is read-only."},
        {"rx RXN", "1:4+3 Register rxn is read-only."},
        {"add 1, 2", "1:5+1 add needs a register here."},
        {"DJN e, x", "1:5+1 djn needs a register here."},
        {"mov 5, a", "1:5+1 mov needs a register or a RAM cell to write."},
        {"here: tx Here", "1:10+4 \"Here\" is a label; a value is expected here."},
        {"tx a b", "1:4+3 Unknown name \"a b\"."},
        {"tx \xC3\xA9", "1:4+2 Unknown name \"\xC3\xA9\"."},
        {"tx #5", "1:4+2 Unknown name \"#5\"."},
        {"jmp 1", "1:5+1 Label \"1\" is not defined."},
        {"jmp a", "1:5+1 Label \"a\" is not defined."},
        {"djn a, Gone", "1:8+4 Label \"Gone\" is not defined."},
        {"rx a, late", "1:7+4 Label \"late\" is not defined."},
        {"mov [0], [1]", "1:1+3 mov cannot copy from RAM to RAM in one step."},
        {"x: mov [a], [x]", "1:13+3 \"x\" is a label; a value is expected here."},
    };
    for (const auto& c : cases) {
        CAPTURE(c.source);
        CHECK(Errors(c.source, FullCard()) == c.error);
    }
}

TEST_CASE("a part that the card lacks is an error, before what is read-only or missing beside it") {
    const struct {
        std::string_view source, error;
    } cases[] = {
        {"mov clk, 0", "1:5+3 This card has no clock."},
        {"tx CLK", "1:4+3 This card has no clock."},
        {"mov crc, 0", "1:5+3 This card has no CRC engine."},
        {"crc a", "1:1+3 This card has no CRC engine."},
        {"crc B", "1:5+1 Register b is not fitted on this card."},
        {"add D, 1", "1:5+1 Register d is not fitted on this card."},
        {"mov a, [0]", "1:8+3 This card has no RAM."},
        {"mov [b], a", "1:5+3 This card has no RAM."},
        {"tx [0]", "1:4+3 Only mov can read or write a RAM cell."},
        {"  tmr 5", "1:3+3 This card has no timer."},
        {"tmr x", "1:5+1 Unknown name \"x\"."},
        {"l: rx a, L", "1:10+1 A timeout target needs a timer, and this card has none."},
        {"l: hin a, l", "1:11+1 A timeout target needs a timer, and this card has none."},
        {"hin a", "1:1+3 This card has no host port."},
        {"hout a", "1:1+4 This card has no host port."},
    };
    for (const auto& c : cases) {
        CAPTURE(c.source);
        CHECK(Errors(c.source, BareCard()) == c.error);
    }
    CHECK(Errors("tx rxn\nrx a", BareCard()) == "");

    kp::CardConfig two_registers;
    two_registers.registers = 0b0011;
    CHECK(Errors("mov a, [c]", two_registers) == "1:8+3 Register c is not fitted on this card.");
}

TEST_CASE("a definition's error is marked and worded") {
    const struct {
        std::string_view source, error;
    } cases[] = {
        {"Tx: nop", "1:1+2 \"Tx\" is a reserved word and cannot name a label."},
        {"rxn : nop", "1:1+3 \"rxn\" is a reserved word and cannot name a label."},
        {"def: nop", "1:1+3 \"def\" is a reserved word and cannot name a label."},
        {"x:\n\n  X:", "3:3+1 Label \"X\" is already defined on line 1."},
        {"x: x:", "1:4+1 Label \"x\" is already defined on line 1."},
        {"def", "1:1+3 def needs a name and a value, as in: def SYNC $C1"},
        {" DEF N", "1:2+3 def needs a name and a value, as in: def SYNC $C1"},
        {"def N, ; 1", "1:1+3 def needs a name and a value, as in: def SYNC $C1"},
        {"def , 1", "1:1+3 def needs a name and a value, as in: def SYNC $C1"},
        {"def 1N 1", "1:5+2 A constant name starts with a letter."},
        {"def _N 1", "1:5+2 A constant name starts with a letter."},
        {"def N.a 1", "1:5+3 A constant name holds only letters, digits, and underscores."},
        {"def N: 1", "1:5+2 A constant name holds only letters, digits, and underscores."},
        {"def Crc 1", "1:5+3 \"Crc\" is a reserved word and cannot name a constant."},
        {"def def 1", "1:5+3 \"def\" is a reserved word and cannot name a constant."},
        {"def N 1\ndef n 2", "2:5+1 Constant \"n\" is already defined on line 1."},
        {"def N M\ndef M 1", "1:7+1 \"M\" is not a number."},
        {"def N N", "1:7+1 \"N\" is not a number."},
        {"def N = 5", "1:7+3 \"= 5\" is not a number."},
        {"def N,, 5", "1:7+3 \", 5\" is not a number."},
        {"def N $", "1:7+1 \"$\" is not a number."},
        {"def N a", "1:7+1 \"a\" is not a number."},
        {"def N -32769", "1:7+6 The number -32769 does not fit in 16 bits."},
    };
    for (const auto& c : cases) {
        CAPTURE(c.source);
        CHECK(Errors(c.source, FullCard()) == c.error);
    }
}

TEST_CASE("every error of every line is listed, in the order of the passes") {
    kp::CardConfig config;
    config.rom = 8;
    config.registers = 0b0111;
    CHECK(Errors("def SYNC $G1          ; a wrong digit\r\n"
                 "tx SYNC               ; so nothing is defined\r\n"
                 "loop: mov d, 1\r\n"
                 "rx: LOOP: hin a, 5    ; two wrong labels and a target\r\n"
                 "tmr 70000\r\n"
                 "frob\r\n"
                 "add [1], 1\r\n"
                 "jmp loop\r\n"
                 "\r\n"
                 "mov [1], [a]\r\n"
                 "ret                   ; the first that the ROM does not hold\r\n"
                 "jeq a, 1 loop",
                 config) ==
          "1:10+3 \"$G1\" is not a number.\n"
          "4:1+2 \"rx\" is a reserved word and cannot name a label.\n"
          "4:5+4 Label \"LOOP\" is already defined on line 3.\n"
          "2:4+4 Unknown name \"SYNC\".\n"
          "3:11+1 Register d is not fitted on this card.\n"
          "4:18+1 Label \"5\" is not defined.\n"
          "5:5+5 The number 70000 does not fit in 16 bits.\n"
          "6:1+4 Unknown instruction \"frob\".\n"
          "7:5+3 Only mov can read or write a RAM cell.\n"
          "10:1+3 mov cannot copy from RAM to RAM in one step.\n"
          "12:1+3 jeq takes 3 operands.\n"
          "11:1+0 The program needs 10 instructions; this card's ROM holds 8.");
}

TEST_CASE("only lines of firmware take ROM") {
    kp::CardConfig config;
    config.rom = 2;
    const char* full = "; comment\n\ndef N 1\nx:\n y: tx N\n\t\nhalt\n; end";
    CHECK(Errors(full, config) == "");
    CHECK(kp::Assemble(full, config).lines == 2);
    CHECK(Errors("nop\nnop\nx:\n def N 1\ny: nop", config) ==
          "5:1+0 The program needs 3 instructions; this card's ROM holds 2.");
    CHECK(kp::Assemble("nop\nfrob\nnop", config).lines == 3);
}
