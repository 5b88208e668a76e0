// What far ends say to a card that says what it is told to. A case of conversations/ holds
// (`ticket` being a JSON object's inside, in which `id` is supplied)
//
//     ticket "peer": {"type": "flow"}, "tests": [{}]
//     card 10 40: 41 42                      on each of these ticks the far end hears the first
//     until 100                              byte, and one more on each that follows
//     | send 13 at 52                        the tick is the first byte's arrival
//     | send 01 02 at 52, gap 3
//     | note 52: XOFF: the printer's buffer is full
//     | from 52 not before 82: the first byte after XOFF
//     | from 52 not after 90: the reply
//     | done at 82
//     | busy at 90                           no longer done
//
// in the order in which the far end did it; a blank at a line's end is written ␠. In place of
// `until`, `sends` lists the bytes alone and `answers` names the first byte of each sending. A
// ticket stands until the next one. `problem` says why the far end of a ticket's last test cannot
// be built. Each conversation is held twice, the second time without the ticks before NextAct.

#include <algorithm>
#include <map>

#include "base/format.h"
#include "peers/factory.h"
#include "support/cases.h"
#include "support/text.h"
#include "ticket/hex.h"

namespace {

using base::Format;
using kp::Tick;

using Bytes = std::map<Tick, std::uint8_t>;

kp::Ticket Parse(const std::string& ticket) {
    auto parsed = kp::ParseTicket(support::Json("{\"id\": \"t\", " + ticket + "}"));
    INFO(parsed.Message());
    REQUIRE(parsed);
    return *std::move(parsed);
}

// A line of its own for the far end, which writes down what the far end does.
class Recorder final : public kp::PeerLink {
public:
    explicit Recorder(const kp::Ticket& ticket) : ticket_(ticket) {}

    Tick Now() const override { return now; }
    Tick LineFreeAt() const override { return line_free_; }
    const kp::Ticket& Ticket() const override { return ticket_; }
    const kp::Test& Test() const override { return ticket_.tests.front(); }

    Tick Send(Tick tick, std::span<const std::uint8_t> bytes, int spacing) override {
        const Tick first = std::max({tick, line_free_, now});
        const auto step = static_cast<Tick>(std::max(spacing, 1));
        const auto count = static_cast<Tick>(bytes.size());
        line_free_ = first + count * step;
        std::string hex;
        for (const std::uint8_t byte : bytes) hex += Format(" %02X", byte);
        const std::string gap = spacing > 1 ? Format(", gap %d", spacing) : "";
        Write("send" + hex + Format(" at %u", first) + gap);
        return bytes.empty() ? first : line_free_ - step;
    }

    void Expect(kp::WindowKind kind, Tick until, std::string_view label, Tick from) override {
        const char* limit = kind == kp::WindowKind::Earliest ? "before" : "after";
        Write(Format("from %u not %s %u: ", std::max(from, now), limit, until) +
              std::string(label));
    }

    void Note(Tick tick, std::string_view text, int flag) override {
        CHECK(flag == 0);
        Write(Format("note %u: ", tick) + std::string(text));
    }

    void Write(std::string line) {
        if (line.ends_with(' ')) line.replace(line.size() - 1, 1, "␠");
        record += line + "\n";
    }

    Tick now = 0;
    std::string record;

private:
    const kp::Ticket& ticket_;
    Tick line_free_ = 0;
};

enum class Ticks { All, Needed };

std::string Hold(const kp::Ticket& ticket, const Bytes& heard, Tick ticks, Ticks which) {
    Recorder recorder(ticket);
    auto peer = kp::CreatePeer(ticket, 0);
    INFO(peer.Message());
    REQUIRE(peer);
    (*peer)->Start(recorder);
    bool done = false;
    for (Tick tick = 0; tick < ticks; ++tick) {
        recorder.now = tick;
        if (const auto byte = heard.find(tick); byte != heard.end()) {
            (*peer)->Receive(tick, byte->second, recorder);
        }
        if (which == Ticks::All || tick >= (*peer)->NextAct()) (*peer)->Act(tick, recorder);
        if ((*peer)->Done() == done) continue;
        done = !done;
        recorder.Write(Format(done ? "done at %u" : "busy at %u", tick));
    }
    return recorder.record;
}

std::string Talk(const std::string& ticket_text, const Bytes& heard, Tick ticks) {
    const kp::Ticket ticket = Parse(ticket_text);
    const std::string record = Hold(ticket, heard, ticks, Ticks::All);
    CHECK(Hold(ticket, heard, ticks, Ticks::Needed) == record);
    return record;
}

// "10 40: 41 42"
void AddWords(std::string_view words, Bytes& heard) {
    std::string_view ticks = support::Cut(words, ": ");
    const auto bytes = kp::ReadHex(words);
    REQUIRE(bytes);
    while (!ticks.empty()) {
        auto tick = static_cast<Tick>(std::stoul(std::string(support::Cut(ticks, " "))));
        for (const std::uint8_t byte : *bytes) heard[tick++] = byte;
    }
}

std::string SendingsIn(std::string_view record) {
    std::string sendings;
    while (!record.empty()) {
        const std::string_view line = support::Cut(record, "\n");
        if (line.starts_with("send")) sendings += std::string(line) + "\n";
    }
    return sendings;
}

std::string AnswersIn(const std::string& record) {
    std::string answers;
    const std::string sendings = SendingsIn(record);
    for (std::string_view rest = sendings; !rest.empty(); support::Cut(rest, "\n")) {
        answers += std::string(answers.empty() ? "" : " ") + std::string(rest.substr(5, 2));
    }
    return answers;
}

}  // namespace

TEST_CASE("far ends talk as written") {
    for (const support::Case& steps : support::Cases("peers/conversations")) {
        std::string ticket;
        Bytes heard;
        for (const support::Step& step : steps) {
            INFO(step.where);
            const auto talk = [&](Tick ticks) {
                return Talk(ticket, std::exchange(heard, {}), ticks);
            };
            if (step.key == "ticket") {
                ticket = step.All();
            } else if (step.key == "card") {
                AddWords(step.value, heard);
            } else if (step.key == "until") {
                CHECK(talk(step.Number()) == step.text);
            } else if (step.key == "sends") {
                CHECK(SendingsIn(talk(step.Number())) == step.text);
            } else if (step.key == "answers") {
                CHECK(AnswersIn(talk(60)) == step.value);
            } else if (step.key == "problem") {
                const kp::Ticket parsed = Parse(ticket);
                CHECK(kp::CreatePeer(parsed, parsed.tests.size() - 1).Message() == step.value);
            } else {
                FAIL("unknown key ", step.key);
            }
        }
    }
}

TEST_CASE("the XMODEM sender's block numbers go from 255 to 0") {
    Bytes heard = {{1, 0x15}};
    for (unsigned block = 1; block <= 256; ++block) heard[block * 20] = 0x06;
    const std::string record = Talk(R"("peer": {"type": "xmodem-tx", "block": 1},
                                       "tests": [{"frames": [{"repeat": "A", "times": 257}]}])",
                                    heard, 5130);
    CHECK(
        record.ends_with("note 5104: Block 0\nsend 01 00 FF 41 41 at 5104\n"
                         "from 5100 not before 5109: the answer to block 0\n"
                         "note 5124: Block 1\nsend 01 01 FE 41 41 at 5124\n"
                         "from 5120 not before 5129: the answer to block 1\n"));
}
