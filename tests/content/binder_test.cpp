// The binder's pages: which there are, how they are written, and that their tables are the
// program's.

#include <doctest/doctest.h>

#include <algorithm>
#include <cctype>

#include "base/format.h"
#include "base/wrap.h"
#include "binder_blocks.h"
#include "card/assembler.h"
#include "content/lint.h"
#include "support/lines.h"
#include "support/text.h"

namespace {

using binder::Block;
using binder::Columns;

constexpr std::string_view kPages[] = {
    "lc1 1.1 The LC-1",
    "registers 1.2 Registers",
    "numbers 1.3 Numbers",
    "labels 1.4 Labels and names",
    "wrap 1.5 The last line",
    "ram 1.6 RAM",
    "timer 1.7 Timer",
    "crc-engine 1.8 CRC engine",
    "calls 1.9 Calls",
    "faults 1.10 Faults",
    "scores 1.11 Scores",
    "op-mov 2.1 mov",
    "op-add 2.2 add",
    "op-sub 2.3 sub",
    "op-and 2.4 and",
    "op-or 2.5 or",
    "op-xor 2.6 xor",
    "op-shl 2.7 shl",
    "op-shr 2.8 shr",
    "op-jmp 2.9 jmp",
    "op-jeq 2.10 jeq",
    "op-jne 2.11 jne",
    "op-jlt 2.12 jlt",
    "op-jgt 2.13 jgt",
    "op-djn 2.14 djn",
    "op-call 2.15 call",
    "op-ret 2.16 ret",
    "op-tx 2.17 tx",
    "op-rx 2.18 rx",
    "op-hin 2.19 hin",
    "op-hout 2.20 hout",
    "op-wait 2.21 wait",
    "op-tmr 2.22 tmr",
    "op-crc 2.23 crc",
    "op-nop 2.24 nop",
    "op-halt 2.25 halt",
    "frames 3.1 Frames",
    "checksums 3.2 Checksums",
    "parity 3.3 Parity",
    "crc 3.4 CRC",
    "house-frame 3.5 House frame",
    "ack-nak 3.6 ACK and NAK",
    "sequence-numbers 3.7 Sequence numbers",
    "timeouts 3.8 Timeouts",
    "flow-control 3.9 Flow control",
    "line-rate 3.10 Line rate",
    "backoff 3.11 Backoff",
    "slip 3.12 SLIP",
    "run-length 3.13 Run length",
    "sessions 3.14 Sessions",
    "polling 3.15 Polling",
    "fragmentation 3.16 Fragmentation",
    "nmea 3.17 NMEA",
    "modbus 3.18 Modbus",
    "xmodem 3.19 XMODEM",
    "the-lab 4.1 The lab",
    "ascii 4.2 ASCII",
    "vi-keys 4.3 Vi keys",
};

std::string_view SectionOf(std::string_view number) {
    switch (number.front()) {
        case '1':
            return "The LC-1";
        case '2':
            return "Instructions";
        case '3':
            return "Protocols";
        default:
            return "Appendix";
    }
}

// Widths at which a page is read: the smallest grid, the measure it is written for, the widest.
constexpr int kSmallest = 50;
constexpr int kWritten = 66;
constexpr int kWidest = 84;

int RowsAt(const kp::BinderPage& page, int width) {
    int rows = 0;
    for (const std::string& item : page.body) {
        const auto wrapped = kp::IsKept(item) ? std::vector{item} : base::WrapPlain(item, width);
        for (const std::string& row : wrapped) CHECK(row.size() <= static_cast<std::size_t>(width));
        rows += static_cast<int>(wrapped.size());
    }
    return rows;
}

std::string_view NameOf(kp::OperandKind kind, bool optional) {
    switch (kind) {
        case kp::OperandKind::MovTarget:
            return "target";
        case kp::OperandKind::MovSource:
            return "source";
        case kp::OperandKind::Register:
            return "register";
        case kp::OperandKind::Value:
            return "value";
        case kp::OperandKind::Label:
            break;
    }
    return optional ? "target" : "label";
}

std::string Syntax(const kp::InstructionInfo& info, int count) {
    std::string text(info.name);
    for (int k = 0; k < count; ++k) {
        text += k == 0 ? " " : ", ";
        text += NameOf(info.operands[static_cast<std::size_t>(k)], k >= info.Least());
    }
    return text;
}

kp::CardConfig Card(std::string_view json) {
    const json::Value machine = support::Json(json);
    return *kp::ReadCardConfig(machine);
}

kp::Assembly Made(const std::string& line) {
    return kp::Assemble(line, Card(R"({"crc": true, "timer": true, "clock": true})"));
}

// What the assembler makes of a number.
std::string WordOf(const std::string& number) {
    const kp::Assembly made = Made("mov a, " + number);
    if (!made.errors.empty()) return made.errors.front().message;
    return binder::Dollar(made.instructions[0].operands[1].value, 4);
}

}  // namespace

