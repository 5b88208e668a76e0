#include "trace_drawing.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace Kest {
namespace {

using kp::Happening;
using kp::Tick;
using zo::ui::Role;
using zo::ui::Style;

constexpr int kLeastNumberSpacing = 8;  // cells between two tick numbers
constexpr std::u32string_view kFail = U"FAIL";

// How a card's tick looks; the most telling of several ticks has the highest rank.
struct CardLook {
    char32_t glyph;
    Role role;
    int rank;
};
CardLook LookOf(kp::CardState state) {
    switch (state) {
        case kp::CardState::Faulted:
            return {U'█', Role::FaultMark, 4};
        case kp::CardState::Running:
            return {U'█', Role::LaneRun, 3};
        case kp::CardState::WaitingByte:
        case kp::CardState::WaitingHost:
        case kp::CardState::WaitingTransmitter:
            return {U'▄', Role::LaneWait, 2};
        case kp::CardState::InWait:
            return {U'░', Role::LaneWait, 1};
        case kp::CardState::Halted:
            break;
    }
    return {U' ', Role::Lane, 0};
}

// The smallest step of 1, 2, 5, 10, 20, 50 .. ticks that keeps the numbers apart.
std::int64_t NumberStep(const Zoom& zoom) {
    constexpr std::array<int, 3> kFactors = {1, 2, 5};
    for (std::int64_t decade = 1;; decade *= 10) {
        for (const int factor : kFactors) {
            if (factor * decade * zoom.cells >= std::int64_t{kLeastNumberSpacing} * zoom.ticks) {
                return factor * decade;
            }
        }
    }
}

// Takes a number away whole that would be covered in part from this column on.
void BlankNumber(std::span<TraceCell> ticks, int at, int step) {
    const auto end = static_cast<int>(ticks.size());
    for (; at >= 0 && at < end && ticks[static_cast<std::size_t>(at)].glyph != U' '; at += step) {
        ticks[static_cast<std::size_t>(at)].glyph = U' ';
    }
}

}  // namespace

int RankOf(kp::CardState state) {
    return LookOf(state).rank;
}

Tick DeadlineOpens(std::span<const kp::TraceEvent> events, const kp::TimingWindow& window) {
    auto event = std::ranges::upper_bound(events, window.from, {}, &kp::TraceEvent::tick);
    while (event != events.begin()) {
        --event;
        if (event->kind == Happening::Transmitted) return std::max(window.from, event->tick + 2);
    }
    return window.from;
}

std::optional<int> TraceDrawing::ColumnOf(Tick tick) const {
    const std::int64_t column = view.Column(tick);
    if (!Sees(column)) return std::nullopt;
    return static_cast<int>(column);
}

std::span<const kp::TraceEvent> TraceDrawing::Events() const {
    const auto tick_of = &kp::TraceEvent::tick;
    const auto from = std::ranges::lower_bound(data.events, view.first, {}, tick_of);
    const auto to = std::ranges::lower_bound(from, data.events.end(), view.first + view.Span(width),
                                             {}, tick_of);
    return {from, to};
}

bool TraceDrawing::IsWrong(const kp::TraceEvent& event, std::span<const SpecByte> called_for) {
    return event.index >= called_for.size() || called_for[event.index].byte != (event.value & 0xFF);
}

void TraceDrawing::DrawNumbers(std::span<TraceCell> row) const {
    const std::int64_t step = NumberStep(view.Scale());
    const std::int64_t first = (view.first + step - 1) / step * step;
    for (std::int64_t tick = first; tick <= std::numeric_limits<Tick>::max(); tick += step) {
        std::array<char, 12> digits;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), tick).ptr;
        const std::int64_t column = view.Column(static_cast<Tick>(tick));
        if (column + (end - digits.data()) > width) break;
        for (const char* digit = digits.data(); digit != end; ++digit) {
            row[static_cast<std::size_t>(column + (digit - digits.data()))].glyph =
                static_cast<char32_t>(*digit);
        }
    }
}

void TraceDrawing::DrawCursor(std::span<TraceCell> ticks, std::span<TraceCell> cells,
                              int rows) const {
    const std::optional<int> column = data.cursor ? ColumnOf(*data.cursor) : std::nullopt;
    if (!column) return;
    BlankNumber(ticks, *column, 1);
    BlankNumber(ticks, *column - 1, -1);
    ticks[static_cast<std::size_t>(*column)].glyph = U'▼';
    for (int row = 0; row < rows; ++row) {
        cells[static_cast<std::size_t>(row * width + *column)].role = Role::Cursor;
    }
}

