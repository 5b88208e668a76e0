#include "crt.h"

#include <algorithm>
#include <cmath>

namespace zo::gpu {
namespace {

constexpr double kOne = 65536;

// Of one of the rows of a period: a dot, and at least two rows.
double ScanFactor(int row, int dot) {
    if (row < std::max(dot, 2) - 1) return 1;
    return dot >= 3 ? 0.88 : dot == 2 ? 0.92 : 0.95;
}

// dx and dy run from -1 to 1 across the picture.
double EdgeFactor(double dx, double dy) {
    constexpr double kStart = 0.60, kDepth = 0.14;
    const double radius = std::sqrt((dx * dx + dy * dy) / 2);
    const double part = std::clamp((radius - kStart) / (1 - kStart), 0.0, 1.0);
    return 1 - kDepth * part * part * (3 - 2 * part);
}

double FromMiddle(int at, int length) {
    return (2.0 * at + 1) / length - 1;
}

std::uint32_t Darkened(std::uint32_t colour, std::uint32_t factor) {
    const auto channel = [&](unsigned shift) {
        return ((colour >> shift & 0xFF) * factor + 0x8000) >> 16 << shift;
    };
    return channel(16) | channel(8) | channel(0);
}

}  // namespace

void CrtFilter::Resize(ui::PixelSize size, int dot, int top) {
    if (size == size_ && dot == dot_ && top == top_) return;
    size_ = size;
    dot_ = dot;
    top_ = top;
    factors_.clear();
    for (int y = 0; y < size.height; ++y) {
        const int period = std::max(dot, 2);
        const double scan = ScanFactor((y + period - top % period) % period, dot);
        for (int x = 0; x < size.width; ++x) {
            const double edge = EdgeFactor(FromMiddle(x, size.width), FromMiddle(y, size.height));
            const double factor = std::min(scan * edge * kOne, kOne - 1);
            factors_.push_back(static_cast<std::uint16_t>(std::lround(factor)));
        }
    }
}

void CrtFilter::Apply(const platform::PixelRect& rect, platform::PixelBuffer& buffer) const {
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        const auto first = static_cast<std::size_t>(y * size_.width + rect.x);
        for (std::size_t i = first; i < first + static_cast<std::size_t>(rect.width); ++i) {
            buffer.pixels[i] = Darkened(buffer.pixels[i], factors_[i]);
        }
    }
}

}  // namespace zo::gpu
