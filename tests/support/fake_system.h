#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "outside/outside.h"
#include "support/fake_disk.h"

// A small system to run the program in: a disk in memory, a clock that moves when it is told to,
// and a window that keeps its frames and is fed events.
namespace fake {

namespace fs = std::filesystem;

class Clock final : public zo::platform::Clock {
public:
    double seconds = 0;
    double step = 0;  // that each look at the clock takes
    std::uint64_t calendar_seconds = 0;

    double Seconds() override { return seconds += step; }
    std::uint64_t CalendarSeconds() override { return calendar_seconds; }
};

// What a window saw and is about to see. It stays when the window is closed.
struct Screen {
    zo::ui::PixelSize size = {640, 400};
    std::deque<zo::ui::InputEvent> events;
    std::vector<zo::ui::Frame> frames;
    std::string clipboard;
    std::string selected;
    bool full_screen = false;
    bool in_cells = false;          // it is a terminal
    std::vector<std::string> said;  // there, which else has no place for it
};

// When its events have run out it lets a wait pass on the clock, and a wait without an end closes
// the program, as does one that has become too long.
class Window final : public zo::platform::Window {
public:
    Window(Screen& screen, Clock& clock) : screen_(screen), clock_(clock) {}

    zo::ui::PixelSize Size() const override { return screen_.size; }
    float DisplayScale() const override { return 1; }
    bool IsFullScreen() const override { return screen_.full_screen; }
    void SetFullScreen(bool on) override { screen_.full_screen = on; }
    void Show(const zo::ui::Frame& frame) override { screen_.frames.push_back(frame); }
    std::optional<zo::ui::InputEvent> NextEvent(double timeout_seconds) override {
        if (!screen_.events.empty()) {
            idle_ = 0;
            zo::ui::InputEvent event = std::move(screen_.events.front());
            screen_.events.pop_front();
            return event;
        }
        idle_ += timeout_seconds;
        if (timeout_seconds < 0 || idle_ > kPatience) return zo::ui::CloseRequested{};
        clock_.seconds += timeout_seconds;
        return std::nullopt;
    }
    std::string ClipboardText() override { return screen_.clipboard; }
    void SetClipboardText(const std::string& text) override { screen_.clipboard = text; }
    std::string SelectedText() override { return screen_.selected; }
    void SetSelectedText(const std::string& text) override { screen_.selected = text; }
    bool InCells() const override { return screen_.in_cells; }
    std::string_view ControlPrefix() const override { return screen_.in_cells ? "Ctrl+O" : ""; }
    bool Say(std::string_view line) override {
        if (screen_.in_cells) screen_.said.emplace_back(line);
        return screen_.in_cells;
    }

private:
    static constexpr double kPatience = 10;  // seconds

    Screen& screen_;
    Clock& clock_;
    double idle_ = 0;  // since the last event
};

struct Picture {
    zo::ui::Frame frame;
    zo::ui::PixelSize size;
};

class System final : public zo::platform::System {
public:
    Disk disk;
    Clock clock;
    Screen screen;
    std::string no_window;  // when set, a window cannot be opened for this reason
    bool nine_wide_face = true;
    std::map<std::string, std::string> environment;
    std::map<fs::path, Picture> pictures;
    std::map<fs::path, std::vector<zo::ui::Frame>> animations;

    base::Result<std::unique_ptr<zo::platform::Window>> OpenWindow(
        const zo::platform::WindowOptions& options) override {
        if (!no_window.empty()) return base::Failure{no_window};
        screen.size = options.size;
        screen.full_screen = options.full_screen;
        return std::unique_ptr<zo::platform::Window>(std::make_unique<Window>(screen, clock));
    }
    std::unique_ptr<zo::platform::AudioOutput> PlayAudio(zo::platform::AudioSource&) override {
        return nullptr;
    }
    zo::platform::Clock& SystemClock() override { return clock; }
    base::Disk& SystemDisk() override { return disk; }
    fs::path DataFolder() override { return "data"; }
    fs::path TemporaryFolder() override { return "temporary"; }
    std::optional<std::string> Environment(const char* name) override {
        const auto found = environment.find(name);
        if (found == environment.end()) return std::nullopt;
        return found->second;
    }
    bool HasNineWideFace() override { return nine_wide_face; }
    std::vector<std::string> FontFamilies() override { return {"JetBrains Mono", "Unscii 18"}; }
    base::Status WritePicture(const zo::ui::Frame& frame, zo::ui::PixelSize size,
                              const fs::path& path) override {
        pictures[path] = {frame, size};
        return {};
    }
    base::Status WriteAnimation(std::span<const zo::ui::Frame> frames, int, zo::ui::PixelSize,
                                const fs::path& path) override {
        animations[path].assign(frames.begin(), frames.end());
        return {};
    }
};

}  // namespace fake
