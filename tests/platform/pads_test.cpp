#include "sdl_pads.h"

#include <doctest/doctest.h>

#include <string>

using zo::platform::SdlPads;
using zo::ui::PadButton;
using zo::ui::PadPress;

namespace {

constexpr int kNoButton = -1;

SDL_Event Button(SDL_GameControllerButton button, bool down) {
    SDL_Event event = {};
    event.type = down ? SDL_CONTROLLERBUTTONDOWN : SDL_CONTROLLERBUTTONUP;
    event.cbutton.button = static_cast<Uint8>(button);
    return event;
}

SDL_Event Axis(SDL_GameControllerAxis axis, int value) {
    SDL_Event event = {};
    event.type = SDL_CONTROLLERAXISMOTION;
    event.caxis.axis = static_cast<Uint8>(axis);
    event.caxis.value = static_cast<Sint16>(value);
    return event;
}

// The button that was pressed by it, as a number.
int Pressed(SdlPads& pads, const SDL_Event& event, double now = 0) {
    const std::optional<PadPress> press = pads.Translate(event, now);
    return press ? static_cast<int>(press->button) : kNoButton;
}

}  // namespace

TEST_CASE("buttons press when they go down, axes when they have gone half way") {
    SdlPads pads;
    const struct {
        SDL_Event event;
        std::optional<PadButton> button;
    } cases[] = {
        {Button(SDL_CONTROLLER_BUTTON_A, true), PadButton::A},
        {Button(SDL_CONTROLLER_BUTTON_A, false), {}},
        {Button(SDL_CONTROLLER_BUTTON_BACK, true), PadButton::Back},
        {Button(SDL_CONTROLLER_BUTTON_GUIDE, true), {}},
        {Axis(SDL_CONTROLLER_AXIS_LEFTX, 8000), {}},
        {Axis(SDL_CONTROLLER_AXIS_LEFTX, 20000), PadButton::Right},
        {Axis(SDL_CONTROLLER_AXIS_LEFTX, 32767), {}},
        {Axis(SDL_CONTROLLER_AXIS_LEFTX, 12000), {}},  // trembles, and is still held
        {Axis(SDL_CONTROLLER_AXIS_LEFTX, 20000), {}},
        {Axis(SDL_CONTROLLER_AXIS_LEFTX, -32768), PadButton::Left},
        {Axis(SDL_CONTROLLER_AXIS_LEFTX, 0), {}},
        {Axis(SDL_CONTROLLER_AXIS_RIGHTY, -32768), PadButton::RightStickUp},
        {Axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 32767), PadButton::RightTrigger},
        {Axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 0), {}},
    };
    int number = 0;
    for (const auto& c : cases) {
        CAPTURE(++number);
        CHECK(Pressed(pads, c.event) == (c.button ? static_cast<int>(*c.button) : kNoButton));
    }
}

TEST_CASE("a direction that is held repeats after 0.4 seconds, then twelve times a second") {
    SdlPads pads;
    CHECK(Pressed(pads, Button(SDL_CONTROLLER_BUTTON_DPAD_UP, true), 10) ==
          static_cast<int>(PadButton::Up));
    CHECK_FALSE(pads.Repeat(10.39));
    CHECK(pads.Repeat(10.41) == PadPress{PadButton::Up, true});
    CHECK_FALSE(pads.Repeat(10.48));
    CHECK(pads.Repeat(10.5));
    Pressed(pads, Button(SDL_CONTROLLER_BUTTON_DPAD_UP, false), 10.51);
    CHECK_FALSE(pads.Repeat(11));

    Pressed(pads, Button(SDL_CONTROLLER_BUTTON_A, true), 12);
    CHECK_FALSE(pads.Repeat(13));

    // Another direction takes over, and letting go of the first changes nothing.
    Pressed(pads, Axis(SDL_CONTROLLER_AXIS_LEFTY, 32767), 20);
    Pressed(pads, Button(SDL_CONTROLLER_BUTTON_DPAD_LEFT, true), 20.1);
    Pressed(pads, Axis(SDL_CONTROLLER_AXIS_LEFTY, 0), 20.2);
    CHECK(pads.Repeat(20.6) == PadPress{PadButton::Left, true});
}

TEST_CASE("nothing wakes for controllers until there has been one") {
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    REQUIRE(SDL_InitSubSystem(SDL_INIT_EVENTS) == 0);
    {
        SdlPads pads;
        std::string seen;
        const auto poll = [&](double now) {
            pads.Poll(now, true);
            SDL_Event event;
            while (SDL_PollEvent(&event) != 0) {
                if (const auto press = pads.Translate(event, now)) {
                    seen += std::to_string(static_cast<int>(press->button)) + " ";
                }
            }
        };
        poll(0);
        CHECK(pads.SecondsToNext(0, true) < 0);

        const int index =
            SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX,
                                      SDL_CONTROLLER_BUTTON_MAX, 0);
        REQUIRE_MESSAGE(index >= 0, SDL_GetError());
        poll(3);
        CHECK(pads.SecondsToNext(3, true) == doctest::Approx(1.0 / 60));
        CHECK(pads.SecondsToNext(3, false) < 0);  // another window has the keyboard

        SDL_Joystick* const stick = SDL_JoystickOpen(index);
        SDL_JoystickSetVirtualButton(stick, SDL_CONTROLLER_BUTTON_Y, 1);
        poll(3.1);
        CHECK(seen == std::to_string(static_cast<int>(PadButton::Y)) + " ");

        SDL_JoystickClose(stick);
        SDL_JoystickDetachVirtual(index);
        poll(3.2);
        CHECK(pads.SecondsToNext(3.2, true) == doctest::Approx(3));
    }
    SDL_QuitSubSystem(SDL_INIT_EVENTS);
}
