#include <vector>

#include "presenter.h"

namespace zo::platform {
namespace {

constexpr int kPixelBytes = 4;

class SurfacePresenter final : public Presenter {
public:
    explicit SurfacePresenter(SDL_Window* window) : window_(window) {}
    ui::PixelSize Size() override;
    base::Status Present(const PixelBuffer& picture, std::span<const PixelRect> parts) override;

private:
    SDL_Window* window_;
    std::vector<SDL_Rect> rects_;
};

ui::PixelSize SurfacePresenter::Size() {
    const SDL_Surface* const surface = SDL_GetWindowSurface(window_);
    return surface ? ui::PixelSize{surface->w, surface->h} : ui::PixelSize{};
}

// Never fails for good: a window that is just changing is exposed when it is done, and then shown
// whole.
base::Status SurfacePresenter::Present(const PixelBuffer& picture,
                                       std::span<const PixelRect> parts) {
    const SDL_Surface* const surface = SDL_GetWindowSurface(window_);
    if (!surface || ui::PixelSize{surface->w, surface->h} != picture.size) return {};
    rects_.clear();
    for (const PixelRect& part : parts) {
        const std::ptrdiff_t first = part.y * std::ptrdiff_t{picture.size.width} + part.x;
        auto* const target = static_cast<std::uint8_t*>(surface->pixels) +
                             part.y * std::ptrdiff_t{surface->pitch} +
                             part.x * std::ptrdiff_t{surface->format->BytesPerPixel};
        SDL_ConvertPixels(part.width, part.height, SDL_PIXELFORMAT_RGB888,
                          picture.pixels.data() + first, picture.size.width * kPixelBytes,
                          surface->format->format, target, surface->pitch);
        rects_.push_back({part.x, part.y, part.width, part.height});
    }
    SDL_UpdateWindowSurfaceRects(window_, rects_.data(), static_cast<int>(rects_.size()));
    return {};
}

}  // namespace

std::unique_ptr<Presenter> MakeSurfacePresenter(SDL_Window* window) {
    return std::make_unique<SurfacePresenter>(window);
}

}  // namespace zo::platform
