// The shell and what happens to its screens. More steps of scenes:
//
//     start                     a new game that shows the screen a
//     push b / switch b         an overlay; another screen
//     now a                     the topmost screen before the next frame
//     a unsaved cannot write x  what is true of the screen a, see Probe::Set()
//     key F5                    as it comes, between two frames
//     hold 11,5 / let-go 11,5   its button goes down; and up
//     idle 10                   seconds pass and no frame is due
//     focus no / minimise / expose / resize 600x380
//     set motion off            a setting, by its name in kSwitches
//     log a covered, yes        what has happened since the step before it that asked
//     ask Exit: Exit to DOS?    a question, its title's first word for yes; `ask-no` suggests no
//     notice Shift 4: Welcome.
//     words 200                 a notice of so many words
//     message Saved.            on the status line
//     exit                      the window is to close
//     advance / draw            the next frame, up to its drawing; and drawn
//     due 0.1 / changed no      when the next frame is, and whether there is a new one
//     caret 3 / crt no / full yes / done no
//     cells 80x25

#include "shell/shell.h"

#include <functional>
#include <map>

#include "support/scene.h"

using namespace Kest;
using fake::Game;

namespace {

// A screen that writes down what happens to it.
class Probe final : public Screen {
public:
    Probe(Shell& shell, std::string name, std::string& log)
        : Screen(shell), name_(std::move(name)), log_(log) {}
    ~Probe() override { log_ += name_ + " gone, "; }

    std::string_view Name() const override { return name_; }
    void Entered() override { log_ += name_ + " entered, "; }
    void Left() override { log_ += name_ + " left, "; }
    void Covered() override { log_ += name_ + " covered, "; }
    void Uncovered() override { log_ += name_ + " uncovered, "; }
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override {
        if (caret_) canvas.SetCaret(3, 3, zo::ui::CaretShape::Block);
        pressables.Add({10, 5, 4, 1}, "A hint.").act = [this] { log_ += name_ + " pressed, "; };
    }
    void DescribeFrame(FrameRecord& record) const override {
        record.title = "PROBE";
        record.standing = standing_;
        record.right = "F5 F8";
        record.keys = {{.key = fake::KeyNamed("F5"), .word = "Run"}};
    }
    bool Key(const zo::ui::KeyPress& key) override {
        log_ += name_ + " " + zo::ui::KeyName(key) + ", ";
        if (!answer_.empty()) shell_.SetStatus(answer_);
        return uses_keys_;
    }
    bool Text(std::string_view utf8) override {
        log_ += name_ + " types " + std::string(utf8) + ", ";
        return true;
    }
    std::span<const PadKey> PadKeys() const override;
    std::optional<double> NextFrameAt() const override { return next_frame_; }
    base::Status SaveWork() override {
        return unsaved_.empty() ? base::Status() : base::Status(base::Failure{unsaved_});
    }

    void Set(std::string_view words) {
        const std::string_view what = support::Cut(words, " ");
        if (what == "caret") caret_ = true;
        if (what == "uses-keys") uses_keys_ = true;
        if (what == "answers") answer_ = words;
        if (what == "own-pad") own_pad_ = true;
        if (what == "standing") standing_ = words;
        if (what == "unsaved") unsaved_ = words;
        if (what == "due-now") next_frame_ = 0;
    }

private:
    std::string name_;
    std::string& log_;
    bool caret_ = false;
    bool uses_keys_ = false;
    bool own_pad_ = false;
    std::string answer_;  // shown at every key
    std::string standing_;
    std::string unsaved_;
    std::optional<double> next_frame_;
};

constexpr PadKey kOwnPad[] = {
    {zo::ui::PadButton::X, {.key = zo::ui::Key::F5}},
    {zo::ui::PadButton::RightTrigger, {.key = zo::ui::Key::PageDown, .with = {.control = true}}},
};

std::span<const PadKey> Probe::PadKeys() const {
    if (own_pad_) return kOwnPad;
    return {};
}

struct Stage {
    std::string log;
    Game game{fake::Campaign({})};
    Probe* a = nullptr;

