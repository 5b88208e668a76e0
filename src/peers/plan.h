#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json/writer.h"
#include "peer_settings.h"

namespace kp {

// What happens to the frames of a test, in their order, read from the peer key `plan`: one word
// each. An empty word, and everything behind the end of the list, is a default Fate, which is what
// a healthy line does.
template <class Fate>
class Plan {
public:
    // `read` turns a word into its fate; nothing means that nobody knows the word.
    Plan(PeerSettings& settings, std::optional<Fate> (*read)(std::string_view word)) {
        for (const std::string& word : settings.Words("plan")) {
            const std::optional<Fate> fate = word.empty() ? Fate() : read(word);
            if (!fate) {
                settings.Fail("plan", "unknown plan word \"" + json::EscapeString(word) + "\"");
            }
            fates_.push_back(fate.value_or(Fate()));
        }
    }

    Fate Next() { return used_ < fates_.size() ? fates_[used_++] : Fate(); }

private:
    std::vector<Fate> fates_;
    std::size_t used_ = 0;
};

// A row of a far end's vocabulary.
template <class Meaning>
struct PlanWord {
    std::string_view word;
    Meaning meaning;
};

template <class Meaning, std::size_t N>
std::optional<Meaning> FindWord(const PlanWord<Meaning> (&words)[N], std::string_view word) {
    for (const PlanWord<Meaning>& row : words) {
        if (row.word == word) return row.meaning;
    }
    return std::nullopt;
}

// The n of "name:n". A number too large to be a byte's position is the largest there is.
std::optional<std::size_t> NumberOf(std::string_view word, std::string_view name);

// Noise that strikes one byte: its position, from 0.
inline constexpr std::size_t kLastByte = static_cast<std::size_t>(-1);

// The byte that "garble:<n>" or "garble", which is the last byte, strikes.
std::optional<std::size_t> GarbledByte(std::string_view word);

// Inverts bit 4 of the byte that is struck; behind the end nothing is.
void Garble(Bytes& bytes, std::size_t position);

}  // namespace kp
