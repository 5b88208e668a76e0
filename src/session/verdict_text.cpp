#include "verdict_text.h"

#include <array>

#include "base/format.h"
#include "card/byte_text.h"
#include "session/verdict.h"

namespace kp {
namespace {

using base::Format;

constexpr std::array<std::string_view, 12> kFailureWords = {
    "",           "tx-wrong",   "tx-extra", "early", "late",       "deadline",
    "host-wrong", "host-extra", "overflow", "fault", "tick-limit", "short"};

constexpr const char* kWrapped =
    " Execution ran past the last line and started again at the first; halt stops the card.";

const char* WrapText(bool wrapped) {
    return wrapped ? kWrapped : "";
}

}  // namespace

std::string_view FailureWord(FailureKind kind) {
    return kFailureWords[static_cast<std::size_t>(kind)];
}

std::string EarlyText(Tick tick, const TimingWindow& window) {
    return Format("Tick %u: %s went out early. The specification waits until tick %u.", tick,
                  window.what.c_str(), window.until);
}

std::string LateText(Tick tick, const TimingWindow& window) {
    return Format("Tick %u: %s went out late. It was due by tick %u.", tick, window.what.c_str(),
                  window.until);
}

std::string MissedText(Tick tick, const TimingWindow& window, CardState state) {
    const char* card = state == CardState::WaitingByte ? " The card was waiting for a byte."
                       : state == CardState::InWait    ? " The card was in a wait."
                                                       : "";
    return Format("Tick %u: %s was due by tick %u, and nothing was transmitted in time.%s", tick,
                  window.what.c_str(), window.until, card);
}

std::string ExtraTransmittedText(Tick tick, std::uint8_t byte, std::size_t expected, bool wrapped) {
    return Format(
        "Tick %u: transmitted %s, but the specification's transmission was already "
        "complete after %zu bytes.%s",
        tick, VerdictByte(byte).c_str(), expected, WrapText(wrapped));
}

std::string WrongTransmittedText(Tick tick, std::uint8_t byte, const std::string& place,
                                 std::uint8_t expected) {
    return Format("Tick %u: transmitted %s as %s; the specification calls for %s.", tick,
                  VerdictByte(byte).c_str(), place.c_str(), VerdictByte(expected).c_str());
}

std::string ExtraDeliveredText(Tick tick, std::uint8_t byte, std::size_t expected, bool wrapped) {
    return Format(
        "Tick %u: delivered %s to the host, but the host had already received all %zu "
        "expected bytes.%s",
        tick, VerdictByte(byte).c_str(), expected, WrapText(wrapped));
}

std::string WrongDeliveredText(Tick tick, std::uint8_t byte, std::size_t index,
                               std::uint8_t expected) {
    return Format("Tick %u: delivered %s to the host as byte %zu; the specification calls for %s.",
                  tick, VerdictByte(byte).c_str(), index + 1, VerdictByte(expected).c_str());
}

std::string ShortTransmittedText(std::size_t sent, std::size_t expected, std::uint8_t next,
                                 const std::string& place) {
    return Format(
        "The test ended after %zu of %zu expected transmitted bytes. Next expected: %s "
        "as %s.",
        sent, expected, VerdictByte(next).c_str(), place.c_str());
}

std::string ShortDeliveredText(std::size_t delivered, std::size_t expected, std::uint8_t next) {
    return Format(
        "The test ended after the host received %zu of %zu expected bytes. Next "
        "expected: %s.",
        delivered, expected, VerdictByte(next).c_str());
}

std::string ShortStateText(CardState state, int line) {
    switch (state) {
        case CardState::Halted:
            return Format(" The card halted at line %d.", line);
        case CardState::WaitingByte:
            return Format(" The card was waiting for a received byte at line %d.", line);
        case CardState::WaitingHost:
            return Format(" The card was waiting for the host at line %d.", line);
        default:
            return "";
    }
}

std::string TickLimitText(Tick limit, CardState state, int line) {
    return Format(
        "The test reached its limit of %u ticks before it finished. The card was %s at "
        "line %d.",
        limit, std::string(StateName(state)).c_str(), line);
}

std::string StillRunningText(Tick tick) {
    return Format("The reference was still running at tick %u.", tick);
}

std::string OverflowText(Tick tick, std::uint8_t byte, int capacity) {
    return Format(
        "Tick %u: byte %s arrived while the receive buffer was full (%d bytes). The card "
        "has to read bytes about as fast as they arrive.",
        tick, HexByte(byte).c_str(), capacity);
}

std::string FaultText(FaultKind kind, int line, int value, int ram) {
    switch (kind) {
        case FaultKind::RamAddress:
            return Format("Line %d: RAM address %d is outside this card's RAM (0 to %d).", line,
                          value, ram - 1);
        case FaultKind::CallDepth:
            return Format("Line %d: call went %d levels deep, past the card's call stack.", line,
                          value);
        case FaultKind::RetWithoutCall:
            return Format("Line %d: ret ran with no call to return to.", line);
        case FaultKind::None:
            break;
    }
    return "";
}

}  // namespace kp