    Stage() {
        auto probe = std::make_unique<Probe>(game.shell, "a", log);
        a = probe.get();
        game.shell.SwitchTo(std::move(probe));
        game.shell.Advance();
        log.clear();
    }
    std::unique_ptr<Screen> Make(std::string_view name) {
        return std::make_unique<Probe>(game.shell, std::string(name), log);
    }
    void Ask(std::string_view words, bool suggest_no) {
        Question question = {.suggest_no = suggest_no};
        question.title = support::Cut(words, ": ");
        question.message = words;
        question.yes = question.title.substr(0, question.title.find(' '));
        question.answered = [this](bool yes) { log += yes ? "yes, " : "no, "; };
        game.shell.Ask(std::move(question));
    }
    void Point(const std::string& at, zo::ui::PointerAction action) {
        zo::ui::PointerInput pointer = {.action = action, .button = 1, .with = {}};
        REQUIRE(std::sscanf(at.c_str(), "%d,%d", &pointer.x, &pointer.y) == 2);
        pointer.x *= 8;
        pointer.y *= 16;
        game.Handle(pointer);
    }
    void Resize(const std::string& size) {
        zo::ui::WindowResized resized;
        REQUIRE(std::sscanf(size.c_str(), "%dx%d", &resized.size.width, &resized.size.height) == 2);
        game.shell.Handle(resized);
    }
    void Notice(std::string_view words) {
        const std::string title(support::Cut(words, ": "));
        game.shell.Notice(title, std::string(words), [this] { log += "closed, "; });
    }
    std::string Log() {
        if (!log.empty()) log.resize(log.size() - 2);
        return std::exchange(log, {});
    }
};

std::string Words(unsigned count) {
    std::string words = "Long:";
    for (unsigned k = 1; k <= count; ++k) words += " word" + std::to_string(k);
    return words;
}

const std::map<std::string, bool Settings::*> kSwitches = {
    {"motion", &Settings::motion},           {"crt", &Settings::crt},
    {"full-screen", &Settings::full_screen}, {"modern", &Settings::modern_look},
    {"large", &Settings::large_text},
};

using Deed = std::function<void(Stage&, const std::string&)>;

const std::map<std::string, Deed> kDeeds = {
    {"push", [](Stage& s, const std::string& name) { s.game.shell.Push(s.Make(name)); }},
    {"switch", [](Stage& s, const std::string& name) { s.game.shell.SwitchTo(s.Make(name)); }},
    {"a", [](Stage& s, const std::string& words) { s.a->Set(words); }},
    {"key", [](Stage& s, const std::string& name) { s.game.shell.Handle(fake::KeyNamed(name)); }},
    {"hold", [](Stage& s, const std::string& at) { s.Point(at, zo::ui::PointerAction::Press); }},
    {"let-go",
     [](Stage& s, const std::string& at) { s.Point(at, zo::ui::PointerAction::Release); }},
    {"idle", [](Stage& s,
                const std::string& seconds) { s.game.system.clock.seconds += std::stod(seconds); }},
    {"focus",
     [](Stage& s, const std::string& yes) {
         s.game.shell.Handle(zo::ui::FocusChanged{yes == "yes"});
     }},
    {"minimise",
     [](Stage& s, const std::string&) { s.game.shell.Handle(zo::ui::WindowMinimised{}); }},
    {"expose", [](Stage& s, const std::string&) { s.game.shell.Handle(zo::ui::WindowExposed{}); }},
    {"resize", &Stage::Resize},
    {"set",
     [](Stage& s, const std::string& value) {
         std::string_view rest = value;
         const auto field = kSwitches.at(std::string(support::Cut(rest, " ")));
         s.game.shell.ChangeSettings([&](Settings& kept) { kept.*field = rest == "on"; });
     }},
    {"theme",
     [](Stage& s, const std::string& name) {
         s.game.shell.ChangeSettings([&](Settings& kept) { kept.theme = ThemeNamed(name); });
     }},
    {"ask", [](Stage& s, const std::string& words) { s.Ask(words, false); }},
    {"ask-no", [](Stage& s, const std::string& words) { s.Ask(words, true); }},
    {"notice", [](Stage& s, const std::string& words) { s.Notice(words); }},
    {"words",
     [](Stage& s, const std::string& n) { s.Notice(Words(static_cast<unsigned>(std::stoul(n)))); }},
    {"message", [](Stage& s, const std::string& words) { s.game.shell.SetStatus(words); }},
    {"exit", [](Stage& s, const std::string&) { s.game.shell.Handle(zo::ui::CloseRequested{}); }},
    {"advance", [](Stage& s, const std::string&) { s.game.shell.Advance(); }},
    {"draw", [](Stage& s, const std::string&) { s.game.Draw(); }},
};

// What the shell then is, in the words of the step.
const std::map<std::string, std::function<std::string(Stage&)>> kViews = {
    {"log", &Stage::Log},
    {"now", [](Stage& s) { return std::string(s.game.shell.Top()->Name()); }},
    {"due",
     [](Stage& s) {
         const double seconds = s.game.shell.SecondsToNextFrame();
         char text[32];
         std::snprintf(text, sizeof text, "%.6g", seconds);
         return seconds < 0 ? "never" : std::string(text);
     }},
    {"changed", [](Stage& s) { return s.game.shell.NeedsDraw() ? "yes" : "no"; }},
    {"caret",
     [](Stage& s) {
         const zo::ui::Caret caret = s.game.Draw().caret;
         return caret == zo::ui::Caret{} ? "none" : std::to_string(caret.x);
     }},
    {"crt", [](Stage& s) { return s.game.Draw().crt ? "yes" : "no"; }},
    {"cells",
     [](Stage& s) {
         const zo::ui::Grid& grid = s.game.shell.Grid();
         return std::to_string(grid.columns) + "x" + std::to_string(grid.rows);
     }},
    {"full", [](Stage& s) { return s.game.system.screen.full_screen ? "yes" : "no"; }},
    {"done", [](Stage& s) { return s.game.shell.Done() ? "yes" : "no"; }},
};

}  // namespace

