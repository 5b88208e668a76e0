#include "conversation.h"

#include <algorithm>
#include <map>

#include "base/format.h"
#include "support/text.h"
#include "ticket/hex.h"

namespace support {
namespace {

using base::Format;
using kp::Tick;

kp::Ticket Parse(std::string_view ticket) {
    auto parsed = kp::ParseTicket(Json("{\"id\": \"t\", " + std::string(ticket) + "}"));
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
        record += "send" + hex + Format(" at %u", first) + gap + "\n";
        return bytes.empty() ? first : line_free_ - step;
    }

    void Expect(kp::WindowKind kind, Tick until, std::string_view label, Tick from) override {
        const char* limit = kind == kp::WindowKind::Earliest ? "before" : "after";
        record += Format("from %u not %s %u: ", std::max(from, now), limit, until) +
                  std::string(label) + "\n";
    }

    void Note(Tick tick, std::string_view text, int flag) override {
        CHECK(flag == 0);
        record += Format("note %u: ", tick) + std::string(text) + "\n";
    }

    Tick now = 0;
    std::string record;

private:
    const kp::Ticket& ticket_;
    Tick line_free_ = 0;
};

enum class Ticks { All, Needed };

std::string Hold(const kp::Ticket& ticket, const std::map<Tick, std::uint8_t>& heard, Tick ticks,
                 Ticks which) {
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
        recorder.record += Format(done ? "done at %u\n" : "busy at %u\n", tick);
    }
    return recorder.record;
}

}  // namespace

std::string Talk(std::string_view ticket_text, const std::vector<Said>& said, Tick ticks) {
    const kp::Ticket ticket = Parse(ticket_text);
    std::map<Tick, std::uint8_t> heard;
    for (const Said& words : said) {
        Tick tick = words.tick;
        const auto bytes = kp::ReadHex(words.hex);
        REQUIRE(bytes);
        for (const std::uint8_t byte : *bytes) heard[tick++] = byte;
    }
    const std::string record = Hold(ticket, heard, ticks, Ticks::All);
    CHECK(Hold(ticket, heard, ticks, Ticks::Needed) == record);
    return record;
}

std::string Problem(std::string_view ticket_text) {
    const kp::Ticket ticket = Parse(ticket_text);
    return kp::CreatePeer(ticket, ticket.tests.size() - 1).Message();
}

}  // namespace support
