#include "card/config.h"

#include <array>

#include <doctest/doctest.h>

#include "support/text.h"

namespace {

base::Result<kp::CardConfig> Read(std::string_view machine) {
    return kp::ReadCardConfig(support::Json(machine));
}

}  // namespace

TEST_CASE("a card without a description, or with values of the wrong kind, is the usual one") {
    for (const char* machine :
         {"null", "[1]", "{}", "{\"rom\": \"9\", \"crc\": 1, \"host\": 0, \"registers\": null}"}) {
        CAPTURE(machine);
        const auto config = Read(machine);
        REQUIRE(config);
        CHECK(*config == kp::CardConfig());
    }
}

TEST_CASE("numbers are clamped into their ranges") {
    const auto low = Read(R"({"rom": 0, "ram": -1, "rx_buffer": 0, "tx_gap": -1e99, "stack": -5})");
    const auto high =
        Read(R"({"rom": 257, "ram": 1e99, "rx_buffer": 999, "tx_gap": 65, "stack": 33})");
    const auto inside =
        Read(R"({"rom": 8.9, "ram": 0, "rx_buffer": 2, "tx_gap": 64, "stack": 32})");
    const auto numbers = [](const kp::CardConfig& c) {
        return std::array{c.rom, c.ram, c.rx_buffer, c.tx_gap, c.stack};
    };
    CHECK(numbers(*low) == std::array{1, 0, 1, 1, 0});
    CHECK(numbers(*high) == std::array{256, 256, 256, 64, 32});
    CHECK(numbers(*inside) == std::array{8, 0, 2, 64, 32});
}

TEST_CASE("registers are listed by letter or counted from a") {
    const struct {
        std::string_view registers;
        int mask;
    } cases[] = {
        {"\"a\"", 0b0001}, {"\"da\"", 0b1001}, {"\"abcd\"", 0b1111}, {"\"bb\"", 0b0010},
        {"\"\"", 0},       {"0", 0b0001},      {"2", 0b0011},        {"9", 0b1111},
        {"-1", 0b0001},    {"true", 0b1111},
    };
    for (const auto& c : cases) {
        CAPTURE(c.registers);
        const auto config = Read("{\"registers\": " + std::string(c.registers) + "}");
        REQUIRE(config);
        CHECK(config->registers == c.mask);
    }
    for (const char* registers : {"abx", "A", "a b", "abcde"}) {
        const auto config = Read("{\"registers\": \"" + std::string(registers) + "\"}");
        CHECK_FALSE(config);
        CHECK(config.Message() == "registers lists letters a to d");
    }
}

TEST_CASE("parts are fitted as their booleans say") {
    const auto config = Read(R"({"crc": true, "timer": true, "host": false, "clock": true})");
    CHECK((config->crc && config->timer && !config->host && config->clock));
    CHECK((config->HasRegister(3) && !config->HasRegister(4)));
}
