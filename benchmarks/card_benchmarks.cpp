#include <algorithm>
#include <string>

#include "allocations.h"
#include "benchmarks.h"
#include "content/content.h"
#include "peers/factory.h"

namespace bench {
namespace {

// Every test of the built-in decks with its reference, ready to run.
struct Deck {
    const kp::LoadedTicket* loaded;
    kp::Program program;
};

std::vector<Deck> Decks(const kp::Content& content) {
    std::vector<Deck> decks;
    for (const kp::LoadedTicket* loaded : content.Tickets()) {
        const auto assembly = kp::Assemble(loaded->reference_text, loaded->ticket.machine);
        decks.push_back({loaded, kp::Load(assembly, loaded->ticket.machine)});
    }
    return decks;
}

// Runs all tests of all decks tick by tick; the ticks that were run.
double RunDecks(const std::vector<Deck>& decks, kp::Session& session) {
    double ticks = 0;
    for (const Deck& deck : decks) {
        for (std::size_t k = 0; k < deck.loaded->ticket.tests.size(); ++k) {
            if (!kp::BeginTest(session, deck.loaded->ticket, k, deck.program,
                               &deck.loaded->reference.outputs[k])) {
                continue;
            }
            while (session.StepTick()) {
            }
            ticks += session.CurrentTick();
        }
    }
    return ticks;
}

// Judged runs in one go of all decks with one kind of far end, the making of the far ends apart.
void TimeDecksOf(Report& report, const std::vector<Deck>& decks, kp::PeerType type,
                 kp::Session& session) {
    struct Run {
        const Deck* deck;
        std::size_t test;
        std::unique_ptr<kp::Peer> peer;
    };
    std::vector<Run> runs;
    for (const Deck& deck : decks) {
        if (deck.loaded->ticket.peer_type != type) continue;
        for (std::size_t k = 0; k < deck.loaded->ticket.tests.size(); ++k) {
            runs.push_back({&deck, k, nullptr});
        }
    }
    if (runs.empty()) return;
    const std::string name =
        "engine: a judged tick, decks with " + std::string(kp::PeerTypeName(type));
    report.Sample(name, "ns", 25, [&] {
        for (Run& run : runs) {
            run.peer = std::move(*kp::CreatePeer(run.deck->loaded->ticket, run.test));
        }
        double ticks = 0;
        const Stopwatch watch;
        for (Run& run : runs) {
            const kp::Ticket& ticket = run.deck->loaded->ticket;
            session.Begin(ticket, ticket.tests[run.test], run.deck->program, std::move(run.peer),
                          &run.deck->loaded->reference.outputs[run.test]);
            session.RunToEnd();
            ticks += session.CurrentTick();
        }
        return watch.Nanoseconds() / ticks;
    });
}

kp::Ticket LongTicket() {
    kp::Ticket ticket;
    ticket.id = "long";
    ticket.max_ticks = 200000;
    ticket.machine.rom = 256;
    ticket.tests.resize(1);
    return ticket;
}

enum class Pace { TickByTick, InOneGo };

// One test of 200,000 ticks under a firmware that never ends.
void TimeLongRun(Report& report, std::string_view name, std::string_view firmware, Pace pace) {
    const kp::Ticket ticket = LongTicket();
    const kp::Program program = kp::Load(kp::Assemble(firmware, ticket.machine), ticket.machine);
    const kp::ExpectedOutput expected{{1}, {}};
    kp::Session session;
    report.Time(name, [&] {
        (void)kp::BeginTest(session, ticket, 0, program, &expected);
        if (pace == Pace::InOneGo) session.RunToEnd();
        while (session.StepTick()) {
        }
        return static_cast<double>(session.CurrentTick());
    });
}

void TimeSetup(Report& report, const std::vector<Deck>& decks, kp::Session& session) {
    // A ticket without a far end, whose own storage would be counted.
    const auto alone = std::find_if(decks.begin(), decks.end(), [](const Deck& deck) {
        return deck.loaded->ticket.peer_type == kp::PeerType::None;
    });
    if (alone == decks.end()) return;
    const Deck& deck = *alone;
    const kp::Ticket& ticket = deck.loaded->ticket;
    constexpr int kPeers = 1000;
    std::vector<std::unique_ptr<kp::Peer>> peers(kPeers);
    const std::string name = "session: setting up, the far end apart";
    report.Sample(name, "ns", 15, [&] {
        for (auto& peer : peers) peer = std::move(*kp::CreatePeer(ticket, 0));
        Stopwatch watch;
        for (auto& peer : peers) {
            session.Begin(ticket, ticket.tests[0], deck.program, std::move(peer),
                          &deck.loaded->reference.outputs[0]);
        }
        return watch.Nanoseconds() / kPeers;
    });
    report.Sample("session: allocations of a run, far end apart", "", 1, [&] {
        RunDecks(decks, session);  // grows what has to grow
        auto peer = std::move(*kp::CreatePeer(ticket, 0));
        const std::size_t before = Allocations();
        session.Begin(ticket, ticket.tests[0], deck.program, std::move(peer),
                      &deck.loaded->reference.outputs[0]);
        while (session.StepTick()) {
        }
        return static_cast<double>(Allocations() - before);
    });
}

void TimeAssembler(Report& report) {
    kp::CardConfig card;
    card.rom = 256;
    std::string firmware;
    for (int line = 0; line < 255; ++line) {
        firmware += "line" + std::to_string(line) + ": jeq a, $" + std::to_string(line) +
                    ", line0  ; comment\n";
    }
    report.Time("assembler: 255 lines", [&] {
        const kp::Assembly assembly = kp::Assemble(firmware, card);
        Keep(&assembly);
        return 1.0;
    });
}

}  // namespace

void RunCard(Report& report) {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    const std::vector<Deck> decks = Decks(content);
    if (decks.empty()) return;
    kp::Session session;
    report.Time("engine: a judged tick with trace, all decks",
                [&] { return RunDecks(decks, session); });
    for (std::size_t type = 0; type < kp::kPeerTypeNames.size(); ++type) {
        TimeDecksOf(report, decks, static_cast<kp::PeerType>(type), session);
    }
    constexpr std::string_view kPure = "l: add a, 1\nxor b, a\njne b, 0, l\njmp l";
    constexpr std::string_view kWait = "l: wait 30000\njmp l";
    TimeLongRun(report, "engine: one public step call", kPure, Pace::TickByTick);
    TimeLongRun(report, "engine: a tick of pure instructions in one go", kPure, Pace::InOneGo);
    TimeLongRun(report, "engine: a tick of waiting in one go", kWait, Pace::InOneGo);
    TimeSetup(report, decks, session);
    TimeAssembler(report);
}

}  // namespace bench
