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

Tick ReadTick(json::Fields& object, std::string_view key, Tick fallback) {
    return static_cast<Tick>(object.Number(key, static_cast<std::int32_t>(fallback), {.least = 0}));
}

// Reads the elements of one of a test's arrays; `read` takes an element and returns a status.
template <class Read>
Status ReadEach(json::Fields& test, std::string_view key, Read read) {
    const std::size_t count = test.List(key).size();
    for (std::size_t k = 0; k < count; ++k) {
        json::Fields item = test.Item(key, k);
        if (Status status = read(item); !status) return status;
    }
    return {};
}

// Turns one test object into a concrete test, drawing from its generator in the order host, rx,
// frames, replies.
class TestBuilder {
public:
    TestBuilder(json::Fields& source, RecipeContext& context, Test& test)
        : source_(source), context_(context), test_(test) {}

    Status Build() {
        test_.peer = source_.Object("peer").Source();
        Status status = ReadEach(source_, "host", [&](auto& item) { return Host(item); });
        if (status) status = ReadEach(source_, "rx", [&](auto& item) { return Line(item); });
        if (status) status = ReadEach(source_, "frames", [&](auto& item) { return Frame(item); });
        if (status) status = ReadEach(source_, "replies", [&](auto& item) { return Answer(item); });
        return status;
    }

private:
    Status Bytes(const json::Fields& recipe, kp::Bytes& bytes) {
        base::Result<kp::Bytes> built = BuildBytes(recipe, context_);
        if (!built) return Failure{built.Message()};
        bytes = std::move(*built);
        return {};
    }

    Status Host(json::Fields& item) {
        const Tick before = test_.host.empty() ? 0 : test_.host.back().at;
        HostMessage& message = test_.host.emplace_back();
        message.at = ReadTick(item, "at", before);
        return Bytes(item, message.bytes);
    }

    Status Line(json::Fields& item) {
        LineEntry& entry = test_.rx.emplace_back();
        entry.at = ReadTick(item, "at", 0);
        entry.gap = static_cast<Tick>(item.Number("gap", 1, {.least = 1}));
        entry.label = item.Text("label");
        entry.reply_within = item.Number("reply_within", 0);
        if (entry.reply_within < 0) item.Remark("reply_within", "0 or more");
        return Bytes(item, entry.bytes);
    }

    Status Frame(const json::Fields& item) { return Bytes(item, test_.frames.emplace_back()); }

    Status Answer(json::Fields& item) {
        Reply& reply = test_.replies.emplace_back();
        reply.delay = item.Number("delay", 2, {.least = 0});
        reply.label = item.Text("label");
        Status status = Optional(item, "after", reply.after);
        if (status) status = Optional(item, "send", reply.send);
        item.RemarkUnknown();
        return status;
    }

    Status Optional(json::Fields& item, std::string_view key, kp::Bytes& bytes) {
        const json::Fields recipe = item.Inner(key);
        return json::Has(item.Source(), key) ? Bytes(recipe, bytes) : Status();
    }

    json::Fields& source_;
    RecipeContext& context_;
    Test& test_;
};

// Copies differ by their seeds alone, so only the first has remarks.
Status ExpandTest(const json::Value& value, Ticket& ticket, std::uint32_t draw,
                  json::Remarks* remarks) {
    const std::size_t first = ticket.tests.size() + 1;
    json::Fields source(value, remarks, base::Format("test %zu", first));
    const std::int32_t count = source.Number("count", 1, {.least = 1});
    const std::string name = source.Text("name", "Test");
    for (std::int32_t k = 1; k <= count; ++k) {
        if (ticket.tests.size() >= kMostTests) {
            return Failure{base::Format("more than %zu tests", kMostTests)};
        }
        const auto position = static_cast<int>(ticket.tests.size());
        Test& test = ticket.tests.emplace_back();
        test.name = count > 1 ? name + base::Format(" %d", static_cast<int>(k)) : name;
        test.copy = count > 1 ? k : 0;
        test.seed = FreshSeed(ticket.id, position, draw);
        Generator generator(test.seed);
        RecipeContext context{ticket.frame, generator};
        if (const Status built = TestBuilder(source, context, test).Build(); !built) {
            return Failure{base::Format("test %d: ", position + 1) + built.Message()};
        }
        test.seeded = generator.HasDrawn();
        source.RemarkUnknown();
        source = json::Fields(value);
    }
    return {};
}

