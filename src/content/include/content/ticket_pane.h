#pragma once

#include "content/content.h"

namespace kp {

// Inside the frame and the margins, in cells.
struct TextArea {
    int columns = 0;
    int rows = 0;
};

// Where a ticket's text stands on the smallest bench, 80 by 25 cells: the place it is written for.
// The more lanes the ticket's trace has, the fewer rows are left.
TextArea SmallestTicketPane(const LoadedTicket& loaded);

}  // namespace kp
