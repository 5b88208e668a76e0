#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hum {

// Why a program does not compile or assemble, and where; line and column count from 1.
struct Fault {
    std::string name;  // of the source
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    std::string message;
    bool operator==(const Fault&) const = default;
};

// "NAME:LINE:COLUMN: message"
std::string FaultText(const Fault& fault);

// Where the texts that a program includes come from.
class Includes {
public:
    enum class Found : std::uint8_t { Yes, No, Unreadable };
    struct Text {
        Found found = Found::No;
        std::string path;  // the same for the same text, however it was asked for
        std::string text;
    };

    virtual ~Includes() = default;
    // `from` is the path of the including text.
    virtual Text Find(std::string_view from, std::string_view name) = 0;
};

// What is compiled. The texts must outlive the call that is given them.
struct ProgramText {
    std::string_view name;  // in messages; "<input>" is used when this is empty
    std::string_view path;  // what `includes` knows it by
    std::string_view text;
    std::string_view library;      // read first, under the name "music"
    Includes* includes = nullptr;  // without one, nothing is found
};

}  // namespace hum
