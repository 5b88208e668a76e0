// Whatever stands in double quotes on a page is a message of the program, whole: it is provoked
// here, and compared with what the program says.

#include <doctest/doctest.h>

#include <algorithm>
#include <map>
#include <set>

#include "binder_blocks.h"
#include "card/assembler.h"
#include "session/verify.h"
#include "support/text.h"
#include "ticket/labels.h"

namespace {

// Firmware that does not assemble on this card.
constexpr struct {
    const char* card;
    const char* firmware;
} kRefused[] = {
    {R"({"registers": "ab"})", "mov c, 0"},
    {R"({"registers": "abc"})", "jlt d, 0, x\nx: halt"},
    {"{}", "mov a, clk"},
    {"{}", "mov a, crc"},
    {"{}", "crc a"},
    {"{}", "tmr 5"},
    {"{}", "rx a, x\nx: halt"},
    {R"({"host": false})", "hin a"},
    {R"({"ram": 0})", "mov a, [0]"},
    {R"({"clock": true})", "mov clk, 0"},
    {"{}", "mov rxn, 0"},
    {"{}", "mov a, [16]"},
    {"{}", "add [0], 1"},
    {"{}", "mov [0], [1]"},
    {"{}", "mov 1, a"},
    {"{}", "tx 12x"},
    {"{}", "tx 70000"},
    {"{}", "tx SYNK"},
    {"{}", "jgt a, LIMT, x\nx: halt"},
    {"{}", "\n\nloop: nop\nloop: halt"},
    {"{}", "loop: tx loop"},
    {"{}", "again: jne a, again, again"},
    {"{}", "tx: halt"},
    {"{}", "def SYNC $C1\ndef SYNC 2"},
    {"{}", "def SYNC"},
    {"{}", "jmp 5"},
    {"{}", "jmp 3"},
    {"{}", "jmp ovre"},
    {"{}", "call putt"},
    {"{}", "add 1, 2"},
    {"{}", "sub 1, 2"},
    {"{}", "and 1, 2"},
    {"{}", "or 1, 2"},
    {"{}", "xor 1, 2"},
    {"{}", "shl 1, 2"},
    {"{}", "shr 1, 2"},
    {"{}", "djn 1, x\nx: halt"},
    {"{}", "rx 1"},
    {"{}", "hin 1"},
};

// A ticket on which the firmware fails, and the output that it asks for.
constexpr struct {
    const char* ticket;
    const char* firmware;
    const char* line;
    const char* host;
} kFailing[] = {
    {R"("machine": {"ram": 8}, "tests": [{}])", "nop\nnop\nnop\nnop\nnop\nmov b, 8\nmov [b], a",
     "41", ""},
    {R"("tests": [{}])", "nop\nnext: call next", "41", ""},
    {R"("tests": [{}])", "nop\nret", "41", ""},
    {R"("tests": [{"rx": [{"at": 7, "hex": "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 2F"}]}])",
     "loop: jmp loop", "41", ""},
    {R"("tests": [{}])", "tx 'A'\nwait 12\ntx 'B'", "41 43", ""},
    {R"("tests": [{}])", "hout 'A'\nwait 12\nhout 'B'", "", "41 43"},
    {R"("tests": [{}])", "tx 1\ntx 2\ntx 3\ntx 4\ntx 5\ntx 6\ntx 'U'\nhalt", "01 02 03 04 05 06",
     ""},
    {R"("tests": [{}])", "hout 1\nhout 2\nhout 3\nhout 4\nhout 5\nhout 6\nhout 'U'\nhalt", "",
     "01 02 03 04 05 06"},
    {R"("tests": [{}])", "tx 'A'\nwait 9", "41", ""},
    {R"("tests": [{}])", "tx 'H'\nnop\nnop\nnop\nnop\nhalt", "48 49 21", ""},
    {R"("tests": [{"rx": ["A"]}])", "rx a\ntx a\nrx a\ntx a", "41 42", ""},
    {R"("max_ticks": 3000, "tests": [{}])", "nop\nnop\nnop\nloop: jmp loop", "41", ""},
    // A frame of one length byte, answered with BUSY three ticks later, sent again too soon.
    {R"("frame": {"length": true}, "tests": [{}], "peer": {"type": "acker", "frames": 1,
        "plan": ["busy"], "backoff": [8], "backoff_slack": 6})",
     "wait 53\ntx 0\nwait 6\ntx 0", "00 00", ""},
    {R"("frame": {"length": true}, "tests": [{}], "peer": {"type": "acker", "frames": 1,
        "plan": ["drop"], "retry_after": [20, 83]})",
     "tx 0\nrx a", "00 00", ""},
};

