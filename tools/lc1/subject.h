#pragma once

#include <optional>
#include <string>

#include "outcome.h"
#include "request.h"
#include "session/verify.h"
#include "ticket/ticket.h"

namespace lc1 {

// A ticket with its proven reference, and the firmware that is to be run on its card.
struct Subject {
    kp::Ticket ticket;
    std::string reference_text;
    kp::Reference reference;
    kp::Assembly firmware;
};

// Each of these fills in what the request names, or returns the problem.
std::optional<Problem> LoadTicket(const Request& request, kp::Ticket& ticket);
std::optional<Problem> LoadSubject(const Request& request, Subject& subject, kp::Session& session);
// The firmware is the file named last; "-" is standard input.
std::optional<Problem> ReadFirmware(const Request& request, std::string& firmware);
std::optional<Problem> ReadFile(const std::string& path, std::string& text);

}  // namespace lc1
