#include "ticket/frame.h"

#include <algorithm>
#include <array>

#include "ticket/hex.h"

namespace kp {
namespace {

constexpr std::array<std::string_view, 6> kCheckNames = {"none", "sum8",  "xor8",
                                                         "crc8", "crc16", "crc16-modbus"};

void Append(Bytes& to, std::span<const std::uint8_t> bytes) {
    to.insert(to.end(), bytes.begin(), bytes.end());
}

}  // namespace

base::Result<FrameFormat> ReadFrameFormat(json::Fields frame) {
    FrameFormat format;
    const auto sync = ReadHex(frame.Text("sync"));
    if (!sync) return base::Failure{"malformed frame sync"};
    format.sync = *sync;
    format.length = frame.Flag("length", format.length);
    format.fixed_length = frame.Number("fixed_length", 0, {.least = 0});
    format.flags = frame.Flag("flags", format.flags);
    const std::string check = frame.Text("check", "none");
    const auto name = std::find(kCheckNames.begin(), kCheckNames.end(), check);
    if (name == kCheckNames.end()) return base::Failure{"unknown check \"" + check + "\""};
    format.check = static_cast<Check>(name - kCheckNames.begin());
    const std::string scope = frame.Text("check_scope", "frame");
    format.scope = scope == "payload" ? CheckScope::Payload : CheckScope::Frame;
    if (scope != "payload" && scope != "frame") frame.Remark("check_scope", "frame or payload");
    format.annotate = frame.Flag("annotate", format.annotate);
    frame.RemarkUnknown();
    return format;
}

Bytes BuildFrame(const FrameFormat& format, std::span<const std::uint8_t> payload,
                 std::uint8_t flags) {
    Bytes frame = format.sync;
    frame.reserve(frame.size() + payload.size() + 4);
    if (format.length) frame.push_back(static_cast<std::uint8_t>(payload.size()));
    if (format.flags) frame.push_back(flags);
    Append(frame, payload);
    const bool whole = format.scope == CheckScope::Frame;
    Append(frame, CheckBytes(format.check, whole ? frame : payload));
    return frame;
}

}  // namespace kp
