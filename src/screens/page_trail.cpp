#include "screens/page_trail.h"

#include <utility>

namespace Kest {

void PageTrail::GoTo(Stop stop) {
    if (!Empty() && Here().page == stop.page) return;
    if (!Empty()) stops_.resize(at_ + 1);
    stops_.push_back(std::move(stop));
    if (stops_.size() > kMost) stops_.erase(stops_.begin());
    at_ = stops_.size() - 1;
}

bool PageTrail::CanGo(int step) const {
    return step < 0 ? at_ > 0 : at_ + 1 < stops_.size();
}

void PageTrail::Go(int step) {
    if (CanGo(step)) at_ += static_cast<std::size_t>(step);
}

}  // namespace Kest
