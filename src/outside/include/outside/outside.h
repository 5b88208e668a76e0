#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/disk.h"
#include "base/result.h"
#include "cells/frame.h"
#include "cells/input.h"
#include "outside/audio.h"

namespace zo::platform {

// A window that shows frames, up from the first of them on. It presents only what differs from the
// frame shown before.
class Window {
public:
    virtual ~Window() = default;
    virtual ui::PixelSize Size() const = 0;  // of the client area
    virtual float DisplayScale() const = 0;  // 1 at 96 dots per inch
    virtual bool IsFullScreen() const = 0;
    virtual void SetFullScreen(bool on) = 0;
    virtual void Show(const ui::Frame& frame) = 0;
    // The next input event. Waits until one comes or the seconds have passed: 0 does not wait, a
    // negative number waits for ever.
    virtual std::optional<ui::InputEvent> NextEvent(double timeout_seconds) = 0;
    virtual std::string ClipboardText() = 0;  // with the line ends of where it comes from
    virtual void SetClipboardText(const std::string& text) = 0;
    // What is selected in any program, for the middle button. Systems without it have none.
    virtual std::string SelectedText() = 0;
    virtual void SetSelectedText(const std::string& text) = 0;

    // Whether its size and its pointer count cells, as a terminal's do, and not pixels.
    virtual bool InCells() const { return false; }
    // The name of the key that gives the next one Ctrl, where the keyboard cannot send every key
    // with it; else empty. A constant.
    virtual std::string_view ControlPrefix() const { return {}; }
    // Shows a line of the plain speech where the player is; false when it has no place for it.
    virtual bool Say(std::string_view /*line*/) { return false; }
};

// Time. In automation it is virtual: nothing sleeps, and a frame is a sixtieth of a second.
class Clock {
public:
    virtual ~Clock() = default;
    virtual double Seconds() = 0;                 // from an arbitrary start, never backward
    virtual std::uint64_t CalendarSeconds() = 0;  // since 1 January 1970
};

struct WindowOptions {
    std::string title;
    ui::PixelSize size;
    bool full_screen = false;
    bool in_terminal = false;  // in the terminal that the program was started from
    bool speaks = false;       // lines will be said
};

// The system as the program sees it. main() hands in the one that joins the leaf rooms.
class System {
public:
    virtual ~System() = default;
    // The failure is a sentence, such as that there is no display.
    virtual base::Result<std::unique_ptr<Window>> OpenWindow(const WindowOptions& options) = 0;
    // Plays the source, which outlives what is returned.
    virtual std::unique_ptr<AudioOutput> PlayAudio(AudioSource& source) = 0;
    virtual Clock& SystemClock() = 0;
    virtual base::Disk& SystemDisk() = 0;
    virtual std::filesystem::path DataFolder() = 0;       // per user; may be missing
    virtual std::filesystem::path TemporaryFolder() = 0;  // the system's
    virtual std::optional<std::string> Environment(const char* name) = 0;
    // From now on a crash leaves a report in the folder, where the system keeps none of its own.
    virtual void ReportCrashes(const std::filesystem::path& /*folder*/) {}
    virtual bool HasNineWideFace() = 0;
    virtual std::vector<std::string> FontFamilies() = 0;
    // Writes the frame as a PNG of exactly this many pixels.
    virtual base::Status WritePicture(const ui::Frame& frame, ui::PixelSize size,
                                      const std::filesystem::path& path) = 0;
    // Writes the frames as an animation of so many pixels, each for so many hundredths of a second.
    virtual base::Status WriteAnimation(std::span<const ui::Frame> frames, int hundredths,
                                        ui::PixelSize size, const std::filesystem::path& path) = 0;
};

// Pixels as 0x00RRGGBB, row by row.
struct PixelBuffer {
    ui::PixelSize size;
    std::vector<std::uint32_t> pixels;
};

struct PixelRect {
    int x = 0, y = 0, width = 0, height = 0;
    bool operator==(const PixelRect&) const = default;
};

// Turns frames into pixels: implemented by the renderer, called by a window.
class Painter {
public:
    virtual ~Painter() = default;
    // Brings the buffer up to date with the frame and returns the rectangles that changed; none
    // when the frame equals the last one. A buffer of another size than the last is painted whole.
    virtual const std::vector<PixelRect>& Paint(const ui::Frame& frame, PixelBuffer& buffer) = 0;
};

}  // namespace zo::platform
