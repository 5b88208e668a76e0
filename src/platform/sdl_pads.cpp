#include "sdl_pads.h"

#include <algorithm>

namespace zo::platform {
namespace {

using ui::PadButton;

constexpr double kPollSeconds = 1.0 / 60;
constexpr double kAgainSeconds = 3;  // between looks for one that has gone
constexpr double kRestSeconds = 3;   // between looks for a first one, when something else happens
constexpr double kFirstRepeatSeconds = 0.4;
constexpr double kRepeatSeconds = 1.0 / 12;

// How far an axis has to go to be pressed, and to be let go again.
constexpr int kPressed = 16384;
constexpr int kReleased = 11000;

struct ButtonName {
    SDL_GameControllerButton from;
    PadButton to;
};
constexpr ButtonName kButtons[] = {
    {SDL_CONTROLLER_BUTTON_DPAD_UP, PadButton::Up},
    {SDL_CONTROLLER_BUTTON_DPAD_DOWN, PadButton::Down},
    {SDL_CONTROLLER_BUTTON_DPAD_LEFT, PadButton::Left},
    {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, PadButton::Right},
    {SDL_CONTROLLER_BUTTON_A, PadButton::A},
    {SDL_CONTROLLER_BUTTON_B, PadButton::B},
    {SDL_CONTROLLER_BUTTON_X, PadButton::X},
    {SDL_CONTROLLER_BUTTON_Y, PadButton::Y},
    {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, PadButton::LeftShoulder},
    {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, PadButton::RightShoulder},
    {SDL_CONTROLLER_BUTTON_START, PadButton::Start},
    {SDL_CONTROLLER_BUTTON_BACK, PadButton::Back},
};

// In the order of SDL's axes: what each end of one presses.
struct AxisEnds {
    std::optional<PadButton> low, high;
};
constexpr AxisEnds kAxes[SDL_CONTROLLER_AXIS_MAX] = {
    {PadButton::Left, PadButton::Right},
    {PadButton::Up, PadButton::Down},
    {PadButton::RightStickLeft, PadButton::RightStickRight},
    {PadButton::RightStickUp, PadButton::RightStickDown},
    {std::nullopt, PadButton::LeftTrigger},
    {std::nullopt, PadButton::RightTrigger},
};

std::optional<PadButton> ButtonOf(int button) {
    const auto* const found = std::ranges::find(kButtons, button, &ButtonName::from);
    if (found == std::end(kButtons)) return std::nullopt;
    return found->to;
}

bool Repeats(PadButton button) {
    return button <= PadButton::Right || button >= PadButton::RightStickUp;
}

int EndOf(int value, int before) {
    const int needed = before == 0 ? kPressed : kReleased;
    return value >= needed ? 1 : value <= -needed ? -1 : 0;
}

}  // namespace

SdlPads::~SdlPads() {
    pads_.clear();
    if (started_) SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

void SdlPads::Poll(double now, bool focused) {
    if (!started_) {
        SDL_SetHint(SDL_HINT_AUTO_UPDATE_JOYSTICKS, "0");  // or they would be polled without end
        started_ = SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) == 0;
        if (!started_) return;
        polled_at_ = now;
        SDL_GameControllerUpdate();
        return;
    }
    const double every = focused && !pads_.empty() ? kPollSeconds : kRestSeconds;
    if (now - polled_at_ < every) return;
    polled_at_ = now;
    SDL_GameControllerUpdate();
}

double SdlPads::SecondsToNext(double now, bool focused) const {
    if (!focused || !had_one_) return -1;
    double next = polled_at_ + (pads_.empty() ? kAgainSeconds : kPollSeconds);
    if (held_) next = std::min(next, repeat_at_);
    return std::max(next - now, 0.0);
}

std::optional<ui::PadPress> SdlPads::Translate(const SDL_Event& event, double now) {
    switch (event.type) {
        case SDL_CONTROLLERDEVICEADDED:
            Open(event.cdevice.which);
            break;
        case SDL_CONTROLLERDEVICEREMOVED:
            Close(event.cdevice.which);
            break;
        case SDL_CONTROLLERBUTTONDOWN:
            if (const auto button = ButtonOf(event.cbutton.button)) return Press(*button, now);
            break;
        case SDL_CONTROLLERBUTTONUP:
            if (const auto button = ButtonOf(event.cbutton.button)) Release(*button);
            break;
        case SDL_CONTROLLERAXISMOTION:
            return Move(event.caxis, now);
        default:
            break;
    }
    return std::nullopt;
}

void SdlPads::Open(int index) {
    if (SDL_GameController* const pad = SDL_GameControllerOpen(index)) {
        pads_[SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(pad))].reset(pad);
        had_one_ = true;
    }
}

// Nobody says that its buttons came up.
void SdlPads::Close(SDL_JoystickID id) {
    pads_.erase(id);
    axes_ = {};
    held_.reset();
}

std::optional<ui::PadPress> SdlPads::Press(PadButton button, double now) {
    held_.reset();
    if (Repeats(button)) {
        held_ = button;
        repeat_at_ = now + kFirstRepeatSeconds;
    }
    return ui::PadPress{button};
}

void SdlPads::Release(PadButton button) {
    if (held_ == button) held_.reset();
}

std::optional<ui::PadPress> SdlPads::Move(const SDL_ControllerAxisEvent& event, double now) {
    if (event.axis >= SDL_CONTROLLER_AXIS_MAX) return std::nullopt;
    int& end = axes_[event.axis];
    const int before = end;
    end = EndOf(event.value, before);
    if (end == before) return std::nullopt;
    const AxisEnds& ends = kAxes[event.axis];
    const auto at = [&](int side) {
        return side == 0 ? std::nullopt : side < 0 ? ends.low : ends.high;
    };
    if (const auto button = at(before)) Release(*button);
    if (const auto button = at(end)) return Press(*button, now);
    return std::nullopt;
}

std::optional<ui::PadPress> SdlPads::Repeat(double now) {
    if (!held_ || now < repeat_at_) return std::nullopt;
    repeat_at_ = now + kRepeatSeconds;
    return ui::PadPress{*held_, true};
}

}  // namespace zo::platform
