#include "save/unlocking.h"

#include <algorithm>

namespace Kest {
namespace {

// A player may leave this many required tickets unclosed, less one, and still go on.
constexpr int kFirstLockedAt = 2;
constexpr int kLastStage = 3;

const kp::Shift* FindShift(const kp::Content& content, int number) {
    for (const kp::Shift& shift : content.shifts) {
        if (shift.number == number) return &shift;
    }
    return nullptr;
}

bool IsRequired(const kp::LoadedTicket& loaded) {
    return !loaded.ticket.optional;
}

int CountClosed(const kp::Shift& shift, const Progress& progress) {
    return static_cast<int>(std::count_if(
        shift.tickets.begin(), shift.tickets.end(), [&](const kp::LoadedTicket& loaded) {
            return IsRequired(loaded) && progress.IsClosed(loaded.ticket.id);
        }));
}

}  // namespace

bool Unlocking::IsTicketOpen(std::string_view ticket_id) const {
    const kp::LoadedTicket* wanted = content.FindTicket(ticket_id);
    if (wanted == nullptr) return false;
    if (open_all || progress.IsClosed(ticket_id)) return true;
    int left_behind = 0;
    bool required_before_closed = true;
    for (const kp::LoadedTicket* before : content.Tickets()) {
        if (before == wanted) break;
        if (!IsRequired(*before)) continue;
        required_before_closed = progress.IsClosed(before->ticket.id);
        if (!required_before_closed) ++left_behind;
    }
    if (wanted->ticket.optional && !required_before_closed) return false;
    return left_behind < kFirstLockedAt;
}

bool Unlocking::IsShiftOpen(int number) const {
    const kp::Shift* shift = FindShift(content, number);
    return shift != nullptr && std::any_of(shift->tickets.begin(), shift->tickets.end(),
                                           [this](const kp::LoadedTicket& loaded) {
                                               return IsTicketOpen(loaded.ticket.id);
                                           });
}

int Unlocking::ClosedCount(int shift_number) const {
    const kp::Shift* shift = FindShift(content, shift_number);
    return shift == nullptr ? 0 : CountClosed(*shift, progress);
}

int Unlocking::RequiredCount(int shift_number) const {
    const kp::Shift* shift = FindShift(content, shift_number);
    if (shift == nullptr) return 0;
    return static_cast<int>(
        std::count_if(shift->tickets.begin(), shift->tickets.end(), IsRequired));
}

int Unlocking::Stage() const {
    if (open_all) return kLastStage;
    int closed = 0;
    for (const kp::Shift& shift : content.shifts) closed += CountClosed(shift, progress);
    return std::min(closed, kLastStage);
}

const kp::LoadedTicket* Unlocking::NextTicket(std::string_view ticket_id) const {
    const std::vector<const kp::LoadedTicket*> tickets = content.Tickets();
    const auto here = std::find(tickets.begin(), tickets.end(), content.FindTicket(ticket_id));
    if (here == tickets.end() || here + 1 == tickets.end()) return nullptr;
    const kp::LoadedTicket* next = *(here + 1);
    return IsTicketOpen(next->ticket.id) ? next : nullptr;
}

const kp::LoadedTicket* Unlocking::ContinueTicket() const {
    // A ticket that a reset has locked again is nowhere to continue.
    if (IsTicketOpen(progress.current)) return content.FindTicket(progress.current);
    const std::vector<const kp::LoadedTicket*> tickets = content.Tickets();
    for (const kp::LoadedTicket* loaded : tickets) {
        const std::string& id = loaded->ticket.id;
        if (IsTicketOpen(id) && !progress.IsClosed(id)) return loaded;
    }
    return tickets.empty() ? nullptr : tickets.front();
}

}  // namespace Kest
