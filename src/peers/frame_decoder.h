#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "ticket/frame.h"

namespace kp {

// Finds the frames of a ticket's format in what the card sends, byte by byte. Behind the sync a
// frame is taken by count alone: a sync inside it is ordinary data, and a frame that was cut short
// is filled up by the bytes that follow. There is no limit of time.
class FrameDecoder {
public:
    // What a byte turned out to be.
    enum class Place : std::uint8_t {
        Outside,  // of no frame: noise, and also the byte that ended a false start
        Inside,   // of a frame, or of the sync that may open one
        Last,     // the last byte of a frame, which Intact and Flags now speak of
    };

    // Without a format, or with one in which nothing takes up a byte, every byte is outside.
    explicit FrameDecoder(const std::optional<FrameFormat>& format);

    Place Take(std::uint8_t byte);
    // No frame is being received.
    bool Idle() const { return held_.empty(); }

    // The last complete frame: whether its check matched, and its flags byte if it has one.
    bool Intact() const { return intact_; }
    std::optional<std::uint8_t> Flags() const { return flags_; }

private:
    void DropFalseStart();
    bool Complete() const;
    void Examine();

    FrameFormat format_;
    std::size_t header_ = 0;  // bytes before the payload
    std::size_t check_ = 0;   // bytes behind it
    bool has_frames_ = false;
    Bytes held_;  // of the frame being received
    bool intact_ = false;
    std::optional<std::uint8_t> flags_;
};

}  // namespace kp
