#include "bench/stream_panels.h"

#include <algorithm>

#include "base/format.h"
#include "small_text.h"
#include "ticket/labels.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Pressables;
using zo::ui::Rect;
using zo::ui::Role;
using zo::ui::Style;

constexpr int kByteLabel = 5;    // "spec " and "card "
constexpr int kByteCells = 3;    // the wrong byte's mark and two digits
constexpr int kHeadingName = 9;  // "SPEC OUT " before its count
constexpr int kMessageLabel = 5;

int TextWidth(const Rect& pane) {
    return pane.width - 4;
}
Rect TextRow(const Rect& pane, int row) {
    return {pane.x + 2, pane.y + 1 + row, TextWidth(pane), 1};
}

const char* PluralOf(std::size_t count) {
    return count == 1 ? "" : "s";
}

void DrawHeadingText(Canvas& canvas, const Rect& at, std::string_view name,
                     std::string_view count) {
    canvas.Text(at.x, at.y, name, Role::PanelDim);
    canvas.Text(at.x + kHeadingName, at.y, count, Role::PanelDim);
}

// Leaves "bytes" out where the count would not fit with it once all are done.
void DrawCount(Canvas& canvas, const Rect& at, std::string_view name, std::size_t done,
               std::size_t total, const char* what) {
    const SmallText most("%zu of %zu byte%s %s", total, total, PluralOf(total), what);
    const SmallText full("%zu of %zu byte%s %s", done, total, PluralOf(total), what);
    const SmallText brief("%zu of %zu %s", done, total, what);
    const auto room = static_cast<std::size_t>(at.width - kHeadingName);
    const bool fits = std::string_view(most).size() <= room;
    DrawHeadingText(canvas, at, name, fits ? full : brief);
}

StreamRows::Stream TransmitStream(const BenchRun& run) {
    std::span<const std::uint8_t> done;
    if (run.Session() != nullptr) done = run.Session()->Transmitted();
    return {run.CalledFor().transmitted, done, Role::LaneTx};
}

StreamRows::Stream DeliverStream(const BenchRun& run) {
    std::span<const std::uint8_t> done;
    if (run.Session() != nullptr) done = run.Session()->Delivered();
    return {run.CalledFor().delivered, done, Role::LaneHost};
}

void DrawStreamHeading(Canvas& canvas, const Rect& at, std::string_view name,
                       const StreamRows::Stream& stream, const char* what) {
    DrawCount(canvas, at, name, stream.done.size(), stream.called_for.size(), what);
}

// What has arrived, then what the far end sent to the reference and has yet to send here.
std::size_t BytesToReceive(const BenchRun& run) {
    return std::max(run.Received().size(), run.CalledFor().received.size());
}

int ReceivedRows(const BenchRun& run, int width) {
    const int per_row = StreamRows::BytesPerRow(width);
    return (static_cast<int>(BytesToReceive(run)) + per_row - 1) / per_row;
}

void DrawReceivedRow(Canvas& canvas, const Rect& at, const BenchRun& run, int row) {
    const auto per_row = static_cast<std::size_t>(StreamRows::BytesPerRow(at.width));
    const std::size_t first = static_cast<std::size_t>(row) * per_row;
    const std::size_t last = std::min(first + per_row, BytesToReceive(run));
    int x = at.x + kByteLabel;
    for (std::size_t i = first; i < last; ++i) {
        const bool arrived = i < run.Received().size();
        const unsigned byte = arrived ? run.Received()[i] : run.CalledFor().received[i];
        x = canvas.Text(x, at.y, SmallText(" %02X", byte),
                        i < run.BytesRead() ? Role::LaneRx : Role::PanelDim);
    }
}

// Brings a row into sight when it is another than before.
void Follow(zo::ui::Scroll& scroll, int due, int& last) {
    if (due == last) return;
    last = due;
    scroll.Reveal(due, 1);
}

// A message as a quoted text, or as hexadecimal digits where a byte is not printable.
std::string MessageText(const kp::Bytes& bytes) {
    const auto printable = [](std::uint8_t byte) { return byte >= 32 && byte <= 126; };
    std::string text;
    if (!bytes.empty() && std::ranges::all_of(bytes, printable)) {
        text.assign(bytes.begin(), bytes.end());
        return '"' + text + '"';
    }
    if (bytes.empty()) return "empty";
    for (const std::uint8_t byte : bytes) {
        text += base::Format("%s%02X", text.empty() ? "" : " ", static_cast<unsigned>(byte));
    }
    return text;
}

}  // namespace

