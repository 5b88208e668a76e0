#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>

#include "app/application.h"
#include "base/disk.h"
#include "benchmarks.h"
#include "gpu/fonts.h"
#include "gpu/renderer.h"

namespace bench {
namespace {

namespace fs = std::filesystem;
using zo::platform::Window;
using zo::ui::InputEvent;
using zo::ui::PixelSize;

constexpr PixelSize kSize = {1280, 800};
constexpr PixelSize kOtherSize = {1440, 900};

class Clock final : public zo::platform::Clock {
public:
    double seconds = 0;

    double Seconds() override { return seconds; }
    std::uint64_t CalendarSeconds() override { return 0; }
};

// One life of the program: what happens to it while it waits, and the nanoseconds that it took each
// time until it waited again; the first ones are those from its start. Where nothing happens, the
// wait ends by itself.
struct Life {
    std::vector<std::optional<InputEvent>> happenings;
    std::vector<double> nanoseconds = {};
    Stopwatch watch = {};
};

// A window that draws into memory, and closes when nothing is left to happen.
class UnseenWindow final : public Window {
public:
    UnseenWindow(Life& life, Clock& clock) : life_(life), clock_(clock) {}

    PixelSize Size() const override { return buffer_.size; }
    float DisplayScale() const override { return 1; }
    bool IsFullScreen() const override { return false; }
    void SetFullScreen(bool) override {}
    void Show(const zo::ui::Frame& frame) override { painter_->Paint(frame, buffer_); }
    std::optional<InputEvent> NextEvent(double timeout_seconds) override {
        if (timeout_seconds == 0) return std::nullopt;
        const std::size_t next = life_.nanoseconds.size();
        life_.nanoseconds.push_back(life_.watch.Nanoseconds());
        if (next == life_.happenings.size()) return zo::ui::CloseRequested{};
        const std::optional<InputEvent>& event = life_.happenings[next];
        if (!event) clock_.seconds += timeout_seconds;
        if (event && std::holds_alternative<zo::ui::WindowResized>(*event)) {
            buffer_.size = std::get<zo::ui::WindowResized>(*event).size;
        }
        life_.watch = {};
        return event;
    }
    std::string ClipboardText() override { return {}; }
    void SetClipboardText(const std::string&) override {}

private:
    Life& life_;
    Clock& clock_;
    std::unique_ptr<zo::platform::Painter> painter_ = zo::gpu::MakeRenderer();
    zo::platform::PixelBuffer buffer_{.size = kSize, .pixels = {}};
};

class UnseenSystem final : public zo::platform::System {
public:
    UnseenSystem(Life& life, fs::path folder) : life_(life), folder_(std::move(folder)) {}

    base::Result<std::unique_ptr<Window>> OpenWindow(const zo::platform::WindowOptions&) override {
        return std::unique_ptr<Window>(std::make_unique<UnseenWindow>(life_, clock_));
    }
    zo::platform::Clock& SystemClock() override { return clock_; }
    base::Disk& SystemDisk() override { return disk_; }
    fs::path DataFolder() override { return folder_; }
    fs::path TemporaryFolder() override { return folder_; }
    std::optional<std::string> Environment(const char*) override { return std::nullopt; }
    bool HasNineWideFace() override { return zo::gpu::HasNineWideFace(); }
    std::vector<std::string> FontFamilies() override { return zo::gpu::FontFamilies(); }
    base::Status WritePicture(const zo::ui::Frame&, PixelSize, const fs::path&) override {
        return {};
    }

private:
    Life& life_;
    fs::path folder_;
    base::SystemDisk disk_;
    Clock clock_;
};

zo::ui::KeyPress Letter(char32_t letter) {
    return {.key = zo::ui::Key::Character, .character = letter};
}

// The figures of a life, in its order, without the opening of a window. The first life on a folder
// also makes the player's files.
constexpr const char* kFigures[] = {
    "program: start to the first frame",
    "program: a new size, 1440x900",
    "program: from the title to the bench",
    "program: a key goes down in the editor",
    "program: a letter typed",
    "program: a blink of the caret",
};

std::vector<double> Live(const fs::path& folder) {
    Life life = {.happenings = {zo::ui::WindowResized{kOtherSize}, Letter(U'c'), Letter(U'x'),
                                zo::ui::TextInput{"x"}, std::nullopt}};
    UnseenSystem system(life, folder);
    const std::string_view arguments[] = {"--look", "classic", "--text", "normal"};
    Kest::RunApplication(arguments, system);
    return life.nanoseconds;
}

}  // namespace

void RunApp(Report& report) {
    constexpr int kLives = 30;
    if (std::ranges::none_of(kFigures, [&](const char* name) { return report.Wants(name); })) {
        return;
    }
    const fs::path folder = fs::temp_directory_path() / "vantor-kest-benchmarks";
    std::vector<double> samples[std::size(kFigures)];
    for (int life = 0; life <= kLives; ++life) {
        const std::vector<double> taken = Live(folder);
        for (std::size_t k = 0; life > 0 && k < std::size(kFigures); ++k) {
            constexpr double kMicrosecond = 1000;
            samples[k].push_back(taken.at(k) / kMicrosecond);
        }
    }
    fs::remove_all(folder);
    for (std::size_t k = 0; k < std::size(kFigures); ++k) {
        if (report.Wants(kFigures[k])) report.Print(kFigures[k], "us", samples[k]);
    }
}

}  // namespace bench
