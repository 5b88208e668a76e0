#include "ticket/labels.h"

#include <algorithm>

#include "base/format.h"

namespace kp {
namespace {

using Span = std::span<const std::uint8_t>;

bool SyncAt(Span stream, std::size_t at, const Bytes& sync) {
    return stream.size() - at >= sync.size() &&
           std::equal(sync.begin(), sync.end(), stream.begin() + static_cast<std::ptrdiff_t>(at));
}

// One frame as it lies in a stream; the sizes are what the format says, whatever the stream holds.
struct FrameShape {
    std::size_t payload = 0;
    std::size_t size = 0;
};

FrameShape ShapeAt(Span stream, std::size_t at, const FrameFormat& format) {
    std::size_t head = format.sync.size();
    FrameShape shape;
    if (format.length) {
        const std::size_t length_at = at + head++;
        shape.payload = length_at < stream.size() ? stream[length_at] : 0;
    } else {
        shape.payload = static_cast<std::size_t>(format.fixed_length);
    }
    if (format.flags) ++head;
    shape.size = head + shape.payload + static_cast<std::size_t>(CheckWidth(format.check));
    return shape;
}

std::string FieldLabel(int frame, std::size_t offset, const FrameShape& shape,
                       const FrameFormat& format) {
    if (offset < format.sync.size()) {
        return base::Format("frame %d, sync byte %zu", frame, offset + 1);
    }
    offset -= format.sync.size();
    if (format.length && offset-- == 0) return base::Format("frame %d, length", frame);
    if (format.flags && offset-- == 0) return base::Format("frame %d, flags", frame);
    if (offset < shape.payload) {
        return base::Format("frame %d, payload byte %zu", frame, offset + 1);
    }
    offset -= shape.payload;
    if (CheckWidth(format.check) == 1) return base::Format("frame %d, check byte", frame);
    return base::Format("frame %d, check byte %d", frame, static_cast<int>(offset) + 1);
}

std::string PlainLabel(std::size_t index) {
    return base::Format("byte %zu", index + 1);
}

// A frame without a byte of its own would never end.
bool TakesBytes(const FrameFormat& format) {
    return !format.sync.empty() || format.length || format.fixed_length > 0 ||
           format.check != Check::None;
}

// Calls visit(index, label maker) for the bytes from the start up to `last`.
template <class Visit>
void WalkLabels(Span stream, std::size_t last, const FrameFormat& format, Visit visit) {
    std::size_t at = 0;
    for (int frame = 1; at < stream.size() && at <= last;) {
        if (!SyncAt(stream, at, format.sync)) {
            visit(at, [&] { return PlainLabel(at) + ", outside a frame"; });
            ++at;
            continue;
        }
        const FrameShape shape = ShapeAt(stream, at, format);
        const std::size_t end = std::min(at + shape.size, stream.size());
        for (std::size_t k = at; k < end; ++k) {
            visit(k, [&] { return FieldLabel(frame, k - at, shape, format); });
        }
        at = end;
        ++frame;
    }
}

bool IsAnnotated(const std::optional<FrameFormat>& format) {
    return format && format->annotate && TakesBytes(*format);
}

}  // namespace

std::string LabelOf(Span stream, std::size_t index, const std::optional<FrameFormat>& format) {
    if (!IsAnnotated(format)) return PlainLabel(index);
    std::string label = PlainLabel(index);
    WalkLabels(stream, index, *format, [&](std::size_t at, const auto& make) {
        if (at == index) label = make();
    });
    return label;
}

std::vector<std::string> LabelStream(Span stream, const std::optional<FrameFormat>& format) {
    std::vector<std::string> labels(stream.size());
    if (!IsAnnotated(format)) {
        for (std::size_t k = 0; k < labels.size(); ++k) labels[k] = PlainLabel(k);
    } else {
        WalkLabels(stream, stream.size(), *format,
                   [&](std::size_t at, const auto& make) { labels[at] = make(); });
    }
    return labels;
}

}  // namespace kp
