#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "card/config.h"
#include "json/fields.h"
#include "ticket/bytes.h"
#include "ticket/frame.h"

namespace kp {

// Far ends by type, in the order of kPeerTypeNames.
enum class PeerType : std::uint8_t {
    None,
    Script,
    Sender,
    Responder,
    Acker,
    Flow,
    XmodemRx,
    XmodemTx,
};
inline constexpr std::array<std::string_view, 8> kPeerTypeNames = {
    "none", "script", "sender", "responder", "acker", "flow", "xmodem-rx", "xmodem-tx"};
constexpr std::string_view PeerTypeName(PeerType type) {
    return kPeerTypeNames[static_cast<std::size_t>(type)];
}

// A message that the host hands the card, from tick `at` on.
struct HostMessage {
    Tick at = 0;
    Bytes bytes;
};

// Bytes that arrive on the line: the first on tick `at`, the others `gap` ticks apart.
struct LineEntry {
    Tick at = 0;
    Tick gap = 1;  // at least 1
    std::string label;
    std::int32_t reply_within = 0;  // ticks, 0 for none
    Bytes bytes;
};

// A canned answer: what the far end waits for and what it then sends.
struct Reply {
    Bytes after;
    Bytes send;
    std::int32_t delay = 2;  // ticks
    std::string label;
};

// One expanded test: inputs only, all bytes drawn.
struct Test {
    std::string name;
    std::int32_t copy = 0;  // which of a repeated test's seeded copies, from 1; 0 of a single test
    std::uint64_t seed = 0;
    bool seeded = false;  // another seed gives other bytes
    json::Value peer;     // far-end settings of this test; null when it has none
    std::vector<HostMessage> host;
    std::vector<LineEntry> rx;
    std::vector<Bytes> frames;
    std::vector<Reply> replies;

    // Whether anything is there to reach the card.
    bool HasBytes() const {
        return !(host.empty() && rx.empty() && frames.empty() && replies.empty());
    }
};

struct Ticket {
    std::string id;
    std::string title;
    std::string client;
    std::string brief;
    std::int32_t shift = 1;
    std::int32_t order = 1;
    std::int32_t difficulty = 1;  // 1 to 5
    bool optional = false;
    std::vector<std::string> text;  // paragraphs
    std::vector<std::string> hints;
    std::vector<std::string> binder;  // page ids
    std::string note;
    std::string starter;
    Tick settle = 30;       // ticks, at least 1
    Tick max_ticks = 6000;  // 100 to 200000
    CardConfig machine;
    std::optional<FrameFormat> frame;
    PeerType peer_type = PeerType::None;
    json::Value peer;  // far-end settings of the ticket; null when it has none
    std::vector<Test> tests;
    json::Value deck;  // what the tests were expanded from
};

// Reads a ticket file's value and expands its tests. The failure is one line without the ticket's
// id. With `remarks`, an author is told what was not taken as it stands.
base::Result<Ticket> ParseTicket(const json::Value& file, json::Remarks* remarks = nullptr);

// Draws the seeded tests of a ticket's deck afresh, and leaves the others out: the ticket's tests
// become those. Draws are numbered; 0 gives the deck's own. The failure is one line without the
// ticket's id; then the tests are some of them.
base::Status DrawTests(Ticket& ticket, std::uint32_t draw);

}  // namespace kp
