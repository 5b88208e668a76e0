#pragma once

#include <cstdint>

namespace base {

// One row of a table that the build's embed() makes; the row after the last has a null name.
struct EmbeddedFile {
    const char* name;
    const char* data;
    std::uint64_t size;  // bytes
};

}  // namespace base
