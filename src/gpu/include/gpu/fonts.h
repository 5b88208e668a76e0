#pragma once

#include <string>
#include <vector>

namespace zo::gpu {

// The type faces built in, by their family names.
std::vector<std::string> FontFamilies();

// Whether the classic face is there in glyphs nine dots wide.
bool HasNineWideFace();

}  // namespace zo::gpu
