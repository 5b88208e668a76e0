#include <doctest/doctest.h>

#include "card/assembler.h"
#include "listing.h"

TEST_CASE("a line is encoded whatever its blanks, case and comment") {
    const struct {
        std::string_view source, listing;
    } cases[] = {
        {"", ""},
        {"\n\n", ""},
        {"nop", "nop"},
        {"\t MOV\tA ,B\t; copy", "mov a b"},
        {"nop;tx 1", "nop"},
        {"loop:jmp loop", "jmp >0"},
        {"nop\n .l_1\t: \n _m :n: jmp .L_1\njmp N", "nop; jmp >1; jmp >1"},
        {"jmp end\nnop\nend:", "jmp >2; nop"},
        {"jmp x\ndef N 1\nx: def M 2\nnop", "jmp >1; nop"},
        {"mov [3], a\nmov b, [ D ]\nmov [rxn], $FFFF", "mov [3] a; mov b [d]; mov [rxn] 65535"},
        {"x: jeq a, -1, X\njlt clk, rxn, x", "jeq a 65535 >0; jlt clk rxn >0"},
        {"x: djn crc, x\ncall x\nret", "djn crc >0; call >0; ret"},
        {"x: rx a\nrx b, x\nhin c, x\nhin d", "rx a; rx b >0; hin c >0; hin d"},
        {"tx ','\ntx ';' ; \"';'\"\nmov a, ',' ; two", "tx 44; tx 59; mov a 44"},
        {"tx '\\''\nmov [';'], a ; '", "tx 39; mov [59] a"},
        {"x: jeq '\\'',';',x", "jeq 39 59 >0"},
        {"halt\r\nhalt\r\n", "halt; halt"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.source);
        kp::CardConfig config = FullCard();
        config.ram = 64;
        const kp::Assembly assembly = kp::Assemble(c.source, config);
        CHECK(assembly.errors.empty());
        CHECK(Listing(assembly) == c.listing);
    }
}

TEST_CASE("a comma or a semicolon in an unclosed literal is none of it") {
    CHECK(Errors("tx ' ; a", FullCard()) == "1:4+1 \"'\" is not a valid number.");
    CHECK(Errors("mov a, 'b, c", FullCard()) == "1:1+3 mov takes 2 operands.");
}

TEST_CASE("a number reads alike as an operand, as an address and after def") {
    const struct {
        std::string_view number;
        int word;
    } cases[] = {
        {"12", 12},     {"+7", 7},       {"-1", 65535},    {"-32768", 32768}, {"65535", 65535},
        {"007", 7},     {"1_000", 1000}, {"-_1_", 65535},  {"$C1", 0xC1},     {"$c_1", 0xC1},
        {"0xC1", 0xC1}, {"0XfF", 255},   {"-$10", 65520},  {"+0x10", 16},     {"%1100_0001", 193},
        {"0b11", 3},    {"0B_1", 1},     {"-%1", 65535},   {"'A'", 65},       {"' '", 32},
        {"'\"'", 34},   {"'\\n'", 10},   {"'\\r'", 13},    {"'\\t'", 9},      {"'\\0'", 0},
        {"'\\\\'", 92}, {"'\\''", 39},   {"'\xE9'", 0xE9},
    };
    kp::CardConfig config = FullCard();
    config.ram = 256;
    for (const auto& c : cases) {
        const std::string number(c.number);
        const std::string word = std::to_string(c.word);
        CAPTURE(number);
        CHECK(Listing(kp::Assemble("tx " + number, config)) == "tx " + word);
        CHECK(Listing(kp::Assemble("def N " + number + "\ntx n", config)) == "tx " + word);
        if (c.word < config.ram) {
            CHECK(Listing(kp::Assemble("mov a, [" + number + "]", config)) ==
                  "mov a [" + word + "]");
        }
    }
}

TEST_CASE("a number that is malformed or too large says so") {
    for (const char* number :
         {"+",  "-",  "$",   "%",    "0x",    "0b",   "$_",         "--1",  "-+1",
          "1A", "$G", "%2",  "0b2",  "0x1h",  "1.5",  "12h",        "0_x1", "-'A'",
          "'",  "''", "'''", "'\\'", "'\\x'", "'ab'", "'\xC3\xA9'", "5 6"}) {
        const std::string length = std::to_string(std::string_view(number).size());
        CHECK(Errors(std::string("tx ") + number, FullCard()) ==
              "1:4+" + length + " \"" + number + "\" is not a valid number.");
    }
    const struct {
        std::string_view number, printed;
    } too_large[] = {
        {"70000", "70000"},
        {"65536", "65536"},
        {"-32769", "-32769"},
        {"+0x1_0000", "65536"},
        {"$FFFFFFFF", "4294967295"},
        {"99999999999999999999999", "99999999999999999999999"},
        {"-$FFFFFFFFFFFFFFFFF", "-$FFFFFFFFFFFFFFFFF"},
    };
    for (const auto& c : too_large) {
        const std::string length = std::to_string(c.number.size());
        CHECK(Errors("tx " + std::string(c.number), FullCard()) ==
              "1:4+" + length + " The number " + std::string(c.printed) +
                  " does not fit in 16 bits.");
    }
}

TEST_CASE("labels and constants keep the spelling and the line of their definition") {
    const kp::Assembly assembly = kp::Assemble(
        "def One, 1\n\nLoop: x: tx x\ndef Two one\nx1: jmp LOOP\ndef X -2", FullCard());
    REQUIRE(assembly.labels.size() == 3);
    CHECK(assembly.labels[0].name == "Loop");
    CHECK(assembly.labels[0].line == 3);
    CHECK(assembly.labels[2].value == 1);
    REQUIRE(assembly.constants.size() == 3);
    CHECK(assembly.constants[1].name == "Two");
    CHECK(assembly.constants[1].value == 1);
    CHECK(assembly.constants[2].value == 65534);
    CHECK(assembly.constants[2].line == 6);
    // The name of both a label and a constant is the constant where a value stands.
    CHECK(Listing(assembly) == "tx 65534; jmp >0");
    CHECK(assembly.instructions[1].line == 5);
}
