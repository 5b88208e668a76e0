#include "bench/trace_cells.h"

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
constexpr int kRoomForCharacter = 7;    // $48'H'
constexpr int kRoomForDollar = 4;       // $48 and a blank
constexpr std::u32string_view kFail = U"FAIL";

bool IsBracket(char32_t glyph) {
    return glyph == U'[' || glyph == U']';
}

char32_t HexDigit(int value) {
    return U"0123456789ABCDEF"[value & 0xF];
}

bool IsTwoDigits(int room) {
    return room >= 2 && room < kRoomForDollar;
}

// Writes a byte as the room allows: "$48'H'", "$48", "48" or a point. `like` gives its colours.
void WriteByte(std::span<TraceCell> row, int room, std::uint8_t byte, const TraceCell& like) {
    std::size_t length = 0;
    const auto put = [&](char32_t glyph) {
        row[length] = like;
        row[length++].glyph = glyph;
    };
    if (room < 2) return put(U'•');
    if (room >= kRoomForDollar) put(U'$');
    put(HexDigit(byte >> 4));
    put(HexDigit(byte));
    if (room < kRoomForCharacter || byte < 32 || byte > 126) return;
    put(U'\'');
    put(byte);
    put(U'\'');
}

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

// The first tick from which on a deadline is worth drawing: its byte cannot follow the one before
// at once.
Tick DeadlineOpens(std::span<const kp::TraceEvent> events, const kp::TimingWindow& window) {
    auto event = std::ranges::upper_bound(events, window.from, {}, &kp::TraceEvent::tick);
    while (event != events.begin()) {
        --event;
        if (event->kind == Happening::Transmitted) return std::max(window.from, event->tick + 2);
    }
    return window.from;
}

bool HasNote(std::span<const kp::FarEndNote> notes, Tick tick) {
    return std::ranges::any_of(notes,
                               [tick](const kp::FarEndNote& note) { return note.tick == tick; });
}

}  // namespace

std::int64_t TraceView::Column(Tick tick) const {
    const Zoom& zoom = Scale();
    const std::int64_t ticks = std::int64_t{tick} - std::int64_t{first};
    return ticks < 0 ? -1 : ticks * zoom.cells / zoom.ticks;
}

Tick TraceView::Span(int width) const {
    const Zoom& zoom = Scale();
    return static_cast<Tick>((width * zoom.ticks + zoom.cells - 1) / zoom.cells);
}

struct TraceCells::Drawing {
    const TraceData& data;
    const TraceView& view;
    int width;

    bool Sees(std::int64_t column) const { return column >= 0 && column < width; }
    std::optional<int> ColumnOf(Tick tick) const {
        const std::int64_t column = view.Column(tick);
        if (!Sees(column)) return std::nullopt;
        return static_cast<int>(column);
    }
    // The events of the ticks in sight.
    std::span<const kp::TraceEvent> Events() const {
        const auto from =
            std::ranges::lower_bound(data.events, view.first, {}, &kp::TraceEvent::tick);
        const auto to = std::ranges::lower_bound(
            from, data.events.end(), view.first + view.Span(width), {}, &kp::TraceEvent::tick);
        return {from, to};
    }

    void DrawNumbers(std::span<TraceCell> row) const;
    void DrawFailure(std::span<TraceCell> ticks, std::span<TraceCell> cells, int rows) const;
    void DrawBrackets(std::span<TraceCell> row) const;
    void DrawLooseNotes(std::span<TraceCell> row) const;
    void DrawTimer(std::span<TraceCell> row) const;
    void DrawCard(std::span<TraceCell> row) const;
    bool IsWrong(const kp::TraceEvent& event, std::span<const SpecByte> called_for) const {
        return event.index >= called_for.size() ||
               called_for[event.index].byte != (event.value & 0xFF);
    }
};

