#include "ui/focus_ring.h"

#include "ui/key_grammar.h"

namespace zo::ui {

bool FocusRing::Key(const KeyPress& key) {
    const int step = TabStepOf(key);
    if (step == 0) return false;
    at_ = (at_ + count_ + step) % count_;
    return true;
}

}  // namespace zo::ui