TEST_CASE("the shell plays its scenes") {
    for (const support::Case& scene : support::Cases("shell/scenes.txt")) {
        std::unique_ptr<Stage> stage;
        for (const support::Step& step : scene) {
            INFO(step.where);
            if (step.key == "start") {
                stage = std::make_unique<Stage>();
                continue;
            }
            REQUIRE(stage);
            if (const auto deed = kDeeds.find(step.key); deed != kDeeds.end()) {
                deed->second(*stage, step.value);
            } else if (const auto view = kViews.find(step.key); view != kViews.end()) {
                CHECK(view->second(*stage) == step.value);
            } else if (!fake::Play(stage->game, step)) {
                FAIL("unknown key ", step.key);
            }
        }
    }
}

TEST_CASE("in the modern look too a press meets the cell that is drawn there") {
    Stage stage;
    stage.game.shell.OverrideSettings([](Settings& settings) {
        settings.modern_look = true;
        settings.large_text = false;
    });
    stage.game.shell.SetWindow({1280, 800}, 1);
    const zo::ui::Grid& grid = stage.game.shell.Grid();
    const int top = grid.RowTop(5);
    const int bottom = grid.RowTop(6);
    std::string pressed;
    for (int y = top - 1; y <= bottom; ++y) {
        zo::ui::PointerInput pointer = {.action = zo::ui::PointerAction::Press,
                                        .x = grid.LeftPixels() + 10 * grid.cell_width,
                                        .y = y,
                                        .button = 1,
                                        .with = {}};
        stage.game.Handle(pointer);
        pointer.action = zo::ui::PointerAction::Release;
        stage.game.Handle(pointer);
        pressed += stage.Log().empty() ? '-' : 'x';
    }
    CHECK(pressed == "-" + std::string(static_cast<std::size_t>(bottom - top), 'x') + "-");
}
