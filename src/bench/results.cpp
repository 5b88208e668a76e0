#include "bench/results.h"

#include <algorithm>

#include "base/format.h"
#include "base/wrap.h"
#include "bench/bench_commands.h"
#include "score_chart.h"
#include "small_text.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::KeyPress;
using zo::ui::Point;
using zo::ui::Rect;
using zo::ui::Role;

constexpr int kWidth = 60;
constexpr int kWidthUnderReference = 70;  // for the longer remark behind a score
constexpr int kRemarkRow = 9;
constexpr int kLeastRemarks = 2;
constexpr int kChartFrom = 36;  // rows of the screen
constexpr int kMostChart = 10;
constexpr std::size_t kLeastHistory = 2;  // verifies that are worth a chart
constexpr int kBarRows = 4;  // of the screen's bars, and its shadow's and a blank one's
// The table's rows come one after the other. Its columns: where the name starts, where the numbers
// end, where the remark starts.
constexpr int kScoreRows = 3;
constexpr double kSecondsPerRow = 0.12;
constexpr int kName = 3, kThisRun = 22, kBest = 32, kReference = 43, kRemark = 46;
constexpr KeyPress kCopyCard = {.key = zo::ui::Key::Character, .character = U'c'};
constexpr int kBurnInRemark = kThisRun + 2;  // it has no best and no reference

// The keys that a raised stage has opened; empty when it opened none.
std::string NewKeys(const Shell& shell, const PassedDeck& deck) {
    const int stage_now = shell.Unlocking().Stage();
    std::string keys;
    for (const BenchKey& key : BenchKeys()) {
        const bool opened = key.stage > deck.stage_before && key.stage <= stage_now;
        const bool named = IsListed(key, deck.columns) || key.command == Command::Reset ||
                           key.command == Command::StepBack;
        if (!opened || !named) continue;
        if (key.command == Command::Binder && !shell.Offers(Place::Binder)) continue;
        keys += keys.empty() ? "New keys: " : ", ";
        keys += zo::ui::KeyName(key.key) + " ";
        keys += key.word;
    }
    return keys.empty() ? keys : keys + ".";
}

// The tickets that the close has opened; empty when it opened none.
std::string OpenedTickets(const Shell& shell, const PassedDeck& deck) {
    Progress before = shell.Progress();
    if (deck.closed.first) before.tickets[deck.loaded.ticket.id].closed = false;
    const Unlocking now = shell.Unlocking();
    const Unlocking then{now.content, before, now.open_all};
    std::string names;
    for (const kp::LoadedTicket* loaded : now.content.Tickets()) {
        const kp::Ticket& ticket = loaded->ticket;
        if (!now.IsTicketOpen(ticket.id) || then.IsTicketOpen(ticket.id)) continue;
        names +=
            (names.empty() ? "Open now: " : ", ") + ticket.id.substr(0, 4) + " " + ticket.title;
    }
    return names.empty() ? names : names + ".";
}

// One line, which counts the achievements that it has no room to name.
std::string EarnedText(const std::vector<const Achievement*>& earned, int cells) {
    if (earned.empty()) return {};
    std::string text = earned.size() == 1 ? "Achievement: " : "Achievements: ";
    for (std::size_t i = 0; i < earned.size(); ++i) {
        const std::size_t left = earned.size() - i;
        std::string longer = text + (i > 0 ? ", " : "");
        longer += earned[i]->title;
        const std::string rest = base::Format(" and %zu more", left);
        const std::size_t reserved = left > 1 ? rest.size() : 0;
        if (longer.size() + reserved > static_cast<std::size_t>(cells)) return text + rest;
        text = std::move(longer);
    }
    return text;
}

}  // namespace

