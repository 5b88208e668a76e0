#include "bench/trace_cells.h"

#include <algorithm>

#include "trace_drawing.h"

namespace Kest {
namespace {

using kp::Happening;
using kp::Tick;
using zo::ui::Role;
using zo::ui::Style;

constexpr int kRoomForCharacter = 7;  // $48'H'
constexpr int kRoomForDollar = 4;     // $48 and a blank

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

void TraceCells::Draw(const TraceData& data, std::span<const Lane> lanes, const TraceView& view,
                      int width) {
    width_ = std::max(width, 1);
    rows_ = static_cast<int>(lanes.size()) + 1;
    cells_.assign(static_cast<std::size_t>(width_ * rows_), TraceCell{});
    const TraceDrawing drawing{data, view, width_};
    drawing.DrawNumbers(MutableRow(0));
    for (std::size_t i = 0; i < lanes.size(); ++i) {
        DrawLane(drawing, lanes[i], MutableRow(static_cast<int>(i) + 1));
    }
    drawing.DrawCursor(MutableRow(0), cells_, rows_);
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

void TraceCells::DrawLane(const TraceDrawing& drawing, Lane lane, std::span<TraceCell> row) {
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
    if (lane == Lane::Tx) DrawBefore(drawing, drawing.data.sent_before, row);
    if (lane == Lane::HostOut) DrawBefore(drawing, drawing.data.delivered_before, row);
}

void TraceCells::CollectSpec(const TraceDrawing& drawing, std::span<const SpecByte> bytes) {
    for (const SpecByte& byte : bytes) {
        if (const auto column = drawing.ColumnOf(byte.tick)) {
            marks_.push_back({*column, 0, byte.byte, Role::LaneSpec, Style::Plain});
        }
    }
}

// Behind what stands in the lane: only in blank cells, as a point where it would touch other
// digits.
void TraceCells::DrawBefore(const TraceDrawing& drawing, std::span<const SpecByte> bytes,
                            std::span<TraceCell> row) {
    const TraceCell like{U' ', Role::Lane, Style::Plain};
    int free_from = 0;  // behind the byte before
    for (std::size_t k = 0; k < bytes.size(); ++k) {
        const std::optional<int> column = drawing.ColumnOf(bytes[k].tick);
        if (!column || *column < free_from) continue;
        std::int64_t end = *column + kRoomForCharacter;
        if (k + 1 < bytes.size()) end = std::min(end, drawing.view.Column(bytes[k + 1].tick));
        int room = 0;
        while (*column + room < std::min<std::int64_t>(end, width_) &&
               row[static_cast<std::size_t>(*column + room)].glyph == U' ') {
            ++room;
        }
        if (room == 0) continue;
        const bool touches =
            *column > 0 && row[static_cast<std::size_t>(*column - 1)].glyph != U' ';
        if (touches || drawing.view.Scale().ticks > 1) room = 1;
        WriteByte(row.subspan(static_cast<std::size_t>(*column)), room, bytes[k].byte, like);
        free_from = *column + 1;
    }
}

void TraceCells::CollectEvents(const TraceDrawing& drawing, Lane lane) {
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
        const bool two_digits = IsTwoDigits(room);
        const bool alternate = two_digits && column == alternate_at && mark.role != Role::Fault;
        if (alternate) like.role = Role::LaneAlt;
        WriteByte(row.subspan(static_cast<std::size_t>(column)), room, mark.byte, like);
        alternate_at = two_digits && !alternate ? column + room : -1;
    }
}

}  // namespace Kest
