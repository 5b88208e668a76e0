#pragma once

#include <string_view>

#include "writer.h"

namespace zo::term {

// What the variables of the environment say about the terminal; an empty one is not set.
struct Surroundings {
    std::string_view term = {};        // TERM
    std::string_view colour = {};      // COLORTERM
    std::string_view characters = {};  // the first that is set of LC_ALL, LC_CTYPE and LANG
};

// A terminal that is said to know no sequences at all, or about which nothing is said.
bool IsUnusable(const Surroundings& around);
// What the terminal is taken to know until it has answered for itself.
Abilities AbilitiesIn(const Surroundings& around);

}  // namespace zo::term
