// Firmware on a page says in its comments what it does, and does it:
//
//     tx a            ; tick 4, sends 41     first done on tick 4, and sends that byte
//     mov b, [2]      ; b = $1234            b after the line was first done
//
// A caption may name what is there beside a card with everything fitted: "on a transmitter of 4",
// "with 4F 4B on the line from tick 3", "with the message 41 from the host". The block "It sends"
// behind it holds all that the run sends.

#include <doctest/doctest.h>

#include <map>
#include <optional>
#include <regex>

#include "base/format.h"
#include "binder_blocks.h"
#include "peers/factory.h"
#include "session/session.h"

namespace {

using binder::Block;

constexpr kp::Tick kLimit = 400;

// What a caption says of the card and the test.
struct Setting {
    kp::Ticket ticket;
    std::optional<std::pair<int, kp::Tick>> scores;
};

Setting SettingOf(const Block& block) {
    Setting setting;
    kp::CardConfig& card = setting.ticket.machine;
    card.rom = card.ram = kp::kMostRom;
    card.crc = card.timer = card.clock = true;
    setting.ticket.max_ticks = kLimit;
    setting.ticket.peer_type = kp::PeerType::Script;
    setting.ticket.tests.emplace_back();
    std::string_view said = block.caption;
    said.remove_prefix(std::string_view("Firmware").size());
    if (said.empty() || said == ", with a silent line") return setting;
    const std::string text(said);
    std::smatch match;
    if (std::regex_match(text, match, std::regex(", on a transmitter of (\\d+)"))) {
        card.tx_gap = std::stoi(match[1]);
    } else if (std::regex_match(text, match, std::regex(", (\\d+) lines and (\\d+) ticks"))) {
        setting.scores = {std::stoi(match[1]), static_cast<kp::Tick>(std::stoi(match[2]))};
    } else if (std::regex_match(text, match,
                                std::regex(", with ([0-9A-F ]+) on the line from tick (\\d+)"))) {
        setting.ticket.tests[0].rx.push_back({.at = static_cast<kp::Tick>(std::stoi(match[2])),
                                              .label = {},
                                              .bytes = binder::BytesIn(match[1].str())});
    } else if (std::regex_match(text, match,
                                std::regex(", with the message ([0-9A-F ]+) from the host"))) {
        setting.ticket.tests[0].host.push_back({.bytes = binder::BytesIn(match[1].str())});
    } else {
        FAIL("unknown setting in a caption");
    }
    return setting;
}

// What a line did when it was first done.
struct Deed {
    kp::Tick tick = 0;
    std::map<std::string, unsigned> registers;
    std::string sent, delivered;  // in hexadecimal
};

struct Run {
    std::map<int, Deed> deeds;  // by line, from 1
    kp::Bytes transmitted;
    kp::Tick output_ticks = 0;
    int lines = 0;
};

Run RunOf(const std::string& firmware, const kp::Ticket& ticket) {
    const kp::Assembly made = kp::Assemble(firmware, ticket.machine);
    for (const kp::AssemblyError& error : made.errors) FAIL_CHECK(error.message);
    REQUIRE(made.errors.empty());
    const kp::Program program = kp::Load(made, ticket.machine);
    auto peer = kp::CreatePeer(ticket, 0);
    REQUIRE(peer);
    kp::Session session;
    session.Begin(ticket, ticket.tests[0], program, std::move(*peer), nullptr);
    Run run{{}, {}, 0, made.lines};
    for (bool more = true; more;) {
        const int line = session.Card().Line();
        const std::size_t events = session.Trace().size();
        const kp::Tick tick = session.CurrentTick();
        more = session.StepTick();
        if (!session.ExecutedThisTick() || run.deeds.contains(line)) continue;
        Deed& deed = run.deeds[line];
        deed.tick = tick;
        for (const char* name : {"a", "b", "c", "d", "crc"}) {
            deed.registers[name] = session.Card().RegisterValue(*kp::FindRegister(name));
        }
        for (const kp::TraceEvent& event : session.Trace().subspan(events)) {
            const std::string byte = base::Format("%02X", event.value);
            if (event.kind == kp::Happening::Transmitted) deed.sent = byte;
            if (event.kind == kp::Happening::Delivered) deed.delivered = byte;
        }
    }
    CHECK(session.Card().Fault() == kp::FaultKind::None);
    run.transmitted = session.Transmitted();
    run.output_ticks = session.OutputTicks();
    return run;
}

// Whether a comment's part is a claim; a claim is checked.
bool CheckClaim(const std::string& part, const Deed& deed) {
    std::smatch match;
    if (std::regex_match(part, match, std::regex("tick (\\d+)"))) {
        CHECK(deed.tick == static_cast<kp::Tick>(std::stoi(match[1])));
    } else if (std::regex_match(part, match, std::regex("sends ([0-9A-F]{2})"))) {
        CHECK(deed.sent == match[1].str());
    } else if (std::regex_match(part, match, std::regex("delivers ([0-9A-F]{2})"))) {
        CHECK(deed.delivered == match[1].str());
    } else if (std::regex_match(part, match, std::regex("(a|b|c|d|crc) = (\\$[0-9A-F]{4})"))) {
        CHECK(binder::Dollar(deed.registers.at(match[1].str()), 4) == match[2].str());
    } else {
        return false;
    }
    return true;
}

int CheckClaims(const std::string& row, int line, const Run& run) {
    static const std::regex kComma(", ");
    const std::size_t at = row.find("; ");
    if (at == std::string::npos) return 0;
    const std::string comment = row.substr(at + 2);
    const auto deed = run.deeds.find(line);
    int claims = 0;
    for (std::sregex_token_iterator part(comment.begin(), comment.end(), kComma, -1), end;
         part != end; ++part) {
        CAPTURE(row);
        REQUIRE(deed != run.deeds.end());
        CHECK(CheckClaim(part->str(), deed->second));
        ++claims;
    }
    return claims;
}

// Labels, instructions and comments stand in columns.
void CheckColumns(const std::string& row) {
    static const std::regex kLine(
        "(def [A-Z_]+ \\S+|([a-z]+: {1,6}| {7})(?! )[a-z]+( [^;]*[^; ])?( +; .+)?)");
    CAPTURE(row);
    CHECK(std::regex_match(row, kLine));
    const std::size_t comment = row.find("; ");
    CHECK((comment == std::string::npos || comment == 23));
    if (row.starts_with("def ")) return;
    const std::size_t colon = row.find(": ");
    const std::size_t from = colon == std::string::npos ? 0 : colon + 1;
    CHECK(row.find_first_not_of(' ', from) == 7);
}

}  // namespace

