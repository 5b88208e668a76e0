#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "base/disk.h"
#include "benchmarks.h"
#include "json/parser.h"
#include "native/system_disk.h"
#include "peers/factory.h"
#include "session/verify.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

// A far end's small ticket with the firmware that passes it.
struct Conversation {
    kp::Ticket ticket;
    kp::Program program;
    kp::ExpectedOutput expected;
};

std::optional<Conversation> ReadConversation(const fs::path& folder) {
    zo::platform::SystemDisk disk;
    const auto text = disk.Read(folder / "ticket.json");
    const auto firmware = disk.Read(folder / "pass.lc1");
    json::Value value;
    json::Error error;
    if (!text || !firmware || !json::Parse(*text, value, error)) return std::nullopt;
    auto ticket = kp::ParseTicket(value);
    if (!ticket) return std::nullopt;
    Conversation made{*std::move(ticket), {}, {}};
    made.program = kp::Load(kp::Assemble(*firmware, made.ticket.machine), made.ticket.machine);
    kp::Session session;
    if (!kp::BeginTest(session, made.ticket, 0, made.program, nullptr)) return std::nullopt;
    session.RunToEnd();
    made.expected = {session.Transmitted(), session.Delivered()};
    return made;
}

// Judged runs in one go, the making of their far ends apart.
double NanosecondsPerTick(const Conversation& conversation, kp::Session& session) {
    constexpr int kRuns = 500;
    std::vector<std::unique_ptr<kp::Peer>> peers;
    for (int k = 0; k < kRuns; ++k) {
        peers.push_back(std::move(*kp::CreatePeer(conversation.ticket, 0)));
    }
    double ticks = 0;
    const Stopwatch watch;
    for (auto& peer : peers) {
        session.Begin(conversation.ticket, conversation.ticket.tests[0], conversation.program,
                      std::move(peer), &conversation.expected);
        session.RunToEnd();
        ticks += session.CurrentTick();
    }
    return watch.Nanoseconds() / ticks;
}

}  // namespace

void RunFarEnds(Report& report) {
    kp::Session session;
    std::vector<fs::path> folders;
    for (const auto& entry : fs::directory_iterator(KEST_FAR_ENDS)) folders.push_back(entry.path());
    std::sort(folders.begin(), folders.end());
    for (const fs::path& folder : folders) {
        const auto conversation = ReadConversation(folder);
        if (!conversation) continue;
        const std::string name = "far end: a judged tick, " + folder.filename().string();
        report.Sample(name, "ns", 15, [&] { return NanosecondsPerTick(*conversation, session); });
    }
}

}  // namespace bench
