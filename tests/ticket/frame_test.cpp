#include "ticket/frame.h"

#include <doctest/doctest.h>

#include "support/text.h"
#include "ticket/hex.h"

using kp::Bytes;
using support::Json;
using support::ToBytes;

namespace {

kp::FrameFormat Format(std::string_view text) {
    auto format = kp::ReadFrameFormat(Json(text));
    REQUIRE(format);
    return *format;
}

}  // namespace

TEST_CASE("hex text takes separators anywhere and refuses a left-over digit") {
    CHECK(kp::ReadHex("C1 67") == Bytes{0xC1, 0x67});
    CHECK(kp::ReadHex("$c1,$67-0:2") == Bytes{0xC1, 0x67, 0x02});
    CHECK(kp::ReadHex("1 3") == Bytes{0x13});
    CHECK(kp::ReadHex("") == Bytes{});
    CHECK_FALSE(kp::ReadHex("123"));
    CHECK_FALSE(kp::ReadHex("1\n3"));
    CHECK_FALSE(kp::ReadHex("xy"));
}

TEST_CASE("every check gives its published value for 123456789") {
    const struct {
        kp::Check check;
        Bytes bytes;
    } cases[] = {
        {kp::Check::None, {}},
        {kp::Check::Sum8, {0xDD}},
        {kp::Check::Xor8, {0x31}},
        {kp::Check::Crc8, {0xF4}},
        {kp::Check::Crc16, {0x29, 0xB1}},
        {kp::Check::Crc16Modbus, {0x37, 0x4B}},
    };
    for (const auto& c : cases) {
        CHECK(kp::CheckBytes(c.check, ToBytes("123456789")) == c.bytes);
        CHECK(kp::CheckWidth(c.check) == static_cast<int>(c.bytes.size()));
    }
}

TEST_CASE("frames are built by their format") {
    const auto small = Format(R"({"sync": "C1", "check": "sum8", "check_scope": "payload"})");
    CHECK(kp::BuildFrame(small, ToBytes("OK"), 0) == Bytes{0xC1, 0x02, 0x4F, 0x4B, 0x9A});
    const auto house = Format(R"({"sync": "C1 67", "flags": true, "check": "crc16"})");
    CHECK(kp::BuildFrame(house, ToBytes("HI!"), 1) ==
          Bytes{0xC1, 0x67, 0x03, 0x01, 0x48, 0x49, 0x21, 0x07, 0x9E});
    CHECK(kp::BuildFrame(Format(R"({"length": false})"), ToBytes("A"), 9) == Bytes{0x41});
}

TEST_CASE("a frame format with an unknown part says which") {
    CHECK(kp::ReadFrameFormat(Json(R"({"sync": "C"})")).Message() == "malformed frame sync");
    CHECK(kp::ReadFrameFormat(Json(R"({"check": "md5"})")).Message() == "unknown check \"md5\"");
}