void TraceDrawing::DrawFailure(std::span<TraceCell> ticks, std::span<TraceCell> cells,
                               int rows) const {
    const std::optional<int> column = data.failed ? ColumnOf(*data.failed) : std::nullopt;
    if (!column) return;
    const int length = static_cast<int>(kFail.size());
    const int start = std::clamp(*column, 0, std::max(0, width - length));
    BlankNumber(ticks, start - 1, -1);
    BlankNumber(ticks, start + length, 1);
    for (int i = 0; i < length && start + i < width; ++i) {
        ticks[static_cast<std::size_t>(start + i)] = {kFail[static_cast<std::size_t>(i)],
                                                      Role::Fault, Style::Plain};
    }
    for (int row = 1; row < rows; ++row) {
        TraceCell& cell = cells[static_cast<std::size_t>(row * width + *column)];
        if (cell.glyph != U' ') continue;
        cell.glyph = U'│';
        if (cell.role != Role::Cursor) cell.role = Role::FaultMark;
    }
}

void TraceDrawing::DrawBrackets(std::span<TraceCell> row) const {
    const auto draw = [&](Tick tick, char32_t bracket) {
        if (const auto column = ColumnOf(tick)) {
            row[static_cast<std::size_t>(*column)] = {bracket, Role::LaneTime, Style::Plain};
        }
    };
    for (const kp::TimingWindow& window : data.windows) {
        if (window.kind == kp::WindowKind::Earliest) {
            draw(window.until, U'[');
        } else {
            draw(DeadlineOpens(data.events, window), U'[');
            draw(window.until, U']');
        }
    }
}

void TraceDrawing::DrawLooseNotes(std::span<TraceCell> row) const {
    for (const kp::FarEndNote& note : data.notes) {
        const auto column = ColumnOf(note.tick);
        // A far end may announce what the run has not come to.
        if (!column || note.tick >= data.card.size()) continue;
        TraceCell& cell = row[static_cast<std::size_t>(*column)];
        if (cell.glyph == U' ') cell = {U'♦', Role::LaneRx, Style::Plain};
    }
}

void TraceDrawing::DrawTimer(std::span<TraceCell> row) const {
    char32_t fill = U' ';
    int filled = 0;  // columns up to here stand as they are
    const auto fill_to = [&](std::int64_t column) {
        for (; filled < std::min<std::int64_t>(column, width); ++filled) {
            row[static_cast<std::size_t>(filled)] = {fill, Role::LaneTime, Style::Plain};
        }
    };
    std::optional<Tick> ran_out;
    for (const kp::TraceEvent& event : data.events) {
        char32_t sign = 0;
        char32_t then = U' ';
        switch (event.kind) {
            case Happening::TimerStarted:
                sign = U'├', then = U'─';
                break;
            case Happening::TimerStopped:
                sign = fill == U'─' ? U'┘' : U' ';
                break;
            case Happening::TimerRanOut:
                sign = U'┤', then = U'·', ran_out = event.tick;
                break;
            case Happening::TookTarget:
                sign = ran_out == event.tick ? U'┤' : U'►';
                break;
            default:
                continue;
        }
        const std::int64_t column = view.Column(event.tick);
        fill_to(std::max<std::int64_t>(column, 0));
        fill = then;
        if (!Sees(column)) continue;
        row[static_cast<std::size_t>(column)] = {sign, Role::LaneTime, Style::Plain};
        filled = static_cast<int>(column) + 1;
    }
    fill_to(view.Column(static_cast<Tick>(data.card.size())));
}

void TraceDrawing::DrawCard(std::span<TraceCell> row) const {
    const Zoom& zoom = view.Scale();
    const std::size_t last =
        std::min<std::size_t>(data.card.size(), std::size_t{view.first} + view.Span(width));
    int column_rank = -1;
    int column = -1;
    for (std::size_t tick = view.first; tick < last; ++tick) {
        const int at = static_cast<int>(view.Column(static_cast<Tick>(tick)));
        const CardLook look = LookOf(data.card[tick].state);
        if (at == column && look.rank <= column_rank) continue;
        column = at;
        column_rank = look.rank;
        for (int i = at; i < std::min(at + zoom.cells, width); ++i) {
            row[static_cast<std::size_t>(i)] = {look.glyph, look.role, Style::Plain};
        }
    }
}

}  // namespace Kest
