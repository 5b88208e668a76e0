#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/result.h"
#include "json/fields.h"
#include "ticket/bytes.h"

namespace kp {

enum class Check : std::uint8_t { None, Sum8, Xor8, Crc8, Crc16, Crc16Modbus };
enum class CheckScope : std::uint8_t { Frame, Payload };

// A ticket's frame: sync, length byte, flags byte, payload, check; parts may be missing.
struct FrameFormat {
    Bytes sync;
    bool length = true;             // a length byte (payload size, low 8 bits) follows the sync
    std::int32_t fixed_length = 0;  // payload size where there is no length byte
    bool flags = false;             // a flags byte follows the length
    Check check = Check::None;
    CheckScope scope = CheckScope::Frame;  // Frame: first sync byte to last payload byte
    bool annotate = true;                  // byte streams are labelled by frame fields
};

base::Result<FrameFormat> ReadFrameFormat(json::Fields frame);

// The check's bytes as they stand behind the payload: none, one or two.
int CheckWidth(Check check);
Bytes CheckBytes(Check check, std::span<const std::uint8_t> bytes);
// Whether `found` is the check of the bytes.
bool CheckFits(Check check, std::span<const std::uint8_t> bytes,
               std::span<const std::uint8_t> found);

Bytes BuildFrame(const FrameFormat& format, std::span<const std::uint8_t> payload,
                 std::uint8_t flags);

}  // namespace kp
