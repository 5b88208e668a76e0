#include "platform/sdl_window.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

#include "native/program.h"
#include "platform/clock.h"
#include "presenter.h"
#include "sdl_input.h"
#include "sdl_pads.h"

namespace zo::platform {
namespace {

// The drivers that reach the display there is; without one none, since SDL would go on to draw
// where nobody looks. SDL_VIDEODRIVER overrules this.
std::string DisplayDrivers() {
#ifdef _WIN32
    return "windows";
#else
    std::string drivers;
    if (EnvironmentVariable("DISPLAY")) drivers = "x11";
    if (EnvironmentVariable("WAYLAND_DISPLAY")) drivers += drivers.empty() ? "wayland" : ",wayland";
    return drivers;
#endif
}

bool StartVideo() {
    if (SDL_GetHint(SDL_HINT_VIDEODRIVER) == nullptr) {
        const std::string drivers = DisplayDrivers();
        if (drivers.empty()) return false;
        SDL_SetHint(SDL_HINT_VIDEODRIVER, drivers.c_str());
    }
    return SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
}

struct WindowCloser {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
};
using WindowHandle = std::unique_ptr<SDL_Window, WindowCloser>;

// The video system, for as long as a window is open.
class Video {
public:
    Video() {
        SDL_SetMainReady();
        SDL_SetHint(SDL_HINT_WINDOWS_DPI_AWARENESS, "permonitorv2");
        SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
        SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
        SDL_SetHint(SDL_HINT_WINDOWS_NO_CLOSE_ON_ALT_F4, "1");  // the program answers it, once
        // A window's surface is shared memory; a renderer behind it would cost a graphics context.
        SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
        started_ = StartVideo();
        if (started_) SDL_EnableScreenSaver();
    }
    ~Video() {
        if (started_) SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }
    Video(const Video&) = delete;
    Video& operator=(const Video&) = delete;

    bool Started() const { return started_; }

private:
    bool started_ = false;
};

double Now() {
    return SteadyClock().Seconds();
}

// As SDL waits: a negative number is for ever.
int Milliseconds(double seconds) {
    constexpr double kLongest = 3600;
    if (seconds < 0) return -1;
    return static_cast<int>(std::ceil(std::min(seconds, kLongest) * 1000));
}

// SDL's own text, which is the caller's to free.
std::string Taken(char* text) {
    const std::unique_ptr<char, decltype(&SDL_free)> owned(text, SDL_free);
    return text ? text : "";
}

// Elsewhere SDL keeps a selection of its own, which no other program knows and no one expects.
bool HasSelection() {
    const char* driver = SDL_GetCurrentVideoDriver();
    const std::string_view name = driver ? driver : "";
    return name == "x11" || name == "wayland";
}

class SdlWindow final : public Window {
public:
    SdlWindow(std::unique_ptr<Video> video, WindowHandle window, std::unique_ptr<Painter> painter)
        : video_(std::move(video)),
          window_(std::move(window)),
          presenter_(MakePresenter(window_.get(), EnvironmentVariable("ZO_GPU_RENDERER"))),
          painter_(std::move(painter)) {
        SDL_StartTextInput();
    }

    ui::PixelSize Size() const override;
    float DisplayScale() const override;
    bool IsFullScreen() const override;
    void SetFullScreen(bool on) override;
    void Show(const ui::Frame& frame) override;
    std::optional<ui::InputEvent> NextEvent(double timeout_seconds) override;
    std::string ClipboardText() override;
    void SetClipboardText(const std::string& text) override;
    std::string SelectedText() override;
    void SetSelectedText(const std::string& text) override;

private:
    std::optional<ui::InputEvent> Translate(const SDL_Event& event);
    void Present(std::span<const PixelRect> parts);

