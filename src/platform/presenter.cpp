#include "presenter.h"

#include <cstdio>

namespace zo::platform {
namespace {

constexpr char kSurface[] = "surface";
constexpr char kTexture[] = "texture";
#ifdef _WIN32
constexpr char kDefault[] = "texture";  // the desktop composes textures best
#else
constexpr char kDefault[] = "surface";  // opens sooner and in less memory than any renderer
#endif

// From the most to be preferred. A renderer that works by the processor is no better than the
// surface.
constexpr const char* kRenderers[] = {"direct3d12", "direct3d11", "opengl", "opengles2"};

base::Result<std::unique_ptr<Presenter>> MakeBestTexturePresenter(SDL_Window* window) {
    for (const char* const renderer : kRenderers) {
        if (auto presenter = MakeTexturePresenter(window, renderer)) return presenter;
    }
    return base::Failure{"no renderer started"};
}

base::Result<std::unique_ptr<Presenter>> MakeNamed(SDL_Window* window, const std::string& name) {
    if (name == kSurface) return MakeSurfacePresenter(window);
    if (name == kTexture) return MakeBestTexturePresenter(window);
    return MakeTexturePresenter(window, name);
}

std::string Renderers() {
    std::string names = std::string(kSurface) + ", " + kTexture;
    for (int index = 0; index < SDL_GetNumRenderDrivers(); ++index) {
        SDL_RendererInfo info;
        if (SDL_GetRenderDriverInfo(index, &info) == 0) names += std::string(", ") + info.name;
    }
    return names;
}

}  // namespace

std::unique_ptr<Presenter> MakePresenter(SDL_Window* window,
                                         const std::optional<std::string>& wanted) {
    auto presenter = MakeNamed(window, wanted.value_or("").empty() ? kDefault : *wanted);
    if (presenter) return std::move(*presenter);
    std::fprintf(stderr, "gpu: %s; drawing through the window's surface (known: %s)\n",
                 presenter.Message().c_str(), Renderers().c_str());
    return MakeSurfacePresenter(window);
}

}  // namespace zo::platform
