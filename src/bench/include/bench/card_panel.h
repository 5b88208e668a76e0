#pragma once

#include <vector>

#include "bench/bench_run.h"
#include "ui/scroll.h"

namespace Kest {

// What of the card the coach points out.
struct CardMarks {
    std::string register_name = {};
    std::string limit = {};  // "ram" or "rx-buffer"
};

// The CARD panel: what the card holds, a row for each part that is fitted.
class CardPanel {
public:
    // How many rows the card takes in a pane of this width, frame included.
    static int RowCount(const kp::CardConfig& config, int pane_width);

    explicit CardPanel(const kp::CardConfig& config) : config_(config) {}

    // Inside a pane whose frame is drawn already.
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& pane,
              const BenchRun& run);
    void SetMarks(CardMarks marks) { marks_ = std::move(marks); }
    bool Key(const zo::ui::KeyPress& key) { return scroll_.Key(key); }

private:
    enum class Part : std::uint8_t {
        State,
        Where,       // at the right end of the state's row
        WhereBelow,  // where that row is too short
        Register,
        Transmitter,
        Timer,
        Stack,
        Buffer,
        Ram,
        RamRow,
        Nothing,
    };
    // A row's one or two halves; `left_index` is a register's number or the row's first RAM cell.
    struct Row {
        Part left = Part::Nothing;
        int left_index = 0;
        Part right = Part::Nothing;
        int right_index = 0;
    };
    struct Pen;

    static std::vector<Row> RowsFor(const kp::CardConfig& config, int pane_width);

    kp::CardConfig config_;
    std::vector<Row> rows_;
    CardMarks marks_;
    int width_ = 0;  // of the pane that rows_ are made for
    zo::ui::Scroll scroll_;
};

}  // namespace Kest
