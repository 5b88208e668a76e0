#pragma once

#include <optional>

#include "base/result.h"
#include "json/fields.h"
#include "ticket/bytes.h"
#include "ticket/frame.h"
#include "ticket/generator.h"

namespace kp {

// What a byte recipe draws on: the ticket's frame format and the test's generator.
struct RecipeContext {
    const std::optional<FrameFormat>& frame;
    Generator& generator;
};

// Builds the bytes of a recipe: text, a number array, or an object of one of the forms text, hex,
// random, frame, concat, repeat and bytes, with `corrupt` and `truncate` beside it. Other keys of
// the object must have been asked for.
base::Result<Bytes> BuildBytes(json::Fields recipe, RecipeContext& context);

}  // namespace kp
