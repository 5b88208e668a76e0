#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "content/binder.h"
#include "content/coach.h"
#include "content/store.h"
#include "session/verify.h"
#include "ticket/ticket.h"

namespace kp {

// A ticket whose reference has proven it solvable.
struct LoadedTicket {
    Ticket ticket;
    std::string reference_text;
    Reference reference;
};

struct Shift {
    std::int32_t number = 1;
    std::string title;
    std::string subtitle;
    std::string intro;
    std::string outro;
    std::vector<LoadedTicket> tickets;
};

struct MailMessage {
    std::string id;
    std::string from;
    std::string subject;
    std::string after;
    std::vector<std::string> body;
};

// A ticket that the campaign lists and that could not be loaded.
struct LeftOut {
    std::string id;
    std::string reason;
};

// Everything that was loaded, and a line for each problem on the way. A ticket with a problem is
// left out. Read-only after loading.
struct Content {
    std::string title;
    std::vector<Shift> shifts;
    std::vector<BinderPage> pages;
    std::vector<CoachEntry> coach;
    std::vector<MailMessage> mail;
    std::vector<std::string> problems;
    std::vector<LeftOut> left_out;  // each is the subject of a problem too

    // Null when there is no such ticket, page, or coach's entry for a ticket.
    const LoadedTicket* FindTicket(std::string_view id) const;
    const Shift* ShiftOf(std::string_view ticket_id) const;
    const BinderPage* FindPage(std::string_view id) const;
    const CoachEntry* CoachOn(std::string_view ticket_id) const;
    // All tickets in campaign order.
    std::vector<const LoadedTicket*> Tickets() const;
};

// Loads the campaign and proves every reference. With `remarks`, an author is told what was not
// taken as it stands, ticket lines led by the ticket's id and others by the file's name.
Content LoadContent(const ContentStore& store, json::Remarks* remarks = nullptr);

// The names under which a store holds a ticket and its reference firmware.
std::string TicketFile(std::string_view id);
std::string ReferenceFile(std::string_view id);

// The full id of the store's ticket with this id, or with these first four characters.
base::Result<std::string> FindTicketId(const ContentStore& store, std::string_view name);

// One ticket of a store by its id or its first four characters, proven; nothing else is loaded. The
// failure is one line, without the ticket's id.
base::Result<LoadedTicket> LoadOneTicket(const ContentStore& store, std::string_view name);

}  // namespace kp
