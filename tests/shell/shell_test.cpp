#include "shell/shell.h"

#include <doctest/doctest.h>

#include "support/game.h"

using namespace Kest;
using fake::Game;
using zo::ui::Role;

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
        if (caret) canvas.SetCaret(3, 3, zo::ui::CaretShape::Block);
        pressables.Add({10, 5, 4, 1}, "A hint.").act = [this] { log_ += name_ + " pressed, "; };
    }
    void DescribeFrame(FrameRecord& record) const override {
        record.title = "PROBE";
        record.standing = standing;
        record.right = "F5 F8";
        record.keys = {{.key = fake::KeyNamed("F5"), .word = "Run"}};
    }
    bool Key(const zo::ui::KeyPress& key) override {
        log_ += name_ + " " + zo::ui::KeyName(key) + ", ";
        return uses_keys;
    }
    bool Text(std::string_view utf8) override {
        log_ += name_ + " types " + std::string(utf8) + ", ";
        return true;
    }
    std::optional<double> NextFrameAt() const override { return next_frame; }
    base::Status SaveWork() override {
        return unsaved.empty() ? base::Status() : base::Status(base::Failure{unsaved});
    }

    bool caret = false;
    bool uses_keys = false;
    std::string standing;
    std::string unsaved;
    std::optional<double> next_frame;

private:
    std::string name_;
    std::string& log_;
};

struct Stage {
    std::string log;
    Game game{fake::Campaign({{"1-01-one", "One"}, {"1-02-two", "Two"}, {"1-03-three", "Three"}})};
    Shell& shell = game.shell;

    Probe& Show(std::string name) {
        auto probe = std::make_unique<Probe>(shell, std::move(name), log);
        Probe& shown = *probe;
        shell.SwitchTo(std::move(probe));
        shell.Advance();
        log.clear();
        return shown;
    }
    std::unique_ptr<Screen> Make(std::string name) {
        return std::make_unique<Probe>(shell, std::move(name), log);
    }
    std::string Log() { return std::exchange(log, {}); }
};

}  // namespace

TEST_CASE("a switch waits for the next frame and takes the overlays with it") {
    Stage stage;
    stage.Show("a");
    stage.shell.Push(stage.Make("b"));
    stage.shell.Push(stage.Make("c"));
    CHECK(stage.Log() == "a covered, b entered, b covered, c entered, ");
    stage.shell.SwitchTo(stage.Make("d"));
    stage.shell.Handle(fake::KeyNamed("F5"));
    CHECK(stage.Log().empty());
    stage.shell.Advance();
    CHECK(stage.Log() == "b left, c left, b gone, c gone, a left, a gone, d entered, ");
}

TEST_CASE("an overlay that closes itself lives until the next frame") {
    Stage stage;
    stage.Show("a");
    stage.shell.Push(stage.Make("b"));
    stage.Log();
    stage.shell.CloseOverlay();
    CHECK(stage.Log() == "b left, a uncovered, ");
    CHECK(stage.shell.Top()->Name() == "a");
    stage.shell.Advance();
    CHECK(stage.Log() == "b gone, ");
}

TEST_CASE("keys go to the topmost screen, and a letter that was used is not typed") {
    Stage stage;
    Probe& probe = stage.Show("a");
    stage.game.Press("x<F5>");
    CHECK(stage.Log() == "a X, a types x, a F5, ");
    probe.uses_keys = true;
    stage.game.Press("x");
    CHECK(stage.Log() == "a X, ");
    probe.uses_keys = false;
    bool answer = true;
    stage.shell.Ask(
        {.title = "Exit", .message = "Exit to DOS?", .yes = "Exit", .answered = [&](bool yes) {
             answer = yes;
         }});
    stage.Log();
    stage.game.Press("c");
    CHECK_FALSE(answer);
    CHECK(stage.Log() == "a uncovered, ");
}

TEST_CASE("the pointer reaches what the topmost screen drew, and nothing under it") {
    Stage stage;
    stage.Show("a");
    stage.game.Click({11, 5});
    stage.game.Click({2, 24});
    CHECK(stage.Log() == "a pressed, a F5, ");
    stage.game.Handle(zo::ui::PointerInput{.x = 11 * 8, .y = 5 * 16, .with = {}});
    CHECK(stage.game.Row(23).ends_with("A hint."));
    stage.shell.Notice("Shift 1", "Welcome.");
    CHECK(stage.game.Row(23).ends_with("A hint.") == false);
    stage.game.Click({11, 5});
    CHECK(stage.Log() == "a covered, ");
}

