#include <array>

#include "bench/bench.h"
#include "shell/shell.h"
#include "small_text.h"
#include "ui/widgets.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Edge;
using zo::ui::FrameLine;
using zo::ui::Label;
using zo::ui::Point;
using zo::ui::Pressables;
using zo::ui::Rect;
using zo::ui::Role;

constexpr std::array<Panel, 6> kFramed = {Panel::Ticket, Panel::Hints, Panel::Card,
                                          Panel::Spec,   Panel::Host,  Panel::Notes};

struct PanelName {
    std::string_view title;
    std::string_view tab;  // its Alt key's letter marked
};
PanelName NameOf(Panel panel) {
    switch (panel) {
        case Panel::Ticket:
            return {"TICKET", "~T~ICKET"};
        case Panel::Hints:
            return {"HINTS", "~H~INTS"};
        case Panel::Spec:
            return {"SPEC", "~S~PEC"};
        case Panel::Host:
            return {"HOST", "H~O~ST"};
        case Panel::Notes:
            return {"NOTES", "~N~OTES"};
        case Panel::Card:
            return {"CARD", ""};
        default:
            return {};
    }
}

}  // namespace

void Bench::LayOut(int columns, int rows) {
    const bool coached = Coach() != nullptr;
    if (columns == shape_.columns && rows == shape_.rows && coached == shape_.coached) return;
    shape_.coached = coached;
    shape_.columns = columns;
    shape_.rows = rows;
    shape_.lanes = trace_.Lanes();
    shape_.host = HasHostTraffic(loaded_);
    shape_.card_rows = CardPanel::RowCount(loaded_.ticket.machine, CardPaneWidth(columns, rows));
    layout_ = LayOutBench(shape_);
    panes_.SetLayout(layout_);
    trace_.SetWidth(layout_.ticks.width);
}

void Bench::Draw(Canvas& canvas, Pressables& pressables) {
    LayOut(canvas.Columns(), canvas.Rows());
    if (const kp::CoachEntry* entry = Coach()) {
        BeCoached(*entry);
    } else {
        StopCoaching();
    }
    DrawFirmware(canvas, pressables);
    for (const Panel panel : kFramed) {
        if (panes_.InFront(panel)) DrawPanel(canvas, pressables, panel);
    }
    strip_.Draw(canvas, pressables, layout_, run_, stage_, panes_.HasFocus(Panel::Strip));
    TakeFocus(pressables, Panel::Trace);
    trace_.Draw(canvas, pressables, layout_, run_, panes_.HasFocus(Panel::Trace));
    DrawCoach(canvas);
}

// A press anywhere in a panel gives it the focus, whatever else the press does.
void Bench::TakeFocus(Pressables& pressables, Panel panel) {
    pressables.Add(layout_.Of(panel)).focus = [this, panel] { panes_.Focus(panel); };
}

void Bench::DrawFirmware(Canvas& canvas, Pressables& pressables) {
    const Rect& pane = layout_.Of(Panel::Firmware);
    const bool focused = panes_.HasFocus(Panel::Firmware);
    FrameLine top = zo::ui::DrawPane(canvas, pane, "FIRMWARE", focused);
    top.Left(" " + std::string(editor_.Chip()) + " ", Role::Chip);
    const kp::Assembly& firmware = run_.Firmware();
    if (const std::size_t errors = firmware.errors.size(); errors > 0) {
        top.Right(SmallText(" ! %zu error%s ", errors, errors == 1 ? "" : "s"), Role::Fault);
    } else {
        top.Right(SmallText(" ROM %d of %d%s", firmware.lines, loaded_.ticket.machine.rom,
                            marks_rom_ ? "◄" : " "),
                  marks_rom_ ? Role::CoachMark : Role::PanelDim);
        top.Right(" Assembled ", Role::PanelDim, 0);
    }
    const zo::ui::TextPosition caret = editor_.CaretAt();
    FrameLine bottom(canvas, pane, Edge::Bottom);
    bottom.Right(SmallText(" Ln %d, Col %d ", caret.line + 1, caret.column + 1), Role::PanelDim);
    TakeFocus(pressables, Panel::Firmware);
    if (stage_ >= StageOf(Command::FirstSlot)) DrawSlots(bottom, pressables);
    editor_.Draw(canvas, pressables, pane, focused);
}