TEST_CASE("the firmware on a page assembles and does what its comments say") {
    for (const Block& block : binder::BlocksLedBy("Firmware")) {
        CAPTURE(block.Where());
        CHECK(block.rows.size() <= 16);
        const Setting setting = SettingOf(block);
        std::string firmware;
        for (const std::string& row : block.rows) {
            CheckColumns(row);
            firmware += row + '\n';
        }
        const Run run = RunOf(firmware, setting.ticket);
        int claims = 0;
        for (std::size_t k = 0; k < block.rows.size(); ++k) {
            claims += CheckClaims(block.rows[k], static_cast<int>(k) + 1, run);
        }
        CHECK(claims > 0);
        if (setting.scores) {
            CHECK(run.lines == setting.scores->first);
            CHECK(run.output_ticks == setting.scores->second);
        }
    }
}

TEST_CASE("the firmware above sends all that its page says") {
    for (const Block& sends : binder::BlocksLedBy("It sends")) {
        CAPTURE(sends.Where());
        const Block block = binder::BlockOf(sends.page->id, "Firmware");
        std::string firmware;
        for (const std::string& row : block.rows) firmware += row + '\n';
        REQUIRE(sends.rows.size() == 1);
        CHECK(binder::HexOf(RunOf(firmware, SettingOf(block).ticket).transmitted) == sends.rows[0]);
    }
}