TEST_CASE("the binder has its pages, in order") {
    std::string pages, known;
    for (const kp::BinderPage& page : binder::Content().pages) {
        pages += page.id + " " + page.title + '\n';
        CHECK(page.section == SectionOf(page.Number()));
    }
    for (const std::string_view page : kPages) known += std::string(page) + '\n';
    CHECK(pages == known);
    CHECK(support::Lines(kp::LintBinderWhole(binder::Content())) == "");
}

TEST_CASE("a page is written in the binder's form") {
    for (const kp::BinderPage& page : binder::Content().pages) {
        CAPTURE(page.title);
        RowsAt(page, kSmallest);
        RowsAt(page, kWidest);
        const int rows = RowsAt(page, kWritten);
        CHECK((rows >= 15 && rows <= 60));
        const std::vector<std::string>& body = page.body;
        REQUIRE_FALSE(body.empty());
        CHECK_FALSE((body.front().empty() || body.back().empty()));
        int links = 0;
        for (std::size_t k = 0; k < body.size(); ++k) {
            CAPTURE(body[k]);
            const bool kept = kp::IsKept(body[k]);
            const bool caption = !kept && k + 1 < body.size() && kp::IsKept(body[k + 1]);
            links += static_cast<int>(kp::LinksIn(body[k]).size());
            CHECK(std::ranges::all_of(body[k], [](char c) { return c >= ' ' && c <= '~'; }));
            CHECK_FALSE(body[k].ends_with(' '));
            CHECK(caption == (!kept && body[k].ends_with(':')));
            CHECK((!caption || body[k].size() <= 48));
            CHECK((kept || binder::Words(body[k]).size() <= 60));
            if (k == 0) continue;
            // Paragraphs and blocks stand apart; a block stands under its caption.
            const bool after_empty = body[k - 1].empty();
            CHECK((!kept || !after_empty));
            CHECK((kept || body[k].empty() != after_empty));
        }
        CHECK((links >= 1 && links <= 12));
        const bool warns = binder::ProseOf(page).find("Common mistake: ") != std::string::npos;
        CHECK((warns || page.section == "Appendix"));
    }
}

TEST_CASE("an instruction's page gives its syntax, and how many operands it takes") {
    for (const kp::InstructionInfo& info : kp::Instructions()) {
        CAPTURE(info.name);
        const std::string id = "op-" + std::string(info.name);
        const Block block = binder::BlockOf(id, "Syntax");
        std::vector<std::string> syntax = {Syntax(info, info.Least())};
        if (info.optional > 0) syntax.push_back(Syntax(info, info.most));
        REQUIRE(block.rows.size() >= syntax.size() + 3);
        for (std::size_t k = 0; k < syntax.size(); ++k) CHECK(block.rows[k] == syntax[k]);
        CHECK(block.rows[syntax.size()].starts_with("operands  "));
        CHECK(block.rows[block.rows.size() - 2].starts_with("ticks     "));
        CHECK(block.rows.back().starts_with("writes    "));
        // One operand more than it takes.
        std::string too_many(info.name);
        for (int k = 0; k <= info.most; ++k) too_many += k == 0 ? " a" : ", a";
        const kp::Assembly refused = Made(too_many);
        REQUIRE(refused.errors.size() == 1);
        const std::string prose = binder::ProseOf(binder::Page(id));
        CHECK(prose.find("Refused: ") != std::string::npos);
        CHECK(prose.find('"' + refused.errors[0].message + '"') != std::string::npos);
    }
}