// The slots as tabs, the one on the bench with a star while it is not saved.
void Bench::DrawSlots(FrameLine& line, Pressables& pressables) {
    line.Left(" Slot ", Role::PanelDim);
    for (int slot = 1; slot <= kFirmwareSlots; ++slot) {
        const bool chosen = slot == slot_;
        const char* const end = !chosen ? "  " : dirty_ ? "*]" : "] ";
        const SmallText tab("%c%d%s", chosen ? '[' : ' ', slot, end);
        const auto area = line.Left(tab, chosen ? Role::TabOn : Role::Tab, 0);
        if (area) pressables.Add(*area).act = [this, slot] { UseSlot(slot); };
    }
}

void Bench::DrawPanel(Canvas& canvas, Pressables& pressables, Panel panel) {
    const Rect& pane = layout_.Of(panel);
    TakeFocus(pressables, panel);
    DrawPanelFrame(canvas, pressables, panel);
    switch (panel) {
        case Panel::Ticket:
            ticket_.Draw(canvas, pressables, pane, panes_.HasFocus(panel));
            break;
        case Panel::Hints:
            // The button has the last row to itself.
            hints_.Draw(canvas, pressables, {pane.x, pane.y, pane.width, pane.height - 1});
            DrawHintButton(canvas, pressables, pane);
            break;
        case Panel::Card:
            card_.Draw(canvas, pressables, pane, run_);
            break;
        case Panel::Spec:
            spec_.Draw(canvas, pressables, pane, run_);
            break;
        case Panel::Host:
            host_.Draw(canvas, pressables, pane, run_);
            break;
        case Panel::Notes:
            notes_.Draw(canvas, pressables, pane, panes_.HasFocus(panel));
            break;
        default:
            break;
    }
}

void Bench::DrawPanelFrame(Canvas& canvas, Pressables& pressables, Panel panel) {
    const Rect& pane = layout_.Of(panel);
    const bool focused = panes_.HasFocus(panel);
    const bool narrow_card = panel == Panel::Card && panes_.IsTab(panel);
    if (panes_.IsTab(panel) && !narrow_card) {
        zo::ui::DrawPane(canvas, pane, "", focused);
        DrawTabs(canvas, pressables, panel);
        return;
    }
    FrameLine top = zo::ui::DrawPane(canvas, pane, NameOf(panel).title, focused);
    if (narrow_card) top.Right(" F2 ", focused ? Role::TitleActive : Role::Title);
    if (panel == Panel::Notes) {
        if (const auto ticks = trace_.CursorTicks()) {
            top.LeftTitle(RangeText(*ticks), focused ? Role::TitleActive : Role::Title);
        }
    }
    if (panel == Panel::Hints) {
        top.Left(SmallText(" %d of %zu ", HintsShown(), loaded_.ticket.hints.size()),
                 focused ? Role::TitleActive : Role::Title);
    }
}

// The names of the panels that share a pane, the one in front in brackets.
void Bench::DrawTabs(Canvas& canvas, Pressables& pressables, Panel panel) {
    const Rect& pane = layout_.Of(panel);
    std::vector<Panel> panels;
    std::vector<zo::ui::Tab> tabs;
    int chosen = 0;
    for (const Panel other : kFramed) {
        if (other == Panel::Card || layout_.Of(other) != pane) continue;
        if (other == panel) chosen = static_cast<int>(tabs.size());
        panels.push_back(other);
        tabs.push_back({NameOf(other).tab});
    }
    FrameLine line(canvas, pane, Edge::Top, 1);
    zo::ui::DrawTabs(line, canvas, pressables, tabs, chosen, [this, panels](int tab) {
        panes_.Raise(panels[static_cast<std::size_t>(tab)]);
    });
}

void Bench::DrawHintButton(Canvas& canvas, Pressables& pressables, const Rect& pane) {
    const zo::ui::Button button{
        .label = "Show hint",
        .hint = "The next hint.",
        .form = zo::ui::ButtonForm::Flat,
        .enabled = HintsShown() < static_cast<int>(loaded_.ticket.hints.size()),
        .focused = panes_.HasFocus(Panel::Hints)};
    const Point at{pane.Right() - 2 - zo::ui::ButtonCells(button), pane.Bottom() - 2};
    zo::ui::DrawButton(canvas, pressables, at, button, [this] { ShowNextHint(); });
}

}  // namespace Kest
