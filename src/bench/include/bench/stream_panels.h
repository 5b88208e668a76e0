#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "bench/bench_run.h"
#include "ui/scroll.h"

namespace Kest {

// A stream of bytes as pairs of rows, what is called for above what the card did, byte under byte.
class StreamRows {
public:
    struct Stream {
        std::span<const SpecByte> called_for;
        std::span<const std::uint8_t> done;
        zo::ui::Role role;  // of what the card did
    };

    // The first byte that is another than called for, or one too many.
    static std::optional<std::size_t> FirstWrong(const Stream& stream);
    static int BytesPerRow(int text_width);
    static int RowCount(const Stream& stream, int text_width);
    // The row of the byte that is due next.
    static int DueRow(const Stream& stream, int text_width);
    static void DrawRow(zo::ui::Canvas& canvas, const zo::ui::Rect& at, const Stream& stream,
                        int row);
};

// The SPEC panel: what goes over the line in both directions.
class SpecPanel {
public:
    explicit SpecPanel(bool receives) : receives_(receives) {}

    // Inside a pane whose frame is drawn already.
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& pane,
              const BenchRun& run);
    bool Key(const zo::ui::KeyPress& key) { return scroll_.Key(key); }

private:
    void DrawRow(zo::ui::Canvas& canvas, const zo::ui::Rect& at, const BenchRun& run, int row,
                 int transmit_rows) const;
    void NameDifference(const BenchRun& run);

    bool receives_;
    std::optional<std::size_t> wrong_;  // the first byte that differs,
    std::string wrong_place_;           // and where in what is called for it stands
    int due_ = -1;                      // the row that was brought into sight last
    zo::ui::Scroll scroll_;
};

// The HOST panel: the host's messages, and what the host is to receive.
class HostPanel {
public:
    HostPanel(bool sends, bool receives) : sends_(sends), receives_(receives) {}

    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& pane,
              const BenchRun& run);
    bool Key(const zo::ui::KeyPress& key) { return scroll_.Key(key); }

private:
    struct Row {
        std::string number;
        std::string bytes;
        std::string from;
    };
    void LayOutMessages(const kp::Test& test, int width);
    void DrawHeading(zo::ui::Canvas& canvas, const zo::ui::Rect& at, const BenchRun& run,
                     int row) const;
    void DrawMessage(zo::ui::Canvas& canvas, const zo::ui::Rect& at, const Row& row) const;

    bool sends_;
    bool receives_;
    const kp::Test* test_ = nullptr;  // whose messages are laid out,
    int width_ = 0;                   // and for what width
    bool narrow_ = false;             // the heading needs two rows
    std::vector<Row> messages_;
    int due_ = -1;
    zo::ui::Scroll scroll_;
};

}  // namespace Kest
