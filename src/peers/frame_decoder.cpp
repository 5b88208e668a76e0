#include "frame_decoder.h"

#include <algorithm>
#include <span>

namespace kp {

FrameDecoder::FrameDecoder(const std::optional<FrameFormat>& format) {
    if (!format) return;
    format_ = *format;
    header_ = format_.sync.size() + (format_.length ? 1 : 0) + (format_.flags ? 1 : 0);
    check_ = static_cast<std::size_t>(CheckWidth(format_.check));
    held_.reserve(format_.sync.size() + 2 + 255 + check_);
    has_frames_ = header_ + check_ > 0 || format_.fixed_length > 0;
}

FrameDecoder::Place FrameDecoder::Take(std::uint8_t byte) {
    if (!has_frames_) return Place::Outside;
    held_.push_back(byte);
    if (held_.size() <= format_.sync.size()) DropFalseStart();
    if (held_.empty()) return Place::Outside;
    if (!Complete()) return Place::Inside;
    Examine();
    held_.clear();
    return Place::Last;
}

// Gives up the oldest bytes until the rest is a beginning of the sync, so that C1 C1 67 still finds
// the sync C1 67.
void FrameDecoder::DropFalseStart() {
    while (!std::equal(held_.begin(), held_.end(), format_.sync.begin())) {
        held_.erase(held_.begin());
    }
}

bool FrameDecoder::Complete() const {
    if (held_.size() < header_) return false;
    const std::size_t payload = format_.length
                                    ? held_[format_.sync.size()]
                                    : static_cast<std::size_t>(std::max(format_.fixed_length, 0));
    return held_.size() >= header_ + payload + check_;
}

void FrameDecoder::Examine() {
    const std::span<const std::uint8_t> frame(held_);
    const std::span<const std::uint8_t> check = frame.last(check_);
    std::span<const std::uint8_t> covered = frame.first(frame.size() - check_);
    if (format_.scope == CheckScope::Payload) covered = covered.subspan(header_);
    intact_ = CheckFits(format_.check, covered, check);
    flags_.reset();
    if (format_.flags) flags_ = frame[header_ - 1];
}

}  // namespace kp
