#pragma once

#include <optional>
#include <string_view>

#include "ticket/bytes.h"

namespace kp {

// Reads hex text: pairs of hexadecimal digits, with tab, space, $ , - and : skipped anywhere, even
// inside a pair. Nothing when another character stands in it or a digit is left over.
std::optional<Bytes> ReadHex(std::string_view text);

}  // namespace kp