TEST_CASE("the card's parts have the sizes that the binder gives") {
    const struct {
        const char* part;
        const char* unit;
        std::int32_t kp::CardConfig::*size;
    } sizes[] = {{"ROM", "lines", &kp::CardConfig::rom},
                 {"RAM", "cells", &kp::CardConfig::ram},
                 {"receive buffer", "bytes", &kp::CardConfig::rx_buffer},
                 {"transmitter", "ticks", &kp::CardConfig::tx_gap},
                 {"call stack", "levels", &kp::CardConfig::stack}};
    constexpr const char* kAll = R"({"rom": %d, "ram": %d, "rx_buffer": %d, "tx_gap": %d,
                                     "stack": %d, "registers": %d})";
    const kp::CardConfig least = Card(base::Format(kAll, -9, -9, -9, -9, -9, -9));
    const kp::CardConfig most = Card(base::Format(kAll, 999, 999, 999, 999, 999, 999));
    const kp::CardConfig usual;
    const Block block = binder::BlockOf("lc1", "Parts");
    const auto row = [&](std::string_view part) {
        const auto found = std::ranges::find_if(
            block.rows, [&](const std::string& r) { return r.starts_with(part); });
        REQUIRE(found != block.rows.end());
        return Columns(*found);
    };
    for (const auto& size : sizes) {
        CAPTURE(size.part);
        CHECK(row(size.part)[1] ==
              base::Format("%d to %d %s", least.*size.size, most.*size.size, size.unit));
        CHECK(row(size.part)[2] == std::to_string(usual.*size.size));
    }
    CHECK(least.registers == 0b1);
    CHECK(most.registers == 0b1111);
    CHECK(usual.registers == 0b1111);
    CHECK(row("registers")[1] == "1 to 4, a to d");
    CHECK(row("host port")[2] == (usual.host ? "fitted" : "none"));
    CHECK(row("CRC engine")[2] == (usual.crc ? "fitted" : "none"));
    CHECK(row("timer")[2] == (usual.timer ? "fitted" : "none"));
    CHECK(row("clock")[2] == (usual.clock ? "fitted" : "none"));
}

TEST_CASE("every way to write a number is worth what the binder says") {
    for (const std::string& row : binder::BlockOf("numbers", "Written and worth").rows) {
        CAPTURE(row);
        const std::vector<std::string> columns = Columns(row);
        REQUIRE(columns.size() == 3);
        for (const std::string& number : binder::Words(columns[0])) {
            CAPTURE(number);
            CHECK(WordOf(number) == columns[1]);
        }
    }
    CHECK(WordOf("-32769") == "The number -32769 does not fit in 16 bits.");
    CHECK(WordOf("65536") == "The number 65536 does not fit in 16 bits.");
    CHECK(WordOf("-'A'") == "\"-'A'\" is not a valid number.");
}

