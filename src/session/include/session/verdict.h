#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "card/config.h"

namespace kp {

enum class FailureKind : std::uint8_t {
    None,
    TxWrong,
    TxExtra,
    Early,
    Late,
    Deadline,
    HostWrong,
    HostExtra,
    Overflow,
    Fault,
    TickLimit,
    Short,
};

// The kind's fixed word, such as "tx-wrong"; empty for None.
std::string_view FailureWord(FailureKind kind);

// How a test ended. A pass has no kind, no line and no message.
struct Verdict {
    bool passed = false;
    FailureKind kind = FailureKind::None;
    Tick tick = 0;
    std::optional<int> line;  // of the source
    std::string message;      // whole sentences
};

}  // namespace kp
