#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "card/processor.h"
#include "session/trace.h"

namespace kp {

// The sentences of a verdict, each whole and exactly as the player reads it.

std::string EarlyText(Tick tick, const TimingWindow& window);
std::string LateText(Tick tick, const TimingWindow& window);
std::string MissedText(Tick tick, const TimingWindow& window, CardState state);
std::string ExtraTransmittedText(Tick tick, std::uint8_t byte, std::size_t expected, bool wrapped);
std::string WrongTransmittedText(Tick tick, std::uint8_t byte, const std::string& place,
                                 std::uint8_t expected);
std::string ExtraDeliveredText(Tick tick, std::uint8_t byte, std::size_t expected, bool wrapped);
std::string WrongDeliveredText(Tick tick, std::uint8_t byte, std::size_t index,
                               std::uint8_t expected);
std::string ShortTransmittedText(std::size_t sent, std::size_t expected, std::uint8_t next,
                                 const std::string& place);
std::string ShortDeliveredText(std::size_t delivered, std::size_t expected, std::uint8_t next);
// What the card was doing when a test ended short: a sentence with its leading blank, or nothing.
std::string ShortStateText(CardState state, int line);
std::string TickLimitText(Tick limit, CardState state, int line);
std::string StillRunningText(Tick tick);
std::string OverflowText(Tick tick, std::uint8_t byte, int capacity);
std::string FaultText(FaultKind kind, int line, int value, int ram);

}  // namespace kp
