#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "ticket/frame.h"

namespace kp {

// The place of byte `index` (from 0) of a stream, as messages name it: "byte 3", "frame 1, payload
// byte 3", "byte 4, outside a frame". Frames are found by the format alone; no check is looked at.
// A format in which nothing takes up a byte gives "byte 3".
std::string LabelOf(std::span<const std::uint8_t> stream, std::size_t index,
                    const std::optional<FrameFormat>& format);

// All places of a stream at once.
std::vector<std::string> LabelStream(std::span<const std::uint8_t> stream,
                                     const std::optional<FrameFormat>& format);

}  // namespace kp
