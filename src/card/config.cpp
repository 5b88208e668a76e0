#include "card/config.h"

#include <algorithm>

namespace kp {
namespace {

constexpr struct {
    std::string_view key;
    std::int32_t CardConfig::*number;
    std::int32_t least, most;
} kNumbers[] = {
    {"rom", &CardConfig::rom, 1, 256},
    {"ram", &CardConfig::ram, 0, 256},
    {"rx_buffer", &CardConfig::rx_buffer, 1, 256},
    {"tx_gap", &CardConfig::tx_gap, 1, 64},
    {"stack", &CardConfig::stack, 0, 32},
};

constexpr struct {
    std::string_view key;
    bool CardConfig::*part;
} kParts[] = {
    {"crc", &CardConfig::crc},
    {"timer", &CardConfig::timer},
    {"host", &CardConfig::host},
    {"clock", &CardConfig::clock},
};

// The registers fitted: a string of letters, or how many from a on.
base::Result<std::uint8_t> ReadRegisters(const json::Value& registers, std::uint8_t fallback) {
    if (registers.IsNumber()) {
        const int count = std::clamp(json::ToInt(registers.number), 1, 4);
        return static_cast<std::uint8_t>((1 << count) - 1);
    }
    if (!registers.IsString()) return fallback;
    int mask = 0;
    for (const char letter : registers.string) {
        if (letter < 'a' || letter > 'd') return base::Failure{"registers lists letters a to d"};
        mask |= 1 << (letter - 'a');
    }
    return static_cast<std::uint8_t>(mask);
}

}  // namespace

base::Result<CardConfig> ReadCardConfig(const json::Value& machine) {
    CardConfig config;
    for (const auto& [key, number, least, most] : kNumbers) {
        config.*number = std::clamp(json::IntOr(machine, key, config.*number), least, most);
    }
    for (const auto& [key, part] : kParts) config.*part = json::BoolOr(machine, key, config.*part);
    const auto registers = ReadRegisters(json::Member(machine, "registers"), config.registers);
    if (!registers) return base::Failure{registers.Message()};
    config.registers = *registers;
    return config;
}

}  // namespace kp
