#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Kest {

// The pages that a reader has been to, and where on them, with a way back and forward.
class PageTrail {
public:
    struct Stop {
        std::string page;  // its id
        int top = 0;       // the first row in sight
    };

    bool Empty() const { return stops_.empty(); }
    Stop& Here() { return stops_[at_]; }
    const Stop& Here() const { return stops_[at_]; }

    // A stop behind the one here, in place of those that lay ahead. The page here is no new stop.
    void GoTo(Stop stop);
    bool CanGo(int step) const;
    void Go(int step);  // back (-1) or forward (1)

private:
    static constexpr std::size_t kMost = 200;  // the oldest stops are forgotten

    std::vector<Stop> stops_;
    std::size_t at_ = 0;
};

}  // namespace Kest
