#pragma once

#include <optional>

#include "dots.h"

namespace zo::gpu {

// The baseline of the classic face lies below this many of its sixteen rows, the top of its small
// letters below so many.
inline constexpr int kBaselineRow = 13;
inline constexpr int kSmallLetterRow = 6;

// The glyph as the face has it, eight dots by sixteen.
std::optional<Dots> FindClassicGlyph(char32_t code_point);

}  // namespace zo::gpu
