#pragma once

#include <SDL.h>

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "outside/outside.h"

namespace zo::platform {

// Brings a picture's pixels to a window.
class Presenter {
public:
    virtual ~Presenter() = default;
    // Of the picture that the window has room for; empty while it is changing.
    virtual ui::PixelSize Size() = 0;
    // Shows these parts of a picture of that size; the rest stays as it was shown before. After a
    // failure the window needs another presenter.
    virtual base::Status Present(const PixelBuffer& picture, std::span<const PixelRect> parts) = 0;
    // Tells that what was shown is lost, so that the next picture comes whole.
    virtual void Forget() {}
};

// Through memory that the window's surface shares with the display.
std::unique_ptr<Presenter> MakeSurfacePresenter(SDL_Window* window);
// Through one texture of the renderer of this name, as SDL lists it.
base::Result<std::unique_ptr<Presenter>> MakeTexturePresenter(SDL_Window* window,
                                                              const std::string& renderer);

// The presenter that is wanted: "surface", "texture" for the best renderer that starts, or a
// renderer's name; by default what suits the system. Where that does not start the surface does its
// work, and the error stream says so.
std::unique_ptr<Presenter> MakePresenter(SDL_Window* window,
                                         const std::optional<std::string>& wanted);

}  // namespace zo::platform