TEST_CASE("in the modern look too a press meets the cell that is drawn there") {
    Stage stage;
    stage.Show("a");
    stage.shell.OverrideSettings([](Settings& settings) {
        settings.modern_look = true;
        settings.large_text = false;
    });
    stage.shell.SetWindow({1280, 800}, 1);
    const zo::ui::Grid& grid = stage.shell.Grid();
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

TEST_CASE("a message shows for its time and then gives way to the standing text") {
    Stage stage;
    stage.Show("a").standing = "Not running.";
    CHECK(stage.game.Row(23).starts_with(" Not running. "));
    stage.shell.SetStatus("Firmware saved.");
    stage.game.Wait(3.1);
    CHECK(stage.game.Row(23).starts_with(" Firmware saved. "));
    CHECK(stage.shell.SecondsToNextFrame() == doctest::Approx(0.1));
    stage.game.Wait(0.1001);
    CHECK(stage.game.Row(23).starts_with(" Not running. "));
    CHECK(stage.shell.SecondsToNextFrame() < 0);
}

TEST_CASE("nothing is due while nothing changes, and the caret asks for its own frames") {
    Stage stage;
    Probe& probe = stage.Show("a");
    stage.game.Draw();
    CHECK_FALSE(stage.shell.NeedsDraw());
    CHECK(stage.shell.SecondsToNextFrame() < 0);
    probe.caret = true;
    stage.game.Wait(0.2);
    stage.game.Press("<F5>");
    CHECK(stage.game.Draw().caret.x == 3);
    CHECK(stage.shell.SecondsToNextFrame() == doctest::Approx(0.53));
    stage.game.Wait(0.531);
    stage.shell.Advance();
    CHECK(stage.shell.NeedsDraw());
    CHECK(stage.game.Draw().caret == zo::ui::Caret{});
    probe.next_frame = 0;
    stage.shell.Advance();
    CHECK(stage.shell.NeedsDraw());
}

TEST_CASE("progress is saved, and a failure stands until a save works") {
    Stage stage;
    stage.Show("a");
    stage.shell.Progress().current = "1-02-two";
    stage.game.system.disk.full = "No space left on device";
    stage.shell.SaveProgress();
    CHECK(stage.game.Row(22).starts_with(" ! Progress could not be saved: "));
    CHECK(stage.game.Draw().At(1, 22).role == Role::StatusAlert);
    CHECK_FALSE(stage.shell.SaveFailure().empty());
    stage.game.system.disk.full.clear();
    stage.shell.SaveProgress();
    CHECK(stage.shell.SaveFailure().empty());
    const Progress saved = LoadProgress(stage.game.system.disk, "data");
    CHECK(saved.current == "1-02-two");
}

TEST_CASE("a run with its own number of closed tickets leaves the player's progress alone") {
    Game game(fake::Campaign({{"1-01-one", "One"}, {"1-02-two", "Two"}}), {}, 1);
    CHECK(game.shell.Progress().IsClosed("1-01-one"));
    CHECK_FALSE(game.shell.Progress().IsClosed("1-02-two"));
    game.shell.SaveProgress();
    CHECK_FALSE(game.system.disk.files.contains("data/progress.json"));
}

TEST_CASE("work that cannot be saved is not lost without a question") {
    Stage stage;
    Probe& probe = stage.Show("a");
    probe.unsaved = "cannot write x";
    stage.shell.Handle(zo::ui::CloseRequested{});
    CHECK_FALSE(stage.shell.Done());
    CHECK(stage.game.Text().find("cannot write x") != std::string::npos);
    stage.game.Press("<Enter>");
    CHECK_FALSE(stage.shell.Done());
    stage.shell.Handle(zo::ui::CloseRequested{});
    CHECK_FALSE(stage.shell.Done());
    stage.shell.Handle(zo::ui::CloseRequested{});
    CHECK(stage.shell.Done());
}

TEST_CASE("work that cannot be saved keeps its screen unless the player lets it go") {
    Stage stage;
    Probe& probe = stage.Show("a");
    probe.unsaved = "cannot write x";
    stage.shell.SwitchTo(stage.Make("b"));
    CHECK(stage.game.Text().find("cannot write x") != std::string::npos);
    stage.game.Press("<Enter>");  // Stay, which is suggested
    CHECK(stage.game.TopName() == "a");
    stage.shell.SwitchTo(stage.Make("b"));
    stage.game.Press("<Left><Enter>");
    CHECK(stage.game.TopName() == "b");
}

TEST_CASE("full screen goes on and off from everywhere") {
    Stage stage;
    stage.Show("a");
    stage.game.Press("<F11>");
    CHECK(stage.game.system.screen.full_screen);
    stage.game.Press("<Alt+Enter>");
    CHECK_FALSE(stage.game.system.screen.full_screen);
    CHECK(stage.Log().empty());
}