TEST_CASE("a wait and a timer take the ticks that the binder gives") {
    const struct {
        const char* ticks;
        kp::Tick wait;   // until the next line
        kp::Tick timer;  // until the target's line, after a tmr on tick 0; 0 for never
    } cases[] = {{"32767", 32767, 32768}, {"32768", 1, 0}, {"0", 1, 0}, {"-1", 1, 0}, {"1", 1, 2}};
    for (const char* id : {"op-wait", "op-tmr", "timer"}) {
        std::string text;
        for (const std::string& item : binder::Page(id).body) text += item + '\n';
        CHECK(text.find("1 to 32767") != std::string::npos);
    }
    kp::Ticket ticket = SettingOf({&binder::Page("timer"), "Firmware", {}}).ticket;
    ticket.max_ticks = ticket.settle = 40000;
    for (const auto& c : cases) {
        CAPTURE(c.ticks);
        const Run wait = RunOf(std::string("wait ") + c.ticks + "\nhalt", ticket);
        CHECK(wait.deeds.at(2).tick == c.wait);
        const Run timer = RunOf(std::string("tmr ") + c.ticks + "\nrx a, x\nhalt\nx: halt", ticket);
        CHECK((timer.deeds.contains(4) ? timer.deeds.at(4).tick : 0) == c.timer);
    }
}

TEST_CASE("an answer that does not come is counted as the pages count it") {
    kp::Ticket ticket = SettingOf({&binder::Page("timeouts"), "Firmware", {}}).ticket;
    for (const int n : {17, 27}) {
        const std::string firmware =
            base::Format("tx 'A'\ntmr %d\nrx a, again\nhalt\nagain: mov crc, -1\ntx 'A'\nhalt", n);
        CHECK(RunOf(firmware, ticket).deeds.at(6).tick == static_cast<kp::Tick>(n + 3));
    }
    CHECK(binder::ProseOf(binder::Page("timeouts")).find("n is 17 to 27") != std::string::npos);
    CHECK(binder::ProseOf(binder::Page("polling")).find("takes 59") != std::string::npos);
    for (const kp::Tick late : {0, 1}) {
        ticket.tests[0].rx = {{.at = 60 + late, .label = {}, .bytes = {0x04}}};
        const Run run = RunOf("tx 7\ntmr 59\nrx a, gone\nhalt\ngone: halt", ticket);
        CHECK(run.deeds.contains(late == 0 ? 4 : 5));
    }
}

namespace {

// A loop of k lines that reads bytes g ticks apart: the most that waited behind its line, and
// whether a usual buffer was too small.
struct Gathered {
    int most = 0;
    bool lost = false;
};

Gathered Gather(kp::Tick gap, int lines, std::size_t count, const kp::CardConfig& card) {
    kp::Ticket ticket = SettingOf({&binder::Page("line-rate"), "Firmware", {}}).ticket;
    ticket.machine = card;
    ticket.tests[0].rx.push_back(
        {.at = 5, .gap = gap, .label = {}, .bytes = kp::Bytes(count, 0x55)});
    std::string firmware = "loop: rx a\n";
    for (int k = 2; k < lines; ++k) firmware += "nop\n";
    firmware += "jmp loop\n";
    const kp::Program program = kp::Load(kp::Assemble(firmware, card), card);
    kp::Session session;
    session.Begin(ticket, ticket.tests[0], program, std::move(*kp::CreatePeer(ticket, 0)), nullptr);
    Gathered gathered;
    while (session.StepTick()) {
        gathered.most = std::max(gathered.most, session.Card().BytesWaiting());
    }
    gathered.lost = session.Card().State() == kp::CardState::Faulted;
    return gathered;
}

}  // namespace

TEST_CASE("bytes gather in the receive buffer as the table says, and the last row fills it") {
    std::vector<std::string> rows = binder::BlockOf("line-rate", "Bytes gathered").rows;
    rows.erase(rows.begin());
    for (const std::string& row : rows) {
        CAPTURE(row);
        const std::vector<std::string> words = binder::Words(row);
        REQUIRE(words.size() == 4);
        const auto gap = static_cast<kp::Tick>(std::stoi(words[0]));
        const int lines = std::stoi(words[1]);
        const auto count = static_cast<std::size_t>(std::stoi(words[2]));
        const Gathered gathered = Gather(gap, lines, count, {});
        CHECK(std::to_string(gathered.most) == words[3]);
        CHECK_FALSE(gathered.lost);
        CHECK(Gather(gap, lines, count + 1, {}).lost == (&row == &rows.back()));
    }
}
