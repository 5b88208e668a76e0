#pragma once

#include <string>

#include "card/assembler.h"

// Errors as "line:column+length message", each with its line end.
std::string Errors(const kp::Assembly& assembly);

// A program's instructions without their lines, such as "jeq a 65535 >7": registers by name, cells
// in brackets, targets after ">". Instructions are separated by "; ".
std::string Listing(const kp::Assembly& assembly);
