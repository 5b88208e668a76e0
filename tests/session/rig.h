#pragma once

#include <doctest/doctest.h>

#include <string>
#include <string_view>

#include "session/verify.h"
#include "support/text.h"

namespace support {

// A ticket, a program and a session on one of its tests.
struct Rig {
    kp::Ticket ticket;
    kp::Assembly assembly;
    kp::Program program;
    kp::Session session;

    Rig(std::string_view ticket_text, std::string_view firmware) {
        auto parsed = kp::ParseTicket(Json(ticket_text));
        INFO(parsed.Message());
        REQUIRE(parsed);
        ticket = *std::move(parsed);
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

}  // namespace support
