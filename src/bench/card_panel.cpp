#include "bench/card_panel.h"

#include <algorithm>
#include <string>

#include "small_text.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Rect;
using zo::ui::Role;

constexpr int kTwoColumnsFrom = 40;   // inner width
constexpr int kOneStateRowFrom = 30;  // width of the text
constexpr int kEightCellsFrom = 43;   // width of the text
constexpr int kRightHalf = 20;
constexpr int kFrameAndBlanks = 4;

int CellsPerRow(int pane_width) {
    return pane_width - kFrameAndBlanks >= kEightCellsFrom ? 8 : 4;
}

struct StateWord {
    std::string_view word;
    Role role;
};
StateWord WordFor(RunState state) {
    switch (state) {
        case RunState::Running:
        case RunState::Verifying:
            return {"Running", Role::PanelBright};
        case RunState::Paused:
            return {"Paused", Role::PanelBright};
        case RunState::Passed:
            return {"Test passed", Role::Ok};
        case RunState::Failed:
            return {"Test failed", Role::Fault};
        case RunState::NotRunning:
            break;
    }
    return {"Not running", Role::PanelBright};
}

bool IsPrintable(std::uint16_t word) {
    return word >= 32 && word <= 126;
}

}  // namespace

// Draws the parts of one row. `right` is the column behind the text.
struct CardPanel::Pen {
    Canvas& canvas;
    zo::ui::Pressables& pressables;
    const kp::CardConfig& config;
    const BenchRun& run;
    int y;
    int right;
    bool two_columns;
    int cells;
    const CardMarks& marks;

    void Draw(Part part, int x, int index) const;
    SmallText WhereText() const;
    void Register(int x, int number) const;
    void Transmitter(int x) const;
    void Timer(int x) const;
    void Stack(int x) const;
    void Buffer(int x) const;
    void RamRow(int x, int first) const;
    void Name(int x, std::string_view name, bool marked) const;
    int Named(int x, std::string_view name, int width, std::string_view value,
              bool marked = false) const;
    template <class Each>
    void List(int x, int count, Each each) const;
};

std::vector<CardPanel::Row> CardPanel::RowsFor(const kp::CardConfig& config, int pane_width) {
    std::vector<Row> rows = {{Part::State}};
    if (pane_width - kFrameAndBlanks < kOneStateRowFrom) {
        rows.push_back({Part::WhereBelow});
    } else {
        rows[0].right = Part::Where;
    }
    std::vector<Row> halves;
    for (int number = kp::kA; number <= kp::kD; ++number) {
        if (config.HasRegister(number)) halves.push_back({Part::Register, number});
    }
    const std::size_t general = halves.size();
    if (config.crc) halves.push_back({Part::Register, kp::kCrc});
    if (config.clock) halves.push_back({Part::Register, kp::kClk});
    halves.push_back({Part::Register, kp::kRxn});
    halves.push_back({Part::Transmitter});
    if (pane_width - 2 >= kTwoColumnsFrom) {
        const std::size_t special = halves.size() - general;
        for (std::size_t i = 0; i < std::max(general, special); ++i) {
            Row row = i < general ? halves[i] : Row{};
            if (i < special) {
                row.right = halves[general + i].left;
                row.right_index = halves[general + i].left_index;
            }
            rows.push_back(row);
        }
    } else {
        rows.insert(rows.end(), halves.begin(), halves.end());
    }
    if (config.timer) rows.push_back({Part::Timer});
    rows.push_back({Part::Stack});
    rows.push_back({Part::Buffer});
    if (config.ram > 0) rows.push_back({Part::Ram});
    for (int cell = 0; cell < config.ram; cell += CellsPerRow(pane_width)) {
        rows.push_back({Part::RamRow, cell});
    }
    return rows;
}

int CardPanel::RowCount(const kp::CardConfig& config, int pane_width) {
    return static_cast<int>(RowsFor(config, pane_width).size());
}

void CardPanel::Draw(Canvas& canvas, zo::ui::Pressables& pressables, const Rect& pane,
                     const BenchRun& run) {
    if (width_ != pane.width) {
        width_ = pane.width;
        rows_ = RowsFor(config_, width_);
    }
    const Rect inner = pane.Inner();
    scroll_.Measure(static_cast<int>(rows_.size()), inner.height);
    scroll_.Draw(canvas, pressables, pane);
    Pen pen{canvas,
            pressables,
            config_,
            run,
            inner.y,
            inner.Right() - 1,
            inner.width >= kTwoColumnsFrom,
            CellsPerRow(width_),
            marks_};
    const int last = std::min(scroll_.Top() + inner.height, static_cast<int>(rows_.size()));
    for (int i = scroll_.Top(); i < last; ++i, ++pen.y) {
        const Row& row = rows_[static_cast<std::size_t>(i)];
        pen.Draw(row.left, inner.x + 1, row.left_index);
        pen.Draw(row.right, inner.x + 1 + kRightHalf, row.right_index);
    }
}

