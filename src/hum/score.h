#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hum {

// One note, rest or note of a chord, as the program sees it; lengths in quarter notes.
struct ScoreEvent {
    std::int32_t midi = 0;  // 0..127, or kRest
    float beats = 0;
    float velocity = 0;  // 0..1
    float start = 0;     // since the score's beginning
    float step = 0;      // to the next event
    bool operator==(const ScoreEvent&) const = default;
};

inline constexpr std::int32_t kRest = -1;
inline constexpr std::size_t kMaxEvents = 4096;

struct ScoreFault {
    std::string message;
    std::size_t character = 0;  // counts from 1
};

// Reads a score's notation. False when it is at fault.
bool ReadScore(std::string_view text, std::vector<ScoreEvent>& events, ScoreFault& fault);

}  // namespace hum
