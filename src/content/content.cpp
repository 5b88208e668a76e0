#include "content/content.h"

#include <algorithm>

namespace kp {

const LoadedTicket* Content::FindTicket(std::string_view id) const {
    for (const Shift& shift : shifts) {
        for (const LoadedTicket& loaded : shift.tickets) {
            if (loaded.ticket.id == id) return &loaded;
        }
    }
    return nullptr;
}

const Shift* Content::ShiftOf(std::string_view ticket_id) const {
    for (const Shift& shift : shifts) {
        for (const LoadedTicket& loaded : shift.tickets) {
            if (loaded.ticket.id == ticket_id) return &shift;
        }
    }
    return nullptr;
}

const BinderPage* Content::FindPage(std::string_view id) const {
    const auto page = std::find_if(pages.begin(), pages.end(),
                                   [&](const BinderPage& candidate) { return candidate.id == id; });
    return page == pages.end() ? nullptr : &*page;
}

const CoachEntry* Content::CoachOn(std::string_view ticket_id) const {
    const auto entry = std::ranges::find(coach, ticket_id, &CoachEntry::ticket);
    return entry == coach.end() ? nullptr : &*entry;
}

std::vector<const LoadedTicket*> Content::Tickets() const {
    std::vector<const LoadedTicket*> tickets;
    for (const Shift& shift : shifts) {
        for (const LoadedTicket& loaded : shift.tickets) tickets.push_back(&loaded);
    }
    return tickets;
}

}  // namespace kp