ResultsSummary SumUp(Shell& shell, const PassedDeck& deck) {
    const kp::Ticket& ticket = deck.loaded.ticket;
    const TicketRecord& record = shell.Progress().tickets.find(ticket.id)->second;
    const Unlocking unlocking = shell.Unlocking();
    ResultsSummary summary;
    summary.first_close = deck.closed.first;
    summary.ticket = ticket.id.substr(0, 4) + " " + ticket.title;
    summary.passed = deck.verify.passed;
    summary.total = deck.verify.total;
    summary.ticks = {static_cast<int>(deck.verify.ticks), record.best_ticks,
                     static_cast<int>(deck.loaded.reference.ticks)};
    summary.lines = {deck.verify.lines, record.best_lines, deck.loaded.reference.lines};
    const auto remark = [&](const std::string& text, Role role = Role::Dialog) {
        if (text.empty()) return;
        for (std::string& line : base::WrapEven(text, kWidth - 2 * kName)) {
            summary.remarks.push_back({std::move(line), role});
        }
    };
    remark(EarnedText(deck.closed.earned, kWidth - 2 * kName), Role::ChipWarn);
    remark(base::Format("Closed in shift %d: %d of %d", ticket.shift,
                        unlocking.ClosedCount(ticket.shift),
                        unlocking.RequiredCount(ticket.shift)));
    remark(OpenedTickets(shell, deck));
    remark(NewKeys(shell, deck));
    summary.history = shell.LoadHistory(ticket.id);
    summary.next = unlocking.NextTicket(ticket.id);
    summary.offers_board = unlocking.Stage() >= 1;
    return summary;
}

Results::Results(Shell& shell, ResultsSummary summary)
    : Screen(shell), summary_(std::move(summary)) {
    SetButtons();
}

void Results::SetButtons() {
    std::vector<zo::ui::ButtonRow::Item> items;
    if (summary_.next != nullptr && shell_.Offers(Place::Bench)) {
        items.push_back({"~N~ext ticket", "Opens " + summary_.next->ticket.title + " on the bench.",
                         [this] { shell_.Open(Place::Bench, summary_.next->ticket.id); }});
    }
    offers_miss_ = HasMiss();
    if (offers_miss_) {
        items.push_back({base::Format("~S~eed %u", summary_.burn_in->FirstMiss()->draw),
                         "The draw that failed, as a test.", [this] {
                             shell_.CloseOverlay();
                             summary_.open_miss();
                         }});
    }
    items.push_back({"~K~eep editing", "Back to the firmware.", [this] { shell_.CloseOverlay(); }});
    if (summary_.offers_board && shell_.Offers(Place::Board)) {
        items.push_back(
            {"Ticket ~b~oard", "Shifts and tickets.", [this] { shell_.Open(Place::Board); }});
    }
    buttons_.Set(std::move(items));
}

bool Results::HasMiss() const {
    return summary_.burn_in != nullptr && summary_.burn_in->FirstMiss().has_value();
}

void Results::Entered() {
    opened_at_ = shell_.Now();
    rows_shown_ = shell_.Settings().motion ? 1 : kScoreRows;
}

void Results::Update(double now) {
    if (HasMiss() && !offers_miss_) SetButtons();
    const int due = 1 + static_cast<int>((now - opened_at_) / kSecondsPerRow);
    if (due <= rows_shown_ || rows_shown_ == kScoreRows) return;
    rows_shown_ = std::min(due, kScoreRows);
    shell_.RequestRedraw();
}

std::optional<double> Results::NextFrameAt() const {
    if (rows_shown_ == kScoreRows) return std::nullopt;
    return opened_at_ + rows_shown_ * kSecondsPerRow;
}

bool Results::IsUnderReference() const {
    return summary_.ticks.this_run < summary_.ticks.reference ||
           summary_.lines.this_run < summary_.lines.reference;
}

void Results::Draw(Canvas& canvas, zo::ui::Pressables& pressables) {
    const int chart = ChartRows(canvas.Rows());
    const int remark_row = kRemarkRow + (summary_.burn_in == nullptr ? 0 : 1);
    const int remarks = std::max(static_cast<int>(summary_.remarks.size()), kLeastRemarks);
    const int width = IsUnderReference() ? kWidthUnderReference : kWidth;
    const Rect box = zo::ui::OverlayRect(canvas.Columns(), canvas.Rows(), width,
                                         remark_row + remarks + 5 + chart);
    zo::ui::DrawOverlay(canvas, box, "VERIFY");
    canvas.Text(box.x + kName, box.y + 2,
                SmallText("%d of %d passed%s", summary_.passed, summary_.total,
                          summary_.first_close ? ". First solve." : ""),
                Role::Dialog);
    DrawScores(canvas, box);
    for (std::size_t i = 0; i < summary_.remarks.size(); ++i) {
        const ResultsSummary::Remark& remark = summary_.remarks[i];
        canvas.Text(box.x + kName, box.y + remark_row + static_cast<int>(i), remark.text,
                    remark.role);
    }
    if (chart > 0) {
        const Rect area = {box.x + kName, box.Bottom() - 4 - chart, box.width - 2 * kName,
                           chart - 1};
        DrawScoreChart(canvas, area, {summary_.history, Par()});
    }
    canvas.Separator(box, box.Bottom() - 4, zo::ui::Lines::Double, Role::DialogFrame);
    buttons_.Draw(canvas, pressables, {box.x + 1, box.Bottom() - 3, box.width - 2, 1});
}