std::optional<std::size_t> StreamRows::FirstWrong(const Stream& stream) {
    const auto differs =
        std::ranges::mismatch(stream.done, stream.called_for, {}, {}, &SpecByte::byte);
    if (differs.in1 == stream.done.end()) return std::nullopt;
    return static_cast<std::size_t>(differs.in1 - stream.done.begin());
}

int StreamRows::BytesPerRow(int text_width) {
    return std::max((text_width - kByteLabel) / kByteCells, 1);
}

int StreamRows::RowCount(const Stream& stream, int text_width) {
    const auto bytes = static_cast<int>(std::max(stream.called_for.size(), stream.done.size()));
    const int per_row = BytesPerRow(text_width);
    return (bytes + per_row - 1) / per_row * 2;
}

int StreamRows::DueRow(const Stream& stream, int text_width) {
    const int due = static_cast<int>(stream.done.size()) / BytesPerRow(text_width) * 2;
    return std::clamp(due, 0, std::max(RowCount(stream, text_width) - 2, 0));
}

void StreamRows::DrawRow(Canvas& canvas, const Rect& at, const Stream& stream, int row) {
    const bool card = row % 2 != 0;
    const std::size_t bytes = card ? stream.done.size() : stream.called_for.size();
    const auto per_row = static_cast<std::size_t>(BytesPerRow(at.width));
    const std::size_t first = static_cast<std::size_t>(row / 2) * per_row;
    canvas.Text(at.x, at.y, card ? "card" : "spec", Role::PanelDim);
    int x = at.x + kByteLabel;
    for (std::size_t i = first; i < std::min(first + per_row, bytes); ++i, x += kByteCells) {
        const unsigned byte = card ? stream.done[i] : stream.called_for[i].byte;
        const bool wrong =
            card && (i >= stream.called_for.size() || byte != stream.called_for[i].byte);
        if (wrong) canvas.Put(x, at.y, U'!', Role::Fault);
        const Role role = wrong ? Role::Fault : card ? stream.role : Role::LaneSpec;
        const bool due = !card && i == stream.done.size();
        canvas.Text(x + 1, at.y, SmallText("%02X", byte), role,
                    due ? Style::Underline : Style::Plain);
    }
}

void SpecPanel::NameDifference(const BenchRun& run) {
    const std::optional<std::size_t> wrong = StreamRows::FirstWrong(TransmitStream(run));
    if (wrong == wrong_) return;
    wrong_ = wrong;
    const auto& ticket = run.Loaded();
    if (wrong_) {
        wrong_place_ = kp::LabelOf(ticket.reference.outputs[run.TestIndex()].transmitted, *wrong_,
                                   ticket.ticket.frame);
    }
}

void SpecPanel::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane,
                     const BenchRun& run) {
    NameDifference(run);
    const StreamRows::Stream stream = TransmitStream(run);
    const int width = TextWidth(pane);
    const int transmit_rows = 1 + (wrong_ ? 1 : 0) + StreamRows::RowCount(stream, width);
    const int rows = transmit_rows + (receives_ ? 1 + ReceivedRows(run, width) : 0);
    const int shown = pane.height - 2;
    scroll_.Measure(rows, shown);
    Follow(scroll_,
           transmit_rows - StreamRows::RowCount(stream, width) + StreamRows::DueRow(stream, width),
           due_);
    scroll_.Draw(canvas, pressables, pane);
    for (int i = 0; i < std::min(shown, rows - scroll_.Top()); ++i) {
        DrawRow(canvas, TextRow(pane, i), run, scroll_.Top() + i, transmit_rows);
    }
}

void SpecPanel::DrawRow(Canvas& canvas, const Rect& at, const BenchRun& run, int row,
                        int transmit_rows) const {
    if (row == 0) {
        DrawStreamHeading(canvas, at, "SPEC TX", TransmitStream(run), "sent");
    } else if (row == 1 && wrong_) {
        canvas.Put(at.x, at.y, U'!', Role::Fault);
        canvas.Text(at.x + 2, at.y, wrong_place_, Role::Warn);
    } else if (row < transmit_rows) {
        StreamRows::DrawRow(canvas, at, TransmitStream(run), row - (wrong_ ? 2 : 1));
    } else if (row == transmit_rows) {
        DrawCount(canvas, at, "RX", run.BytesRead(), BytesToReceive(run), "read");
    } else {
        DrawReceivedRow(canvas, at, run, row - transmit_rows - 1);
    }
}

