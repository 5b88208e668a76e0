#include "bench/firmware_help.h"

#include <doctest/doctest.h>

#include "base/utf.h"

using namespace Kest;

TEST_CASE("completion offers what the place takes and the card has, what suits it first") {
    const kp::CardConfig card = {.registers = 0b0101, .clock = true};
    const kp::Assembly firmware = kp::Assemble("def ACK $06\nloop: nop\nend: nop", card);
    const struct {
        std::u16string_view before;
        std::string_view items;  // the first ones
    } cases[] = {
        {u"", "nop mov add sub"},
        {u"loop: ", "nop mov add sub"},
        {u"mov ", "a c clk rxn loop end ACK"},
        {u"mov a, ", "a c clk rxn ACK loop end"},
        {u"add ", "a c clk rxn loop end ACK"},
        {u"tx ", "a c clk rxn ACK loop end"},
        {u"jmp ", "loop end a c clk rxn ACK"},
        {u"jeq a, 1, ", "loop end a c clk rxn ACK"},
        {u"rx a, ", "loop end a c clk rxn ACK"},
        {u"tx a, ", "a c clk rxn loop end ACK"},
        {u"def SYNC ", "a c clk rxn ACK loop end"},
        {u"tx 'x", ""},
        {u"tx ','; ", ""},
        {u"tx ',', ", "a c clk rxn loop end ACK"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.items);
        std::string items;
        for (const auto& item : CompleteFirmware(c.before, card, firmware)) {
            items += (items.empty() ? "" : " ") + item.text;
        }
        CHECK((items.empty() ? "" : items.substr(0, c.items.size())) == c.items);
        CHECK(items.empty() == c.items.empty());
    }
    for (const auto& item : CompleteFirmware(u"", card, firmware)) {
        CHECK((item.text != "crc" && item.text != "tmr"));
        if (item.text == "shl") CHECK(item.detail == "r = r shifted left by v bits");
    }
}

TEST_CASE("an instruction is described with the operand that is due in brackets") {
    const struct {
        std::u16string_view line;
        int column;
        std::string_view hint;
    } cases[] = {
        {u"mov a, 1", 3, "<mov> target, source: target = source"},
        {u"mov a, 1", 4, "mov <target>, source: target = source"},
        {u"l: MOV a, 1", 11, "mov target, <source>: target = source"},
        {u"jlt a, 1, l", 7, "jlt x, <y>, label: jumps if x is less than y, signed"},
        {u"rx a", 4, "rx <r>[, label]: r = oldest byte, or jumps when the timer has run out"},
        {u"tx ','", 6, "tx <v>: sends the low byte of v"},
        {u"halt 1", 6, "<halt>: stops the card for good"},
        {u"tx a ; then", 8, ""},
        {u"  tx a", 1, ""},
        {u"loop:", 3, ""},
        {u"def A 1", 6, ""},
    };
    for (const auto& c : cases) {
        CAPTURE(c.hint);
        const auto hint = DescribeInstruction(c.line, c.column);
        std::string marked = hint.text;
        if (!marked.empty()) {
            marked.insert(static_cast<std::size_t>(hint.from + hint.length), ">");
            marked.insert(static_cast<std::size_t>(hint.from), "<");
        }
        CHECK(marked == c.hint);
    }
}
