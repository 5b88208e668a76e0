#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "bench/bench_commands.h"
#include "bench/bench_layout.h"
#include "bench/bench_run.h"
#include "ui/canvas.h"
#include "ui/pressables.h"

namespace Kest {

// The row between the panes and the trace: the tests as tabs, the chosen test's name, the controls
// of the run. What does not fit goes as a whole: first the controls that the key bar has too, then
// the name; then the tabs scroll.
class Strip {
public:
    Strip(std::function<void(Command)> act, std::function<void(std::size_t test)> select)
        : act_(std::move(act)), select_(std::move(select)) {}

    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const BenchLayout& layout,
              const BenchRun& run, int stage, bool focused);
    // Points out a control.
    void SetMark(std::optional<Command> command) { mark_ = command; }
    // Left and Right move along the controls, Enter and Space press.
    bool Key(const zo::ui::KeyPress& key);
    // Whether there is a control to focus.
    bool HasControls() const { return !shown_.empty(); }

private:
    enum class Where : std::uint8_t;
    struct Control;
    static const Control kControls[];

    static std::string_view LabelOf(const Control& control, const BenchRun& run);
    int ControlCells(const BenchRun& run) const;
    void DrawTests(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& room,
                   const BenchRun& run, int stage);
    void DrawTest(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, zo::ui::Point at,
                  const BenchRun& run, std::size_t test, int stage);
    void DrawControls(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, zo::ui::Point at,
                      const BenchRun& run, bool focused);
    void DrawSpeed(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, zo::ui::Point at,
                   const BenchRun& run, bool focused);

    std::function<void(Command)> act_;
    std::function<void(std::size_t)> select_;
    std::vector<const Control*> shown_;
    std::size_t chosen_ = 0;  // of those shown
    std::optional<Command> mark_;
};

}  // namespace Kest
