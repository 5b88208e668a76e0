#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace Kest {

// The sounds of the interface, by the number under which they are posted.
enum class Effect : std::uint8_t {
    None,
    Open,     // a ticket or the board opens, a dialog's suggestion is taken
    Menu,     // options, credits, pause, a question
    Move,     // the highlight moves
    Back,     // an overlay or a menu closes
    Click,    // buttons, tabs, the trace's zoom
    Key,      // a key in the editor; the parameter is its character
    NewLine,  // Enter in the editor
    Step,     // one tick, or back
    Run,      // a run or a verify starts
    Pause,    // a run stops for the player or at a breakpoint
    Pass,     // a single test passes
    Fail,     // a single test fails
    Achievement,
    Error,       // a run cannot start, a ticket is locked
    Alert,       // an alert on the status line without a sound of its own
    Closed,      // a verify passes every test
    NotClosed,   // a verify does not
    Slot,        // another firmware slot
    Leave,       // the bench is left
    Hint,        // a hint is shown
    Toggle,      // an option changes, a slider moves by a step
    TestTone,    // how loud a volume is now
    LineByte,    // a byte on the line; the parameter is the byte, plus 256 toward the card
    Breakpoint,  // set or cleared
    Reset,       // back to tick 0
    Save,        // the player saves the firmware
    Page,        // a page of the binder turns
};
inline constexpr std::size_t kEffects = 28;

// The volume at which a sound is posted.
float EffectVolume(Effect effect);

// Every interface sound as mono samples, made from its recipe. The line byte has none.
class EffectTables {
public:
    EffectTables();
    std::span<const float> Samples(Effect effect) const {
        return tables_[static_cast<std::size_t>(effect)];
    }

private:
    std::array<std::vector<float>, kEffects> tables_;
};

}  // namespace Kest
