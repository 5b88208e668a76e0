#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "card/assembler.h"
#include "error_list.h"
#include "names.h"
#include "source_lines.h"

namespace kp {

// The labels or the constants of one text, which must outlive the table.
class SymbolTable {
public:
    const Symbol* Find(std::string_view name) const {
        const auto found = index_.find(name);
        return found == index_.end() ? nullptr : &symbols_[found->second];
    }

    void Add(std::string_view name, std::int32_t value, std::int32_t line) {
        index_.emplace(name, symbols_.size());
        symbols_.push_back({std::string(name), value, line});
    }

    std::vector<Symbol> Release() { return std::move(symbols_); }

private:
    std::vector<Symbol> symbols_;
    std::unordered_map<std::string_view, std::size_t, NameHash, SameName> index_;
};

// Labels and constants are apart: one name may be both.
struct Symbols {
    SymbolTable labels;     // with the index of the next instruction
    SymbolTable constants;  // with their 16-bit word
};

// The first pass: what the lines define.
Symbols ReadSymbols(const SourceLines& source, ErrorList& errors);

}  // namespace kp
