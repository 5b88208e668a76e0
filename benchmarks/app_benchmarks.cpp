#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>

#include "app/application.h"
#include "base/disk.h"
#include "benchmarks.h"
#include "gpu/fonts.h"
#include "gpu/renderer.h"
#include "native/system_disk.h"

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
    std::string clipboard = {};
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
    std::string ClipboardText() override { return life_.clipboard; }
    void SetClipboardText(const std::string&) override {}
    std::string SelectedText() override { return {}; }
    void SetSelectedText(const std::string&) override {}

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
    std::unique_ptr<zo::platform::AudioOutput> PlayAudio(zo::platform::AudioSource&) override {
        return nullptr;
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
    base::Status WriteAnimation(std::span<const zo::ui::Frame>, int, PixelSize,
                                const fs::path&) override {
        return {};
    }

private:
    Life& life_;
    fs::path folder_;
    zo::platform::SystemDisk disk_;
    Clock clock_;
};

zo::ui::KeyPress Letter(char32_t letter) {
    return {.key = zo::ui::Key::Character, .character = letter};
}

zo::ui::KeyPress Control(char32_t letter) {
    return {.key = zo::ui::Key::Character, .character = letter, .with = {.control = true}};
}

// What happens in the lives that are measured, in its order. A figure is the time of what happens
// at its place, the first one that of the start, without the opening of a window; those without a
// name are on the way only.
struct Happening {
    const char* figure;
    std::optional<InputEvent> event;  // of the start none; later, none is a wait's end
};

struct Kind {
    std::vector<Happening> happenings;
    int lives;
    std::string clipboard = {};
};

// Firmware of so many lines, with a label, a number and a remark each.
std::string Firmware(int lines) {
    std::string text;
    for (int line = 0; line < lines; ++line) {
        const std::string name = "l" + std::to_string(line);
        text += line % 4 == 3 ? "\tjmp " + name + "\r\n" : name + ": tx $55 ; a byte\r\n";
    }
    return text;
}

std::vector<Kind> Kinds() {
    const zo::ui::TextInput x = {"x"};
    const Happening start = {nullptr, std::nullopt};
    const Happening title = {nullptr, zo::ui::KeyPress{.key = zo::ui::Key::Escape}};
    const Happening bench = {nullptr, Letter(U'c')};
    const Happening binder = {nullptr, zo::ui::KeyPress{.key = zo::ui::Key::F1}};
    const zo::ui::KeyPress next_page = {.key = zo::ui::Key::PageDown, .with = {.control = true}};
    return {
        {{{"program: start to the first frame", std::nullopt},
          {"program: a new size, 1440x900", zo::ui::WindowResized{kOtherSize}},
          title,
          {"program: from the title to the bench", Letter(U'c')},
          {"program: a key goes down in the editor", Letter(U'x')},
          {"program: a letter typed", x},
          {"program: a blink of the caret", std::nullopt}},
         30},
        {{start,
          title,
          bench,
          {nullptr, Control(U'v')},
          {nullptr, zo::ui::KeyPress{.key = zo::ui::Key::Up}},
          {"editor: a letter typed into 256 lines", x},
          {"editor: one more letter there", x}},
         30,
         Firmware(256)},
        {{start,
          title,
          bench,
          {"editor: 100,000 lines pasted", Control(U'v')},
          {"editor: a letter typed behind them", x},
          {"editor: that letter taken back", Control(U'z')},
          {"editor: the paste taken back", Control(U'z')}},
         10,
         Firmware(100000)},
        {{start,
          title,
          bench,
          binder,
          {nullptr, next_page},
          {"binder: a page turned", next_page},
          {nullptr, Letter(U'/')},
          {"binder: the first letter searched for", zo::ui::TextInput{"c"}},
          {"binder: a letter added to it", zo::ui::TextInput{"r"}}},
         30},
        {{start, title, bench, {"editor: 100,000 lines of errors pasted", Control(U'v')}},
         10,
         [] {
             std::string text;
             for (int line = 0; line < 100000; ++line) text += "Lorem ipsum dolor sit amet\n";
             return text;
         }()},
    };
}

// The first life on a folder also makes the player's files.
std::vector<double> Live(const fs::path& folder, const Kind& kind) {
    Life life = {.happenings = {}, .clipboard = kind.clipboard};
    for (std::size_t k = 1; k < kind.happenings.size(); ++k) {
        life.happenings.push_back(kind.happenings[k].event);
    }
    UnseenSystem system(life, folder);
    const std::string_view arguments[] = {"--look", "classic", "--text", "normal"};
    Kest::RunApplication(arguments, system);
    return life.nanoseconds;
}

void TimeLives(Report& report, const Kind& kind) {
    const auto wanted = [&](const Happening& happening) {
        return happening.figure != nullptr && report.Wants(happening.figure);
    };
    if (std::ranges::none_of(kind.happenings, wanted)) return;
    const fs::path folder = fs::temp_directory_path() / "vantor-kest-benchmarks";
    std::vector<std::vector<double>> samples(kind.happenings.size());
    for (int life = 0; life <= kind.lives; ++life) {
        // What a life has typed is no part of the next.
        fs::remove_all(folder / "firmware");
        const std::vector<double> taken = Live(folder, kind);
        for (std::size_t k = 0; life > 0 && k < samples.size(); ++k) {
            constexpr double kMicrosecond = 1000;
            samples[k].push_back(taken.at(k) / kMicrosecond);
        }
    }
    fs::remove_all(folder);
    for (std::size_t k = 0; k < samples.size(); ++k) {
        if (wanted(kind.happenings[k])) report.Print(kind.happenings[k].figure, "us", samples[k]);
    }
}

}  // namespace

void RunApp(Report& report) {
    for (const Kind& kind : Kinds()) TimeLives(report, kind);
}

}  // namespace bench
