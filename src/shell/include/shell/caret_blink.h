#pragma once

#include <optional>

namespace Kest {

// When a caret is lit. While the player is there it blinks, on and off for as long; once nothing
// has come from the player for a while it stays lit, so that a program left alone sleeps.
class CaretBlink {
public:
    // Lit from now on, and blinking.
    void Restart(double now) { since_ = stirred_ = now; }
    // The player did something. True when the caret stood still and must be drawn to blink again.
    bool Stir(double now);

    bool IsLit(double now) const;
    // When that may be another answer; never, when the caret stands still.
    std::optional<double> NextChange(double now) const;

private:
    bool Rests(double now) const;
    double Phases(double now) const;  // whole ones since the blinking began

    double since_ = 0;
    double stirred_ = 0;
};

}  // namespace Kest