kp::Bytes Bytes(const char* hex) {
    return *hex == '\0' ? kp::Bytes() : binder::BytesIn(hex);
}

std::string FailureOf(const std::string& ticket_json, const char* firmware, const char* line,
                      const char* host) {
    const json::Value file = support::Json(R"({"id": "t", )" + ticket_json + "}");
    const auto ticket = kp::ParseTicket(file);
    REQUIRE(ticket);
    const kp::Assembly made = kp::Assemble(firmware, ticket->machine);
    REQUIRE(made.errors.empty());
    const kp::Program program = kp::Load(made, ticket->machine);
    const kp::ExpectedOutput expected{Bytes(line), Bytes(host)};
    kp::Session session;
    REQUIRE(kp::BeginTest(session, *ticket, 0, program, &expected));
    session.RunToEnd();
    REQUIRE_FALSE(session.Verdict().passed);
    return session.Verdict().message;
}

// Places as messages name them.
std::vector<std::string> Places() {
    kp::FrameFormat format;
    format.sync = {0xC1, 0x67};
    format.check = kp::Check::Crc16;
    kp::Bytes stream = binder::BytesIn("C1 67 00 4F E6 C1 67 01 4B 00 00");
    std::vector<std::string> places = kp::LabelStream(stream, format);
    stream = binder::BytesIn("C1 67 03 48 49 21 27 4F 3F");
    for (std::string& place : kp::LabelStream(stream, format)) places.push_back(std::move(place));
    return places;
}

// The messages by each text that a page may quote of them: the whole, or what stands behind one of
// its sentences.
std::map<std::string, std::string> Messages() {
    std::map<std::string, std::string> messages;
    const auto add = [&](const std::string& message) {
        messages[message] = message;
        for (std::size_t at = message.find(". "); at != std::string::npos;
             at = message.find(". ", at + 1)) {
            messages.emplace(message.substr(at + 2), message);
        }
    };
    for (const auto& refused : kRefused) {
        CAPTURE(refused.firmware);
        const json::Value card = support::Json(refused.card);
        const kp::Assembly made = kp::Assemble(refused.firmware, *kp::ReadCardConfig(card));
        REQUIRE(made.errors.size() == 1);
        add(made.errors[0].message);
    }
    for (const kp::InstructionInfo& info : kp::Instructions()) {
        std::string too_many(info.name);
        for (int k = 0; k <= info.most; ++k) too_many += k == 0 ? " a" : ", a";
        add(kp::Assemble(too_many, {}).errors.at(0).message);
    }
    for (const auto& failing : kFailing) {
        CAPTURE(failing.firmware);
        add(FailureOf(failing.ticket, failing.firmware, failing.line, failing.host));
    }
    return messages;
}

// Takes every quotation of this text away; true when there was one.
bool Remove(const std::string& quoted, std::string& text) {
    bool found = false;
    const std::string whole = '"' + quoted + '"';
    for (std::size_t at = text.find(whole); at != std::string::npos; at = text.find(whole)) {
        text.erase(at, whole.size());
        found = true;
    }
    return found;
}

}  // namespace

TEST_CASE("every message that a page quotes is one that the program has, whole") {
    const std::map<std::string, std::string> messages = Messages();
    std::set<std::string> unquoted;
    // A message may hold another one's words in quotes, so the longest go first.
    std::vector<std::string> longest_first = Places();
    for (const auto& [text, message] : messages) {
        longest_first.push_back(text);
        unquoted.insert(message);
    }
    std::ranges::stable_sort(longest_first, std::ranges::greater(), &std::string::size);
    for (const kp::BinderPage& page : binder::Content().pages) {
        std::string prose = binder::ProseOf(page);
        for (const std::string& text : longest_first) {
            const auto message = messages.find(text);
            if (Remove(text, prose) && message != messages.end()) unquoted.erase(message->second);
        }
        const std::size_t left = prose.find('"');
        if (left == std::string::npos) continue;
        const std::string quotation = prose.substr(left, 90);
        FAIL_CHECK(page.title << " quotes what the program does not say: " << quotation);
    }
    for (const std::string& message : unquoted) FAIL_CHECK("no page quotes: " << message);
}
