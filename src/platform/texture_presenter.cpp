#include "presenter.h"

namespace zo::platform {
namespace {

constexpr int kPixelBytes = 4;

struct Closer {
    void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
    void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
};
using RendererHandle = std::unique_ptr<SDL_Renderer, Closer>;
using TextureHandle = std::unique_ptr<SDL_Texture, Closer>;

// The renderer draws each picture anew, so the texture keeps what did not change.
class TexturePresenter final : public Presenter {
public:
    explicit TexturePresenter(RendererHandle renderer) : renderer_(std::move(renderer)) {}
    ui::PixelSize Size() override;
    base::Status Present(const PixelBuffer& picture, std::span<const PixelRect> parts) override;
    void Forget() override { texture_.reset(); }

private:
    bool FitTexture(ui::PixelSize size);
    bool Update(const PixelBuffer& picture, const PixelRect& part);

    RendererHandle renderer_;
    TextureHandle texture_;  // goes before its renderer
    ui::PixelSize texture_size_;
};

ui::PixelSize TexturePresenter::Size() {
    ui::PixelSize size;
    SDL_GetRendererOutputSize(renderer_.get(), &size.width, &size.height);
    return size;
}

bool TexturePresenter::FitTexture(ui::PixelSize size) {
    if (texture_ && texture_size_ == size) return true;
    texture_.reset(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_RGB888,
                                     SDL_TEXTUREACCESS_STREAMING, size.width, size.height));
    texture_size_ = size;
    return texture_ != nullptr;
}

bool TexturePresenter::Update(const PixelBuffer& picture, const PixelRect& part) {
    const SDL_Rect rect = {part.x, part.y, part.width, part.height};
    const std::ptrdiff_t first = part.y * std::ptrdiff_t{picture.size.width} + part.x;
    return SDL_UpdateTexture(texture_.get(), &rect, picture.pixels.data() + first,
                             picture.size.width * kPixelBytes) == 0;
}

base::Status TexturePresenter::Present(const PixelBuffer& picture,
                                       std::span<const PixelRect> parts) {
    bool done = FitTexture(picture.size);
    for (const PixelRect& part : parts) done = done && Update(picture, part);
    done = done && SDL_RenderCopy(renderer_.get(), texture_.get(), nullptr, nullptr) == 0;
    if (!done) return base::Failure{std::string("the renderer failed: ") + SDL_GetError()};
    SDL_RenderPresent(renderer_.get());
    return {};
}

// The place of the renderer in SDL's list; -1 when it is not there.
int FindRenderer(const std::string& name) {
    for (int index = 0; index < SDL_GetNumRenderDrivers(); ++index) {
        SDL_RendererInfo info;
        if (SDL_GetRenderDriverInfo(index, &info) == 0 && name == info.name) return index;
    }
    return -1;
}

}  // namespace

base::Result<std::unique_ptr<Presenter>> MakeTexturePresenter(SDL_Window* window,
                                                              const std::string& renderer) {
    const int index = FindRenderer(renderer);
    if (index < 0) return base::Failure{"there is no renderer \"" + renderer + "\""};
    RendererHandle handle(SDL_CreateRenderer(window, index, 0));
    if (!handle) {
        return base::Failure{"the renderer \"" + renderer + "\" did not start: " + SDL_GetError()};
    }
    return std::unique_ptr<Presenter>(std::make_unique<TexturePresenter>(std::move(handle)));
}

}  // namespace zo::platform
