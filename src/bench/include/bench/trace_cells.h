#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "bench/lanes.h"
#include "cells/frame.h"
#include "session/session.h"

namespace Kest {

// Cells per tick.
struct Zoom {
    int cells = 1;
    int ticks = 1;
};
inline constexpr std::array<Zoom, 13> kZooms = {{{4, 1},
                                                 {3, 1},
                                                 {2, 1},
                                                 {1, 1},
                                                 {1, 2},
                                                 {1, 4},
                                                 {1, 8},
                                                 {1, 16},
                                                 {1, 32},
                                                 {1, 64},
                                                 {1, 128},
                                                 {1, 256},
                                                 {1, 512}}};
inline constexpr int kOpeningZoom = 1;  // the widest at which two bytes in a row keep their digits

// What the card did on one tick. A tick on which an instruction was completed counts as Running.
struct CardTick {
    kp::CardState state = kp::CardState::Running;
    std::uint16_t line = 0;  // of the source
};

// A byte that the card is to send or deliver, on the tick on which the reference did.
struct SpecByte {
    kp::Tick tick = 0;
    std::uint8_t byte = 0;
};

// All that the trace draws: the run so far beside what is called for.
struct TraceData {
    std::span<const kp::TraceEvent> events;  // in tick order
    std::span<const kp::TimingWindow> windows;
    std::span<const kp::FarEndNote> notes;
    std::span<const CardTick> card;  // one a tick run
    std::span<const SpecByte> to_transmit;
    std::span<const SpecByte> to_deliver;
    std::optional<kp::Tick> failed = std::nullopt;
    std::optional<kp::Tick> cursor = std::nullopt;
    // What the run before sent and delivered, for the player to compare.
    std::span<const SpecByte> sent_before = {};
    std::span<const SpecByte> delivered_before = {};
};

struct TraceView {
    kp::Tick first = 0;  // the tick in the leftmost cell
    int level = kOpeningZoom;

    const Zoom& Scale() const { return kZooms[static_cast<std::size_t>(level)]; }
    // The column of a tick; before the left edge it is negative.
    std::int64_t Column(kp::Tick tick) const;
    // The ticks that a width of cells covers, begun ones included.
    kp::Tick Span(int width) const;
};

struct TraceCell {
    char32_t glyph = U' ';
    zo::ui::Role role = zo::ui::Role::Lane;
    zo::ui::Style style = zo::ui::Style::Plain;
};

struct TraceDrawing;

// The trace as cells: the row of tick numbers, then one row a lane. Its storage is kept between
// drawings.
class TraceCells {
public:
    void Draw(const TraceData& data, std::span<const Lane> lanes, const TraceView& view, int width);

    int Width() const { return width_; }
    int Rows() const { return rows_; }
    std::span<const TraceCell> Row(int row) const;

private:
    // A byte or another single sign of a lane.
    struct Mark {
        int column = 0;
        char32_t sign = 0;  // 0 for a byte
        std::uint8_t byte = 0;
        zo::ui::Role role = zo::ui::Role::Lane;
        zo::ui::Style style = zo::ui::Style::Plain;
    };

    std::span<TraceCell> MutableRow(int row);
    void DrawLane(const TraceDrawing& drawing, Lane lane, std::span<TraceCell> row);
    void DrawMarks(const Zoom& zoom, std::span<TraceCell> row);
    void DrawBefore(const TraceDrawing& drawing, std::span<const SpecByte> bytes,
                    std::span<TraceCell> row);
    int RoomFor(std::size_t index, int column, const Zoom& zoom,
                std::span<const TraceCell> row) const;
    static void Merge(const Mark& mark, TraceCell& cell);
    void CollectSpec(const TraceDrawing& drawing, std::span<const SpecByte> bytes);
    void CollectEvents(const TraceDrawing& drawing, Lane lane);

    int width_ = 0;
    int rows_ = 0;
    std::vector<TraceCell> cells_;
    std::vector<Mark> marks_;
};

}  // namespace Kest
