#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace hum {

// Every name of a program once. A name is then a small number, counted from 0 in the order of
// arrival, by which tables can be indexed.
class Names {
public:
    static constexpr std::uint32_t kUnknown = 0xffffffff;

    Names();
    std::uint32_t Intern(std::string_view text);
    std::uint32_t Find(std::string_view text) const;  // or kUnknown
    std::string_view Text(std::uint32_t name) const { return entries_[name].text; }
    std::uint32_t Count() const { return static_cast<std::uint32_t>(entries_.size()); }

private:
    struct Entry {
        std::string_view text;
        std::uint32_t hash;
    };
    void Grow();

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> slots_;  // an entry's number plus 1; 0 is free
};

}  // namespace hum
