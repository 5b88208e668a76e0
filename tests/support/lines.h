#pragma once

#include <string>
#include <vector>

namespace support {

// The lines as one text, which a failing check can show.
inline std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return text;
}

}  // namespace support