void TraceCells::Drawing::DrawNumbers(std::span<TraceCell> row) const {
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

// A number that the word would cover in part is taken away whole.
void TraceCells::Drawing::DrawFailure(std::span<TraceCell> ticks, std::span<TraceCell> cells,
                                      int rows) const {
    const std::optional<int> column = data.failed ? ColumnOf(*data.failed) : std::nullopt;
    if (!column) return;
    const int length = static_cast<int>(kFail.size());
    const int start = std::clamp(*column, 0, std::max(0, width - length));
    const auto blank = [&](int at, int step) {
        for (; Sees(at) && ticks[static_cast<std::size_t>(at)].glyph != U' '; at += step) {
            ticks[static_cast<std::size_t>(at)].glyph = U' ';
        }
    };
    blank(start - 1, -1);
    blank(start + length, 1);
    for (int i = 0; i < length && start + i < width; ++i) {
        ticks[static_cast<std::size_t>(start + i)] = {kFail[static_cast<std::size_t>(i)],
                                                      Role::Fault, Style::Plain};
    }
    for (int row = 1; row < rows; ++row) {
        TraceCell& cell = cells[static_cast<std::size_t>(row * width + *column)];
        if (cell.glyph == U' ') cell = {U'│', Role::FaultMark, Style::Plain};
    }
}

void TraceCells::Drawing::DrawBrackets(std::span<TraceCell> row) const {
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

void TraceCells::Drawing::DrawLooseNotes(std::span<TraceCell> row) const {
    for (const kp::FarEndNote& note : data.notes) {
        const auto column = ColumnOf(note.tick);
        // A far end may announce what the run has not come to.
        if (!column || note.tick >= data.card.size()) continue;
        TraceCell& cell = row[static_cast<std::size_t>(*column)];
        if (cell.glyph == U' ') cell = {U'♦', Role::LaneRx, Style::Plain};
    }
}

void TraceCells::Drawing::DrawTimer(std::span<TraceCell> row) const {
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

void TraceCells::Drawing::DrawCard(std::span<TraceCell> row) const {
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

void TraceCells::Draw(const TraceData& data, std::span<const Lane> lanes, const TraceView& view,
                      int width) {
    width_ = std::max(width, 1);
    rows_ = static_cast<int>(lanes.size()) + 1;
    cells_.assign(static_cast<std::size_t>(width_ * rows_), TraceCell{});
    const Drawing drawing{data, view, width_};
    drawing.DrawNumbers(MutableRow(0));
    for (std::size_t i = 0; i < lanes.size(); ++i) {
        DrawLane(drawing, lanes[i], MutableRow(static_cast<int>(i) + 1));
    }
    drawing.DrawFailure(MutableRow(0), cells_, rows_);
}

std::span<const TraceCell> TraceCells::Row(int row) const {
    return std::span(cells_).subspan(static_cast<std::size_t>(row * width_),
                                     static_cast<std::size_t>(width_));
}

std::span<TraceCell> TraceCells::MutableRow(int row) {
    return std::span(cells_).subspan(static_cast<std::size_t>(row * width_),
                                     static_cast<std::size_t>(width_));
}

void TraceCells::DrawLane(const Drawing& drawing, Lane lane, std::span<TraceCell> row) {
    marks_.clear();
    switch (lane) {
        case Lane::Timer:
            drawing.DrawTimer(row);
            return;
        case Lane::Card:
            drawing.DrawCard(row);
            return;
        case Lane::SpecTx:
            drawing.DrawBrackets(row);
            CollectSpec(drawing, drawing.data.to_transmit);
            break;
        case Lane::SpecOut:
            CollectSpec(drawing, drawing.data.to_deliver);
            break;
        default:
            CollectEvents(drawing, lane);
    }
    DrawMarks(drawing.view.Scale(), row);
    if (lane == Lane::Rx) drawing.DrawLooseNotes(row);
}

void TraceCells::CollectSpec(const Drawing& drawing, std::span<const SpecByte> bytes) {
    for (const SpecByte& byte : bytes) {
        if (const auto column = drawing.ColumnOf(byte.tick)) {
            marks_.push_back({*column, 0, byte.byte, Role::LaneSpec, Style::Plain});
        }
    }
}

void TraceCells::CollectEvents(const Drawing& drawing, Lane lane) {
    for (const kp::TraceEvent& event : drawing.Events()) {
        const auto column = drawing.ColumnOf(event.tick);
        if (!column) continue;
        Mark mark{*column, 0, static_cast<std::uint8_t>(event.value), Info(lane).role,
                  Style::Plain};
        switch (event.kind) {
            case Happening::Transmitted:
                if (lane != Lane::Tx) continue;
                if (drawing.IsWrong(event, drawing.data.to_transmit)) mark.role = Role::Fault;
                break;
            case Happening::Delivered:
                if (lane != Lane::HostOut) continue;
                if (drawing.IsWrong(event, drawing.data.to_deliver)) mark.role = Role::Fault;
                break;
            case Happening::Received:
                if (lane != Lane::Rx) continue;
                if (HasNote(drawing.data.notes, event.tick)) mark.style = Style::Underline;
                break;
            case Happening::LostByte:
                if (lane != Lane::Rx) continue;
                mark.sign = U'!', mark.role = Role::Fault;
                break;
            case Happening::ReadHost:
                if (lane != Lane::HostIn) continue;
                if (event.value == 0xFFFF) mark.sign = U'¶';
                break;
            default:
                continue;
        }
        marks_.push_back(mark);
    }
}

// Several signs in one cell show as one, the worst of them.
void TraceCells::Merge(const Mark& mark, TraceCell& cell) {
    const bool lost = mark.sign == U'!' || cell.glyph == U'!';
    cell.glyph = lost ? U'!' : U'■';
    if (lost || mark.role == Role::Fault) cell.role = Role::Fault;
    if (mark.style == Style::Underline) cell.style = mark.style;
}

// The cells from the mark's column to the next sign, as far as more of them change what is written.
int TraceCells::RoomFor(std::size_t index, int column, const Zoom& zoom,
                        std::span<const TraceCell> row) const {
    const int next = index + 1 < marks_.size() ? marks_[index + 1].column : width_;
    int room = 1;
    while (zoom.ticks == 1 && room < kRoomForCharacter && column + room < next &&
           !IsBracket(row[static_cast<std::size_t>(column + room)].glyph)) {
        ++room;
    }
    return room;
}

void TraceCells::DrawMarks(const Zoom& zoom, std::span<TraceCell> row) {
    int alternate_at = -1;  // a byte of two digits here touches one in the lane's own colour
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        const Mark& mark = marks_[i];
        int column = mark.column;
        if (IsBracket(row[static_cast<std::size_t>(column)].glyph)) {
            if (zoom.cells < 2) {
                row[static_cast<std::size_t>(column)].role = Role::LaneAlt;
                continue;
            }
            if (++column == width_) continue;
        }
        TraceCell& cell = row[static_cast<std::size_t>(column)];
        if (cell.glyph != U' ') {
            Merge(mark, cell);
            continue;
        }
        TraceCell like{mark.sign, mark.role, mark.style};
        if (mark.sign != 0) {
            cell = like;
            continue;
        }
        const int room = RoomFor(i, column, zoom, row);
        const bool alternate = column == alternate_at && mark.role != Role::Fault;
        if (alternate) like.role = Role::LaneAlt;
        WriteByte(row.subspan(static_cast<std::size_t>(column)), room, mark.byte, like);
        alternate_at = IsTwoDigits(room) && !alternate ? column + room : -1;
    }
}

}  // namespace Kest