Scores Results::Par() const {
    return {summary_.lines.reference, summary_.ticks.reference};
}

// Of the chart with a blank row under it; none where it has no room, or nothing to compare.
int Results::ChartRows(int rows) const {
    if (rows < kChartFrom || summary_.history.size() < kLeastHistory) return 0;
    const int remarks = std::max(static_cast<int>(summary_.remarks.size()), kLeastRemarks);
    const int left = rows - (kRemarkRow + 1 + remarks + 5) - kBarRows - kChartAround - 1;
    return left < kLeastChart ? 0 : std::min(left, kMostChart) + kChartAround + 1;
}

void Results::DrawScores(Canvas& canvas, const Rect& box) const {
    int y = box.y + 4;
    canvas.TextRight(box.x + kThisRun, y, "This run", Role::DialogDim);
    canvas.TextRight(box.x + kBest, y, "Best", Role::DialogDim);
    canvas.TextRight(box.x + kReference, y, "Reference", Role::DialogDim);
    ++y;
    const SmallText tests("%d of %d", summary_.passed, summary_.total);
    canvas.Text(box.x + kName, y, "Tests", Role::Dialog);
    for (const int right : {kThisRun, kBest, kReference}) {
        canvas.TextRight(box.x + right, y, tests, Role::Dialog);
    }
    if (rows_shown_ > 1) DrawScore(canvas, {box.x, y + 1}, "Ticks", summary_.ticks);
    if (rows_shown_ > 2) DrawScore(canvas, {box.x, y + 2}, "Lines", summary_.lines);
    if (summary_.burn_in != nullptr) DrawBurnIn(canvas, {box.x, y + 3});
}

// A miss takes nothing back.
void Results::DrawBurnIn(Canvas& canvas, Point at) const {
    const kp::BurnIn& burn_in = *summary_.burn_in;
    canvas.Text(at.x + kName, at.y, "Burn-in", Role::Dialog);
    canvas.TextRight(at.x + kThisRun, at.y,
                     SmallText("%u of %u", burn_in.Passed(), burn_in.Draws()), Role::Dialog);
    if (!burn_in.Finished()) return;
    if (HasMiss()) {
        canvas.Text(at.x + kBurnInRemark, at.y, "! fresh bytes fail; the close stands",
                    Role::ChipWarn);
    } else {
        canvas.Text(at.x + kBurnInRemark, at.y, "√ with fresh bytes", Role::ChipOk);
    }
}

void Results::DrawScore(Canvas& canvas, Point at, std::string_view name,
                        const ResultsSummary::Score& score) const {
    canvas.Text(at.x + kName, at.y, name, Role::Dialog);
    canvas.TextRight(at.x + kThisRun, at.y, SmallText("%d", score.this_run), Role::Dialog);
    canvas.TextRight(at.x + kBest, at.y, SmallText("%d", score.best), Role::Dialog);
    canvas.TextRight(at.x + kReference, at.y, SmallText("%d", score.reference), Role::Dialog);
    if (score.this_run > score.reference) return;
    const bool under = score.this_run < score.reference;
    canvas.Text(at.x + kRemark, at.y, under ? "√ under the reference" : "√ at par", Role::ChipOk);
}

void Results::DescribeFrame(FrameRecord& record) const {
    record.title = "VERIFY";
    record.place = summary_.ticket;
    record.right = buttons_.FocusedHint();
    record.keys.push_back({{}, "←→", "Choose"});
    record.keys.push_back({{.key = zo::ui::Key::Enter}, "", "Press"});
    record.keys.push_back({kCopyCard, "", "Copy card"});
    record.keys.push_back({{.key = zo::ui::Key::Escape}, "", "Keep editing"});
}

bool Results::Key(const KeyPress& key) {
    rows_shown_ = kScoreRows;
    if (key.Is(zo::ui::Key::Escape)) {
        shell_.CloseOverlay();
        return true;
    }
    if (key == kCopyCard) {
        if (summary_.copy_card) summary_.copy_card();
        return true;
    }
    buttons_.Key(key);
    return true;
}

}  // namespace Kest
