#include <SDL.h>
#include <doctest/doctest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "scripted_window.h"

using platform_test::kSize;
using platform_test::Script;
using zo::platform::PixelRect;
using Rects = std::vector<PixelRect>;

namespace {

constexpr std::uint32_t kFirst = 0x112233, kSecond = 0x445566, kScribble = 0x778899;

// What the program says on the error stream while this lives.
class ErrorStream {
public:
    ErrorStream() : file_(std::tmpfile()), before_(dup(STDERR_FILENO)) {
        std::fflush(stderr);
        dup2(fileno(file_), STDERR_FILENO);
    }
    ~ErrorStream() {
        dup2(before_, STDERR_FILENO);
        close(before_);
        std::fclose(file_);
    }
    ErrorStream(const ErrorStream&) = delete;
    ErrorStream& operator=(const ErrorStream&) = delete;

    std::string Text() {
        std::fflush(stderr);
        std::rewind(file_);
        std::string text(4096, '\0');
        text.resize(std::fread(text.data(), 1, text.size(), file_));
        return text;
    }

private:
    std::FILE* file_;
    int before_;
};

// A window of the presenter named, without a display, whose pixels can be looked at.
struct Screen {
    explicit Screen(const char* presenter) {
        presenter ? setenv("ZO_GPU_RENDERER", presenter, 1) : unsetenv("ZO_GPU_RENDERER");
        window = platform_test::OpenWindow(script);
        unsetenv("ZO_GPU_RENDERER");
        window->Show({});
    }

    void Show(std::uint32_t colour, const Rects& changed) {
        script = {.colour = colour, .changed = changed};
        window->Show({});
    }
    // What the window shows.
    const SDL_Surface& Surface() const {
        SDL_Window* found = nullptr;
        for (Uint32 id = 1; id < 1000 && !found; ++id) found = SDL_GetWindowFromID(id);
        const SDL_Surface* const surface = SDL_GetWindowSurface(found);
        REQUIRE(surface != nullptr);
        REQUIRE(surface->format->BytesPerPixel == sizeof(std::uint32_t));
        return *surface;
    }
    static std::uint32_t& At(const SDL_Surface& surface, int x, int y) {
        auto* const row = static_cast<std::uint8_t*>(surface.pixels) + y * surface.pitch;
        return reinterpret_cast<std::uint32_t*>(row)[x];
    }
    // The rectangle that has this colour; empty when it is none or another shape.
    PixelRect Where(std::uint32_t colour) {
        const SDL_Surface& surface = Surface();
        int left = kSize.width, top = kSize.height, right = 0, bottom = 0, count = 0;
        for (int y = 0; y < kSize.height; ++y) {
            for (int x = 0; x < kSize.width; ++x) {
                if ((At(surface, x, y) & 0xFFFFFF) != colour) continue;
                left = std::min(left, x), right = std::max(right, x + 1);
                top = std::min(top, y), bottom = std::max(bottom, y + 1);
                ++count;
            }
        }
        const bool full = count > 0 && count == (right - left) * (bottom - top);
        return full ? PixelRect{left, top, right - left, bottom - top} : PixelRect{};
    }

    Script script;
    std::unique_ptr<zo::platform::Window> window;
};

void Push(Uint32 type, Uint8 window_event = 0) {
    SDL_Event event = {};
    event.type = type;
    event.window.event = window_event;
    SDL_PushEvent(&event);
}

}  // namespace

TEST_CASE("a window shows what changed, all after a loss, and nothing when nothing changed") {
    const PixelRect all = {0, 0, kSize.width, kSize.height}, part = {8, 16, 24, 32};
    for (const std::string presenter : {"", "surface", "software"}) {
        CAPTURE(presenter);
        ErrorStream errors;
        Screen screen(presenter.c_str());
        CHECK(errors.Text().find("gpu: ") == std::string::npos);
        CHECK(screen.Where(kFirst) == all);

        screen.Show(kSecond, {part});
        CHECK(screen.Where(kSecond) == part);

        Screen::At(screen.Surface(), 5, 5) = kScribble;
        screen.Show(kSecond, {});
        CHECK(screen.Where(kScribble) == PixelRect{5, 5, 1, 1});

        for (const Uint32 type : {Uint32{SDL_WINDOWEVENT}, Uint32{SDL_RENDER_DEVICE_RESET}}) {
            Push(type, SDL_WINDOWEVENT_EXPOSED);
            const auto event = screen.window->NextEvent(1);
            REQUIRE(event);
            CHECK(std::holds_alternative<zo::ui::WindowExposed>(*event));
            screen.Show(type, {});
            CHECK(screen.Where(type) == all);
        }
    }
}

TEST_CASE("a renderer that does not start gives way to the surface, and the error stream says so") {
    ErrorStream errors;
    Screen screen("quill");
    const std::string text = errors.Text();
    const std::string start =
        "gpu: there is no renderer \"quill\"; drawing through the window's surface "
        "(known: surface, texture, ";
    CHECK(text.find(start) != std::string::npos);
    CHECK(text.find("software)\n") == text.size() - 10);
    CHECK(screen.Where(kFirst) == PixelRect{0, 0, kSize.width, kSize.height});
}
