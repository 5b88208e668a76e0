#include "ticket/ticket.h"

#include <algorithm>

#include "base/format.h"
#include "recipe.h"
#include "ticket/generator.h"

namespace kp {
namespace {

using base::Failure;
using base::Status;

constexpr std::size_t kMostTests = 10000;  // of one ticket, so that a mistyped count cannot stall

Tick ReadTick(const json::Value& object, std::string_view key, Tick fallback) {
    return static_cast<Tick>(
        std::max(json::IntOr(object, key, static_cast<std::int32_t>(fallback)), 0));
}

// Reads the elements of one of a test's arrays; `read` takes an element and returns a status.
template <class Read>
Status ReadEach(const json::Value& test, std::string_view key, Read read) {
    for (const json::Value& item : json::Member(test, key).items) {
        if (Status status = read(item); !status) return status;
    }
    return {};
}

// Turns one test object into a concrete test, drawing from its generator in the order host, rx,
// frames, replies.
class TestBuilder {
public:
    TestBuilder(const json::Value& source, RecipeContext& context, Test& test)
        : source_(source), context_(context), test_(test) {}

    Status Build() {
        test_.peer = json::Member(source_, "peer");
        Status status = ReadEach(source_, "host", [&](const auto& item) { return Host(item); });
        if (status) status = ReadEach(source_, "rx", [&](const auto& item) { return Line(item); });
        if (status) {
            status = ReadEach(source_, "frames", [&](const auto& item) { return Frame(item); });
        }
        if (status) {
            status = ReadEach(source_, "replies", [&](const auto& item) { return Answer(item); });
        }
        return status;
    }

private:
    Status Bytes(const json::Value& recipe, kp::Bytes& bytes) {
        base::Result<kp::Bytes> built = BuildBytes(recipe, context_);
        if (!built) return Failure{built.Message()};
        bytes = std::move(*built);
        return {};
    }

    Status Host(const json::Value& item) {
        const Tick before = test_.host.empty() ? 0 : test_.host.back().at;
        HostMessage& message = test_.host.emplace_back();
        message.at = ReadTick(item, "at", before);
        return Bytes(item, message.bytes);
    }

    Status Line(const json::Value& item) {
        LineEntry& entry = test_.rx.emplace_back();
        entry.at = ReadTick(item, "at", 0);
        entry.gap = std::max<Tick>(ReadTick(item, "gap", 1), 1);
        entry.label = json::StringOr(item, "label", "");
        entry.reply_within = json::IntOr(item, "reply_within", 0);
        return Bytes(item, entry.bytes);
    }

    Status Frame(const json::Value& item) { return Bytes(item, test_.frames.emplace_back()); }

    Status Answer(const json::Value& item) {
        Reply& reply = test_.replies.emplace_back();
        reply.delay = std::max(json::IntOr(item, "delay", 2), 0);
        reply.label = json::StringOr(item, "label", "");
        Status status = Optional(item, "after", reply.after);
        return status ? Optional(item, "send", reply.send) : status;
    }

    Status Optional(const json::Value& item, std::string_view key, kp::Bytes& bytes) {
        return json::Has(item, key) ? Bytes(json::Member(item, key), bytes) : Status();
    }

    const json::Value& source_;
    RecipeContext& context_;
    Test& test_;
};

Status ExpandTest(const json::Value& source, Ticket& ticket) {
    const std::int32_t count = std::max(json::IntOr(source, "count", 1), 1);
    const std::string name = json::StringOr(source, "name", "Test");
    for (std::int32_t k = 1; k <= count; ++k) {
        if (ticket.tests.size() >= kMostTests) {
            return Failure{base::Format("more than %zu tests", kMostTests)};
        }
        const auto position = static_cast<int>(ticket.tests.size());
        Test& test = ticket.tests.emplace_back();
        test.name = count > 1 ? name + base::Format(" %d", static_cast<int>(k)) : name;
        test.seed = TestSeed(ticket.id, position);
        Generator generator(test.seed);
        RecipeContext context{ticket.frame, generator};
        if (const Status built = TestBuilder(source, context, test).Build(); !built) {
            return Failure{base::Format("test %d: ", position + 1) + built.Message()};
        }
    }
    return {};
}

Status ExpandTests(const json::Value& tests, Ticket& ticket) {
    if (tests.items.empty()) return Failure{"the ticket has no tests"};
    for (const json::Value& source : tests.items) {
        if (Status status = ExpandTest(source, ticket); !status) return status;
    }
    return {};
}

void ReadWords(const json::Value& value, Ticket& ticket) {
    ticket.title = json::StringOr(value, "title", ticket.id);
    ticket.client = json::StringOr(value, "client", "");
    ticket.brief = json::StringOr(value, "brief", "");
    ticket.shift = json::IntOr(value, "shift", 1);
    ticket.order = json::IntOr(value, "order", 1);
    ticket.difficulty = std::clamp(json::IntOr(value, "difficulty", 1), 1, 5);
    ticket.optional = json::BoolOr(value, "optional", false);
    ticket.text = ReadTextList(json::Member(value, "ticket"));
    ticket.hints = ReadTextList(json::Member(value, "hints"));
    ticket.binder = ReadTextList(json::Member(value, "binder"));
    ticket.note = json::StringOr(value, "note", "");
    ticket.starter = json::StringOr(value, "starter", "");
    ticket.settle = static_cast<Tick>(std::max(json::IntOr(value, "settle", 30), 1));
    ticket.max_ticks =
        static_cast<Tick>(std::clamp(json::IntOr(value, "max_ticks", 6000), 100, 200000));
}

// Without a peer block the far end is a script when the first test has bytes for it.
Status ReadPeer(const json::Value& value, Ticket& ticket) {
    const json::Value& peer = json::Member(value, "peer");
    const json::Value& tests = json::Member(value, "tests");
    std::string type;
    if (peer.IsObject()) {
        type = json::StringOr(peer, "type", "script");
        ticket.peer = peer;
    } else {
        const bool has_rx = !tests.items.empty() && json::Has(tests.items.front(), "rx");
        type = has_rx ? "script" : "none";
    }
    const auto name = std::find(kPeerTypeNames.begin(), kPeerTypeNames.end(), type);
    if (name == kPeerTypeNames.end()) return Failure{"unknown peer type \"" + type + "\""};
    ticket.peer_type = static_cast<PeerType>(name - kPeerTypeNames.begin());
    return {};
}

}  // namespace

std::vector<std::string> ReadTextList(const json::Value& value) {
    if (value.IsString()) return {value.string};
    std::vector<std::string> texts;
    for (const json::Value& item : value.items) texts.push_back(json::String(item));
    return texts;
}

base::Result<Ticket> ParseTicket(const json::Value& value) {
    if (!value.IsObject()) return Failure{"a mission is a JSON object"};
    Ticket ticket;
    ticket.id = json::StringOr(value, "id", "");
    if (ticket.id.empty()) return Failure{"missing id"};
    ReadWords(value, ticket);
    const auto machine = ReadCardConfig(json::Member(value, "machine"));
    if (!machine) return Failure{machine.Message()};
    ticket.machine = *machine;
    if (const json::Value& frame = json::Member(value, "frame"); frame.IsObject()) {
        auto format = ReadFrameFormat(frame);
        if (!format) return Failure{format.Message()};
        ticket.frame = std::move(*format);
    }
    if (const Status peer = ReadPeer(value, ticket); !peer) return Failure{peer.Message()};
    const Status tests = ExpandTests(json::Member(value, "tests"), ticket);
    if (!tests) return Failure{tests.Message()};
    return ticket;
}

}  // namespace kp
