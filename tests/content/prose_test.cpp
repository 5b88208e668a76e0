// What the tickets' texts say in figures must be what their data hold.

#include <doctest/doctest.h>

#include <algorithm>
#include <optional>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "content/content.h"
#include "ticket/hex.h"

namespace {

using kp::Bytes;

const kp::Content& BuiltIn() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

std::string TextOf(const kp::Ticket& ticket) {
    std::string text;
    for (const std::string& paragraph : ticket.text) text += paragraph + "\n";
    return text;
}

// Calls visit(match) for each place where the pattern stands in the ticket's text.
template <class Visit>
void ForEachMatch(const kp::Ticket& ticket, const char* pattern, Visit visit) {
    const std::string text = TextOf(ticket);
    const std::regex regex(pattern);
    for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at) visit(*at);
}

void Append(Bytes& to, const Bytes& bytes) {
    to.insert(to.end(), bytes.begin(), bytes.end());
}

bool Holds(const Bytes& stream, const Bytes& part) {
    return std::search(stream.begin(), stream.end(), part.begin(), part.end()) != stream.end();
}

// What the far end sends while the reference runs, one stream a test.
void AppendHeard(const kp::LoadedTicket& loaded, std::vector<Bytes>& streams) {
    const kp::Ticket& ticket = loaded.ticket;
    const kp::Program program =
        kp::Load(kp::Assemble(loaded.reference_text, ticket.machine), ticket.machine);
    kp::Session session;
    for (std::size_t k = 0; k < ticket.tests.size(); ++k) {
        REQUIRE(kp::BeginTest(session, ticket, k, program, &loaded.reference.outputs[k]));
        session.RunToEnd();
        Bytes& heard = streams.emplace_back();
        for (const kp::TraceEvent& event : session.Trace()) {
            if (event.kind != kp::Happening::Received) continue;
            heard.push_back(static_cast<std::uint8_t>(event.value));
        }
    }
}

// Every stream of a ticket's tests: the messages, the traffic, the frames, what the reference
// sends and delivers, and what it hears.
std::vector<Bytes> StreamsOf(const kp::LoadedTicket& loaded) {
    std::vector<Bytes> streams;
    for (const kp::Test& test : loaded.ticket.tests) {
        Bytes line;
        for (const kp::LineEntry& entry : test.rx) Append(line, entry.bytes);
        streams.push_back(line);
        for (const kp::HostMessage& message : test.host) streams.push_back(message.bytes);
        streams.insert(streams.end(), test.frames.begin(), test.frames.end());
    }
    for (const kp::ExpectedOutput& output : loaded.reference.outputs) {
        streams.push_back(output.transmitted);
        streams.push_back(output.delivered);
    }
    AppendHeard(loaded, streams);
    return streams;
}

// Examples that no test holds as they stand and that are no whole frame: steps of a calculation, a
// frame damaged otherwise than in the deck, a frame between two bytes of noise.
constexpr std::string_view kOnlyInProse[] = {"04 08 10 20 40 80 07 0E", "C1 67 02 4F 5B 0A 27",
                                             "C1 02 4F 5B 9A", "00 3F C1 02 4F 4B 7E"};

bool IsIntactFrame(const std::optional<kp::FrameFormat>& format, const Bytes& bytes) {
    if (!format || !format->length) return false;
    const std::size_t head = format->sync.size() + (format->flags ? 2 : 1);
    const auto check = static_cast<std::size_t>(kp::CheckWidth(format->check));
    if (bytes.size() < head + check) return false;
    const Bytes payload(bytes.begin() + static_cast<std::ptrdiff_t>(head),
                        bytes.end() - static_cast<std::ptrdiff_t>(check));
    return kp::BuildFrame(*format, payload, bytes[head - 1]) == bytes;
}

std::size_t LongestTraffic(const kp::Ticket& ticket) {
    std::size_t most = 0;
    for (const kp::Test& test : ticket.tests) {
        std::size_t sum = 0;
        for (const kp::LineEntry& entry : test.rx) sum += entry.bytes.size();
        most = std::max(most, sum);
    }
    return most;
}

// The first and the last tick for sending again after a silence. A far end counts from the tick on
// which it has the card's last byte; a text counts from the one before, on which the card sent it.
// A board that sends a file counts from the last byte of its own too, and there both count alike:
// its text gives the ticks that are right for both.
std::optional<std::pair<int, int>> RetryWindowOf(const kp::Ticket& ticket) {
    const std::vector<json::Value>& window = json::Member(ticket.peer, "retry_after").items;
    if (window.size() != 2) return std::nullopt;
    const auto from_sending = [](const json::Value& ticks) {
        return static_cast<int>(ticks.number) + 1;
    };
    const bool own_bytes_too = ticket.peer_type == kp::PeerType::XmodemTx;
    return std::pair(from_sending(window[0]), from_sending(window[1]) - (own_bytes_too ? 1 : 0));
}