Status ExpandTests(Ticket& ticket, std::uint32_t draw, json::Remarks* remarks) {
    if (ticket.deck.items.empty()) return Failure{"the ticket has no tests"};
    for (const json::Value& test : ticket.deck.items) {
        if (Status status = ExpandTest(test, ticket, draw, remarks); !status) return status;
    }
    return {};
}

void ReadWords(json::Fields& value, Ticket& ticket) {
    ticket.title = value.Text("title", ticket.id);
    ticket.client = value.Text("client");
    ticket.brief = value.Text("brief");
    ticket.shift = value.Number("shift", 1);
    ticket.order = value.Number("order", 1);
    ticket.difficulty = value.Number("difficulty", 1, {1, 5});
    ticket.optional = value.Flag("optional", false);
    ticket.text = value.Texts("ticket");
    ticket.hints = value.Texts("hints");
    ticket.binder = value.Texts("binder");
    ticket.note = value.Text("note");
    ticket.starter = value.Text("starter");
    ticket.settle = static_cast<Tick>(value.Number("settle", 30, {.least = 1}));
    ticket.max_ticks = static_cast<Tick>(value.Number("max_ticks", 6000, {100, 200000}));
}

// Without a peer block the far end is a script when the first test has bytes for it. The block's
// other keys are the far end's own.
Status ReadPeer(json::Fields& value, const std::vector<json::Value>& tests, Ticket& ticket) {
    json::Fields peer = value.Object("peer");
    std::string type;
    if (peer.Source().IsObject()) {
        type = peer.Text("type", "script");
        ticket.peer = peer.Source();
    } else {
        const bool has_rx = !tests.empty() && json::Has(tests.front(), "rx");
        type = has_rx ? "script" : "none";
    }
    const auto name = std::find(kPeerTypeNames.begin(), kPeerTypeNames.end(), type);
    if (name == kPeerTypeNames.end()) return Failure{"unknown peer type \"" + type + "\""};
    ticket.peer_type = static_cast<PeerType>(name - kPeerTypeNames.begin());
    return {};
}

}  // namespace

base::Result<Ticket> ParseTicket(const json::Value& file, json::Remarks* remarks) {
    if (!file.IsObject()) return Failure{"a mission is a JSON object"};
    json::Fields value(file, remarks);
    Ticket ticket;
    ticket.id = value.Text("id");
    if (ticket.id.empty()) return Failure{"missing id"};
    ReadWords(value, ticket);
    const auto machine = ReadCardConfig(value.Object("machine"));
    if (!machine) return Failure{machine.Message()};
    ticket.machine = *machine;
    if (const json::Fields frame = value.Object("frame"); frame.Source().IsObject()) {
        auto format = ReadFrameFormat(frame);
        if (!format) return Failure{format.Message()};
        ticket.frame = std::move(*format);
    }
    const std::vector<json::Value>& tests = value.List("tests");
    if (const Status peer = ReadPeer(value, tests, ticket); !peer) return Failure{peer.Message()};
    ticket.deck = json::Member(file, "tests");
    const Status expanded = ExpandTests(ticket, 0, remarks);
    if (!expanded) return Failure{expanded.Message()};
    value.RemarkUnknown();
    return ticket;
}

base::Status DrawTests(Ticket& ticket, std::uint32_t draw) {
    ticket.tests.clear();
    const Status expanded = ExpandTests(ticket, draw, nullptr);
    std::erase_if(ticket.tests, [](const Test& test) { return !test.seeded; });
    return expanded;
}

}  // namespace kp
