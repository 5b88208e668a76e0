#include "card/instructions.h"

#include <doctest/doctest.h>

#include "card/byte_text.h"
#include "card/crc16.h"

TEST_CASE("the opcodes stand in the order of their encoding") {
    std::string names;
    for (const kp::InstructionInfo& info : kp::Instructions()) {
        CHECK(&kp::Info(info.op) == &info);
        CHECK(kp::FindInstruction(info.name) == &info);
        names += std::string(info.name) + " ";
    }
    CHECK(names ==
          "nop mov add sub and or xor shl shr jmp jeq jne jlt jgt djn call ret tx rx hin "
          "hout wait tmr crc halt ");
}

TEST_CASE("names are found in any case, and whole") {
    CHECK(kp::FindInstruction("HaLt") == &kp::Info(kp::Op::Halt));
    CHECK(kp::FindRegister("RxN") == kp::kRxn);
    for (const char* name : {"", "mo", "movs", "e", "cr"}) {
        CHECK(kp::FindInstruction(name) == nullptr);
        CHECK(kp::FindRegister(name) == std::nullopt);
    }
}

TEST_CASE("a byte is written with its character when that can be printed") {
    const struct {
        std::uint8_t byte;
        std::string verdict, note;
    } cases[] = {
        {0x00, "$00", "$00"},           {0x1F, "$1F", "$1F"},
        {0x20, "$20 (' ')", "$20 ' '"}, {0x48, "$48 ('H')", "$48 'H'"},
        {0x7E, "$7E ('~')", "$7E '~'"}, {0x7F, "$7F", "$7F"},
        {0xFF, "$FF", "$FF"},
    };
    for (const auto& c : cases) {
        CHECK(kp::VerdictByte(c.byte) == c.verdict);
        CHECK(kp::NoteByte(c.byte) == c.note);
    }
}

TEST_CASE("the CRC of the nine digits is the known one, and its own bytes bring it to 0") {
    std::uint16_t crc = kp::kCrc16Start;
    for (const char c : std::string_view("123456789")) {
        crc = kp::Crc16Step(crc, static_cast<std::uint8_t>(c));
    }
    CHECK(crc == 0x29B1);
    CHECK(kp::Crc16Step(kp::Crc16Step(crc, 0x29), 0xB1) == 0);
}
