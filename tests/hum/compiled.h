#pragma once

#include <map>
#include <string>
#include <string_view>

#include "hum/program.h"
#include "hum/source.h"

// Texts to include, held in memory. "locked" is there but cannot be read.
class HeldIncludes final : public hum::Includes {
public:
    Text Find(std::string_view from, std::string_view name) override;
    std::map<std::string, std::string, std::less<>> texts;
};

struct Compiled {
    hum::Program program;
    std::string fault;  // "LINE:COLUMN: message", with the name before it unless it is "<input>"
};

Compiled CompileText(std::string_view text, hum::Includes* includes = nullptr,
                     std::string_view library = {});
