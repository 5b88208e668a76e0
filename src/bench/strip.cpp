#include "bench/strip.h"

#include <algorithm>

#include "base/utf.h"
#include "small_text.h"
#include "ui/widgets.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Point;
using zo::ui::Pressables;
using zo::ui::Rect;
using zo::ui::Role;

constexpr int kGap = 2;          // between tests, name and controls
constexpr int kSpeedCells = 14;  // "Speed ◄Steady►"
constexpr int kSpeedName = 6;

int TestCells(std::size_t test) {
    return test + 1 < 10 ? 4 : 5;
}

int AllTestCells(std::size_t tests) {
    int cells = 0;
    for (std::size_t i = 0; i < tests; ++i) cells += TestCells(i);
    return cells;
}

// The tests before and after the window that are out of sight.
struct TestWindow {
    std::size_t first = 0, last = 0;
};
TestWindow WindowFor(std::size_t tests, std::size_t chosen, int room) {
    if (AllTestCells(tests) <= room) return {0, tests};
    const int inside = room - 2;  // an arrow at each end
    TestWindow window{0, 0};
    int cells = 0;
    while (window.last < tests &&
           (window.last <= chosen || cells + TestCells(window.last) <= inside)) {
        cells += TestCells(window.last++);
        while (cells > inside && window.first < chosen) cells -= TestCells(window.first++);
    }
    return window;
}

}  // namespace

enum class Strip::Where : std::uint8_t {
    Everywhere,
    Wide,     // elsewhere, and where there is no room, the key bar has it
    NotWide,  // the wide trace has it in its frame
};

struct Strip::Control {
    Command command;
    std::string_view label;
    std::string_view hint;
    int stage;
    Where where;
    int gap = 1;  // before it
};
const Strip::Control Strip::kControls[] = {
    {Command::Reset, "Reset", "Ctrl+R: tick 0.", 1, Where::Everywhere},
    {Command::Step, "Step", "One instruction.", 1, Where::Wide},
    {Command::RunOrPause, "Run", "Runs this test.", 0, Where::Wide},
    {Command::RunToEnd, "Fast", "F7: to the end.", 2, Where::Wide},
    {Command::Verify, "Verify", "Runs every test.", 0, Where::Wide},
    {Command::ToggleBreakpoint, "•Break", "Breakpoint on or off.", 1, Where::Everywhere},
    {Command::CycleSpeed, "", "Ticks per second.", 1, Where::Everywhere},
    {kZoomControls[0].command, kZoomControls[0].label, kZoomControls[0].hint, 2, Where::NotWide},
    {kZoomControls[1].command, kZoomControls[1].label, kZoomControls[1].hint, 2, Where::NotWide, 0},
    {kZoomControls[2].command, kZoomControls[2].label, kZoomControls[2].hint, 2, Where::NotWide, 0},
};

void Strip::Draw(Canvas& canvas, Pressables& pressables, const BenchLayout& layout,
                 const BenchRun& run, int stage, bool focused) {
    const Rect& strip = layout.Of(Panel::Strip);
    const bool wide = layout.size == BenchSize::Wide;
    const std::string_view label = wide ? "TESTS" : "TEST";
    const std::string& name = run.Loaded().ticket.tests[run.TestIndex()].name;
    const int tests = AllTestCells(run.TestCount());
    const int name_cells = wide ? static_cast<int>(base::CodePoints(name)) + kGap : 0;
    const int left = strip.x + 1 + static_cast<int>(label.size()) + 1;
    shown_.clear();
    for (const Control& control : kControls) {
        const Where missing = wide ? Where::NotWide : Where::Wide;
        if (stage >= control.stage && control.where != missing) shown_.push_back(&control);
    }
    const int right = strip.Right() - (layout.size == BenchSize::Narrow ? 0 : 1);
    const auto room = [&] { return right - ControlCells(run) - kGap - left; };
    if (tests + name_cells > room()) {
        std::erase_if(shown_, [](const Control* control) { return control->where == Where::Wide; });
    }
    chosen_ = std::min(chosen_, shown_.empty() ? 0 : shown_.size() - 1);
    canvas.Fill(strip, U' ', Role::Panel);
    canvas.Text(strip.x + 1, strip.y, label, Role::PanelDim);
    DrawTests(canvas, pressables, {left, strip.y, room(), 1}, run, stage);
    if (wide && tests + name_cells <= room()) {
        canvas.Text(left + tests + kGap, strip.y, name, Role::Panel);
    }
    DrawControls(canvas, pressables, {right - ControlCells(run), strip.y}, run, focused);
}

std::string_view Strip::LabelOf(const Control& control, const BenchRun& run) {
    const bool pauses = control.command == Command::RunOrPause && run.State() == RunState::Running;
    return pauses ? "Pause" : control.label;
}

int Strip::ControlCells(const BenchRun& run) const {
    int cells = 0;
    for (const Control* control : shown_) {
        const bool is_speed = control->command == Command::CycleSpeed;
        const auto label = static_cast<int>(base::CodePoints(LabelOf(*control, run)));
        cells += control->gap + (is_speed ? kSpeedCells : label + 2);
    }
    return std::max(cells - 1, 0);
}

