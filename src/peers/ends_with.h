#pragma once

#include <algorithm>

#include "ticket/bytes.h"

namespace kp {

// Whether what was heard ends with these bytes; noise before them does not matter.
inline bool EndsWith(const Bytes& heard, const Bytes& end) {
    return heard.size() >= end.size() && std::equal(end.rbegin(), end.rend(), heard.rbegin());
}

}  // namespace kp
