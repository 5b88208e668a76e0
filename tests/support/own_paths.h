#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

namespace support {

// The text with every path in the "data" folder as this system writes it.
inline std::string OwnPaths(std::string text) {
    for (std::size_t at = text.find("data/"); at != std::string::npos;
         at = text.find("data/", at)) {
        const std::size_t end = std::min(text.find_first_of(" \n", at), text.size());
        std::filesystem::path path = text.substr(at, end - at);
        text.replace(at, end - at, path.make_preferred().string());
        at = end;
    }
    return text;
}

}  // namespace support
