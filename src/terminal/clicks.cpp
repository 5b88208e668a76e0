#include "clicks.h"

namespace zo::term {

int Clicks::Press(int button, int x, int y, double now) {
    constexpr double kSeconds = 0.4;
    constexpr int kMost = 3;
    const bool goes_on = button == button_ && x == x_ && y == y_ && now - at_ <= kSeconds;
    count_ = goes_on && count_ < kMost ? count_ + 1 : 1;
    button_ = button;
    x_ = x;
    y_ = y;
    at_ = now;
    return count_;
}

}  // namespace zo::term
