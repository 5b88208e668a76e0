#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "card/assembler.h"
#include "source_lines.h"

namespace kp {

// Gathers errors in the order in which they are found.
class ErrorList {
public:
    // The line that the next errors stand on.
    void EnterLine(std::int32_t line) { line_ = line; }

    // Always false, so that a check can end with `return errors.Fail(...)`.
    bool Fail(const Piece& at, std::string message) {
        const auto length = static_cast<std::int32_t>(at.text.size());
        errors_.push_back({line_, at.column, length, std::move(message)});
        return false;
    }

    std::vector<AssemblyError> Release() { return std::move(errors_); }

private:
    std::int32_t line_ = 0;
    std::vector<AssemblyError> errors_;
};

}  // namespace kp
