#pragma once

#include <SDL.h>

#include <array>
#include <map>
#include <memory>
#include <optional>

#include "cells/input.h"

namespace zo::platform {

// The game controllers that are plugged in, all of them as one. They can only be polled, so as long
// as there has been none nothing wakes for them: a first one is found when something else happens.
//
// `now` is a steady time in seconds.
class SdlPads {
public:
    ~SdlPads();

    // Has the controllers put their news among the events, when that is due. The first call starts
    // the controllers, which takes a moment; before it nothing of them is touched.
    void Poll(double now, bool focused);
    // Seconds until Poll or Repeat should be called again; negative when they need not be.
    double SecondsToNext(double now, bool focused) const;

    std::optional<ui::PadPress> Translate(const SDL_Event& event, double now);
    // The press of a direction that is held, when it is due.
    std::optional<ui::PadPress> Repeat(double now);

private:
    struct Closer {
        void operator()(SDL_GameController* pad) const { SDL_GameControllerClose(pad); }
    };

    void Open(int index);
    void Close(SDL_JoystickID id);
    std::optional<ui::PadPress> Press(ui::PadButton button, double now);
    void Release(ui::PadButton button);
    std::optional<ui::PadPress> Move(const SDL_ControllerAxisEvent& event, double now);

    bool started_ = false;
    bool had_one_ = false;
    double polled_at_ = 0;
    std::map<SDL_JoystickID, std::unique_ptr<SDL_GameController, Closer>> pads_;
    std::array<int, SDL_CONTROLLER_AXIS_MAX> axes_ = {};  // -1, 0 or 1
    std::optional<ui::PadButton> held_;                   // the direction that repeats
    double repeat_at_ = 0;
};

}  // namespace zo::platform