void Strip::DrawTests(Canvas& canvas, Pressables& pressables, const Rect& room, const BenchRun& run,
                      int stage) {
    const TestWindow window = WindowFor(run.TestCount(), run.TestIndex(), room.width);
    int x = room.x;
    if (window.first > 0) canvas.Put(x++, room.y, U'«', Role::PanelDim);
    for (std::size_t test = window.first; test < window.last; ++test) {
        DrawTest(canvas, pressables, {x, room.y}, run, test, stage);
        x += TestCells(test);
    }
    if (window.last < run.TestCount()) canvas.Put(x, room.y, U'»', Role::PanelDim);
}

void Strip::DrawTest(Canvas& canvas, Pressables& pressables, Point at, const BenchRun& run,
                     std::size_t test, int stage) {
    const bool choosable = stage >= StageOf(Command::NextTest);
    const bool chosen = choosable && test == run.TestIndex();
    const Role role = chosen ? Role::TabOn : Role::Tab;
    const Rect area{at.x, at.y, TestCells(test), 1};
    canvas.Fill(area, U' ', role);
    const int end = run.IsOfDeck(test)
                        ? canvas.Text(at.x + 1, at.y, SmallText("%zu", test + 1), role)
                        : canvas.Text(at.x + 1, at.y, "+", role);
    if (run.Mark(test) == TestMark::Passed) canvas.Put(end, at.y, U'√', Role::Ok);
    if (run.Mark(test) == TestMark::Failed) canvas.Put(end, at.y, U'!', Role::Fault);
    if (chosen) {
        canvas.Put(at.x, at.y, U'[', role);
        canvas.Put(area.Right() - 1, at.y, U']', role);
    }
    zo::ui::Pressable& entry = pressables.Add(area, run.Loaded().ticket.tests[test].name);
    if (choosable) entry.act = [this, test] { select_(test); };
}

void Strip::DrawControls(Canvas& canvas, Pressables& pressables, Point at, const BenchRun& run,
                         bool focused) {
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        const Control& control = *shown_[i];
        const bool has_focus = focused && i == chosen_;
        if (i > 0) at.x += control.gap;
        if (control.command == Command::CycleSpeed) {
            DrawSpeed(canvas, pressables, at, run, has_focus);
            at.x += kSpeedCells;
            continue;
        }
        const zo::ui::Button button{.label = LabelOf(control, run),
                                    .hint = control.hint,
                                    .form = zo::ui::ButtonForm::Compact,
                                    .enabled = run.State() != RunState::Verifying,
                                    .focused = has_focus};
        const int end = zo::ui::DrawButton(canvas, pressables, at, button,
                                           [this, command = control.command] { act_(command); });
        if (mark_ == control.command && !has_focus) {
            canvas.Tint({at.x, at.y, end - at.x, 1}, Role::CoachMark);
        }
        at.x = end;
    }
}

void Strip::DrawSpeed(Canvas& canvas, Pressables& pressables, Point at, const BenchRun& run,
                      bool focused) {
    const auto last = static_cast<int>(kRunSpeeds.size()) - 1;
    const Role role = focused ? Role::ButtonFocus : Role::Panel;
    const Role arrows = focused ? Role::ButtonFocus : Role::PanelHot;
    const int value = canvas.Text(at.x, at.y, "Speed ", Role::PanelDim);
    canvas.Fill({value, at.y, kSpeedName + 2, 1}, U' ', role);
    if (run.Speed() > 0) canvas.Put(value, at.y, U'◄', arrows);
    canvas.Text(value + 1, at.y, kRunSpeeds[static_cast<std::size_t>(run.Speed())].name, role);
    if (run.Speed() < last) canvas.Put(value + 1 + kSpeedName, at.y, U'►', arrows);
    const auto add = [&](int x, int cells, Command command) {
        pressables.Add({x, at.y, cells, 1}, "Ticks per second.").act = [this, command] {
            act_(command);
        };
    };
    add(value, 1, Command::SlowerSpeed);
    add(value + 1, kSpeedName, Command::CycleSpeed);
    add(value + 1 + kSpeedName, 1, Command::FasterSpeed);
}

bool Strip::Key(const zo::ui::KeyPress& key) {
    using zo::ui::Key;
    if (shown_.empty() || key.with != zo::ui::Modifiers{}) return false;
    switch (key.key) {
        case Key::Left:
            chosen_ -= chosen_ > 0 ? 1 : 0;
            return true;
        case Key::Right:
            chosen_ = std::min(chosen_ + 1, shown_.size() - 1);
            return true;
        case Key::Enter:
            act_(shown_[chosen_]->command);
            return true;
        default:
            break;
    }
    if (key.key != Key::Character || key.character != U' ') return false;
    act_(shown_[chosen_]->command);
    return true;
}

}  // namespace Kest
