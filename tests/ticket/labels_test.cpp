#include "ticket/labels.h"

#include <doctest/doctest.h>

#include "support/text.h"
#include "ticket/hex.h"

namespace {

std::vector<std::string> Labels(std::string_view format, std::string_view stream) {
    std::optional<kp::FrameFormat> frame;
    if (!format.empty()) {
        auto read = kp::ReadFrameFormat(support::Json(format));
        REQUIRE(read);
        frame = *read;
    }
    const auto bytes = *kp::ReadHex(stream);
    const auto labels = kp::LabelStream(bytes, frame);
    for (std::size_t k = 0; k < bytes.size(); ++k) CHECK(kp::LabelOf(bytes, k, frame) == labels[k]);
    return labels;
}

}  // namespace

TEST_CASE("a byte stream is labelled by frame fields") {
    using Lines = std::vector<std::string>;
    CHECK(Labels("", "41 42") == Lines{"byte 1", "byte 2"});
    CHECK(Labels(R"({"sync": "C1", "annotate": false})", "C1 00") == Lines{"byte 1", "byte 2"});
    CHECK(Labels(R"({"sync": "C1 67", "flags": true, "check": "crc16"})",
                 "7E C1 67 01 05 41 0A 0B C1 67 02") ==
          Lines{"byte 1, outside a frame", "frame 1, sync byte 1", "frame 1, sync byte 2",
                "frame 1, length", "frame 1, flags", "frame 1, payload byte 1",
                "frame 1, check byte 1", "frame 1, check byte 2", "frame 2, sync byte 1",
                "frame 2, sync byte 2", "frame 2, length"});
    CHECK(Labels(R"({"length": false, "fixed_length": 2, "check": "sum8"})", "01 02 03 04") ==
          Lines{"frame 1, payload byte 1", "frame 1, payload byte 2", "frame 1, check byte",
                "frame 2, payload byte 1"});
    // A format that takes up no byte at all would never end.
    CHECK(Labels(R"({"length": false})", "41 42") == Lines{"byte 1", "byte 2"});
}
