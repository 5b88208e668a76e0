#include <string_view>

#include "automation.h"
#include "base/format.h"
#include "game_places.h"
#include "shell/shell.h"
#include "smoke_checks.h"

namespace Kest {
namespace {

using zo::ui::Key;
using zo::ui::KeyPress;

// A game of its own in the run's folder, on the title, with so many tickets closed.
class Walker {
public:
    Walker(SmokeRun& run, int closed, zo::ui::PixelSize window, bool large)
        : shell_({.content = run.content,
                  .clock = clock_,
                  .disk = run.system.SystemDisk(),
                  .data_folder = run.folder / "walk",
                  .nine_wide_face = run.system.HasNineWideFace(),
                  .persistent = false,
                  .closed_override = closed,
                  .places = GamePlaces()}) {
        shell_.OverrideSettings([&](Settings& settings) { settings.large_text = large; });
        shell_.SetWindow(window, 1);
        shell_.Open(Place::Title);
        NextFrame();
    }

    void Press(const KeyPress& key) {
        shell_.Handle(key);
        NextFrame();
    }
    void Type(std::string_view letters) {
        for (const char letter : letters) {
            shell_.Handle(
                KeyPress{.key = Key::Character, .character = static_cast<unsigned char>(letter)});
            shell_.Handle(zo::ui::TextInput{std::string(1, letter)});
        }
        NextFrame();
    }
    void UseViKeys() {
        shell_.OverrideSettings([](Settings& settings) { settings.vi_keys = true; });
    }
    void Request(std::string_view request) {
        if (shell_.Top()) shell_.Top()->CaptureRequest(request);
        NextFrame();
    }
    void Open(Place place, std::string_view about = {}) {
        shell_.Open(place, about);
        NextFrame();
    }
    std::string TopName() const {
        return shell_.Top() ? std::string(shell_.Top()->Name()) : "none";
    }
    // The keys named in the last row.
    std::string KeyBar() { return LastRows(1); }
    // With the message above it, which may take several rows.
    std::string StatusLine() { return LastRows(4); }
    int Stage() const { return shell_.Unlocking().Stage(); }

private:
    std::string LastRows(int rows) {
        std::string dump = zo::ui::TextDump(shell_.Draw());
        dump.pop_back();
        std::size_t start = dump.size();
        for (; rows > 0; --rows) start = dump.rfind('\n', start - 1);
        return dump.substr(start + 1);
    }
    void NextFrame() {
        clock_.NextFrame();
        shell_.Advance();
        shell_.Draw();
    }

