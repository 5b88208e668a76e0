#pragma once

namespace zo::term {

// Counts presses of a button that follow each other on one cell.
class Clicks {
public:
    // 1, 2 or 3, and 1 again after that.
    int Press(int button, int x, int y, double now);

private:
    int button_ = 0, x_ = -1, y_ = -1;
    int count_ = 0;
    double at_ = 0;
};

}  // namespace zo::term