// Whether the text gives the window in one piece, as "60 to 90 ticks".
bool NamesWhole(const kp::Ticket& ticket, std::pair<int, int> window) {
    const std::string name =
        std::to_string(window.first) + " to " + std::to_string(window.second) + " ticks";
    return TextOf(ticket).find(name) != std::string::npos;
}

// The allowances that a ticket's far end gives, wherever they are written.
std::vector<int> AllowancesOf(const kp::Ticket& ticket) {
    std::vector<int> allowances = {json::IntOr(ticket.peer, "reply_within", 0),
                                   json::IntOr(ticket.peer, "nak_retry_within", 0)};
    for (const kp::Test& test : ticket.tests) {
        for (const kp::LineEntry& entry : test.rx) allowances.push_back(entry.reply_within);
    }
    if (const auto lost = RetryWindowOf(ticket); lost && !NamesWhole(ticket, *lost)) {
        allowances.push_back(lost->second);
    }
    return allowances;
}

}  // namespace

TEST_CASE("every example in bytes stands in a test of its ticket or is a right frame") {
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        const std::vector<Bytes> streams = StreamsOf(*loaded);
        ForEachMatch(
            loaded->ticket, "\\b(?:[0-9A-F]{2} ){2,}[0-9A-F]{2}\\b", [&](const auto& match) {
                const std::string example = match.str();
                CAPTURE(loaded->ticket.id);
                CAPTURE(example);
                if (std::ranges::count(kOnlyInProse, example) > 0) return;
                const Bytes bytes = *kp::ReadHex(example);
                const auto holds = [&](const Bytes& stream) { return Holds(stream, bytes); };
                CHECK((IsIntactFrame(loaded->ticket.frame, bytes) ||
                       std::ranges::any_of(streams, holds)));
            });
    }
}

TEST_CASE("the receive buffer is as large as its ticket says, and holds what no test exceeds") {
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        CAPTURE(loaded->ticket.id);
        ForEachMatch(
            loaded->ticket, "buffer holds (\\d+)([^.]*no test sends more)?",
            [&](const auto& match) {
                const int size = std::stoi(match[1].str());
                CHECK(loaded->ticket.machine.rx_buffer == size);
                if (match[2].matched) {
                    CHECK(LongestTraffic(loaded->ticket) <= static_cast<std::size_t>(size));
                }
            });
    }
}

TEST_CASE("an answer's allowance is the one that its ticket names") {
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        CAPTURE(loaded->ticket.id);
        const std::vector<int> allowances = AllowancesOf(loaded->ticket);
        ForEachMatch(loaded->ticket, "no later than (\\d+) ticks", [&](const auto& match) {
            const int named = std::stoi(match[1].str());
            const auto agrees = [&](int ticks) { return ticks == 0 || ticks == named; };
            CHECK(std::ranges::count(allowances, named) > 0);
            CHECK(std::ranges::all_of(allowances, agrees));
        });
    }
}

TEST_CASE("a pause is as long as its ticket says") {
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        const kp::Ticket& ticket = loaded->ticket;
        CAPTURE(ticket.id);
        if (const auto lost = RetryWindowOf(ticket)) {
            ForEachMatch(ticket, "no sooner than (\\d+) ticks", [&](const auto& match) {
                CHECK(lost->first == std::stoi(match[1].str()));
            });
            CHECK((NamesWhole(ticket, *lost) ||
                   TextOf(ticket).find("no sooner than") != std::string::npos));
        }
        const int slack = json::IntOr(ticket.peer, "backoff_slack", 0);
        std::vector<std::pair<int, int>> pauses;
        for (const json::Value& least : json::Member(ticket.peer, "backoff").items) {
            const int ticks = static_cast<int>(least.number);
            pauses.emplace_back(ticks, ticks + slack);
        }
        if (pauses.empty()) continue;
        ForEachMatch(ticket, "(\\d+) to (\\d+) ticks", [&](const auto& match) {
            const std::pair named(std::stoi(match[1].str()), std::stoi(match[2].str()));
            CHECK(std::ranges::count(pauses, named) == 1);
        });
    }
}

TEST_CASE("bytes come no faster than their ticket says") {
    const struct {
        std::string_view word;
        kp::Tick gap;
    } rates[] = {{"four", 4}, {"eight", 8}};
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        // A ticket that names a rule of its own for short traffic is left to its tests.
        if (TextOf(loaded->ticket).find("one per tick") != std::string::npos) continue;
        for (const auto& rate : rates) {
            const std::string pattern = "every " + std::string(rate.word) + " ticks";
            ForEachMatch(loaded->ticket, pattern.c_str(), [&](const auto&) {
                CAPTURE(loaded->ticket.id);
                for (const kp::Test& test : loaded->ticket.tests) {
                    for (const kp::LineEntry& entry : test.rx) {
                        CHECK((entry.gap >= rate.gap || entry.bytes.size() < 2));
                    }
                }
            });
        }
    }
}
