#pragma once

#include <algorithm>
#include <string>

#include "base/format.h"
#include "session/verify.h"
#include "support/cases.h"
#include "support/text.h"

namespace support {

// A ticket, a program and a session on one of its tests. The ticket is a JSON object, or an
// object's inside, in which `id` is supplied.
struct Rig {
    kp::Ticket ticket;
    kp::Assembly assembly;
    kp::Program program;
    kp::Session session;

    Rig(const std::string& ticket_text, std::string_view firmware) : ticket(TicketOf(ticket_text)) {
        Load(firmware);
    }

    static kp::Ticket TicketOf(const std::string& text) {
        const bool whole = text.starts_with('{');
        auto parsed = kp::ParseTicket(Json(whole ? text : "{\"id\": \"t\", " + text + "}"));
        INFO(parsed.Message());
        REQUIRE(parsed);
        return *std::move(parsed);
    }

    void Load(std::string_view firmware) {
        assembly = kp::Assemble(firmware, ticket.machine);
        INFO((assembly.errors.empty() ? "" : assembly.errors.front().message));
        REQUIRE(assembly.errors.empty());
        program = kp::Load(assembly, ticket.machine);
    }

    // Without an expected output the run is recorded.
    void Begin(const kp::ExpectedOutput* expected = nullptr, std::size_t test = 0) {
        const base::Status begun = kp::BeginTest(session, ticket, test, program, expected);
        INFO(begun.Message());
        REQUIRE(begun);
    }

    const kp::Verdict& Run(const kp::ExpectedOutput* expected = nullptr, std::size_t test = 0) {
        Begin(expected, test);
        session.RunToEnd();
        return session.Verdict();
    }
};

// Everything that a run leaves behind.
struct Record {
    std::vector<kp::TraceEvent> trace;
    std::string notes;
    std::string windows;
    std::string verdict;
    std::string card;
    kp::Tick ticks, output_ticks;

    explicit Record(const kp::Session& session)
        : trace(session.Trace().begin(), session.Trace().end()),
          verdict((session.Verdict().passed ? "passed " : "failed ") + session.Verdict().message),
          card(kp::StateName(session.Card().State())),
          ticks(session.CurrentTick()),
          output_ticks(session.OutputTicks()) {
        for (const auto& note : session.Notes()) {
            notes += base::Format("%u ", note.tick) + note.text + "\n";
        }
        for (const auto& window : session.Windows()) {
            windows += base::Format("%u %u ", window.from, window.until) + window.what +
                       (window.done ? " done\n" : "\n");
        }
        for (int k = 0; k < 5; ++k) {
            card += base::Format(" %u", unsigned{session.Card().RegisterValue(k)});
        }
    }
    bool operator==(const Record&) const = default;
};

}  // namespace support