void CardPanel::Pen::Draw(Part part, int x, int index) const {
    switch (part) {
        case Part::State: {
            const StateWord state = WordFor(run.ShownState());
            canvas.Text(x, y, state.word, state.role);
            break;
        }
        case Part::Where:
            canvas.TextRight(right, y, WhereText(), Role::Panel);
            break;
        case Part::WhereBelow:
            canvas.Text(x, y, WhereText(), Role::Panel);
            break;
        case Part::Register:
            Register(x, index);
            break;
        case Part::Transmitter:
            Transmitter(x);
            break;
        case Part::Timer:
            Timer(x);
            break;
        case Part::Stack:
            Stack(x);
            break;
        case Part::Buffer:
            Buffer(x);
            break;
        case Part::Ram:
            Named(x, "RAM", 6, SmallText("%d cell%s", config.ram, config.ram == 1 ? "" : "s"),
                  marks.limit == "ram");
            break;
        case Part::RamRow:
            RamRow(x, index);
            break;
        case Part::Nothing:
            break;
    }
}

void CardPanel::Pen::Name(int x, std::string_view name, bool marked) const {
    const int end = canvas.Text(x, y, name, marked ? Role::CoachMark : Role::PanelDim);
    if (marked) canvas.Put(end, y, U'◄', Role::CoachMark);
}

int CardPanel::Pen::Named(int x, std::string_view name, int width, std::string_view value,
                          bool marked) const {
    Name(x, name, marked);
    return canvas.Text(x + width, y, value, Role::Panel);
}

SmallText CardPanel::Pen::WhereText() const {
    return run.ShownLine() > 0 ? SmallText("Tick %u  Line %d", run.ShownTick(), run.ShownLine())
                               : SmallText("Tick %u", run.ShownTick());
}

void CardPanel::Pen::Register(int x, int number) const {
    const std::uint16_t word = run.Card().RegisterValue(number);
    const bool changed = run.Session() != nullptr &&
                         word != run.WordsBefore().registers[static_cast<std::size_t>(number)];
    const int name_width = two_columns && number <= kp::kD ? 2 : 4;
    const std::string_view name = kp::kRegisterNames[static_cast<std::size_t>(number)];
    Name(x, name, name == marks.register_name);
    x = canvas.Text(x + name_width, y, SmallText("$%04X%7d", word, static_cast<std::int16_t>(word)),
                    changed ? Role::PanelBright : Role::Panel);
    if (changed) canvas.Put(x, y, U'◄', Role::PanelBright);
    if (IsPrintable(word)) {
        canvas.Text(x + 1, y, SmallText("'%c'", word), changed ? Role::PanelBright : Role::Panel);
    }
}

void CardPanel::Pen::Transmitter(int x) const {
    const kp::Tick now = run.CardTick();
    const kp::Tick free_at = run.Card().TransmitterFreeAt();
    const int name_width = two_columns ? 5 : 4;
    if (free_at > now) {
        Named(x, "TX", name_width, SmallText("busy %u", free_at - now));
    } else {
        Named(x, "TX", name_width, "free");
    }
}

void CardPanel::Pen::Timer(int x) const {
    const kp::Processor& card = run.Card();
    if (card.TimerHasRunOut()) {
        canvas.Text(x, y, "Timer ran out", Role::Warn);
        return;
    }
    if (!card.TimerRuns() || run.Session() == nullptr) {
        Named(x, "TIMER", 6, "stopped");
        return;
    }
    const kp::Tick now = run.CardTick();
    const kp::Tick left = card.TimerDeadline() - std::min(card.TimerDeadline(), now);
    Named(x, "TIMER", 6, SmallText("%u of %d left", left, run.TimerTicks()));
}

void CardPanel::Pen::Stack(int x) const {
    if (config.stack == 0) {
        Named(x, "STACK", 6, "none");
        return;
    }
    const auto stack = run.Card().Stack();
    x = Named(x, "STACK", 6, SmallText("%zu of %d", stack.size(), config.stack));
    List(x + 1, static_cast<int>(stack.size()),
         [&](int i) { return SmallText(" %d", run.LineOf(stack[static_cast<std::size_t>(i)])); });
}

void CardPanel::Pen::Buffer(int x) const {
    const kp::Processor& card = run.Card();
    x = Named(x, "RX", 6, SmallText("%d of %d", card.BytesWaiting(), config.rx_buffer),
              marks.limit == "rx-buffer");
    List(x + 1, card.BytesWaiting(),
         [&](int i) { return SmallText(" %02X", static_cast<unsigned>(card.WaitingByte(i))); });
}

// Items in the rest of the row. Where they do not fit, the more mark stands at its end and the row
// gives the whole list as its hint.
template <class Each>
void CardPanel::Pen::List(int x, int count, Each each) const {
    const int start = x;
    for (int i = 0; i < count; ++i) {
        const SmallText item = each(i);
        const int width = static_cast<int>(std::string_view(item).size());
        if (x + width <= right - (i + 1 < count ? 2 : 0)) {
            x = canvas.Text(x, y, item, Role::Panel);
            continue;
        }
        canvas.Put(right - 1, y, U'»', Role::PanelDim);
        std::string whole;
        for (int k = 0; k < count; ++k) whole += std::string_view(each(k));
        pressables.Add({start, y, right - start, 1}, whole);
        return;
    }
}

void CardPanel::Pen::RamRow(int x, int first) const {
    const auto ram = run.Card().Ram();
    x = canvas.Text(x, y, SmallText("%3d", first), Role::PanelDim);
    const int last = std::min(first + cells, config.ram);
    for (int cell = first; cell < last; ++cell) {
        const auto index = static_cast<std::size_t>(cell);
        const bool changed = run.Session() != nullptr && ram[index] != run.WordsBefore().ram[index];
        x = canvas.Text(x, y, SmallText(" %04X", ram[index]),
                        changed ? Role::PanelBright : Role::Panel);
    }
}

}  // namespace Kest
