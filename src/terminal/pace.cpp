#include "pace.h"

#include <algorithm>

namespace zo::term {

void Pace::Sent(std::size_t bytes, double now) {
    if (!answers_ || count_ == kMostPictures) return;
    if (count_ == 0) since_ = now;
    sizes_[(first_ + count_) % kMostPictures] = bytes;
    ++count_;
    bytes_ += bytes;
}

void Pace::Answered(double now) {
    answers_ = true;
    since_ = now;
    if (count_ == 0) return;
    bytes_ -= sizes_[first_];
    first_ = (first_ + 1) % kMostPictures;
    --count_;
}

bool Pace::MaySend(double now) {
    if (count_ == 0) return true;
    if (now - since_ >= kPatience) {
        // Answers got lost, or whoever gave them has gone.
        count_ = bytes_ = 0;
        answers_ = false;
        return true;
    }
    return count_ < kMostPictures && bytes_ < kMostBytes;
}

double Pace::SecondsToSend(double now) const {
    return count_ == 0 ? -1 : std::max(since_ + kPatience - now, 0.0);
}

}  // namespace zo::term