    std::unique_ptr<Video> video_;  // outlives the window
    WindowHandle window_;
    std::unique_ptr<Presenter> presenter_;
    std::unique_ptr<Painter> painter_;
    SdlInput input_;
    SdlPads pads_;
    PixelBuffer buffer_;
    bool is_up_ = false;       // what hides it later is the desktop's business
    bool present_all_ = true;  // the window has lost what was presented
};

ui::PixelSize SdlWindow::Size() const {
    ui::PixelSize size;
    SDL_GetWindowSize(window_.get(), &size.width, &size.height);
    return size;
}

// From the display's dots per inch, in quarters: displays tell their size in whole millimetres at
// best. Some tell none, or that of a wall, so the scale is never below 1.
float SdlWindow::DisplayScale() const {
    constexpr float kDotsPerInch = 96, kSteps = 4, kMost = 4;
    float dots_per_inch = kDotsPerInch;
    const int display = std::max(0, SDL_GetWindowDisplayIndex(window_.get()));
    if (SDL_GetDisplayDPI(display, &dots_per_inch, nullptr, nullptr) != 0) return 1;
    const float scale = std::round(dots_per_inch / kDotsPerInch * kSteps) / kSteps;
    return std::clamp(scale, 1.0F, kMost);
}

bool SdlWindow::IsFullScreen() const {
    return (SDL_GetWindowFlags(window_.get()) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
}

void SdlWindow::SetFullScreen(bool on) {
    SDL_SetWindowFullscreen(window_.get(), on ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
}

// A new window stays hidden until it has something to show, so that it never flashes up empty.
void SdlWindow::Show(const ui::Frame& frame) {
    if (!std::exchange(is_up_, true)) SDL_ShowWindow(window_.get());
    const ui::PixelSize size = presenter_->Size();
    if (size.width <= 0 || size.height <= 0) return;  // an expose event follows
    if (size != buffer_.size) present_all_ = true;
    buffer_.size = size;
    const std::vector<PixelRect>& changed = painter_->Paint(frame, buffer_);
    const PixelRect all = {0, 0, size.width, size.height};
    if (present_all_) {
        Present({&all, 1});
    } else if (!changed.empty()) {
        Present(changed);
    }
    present_all_ = false;
}

// A renderer that was lost for good, with its graphics card perhaps, gives way to the surface.
void SdlWindow::Present(std::span<const PixelRect> parts) {
    const base::Status presented = presenter_->Present(buffer_, parts);
    if (presented) return;
    std::fprintf(stderr, "gpu: %s; drawing through the window's surface\n",
                 presented.Message().c_str());
    presenter_.reset();  // the window has one at a time
    presenter_ = MakeSurfacePresenter(window_.get());
    const PixelRect all = {0, 0, buffer_.size.width, buffer_.size.height};
    (void)presenter_->Present(buffer_, {&all, 1});
}

std::optional<ui::InputEvent> SdlWindow::NextEvent(double timeout_seconds) {
    const double end = Now() + timeout_seconds;
    for (;;) {
        const double now = Now();
        const bool focused = SDL_GetKeyboardFocus() == window_.get();
        pads_.Poll(now, focused);
        if (const std::optional<ui::PadPress> press = pads_.Repeat(now)) return *press;
        double wait = timeout_seconds < 0 ? -1 : std::max(end - now, 0.0);
        const double next_pad = pads_.SecondsToNext(now, focused);
        if (next_pad >= 0 && (wait < 0 || next_pad < wait)) wait = next_pad;
        SDL_Event event;
        if (SDL_WaitEventTimeout(&event, Milliseconds(wait)) == 0) {
            if (timeout_seconds >= 0 && Now() >= end) return std::nullopt;
        } else if (std::optional<ui::InputEvent> input = Translate(event)) {
            return input;
        }
    }
}

std::optional<ui::InputEvent> SdlWindow::Translate(const SDL_Event& event) {
    if (const std::optional<ui::PadPress> press = pads_.Translate(event, Now())) return *press;
    if (event.type == SDL_RENDER_TARGETS_RESET || event.type == SDL_RENDER_DEVICE_RESET) {
        presenter_->Forget();
        present_all_ = true;
        return ui::WindowExposed{};
    }
    std::optional<ui::InputEvent> input = input_.Translate(event);
    if (!input) return std::nullopt;
    if (std::holds_alternative<ui::WindowResized>(*input)) {
        input = ui::WindowResized{Size(), DisplayScale()};
        present_all_ = true;
    }
    if (std::holds_alternative<ui::WindowExposed>(*input)) present_all_ = true;
    return input;
}

std::string SdlWindow::ClipboardText() {
    return Taken(SDL_GetClipboardText());
}

void SdlWindow::SetClipboardText(const std::string& text) {
    SDL_SetClipboardText(text.c_str());
}

std::string SdlWindow::SelectedText() {
    return HasSelection() ? Taken(SDL_GetPrimarySelectionText()) : std::string();
}

void SdlWindow::SetSelectedText(const std::string& text) {
    if (HasSelection()) SDL_SetPrimarySelectionText(text.c_str());
}

}  // namespace

base::Result<std::unique_ptr<Window>> OpenSdlWindow(const WindowOptions& options,
                                                    std::unique_ptr<Painter> painter) {
    auto video = std::make_unique<Video>();
    if (!video->Started()) {
        return base::Failure{
            "There is no display to open a window on. lc1 and --capture work without one."};
    }
    constexpr ui::PixelSize kLeast = {320, 240};
    const Uint32 flags = SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE |
                         (options.full_screen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    WindowHandle window(SDL_CreateWindow(options.title.c_str(), SDL_WINDOWPOS_CENTERED,
                                         SDL_WINDOWPOS_CENTERED, options.size.width,
                                         options.size.height, flags));
    if (!window) return base::Failure{std::string("The window did not open: ") + SDL_GetError()};
    SDL_SetWindowMinimumSize(window.get(), kLeast.width, kLeast.height);
    return std::unique_ptr<Window>(
        std::make_unique<SdlWindow>(std::move(video), std::move(window), std::move(painter)));
}

}  // namespace zo::platform
