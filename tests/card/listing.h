#pragma once

#include <string>
#include <string_view>

#include "card/assembler.h"

// A card with every part, and one that lacks what can be lacking.
kp::CardConfig FullCard();
kp::CardConfig BareCard();

// Errors as "line:column+length message", one a line.
std::string Errors(std::string_view source, const kp::CardConfig& config);

// A program's instructions without their lines, such as "jeq a 65535 >7": registers by name, cells
// in brackets, targets after ">". Instructions are separated by "; ".
std::string Listing(const kp::Assembly& assembly);