    VirtualClock clock_;
    Shell shell_;
};

// One step: a key, or else a request to the screen, and the screen that is then on top.
struct WalkStep {
    KeyPress key;
    std::string_view request;
    std::string_view screen;
};
constexpr KeyPress Plain(Key key) {
    return {.key = key};
}
constexpr KeyPress Letter(char32_t letter) {
    return {.key = Key::Character, .character = letter};
}
constexpr KeyPress Alt(char32_t letter) {
    return {.key = Key::Character, .character = letter, .with = {.alt = true}};
}
constexpr WalkStep kWalk[] = {
    {{}, "", "title"},
    {Alt(U'x'), "", "confirm"},
    {Plain(Key::Escape), "", "title"},
    {Letter(U'c'), "", "bench"},
    {Plain(Key::Escape), "", "pause"},
    {Alt(U'x'), "", "confirm"},
    {Plain(Key::Escape), "", "pause"},
    {Plain(Key::Escape), "", "bench"},
    {{}, "failed", "bench"},
    {{}, "results", "results"},
    {Plain(Key::Escape), "", "bench"},
    {Plain(Key::Escape), "", "pause"},
    {Letter(U't'), "", "title"},
};

// What is typed with vi keys, and the key behind it; what the status line then says, and the screen
// that is on top.
struct ViStep {
    std::string_view typed;
    Key key;
    std::string_view status;
    std::string_view screen = "bench";
};
constexpr ViStep kViSteps[] = {
    {"ggdGirx a", Key::Enter, "INSERT"},
    {"tx a", Key::Escape, "NORMAL │ Assembled: 0 errors, 2 lines."},
    {"dd", Key::None, "NORMAL │ Assembled: 0 errors, 1 line."},
    {"u", Key::None, "NORMAL │ Assembled: 0 errors, 2 lines."},
    {"2d", Key::None, "NORMAL 2d │"},
    {"", Key::Escape, "NORMAL │"},
    {"V", Key::None, "VISUAL LINE │"},
    {"", Key::Escape, "NORMAL │"},
    {"i", Key::F5, "INSERT │"},
    {"", Key::Escape, "NORMAL │"},
    {":frob", Key::Enter, "NORMAL │ ! Not a bench command: :frob"},
    {":w", Key::Enter, "NORMAL │ Firmware saved."},
    {":q", Key::Enter, "", "title"},
};

// Windows and text sizes that give the three benches.
struct StageCase {
    zo::ui::PixelSize window;
    bool large;
    const char* bench;
};
constexpr StageCase kStageCases[] = {
    {{1280, 800}, false, "wide"}, {{1920, 1080}, true, "medium"}, {{1280, 800}, true, "narrow"}};

// What the key bar of the bench names, and from which stage to which.
struct StageKey {
    std::string_view word;
    int from, to;
};
constexpr int kStages = 4;
constexpr StageKey kStageKeys[] = {
    {"F5 Run", 0, 3},  {"F8 Verify", 0, 3}, {"F6 Step", 1, 3},
    {"F7 Fast", 2, 3}, {"F10 Menu", 2, 3},  {"Esc Menu", 0, 1},
};

bool NamesTheKeysOf(int stage, const std::string& key_bar) {
    for (const StageKey& key : kStageKeys) {
        const bool named = key_bar.find(key.word) != std::string::npos;
        if (named != (stage >= key.from && stage <= key.to)) return false;
    }
    return true;
}

}  // namespace

void CheckStages(SmokeRun& run) {
    const std::vector<const kp::LoadedTicket*> tickets = run.content.Tickets();
    for (const StageCase& c : kStageCases) {
        bool holds = !tickets.empty();
        for (int stage = 0; holds && stage < kStages; ++stage) {
            Walker walker(run, stage, c.window, c.large);
            walker.Open(Place::Bench, tickets.front()->ticket.id);
            holds = walker.Stage() == stage && NamesTheKeysOf(stage, walker.KeyBar());
        }
        run.report.Check(base::Format("unlock stages at %s text on the %s bench",
                                      c.large ? "Large" : "Normal", c.bench),
                         holds);
    }
}

void CheckViKeys(SmokeRun& run) {
    const std::vector<const kp::LoadedTicket*> tickets = run.content.Tickets();
    Walker walker(run, 0, {1280, 800}, true);
    walker.UseViKeys();
    if (!tickets.empty()) walker.Open(Place::Bench, tickets.front()->ticket.id);
    std::string complaint;
    for (const ViStep& step : kViSteps) {
        walker.Type(step.typed);
        if (step.key != Key::None) walker.Press(Plain(step.key));
        const std::string status = walker.StatusLine();
        const bool says = status.find(step.status) != std::string::npos;
        if (says && walker.TopName() == step.screen) continue;
        complaint = "vi keys: \"" + std::string(step.typed) + "\" leads to " + walker.TopName() +
                    ", which says: " + status;
        break;
    }
    run.report.Check("vi keys", complaint.empty(), complaint);
}

void CheckWalk(SmokeRun& run) {
    Walker walker(run, 0, {1280, 800}, true);
    int number = 0;
    bool holds = true;
    for (const WalkStep& step : kWalk) {
        if (run.report.TimedOut()) return;
        ++number;
        if (step.key.key != Key::None) walker.Press(step.key);
        if (!step.request.empty()) walker.Request(step.request);
        const std::string found = walker.TopName();
        if (found == step.screen) continue;
        holds = false;
        const std::string expected(step.screen);
        run.report.Say(false, base::Format("step %d: expected %s, found %s", number,
                                           expected.c_str(), found.c_str()));
    }
    run.report.Check(base::Format("walk of %d steps through the screens", number), holds);
}

}  // namespace Kest
