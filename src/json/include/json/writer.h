#pragma once

#include <string>
#include <string_view>

#include "json/value.h"

namespace json {

// With an indent of 1 or more every element stands on a line of its own and the document ends with
// a line feed; with 0 nothing is inserted.
std::string Write(const Value& value, int indent);

// The body of a JSON string, without the quotes around it.
std::string EscapeString(std::string_view bytes);

}  // namespace json
