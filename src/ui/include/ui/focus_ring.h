#pragma once

#include "cells/input.h"

namespace zo::ui {

// Which of a few panes has focus. Tab and Shift+Tab go around, also with Ctrl.
class FocusRing {
public:
    explicit FocusRing(int count, int at = 0) : count_(count), at_(at) {}
    int At() const { return at_; }
    bool Has(int pane) const { return pane == at_; }
    void Focus(int pane) { at_ = pane; }
    bool Key(const KeyPress& key);

private:
    int count_;
    int at_;
};

}  // namespace zo::ui