TEST_CASE("the reserved words, and no others, are refused as names") {
    const std::string prose = binder::ProseOf(binder::Page("labels"));
    CHECK(prose.find("the " + std::to_string(kp::Instructions().size()) +
                     " names of instructions, a, b, c, d, crc, clk, rxn and def") !=
          std::string::npos);
    const auto reserved = [](const std::string& name) {
        return !Made(name + ": nop").errors.empty();
    };
    for (const kp::InstructionInfo& info : kp::Instructions()) {
        CHECK(reserved(std::string(info.name)));
    }
    for (const char* name : {"a", "b", "c", "d", "crc", "clk", "rxn", "def"}) CHECK(reserved(name));
    for (const char* name : {"e", "ram", "loop", "_1", ".x", "timer"}) CHECK_FALSE(reserved(name));
    // One name may be a label and a constant, and case does not matter.
    CHECK(Made("Put: tx PUT\njmp pUT\ndef put $41").errors.empty());
}

TEST_CASE("the table of characters holds the codes 32 to 126") {
    const Block block = binder::BlockOf("ascii", "Characters");
    REQUIRE(block.rows.size() == 7);
    int code = 0x20;
    for (std::size_t row = 1; row < block.rows.size(); ++row) {
        CHECK(block.rows[row].starts_with(binder::Dollar(static_cast<unsigned>(code), 2)));
        for (std::size_t column = 0; column < 16 && code < 0x7F; ++column, ++code) {
            const std::size_t at = 4 + 2 * column;
            CAPTURE(code);
            CHECK((code == ' ' || block.rows[row].at(at) == static_cast<char>(code)));
            CHECK(block.rows[0].at(at) == "0123456789ABCDEF"[column]);
        }
    }
    CHECK(code == 0x7F);
}

TEST_CASE("bytes have the names that firmware gives them") {
    std::vector<std::string> rows = binder::BlockOf("house-frame", "Names").rows;
    const std::vector<std::string> codes = binder::BlockOf("ascii", "Control codes").rows;
    int compared = 0;
    for (const kp::LoadedTicket* loaded : binder::Content().Tickets()) {
        const kp::Assembly made = kp::Assemble(loaded->reference_text, loaded->ticket.machine);
        for (const kp::Symbol& constant : made.constants) {
            const std::string value = binder::Dollar(static_cast<unsigned>(constant.value), 2);
            for (const std::string& row : rows) {
                if (Columns(row)[0] != constant.name) continue;
                CAPTURE(loaded->ticket.id);
                CHECK(Columns(row)[1] == value);
                ++compared;
            }
            for (const std::string& row : codes) {
                if (binder::Words(row)[1] != constant.name || constant.name == "ESC") continue;
                CAPTURE(loaded->ticket.id);
                CHECK(binder::Words(row)[0] == value);
                ++compared;
            }
        }
    }
    CHECK(compared > 50);
}

TEST_CASE("a page is found by its id, its number and its instruction's name") {
    const std::vector<kp::BinderPage>& pages = binder::Content().pages;
    const struct {
        std::string_view name, title;
    } cases[] = {{"crc", "3.4 CRC"},
                 {"op-crc", "2.23 crc"},
                 {"djn", "2.14 djn"},
                 {"1.1", "1.1 The LC-1"},
                 {"1.11", "1.11 Scores"}};
    for (const auto& c : cases) {
        CAPTURE(c.name);
        REQUIRE(kp::FindPage(pages, c.name) != nullptr);
        CHECK(kp::FindPage(pages, c.name)->title == c.title);
    }
    for (const char* name : {"", "1", "1.", "op-", "3.40", "CRC"}) {
        CAPTURE(name);
        CHECK(kp::FindPage(pages, name) == nullptr);
    }
}

TEST_CASE("links are the words in the prose") {
    const std::string text = "See page 3.4, page 1.10. On page one, page 2 and page 3. is none.";
    const std::vector<kp::PageLink> links = kp::LinksIn(text);
    REQUIRE(links.size() == 2);
    CHECK(text.substr(links[0].at, links[0].length) == "page 3.4");
    CHECK(text.substr(links[1].at, links[1].length) == "page 1.10");
    CHECK(links[1].number == "1.10");
    CHECK(kp::LinksIn("  page 3.4").empty());
}