void HostPanel::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane,
                     const BenchRun& run) {
    const int width = TextWidth(pane);
    LayOutMessages(run.Loaded().ticket.tests[run.TestIndex()], width);
    const StreamRows::Stream stream = DeliverStream(run);
    const int heading_rows = narrow_ ? 2 : 1;
    const int message_rows = sends_ ? heading_rows + static_cast<int>(messages_.size()) : 0;
    const int rows = message_rows + (receives_ ? 1 + StreamRows::RowCount(stream, width) : 0);
    const int shown = pane.height - 2;
    scroll_.Measure(rows, shown);
    if (receives_) {
        Follow(scroll_, message_rows + 1 + StreamRows::DueRow(stream, width), due_);
    }
    scroll_.Draw(canvas, pressables, pane);
    for (int i = 0; i < std::min(shown, rows - scroll_.Top()); ++i) {
        const Rect at = TextRow(pane, i);
        const int row = scroll_.Top() + i;
        if (row < message_rows) {
            if (row < heading_rows) {
                DrawHeading(canvas, at, run, row);
            } else {
                DrawMessage(canvas, at, messages_[static_cast<std::size_t>(row - heading_rows)]);
            }
        } else if (row == message_rows) {
            DrawStreamHeading(canvas, at, "SPEC OUT", stream, "delivered");
        } else {
            StreamRows::DrawRow(canvas, at, stream, row - message_rows - 1);
        }
    }
}

// A message that is too long for a row goes on in the rows below its number.
void HostPanel::LayOutMessages(const kp::Test& test, int width) {
    if (test_ == &test && width_ == width) return;
    test_ = &test;
    width_ = width;
    due_ = -1;
    messages_.clear();
    std::size_t longest = 0;
    for (const kp::HostMessage& message : test.host) {
        longest = std::max(longest, message.bytes.size());
    }
    const std::size_t count = test.host.size();
    const SmallText heading("message %zu of %zu, %zu of %zu read", count, count, longest, longest);
    narrow_ = kHeadingName + static_cast<int>(std::string_view(heading).size()) > width;
    const auto room = static_cast<std::size_t>(std::max(width - kMessageLabel, 1));
    for (std::size_t i = 0; i < test.host.size(); ++i) {
        std::string text = MessageText(test.host[i].bytes);
        const std::string from = base::Format("  from tick %u", test.host[i].at);
        std::string number = base::Format("%3zu", i + 1);
        for (; text.size() > room; number.clear()) {
            messages_.push_back({number, text.substr(0, room), ""});
            text.erase(0, room);
        }
        if (text.size() + from.size() <= room) {
            messages_.push_back({number, text, from});
        } else {
            messages_.push_back({number, text, ""});
            messages_.push_back({"", "", from.substr(2)});
        }
    }
}

// In a narrow pane the second half of the heading has a row of its own.
void HostPanel::DrawHeading(Canvas& canvas, const Rect& at, const BenchRun& run, int row) const {
    const auto& messages = run.Loaded().ticket.tests[run.TestIndex()].host;
    if (messages.empty()) {
        if (row == 0) DrawHeadingText(canvas, at, "HOST IN", "no messages");
        return;
    }
    const kp::Session* session = run.Session();
    std::size_t index = session != nullptr ? session->HostMessageIndex() : 0;
    std::size_t read = session != nullptr ? session->HostBytesRead() : 0;
    if (index >= messages.size()) {
        index = messages.size() - 1;
        read = messages[index].bytes.size();
    }
    const SmallText message("message %zu of %zu%s", index + 1, messages.size(),
                            narrow_ ? "" : ", ");
    const SmallText bytes("%zu of %zu read", read, messages[index].bytes.size());
    if (row == 1) return DrawHeadingText(canvas, at, "", bytes);
    DrawHeadingText(canvas, at, "HOST IN", message);
    if (narrow_) return;
    canvas.Text(at.x + kHeadingName + static_cast<int>(std::string_view(message).size()), at.y,
                bytes, Role::PanelDim);
}

void HostPanel::DrawMessage(Canvas& canvas, const Rect& at, const Row& row) const {
    canvas.Text(at.x, at.y, row.number, Role::PanelDim);
    const int x = canvas.Text(at.x + kMessageLabel, at.y, row.bytes, Role::LaneHost);
    canvas.Text(x, at.y, row.from, Role::PanelDim);
}

}  // namespace Kest
