#pragma once

#include <string_view>

#include "peers/peer_link.h"

namespace kp {

// Opens both windows of a span: the card's first byte from tick `from` on must go out on `first` to
// `last`.
inline void ExpectBetween(PeerLink& link, Tick first, Tick last, std::string_view what, Tick from) {
    link.Expect(WindowKind::Earliest, first, what, from);
    link.Expect(WindowKind::Deadline, last, what, from);
}

}  // namespace kp
