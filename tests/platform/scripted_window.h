#pragma once

#include <SDL.h>
#include <doctest/doctest.h>

#include "platform/sdl_window.h"

namespace platform_test {

inline constexpr zo::ui::PixelSize kSize = {640, 400};

// What a painter fills the whole picture with, and what it says of it.
struct Script {
    std::uint32_t colour = 0x112233;
    std::vector<zo::platform::PixelRect> changed = {{0, 0, kSize.width, kSize.height}};
    int paints = 0;
};

class ScriptedPainter final : public zo::platform::Painter {
public:
    explicit ScriptedPainter(Script& script) : script_(script) {}
    const std::vector<zo::platform::PixelRect>& Paint(const zo::ui::Frame&,
                                                      zo::platform::PixelBuffer& buffer) override {
        ++script_.paints;
        const auto [width, height] = buffer.size;
        buffer.pixels.assign(static_cast<std::size_t>(width * height), script_.colour);
        return script_.changed;
    }

private:
    Script& script_;
};

// A window without a display, up and with nothing left to tell.
inline std::unique_ptr<zo::platform::Window> OpenWindow(Script& script) {
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
    auto window = zo::platform::OpenSdlWindow({.title = "Vantor Kest", .size = kSize},
                                              std::make_unique<ScriptedPainter>(script));
    REQUIRE_MESSAGE(window, window.Message());
    (*window)->Show({});  // it comes up with its first frame
    while ((*window)->NextEvent(0)) continue;
    script.paints = 0;
    return std::move(*window);
}

}  // namespace platform_test
