#include "card/config.h"

namespace kp {
namespace {

constexpr struct {
    std::string_view key;
    std::int32_t CardConfig::*number;
    json::Limits limits;
} kNumbers[] = {
    {"rom", &CardConfig::rom, {1, 256}},
    {"ram", &CardConfig::ram, {0, 256}},
    {"rx_buffer", &CardConfig::rx_buffer, {1, 256}},
    {"tx_gap", &CardConfig::tx_gap, {1, 64}},
    {"stack", &CardConfig::stack, {0, 32}},
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
base::Result<std::uint8_t> ReadRegisters(json::Fields& machine, std::uint8_t fallback) {
    const json::Value& registers = machine.Inner("registers").Source();
    if (registers.IsNumber()) {
        const int count = machine.Number("registers", 4, {1, 4});
        return static_cast<std::uint8_t>((1 << count) - 1);
    }
    if (!registers.IsString()) {
        if (json::Has(machine.Source(), "registers")) {
            machine.Remark("registers", "letters a to d, or how many");
        }
        return fallback;
    }
    int mask = 0;
    for (const char letter : registers.string) {
        if (letter < 'a' || letter > 'd') return base::Failure{"registers lists letters a to d"};
        mask |= 1 << (letter - 'a');
    }
    return static_cast<std::uint8_t>(mask);
}

}  // namespace

base::Result<CardConfig> ReadCardConfig(json::Fields machine) {
    CardConfig config;
    for (const auto& [key, number, limits] : kNumbers) {
        config.*number = machine.Number(key, config.*number, limits);
    }
    for (const auto& [key, part] : kParts) config.*part = machine.Flag(key, config.*part);
    const auto registers = ReadRegisters(machine, config.registers);
    if (!registers) return base::Failure{registers.Message()};
    config.registers = *registers;
    machine.RemarkUnknown();
    return config;
}

}  // namespace kp
