#include "crt.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace zo::gpu {
namespace {

constexpr double kDepth = 0.14;  // what the corners lose
constexpr double kStart = 0.60;  // radius at which the edge begins; the corners are at 1
constexpr long kWhole = 65536;

// Pixels that a processor darkens at once: a step begins at a multiple of them.
constexpr int kStride = 4;

double ScanFactor(int dot) {
    return dot >= 3 ? 0.88 : dot == 2 ? 0.92 : 0.95;
}

// Every last row of a dot is dark, and of at least two rows.
bool IsScanLine(int y, int top, int dot) {
    const int period = std::max(dot, 2);
    return (y + period - top % period) % period == period - 1;
}

// The square of the radius at which the smooth step between the edge's start and the corner has
// this value.
double SquaredRadius(double value) {
    const double place = 0.5 - std::sin(std::asin(1 - 2 * value) / 3);
    const double radius = kStart + (1 - kStart) * place;
    return radius * radius;
}

// From -1 to 1.
double FromMiddle(int at, int length) {
    return (2.0 * at + 1) / length - 1;
}

// A channel in 256ths times a factor in 65536ths, with a half for rounding. All stays in sixteen
// bits, of which a processor multiplies eight at once.
std::uint16_t Product(std::uint16_t channel, std::uint16_t factor) {
    constexpr std::uint16_t kHalf = 0x80;
    const auto product = static_cast<std::uint16_t>(std::uint32_t{channel} * factor >> 16);
    return static_cast<std::uint16_t>(product + kHalf);
}

std::uint16_t DarkenTwo(std::uint16_t channels, std::uint16_t factor) {
    constexpr std::uint16_t kHigh = 0xFF00;
    const std::uint16_t high = Product(channels & kHigh, factor);
    const std::uint16_t low = Product(static_cast<std::uint16_t>(channels << 8), factor);
    return static_cast<std::uint16_t>((high & kHigh) | low >> 8);
}

template <int kPixels>
void DarkenPixels(std::uint32_t* pixels, std::uint16_t factor) {
    std::array<std::uint16_t, 2 * kPixels> lanes;
    std::memcpy(lanes.data(), pixels, sizeof lanes);
    for (std::uint16_t& lane : lanes) lane = DarkenTwo(lane, factor);
    std::memcpy(pixels, lanes.data(), sizeof lanes);
}

void DarkenStretch(std::uint32_t* first, std::uint32_t* last, std::uint16_t factor) {
    for (; last - first >= kStride; first += kStride) DarkenPixels<kStride>(first, factor);
    for (; first < last; ++first) DarkenPixels<1>(first, factor);
}

}  // namespace

void CrtFilter::Resize(ui::PixelSize size, int dot, int top) {
    dot_ = dot;
    top_ = top;
    for (std::size_t i = 0; i <= kSteps; ++i) {
        const double edge = kWhole * (1 - kDepth * static_cast<double>(i) / kSteps);
        factors_[0][i] = static_cast<std::uint16_t>(std::min(std::lround(edge), kWhole - 1));
        factors_[1][i] = static_cast<std::uint16_t>(std::lround(edge * ScanFactor(dot)));
    }
    if (size == size_) return;
    size_ = size;
    std::array<double, kSteps> radii;  // squared, from the corners inwards
    for (std::size_t i = 0; i < kSteps; ++i) {
        radii[i] = SquaredRadius((static_cast<double>(kSteps - i) - 0.5) / kSteps);
    }
    edges_.resize(static_cast<std::size_t>(size.height));
    for (int y = 0; y < size.height; ++y) {
        const double dy = FromMiddle(y, size.height);
        for (std::size_t i = 0; i < kSteps; ++i) {
            const double dx = std::sqrt(std::max(0.0, 2 * radii[i] - dy * dy));
            const double x = kStride * std::ceil(((1 - dx) * size.width - 1) / (2 * kStride));
            const double within = std::clamp(x, 0.0, size.width / 2.0);
            edges_[static_cast<std::size_t>(y)][i] = static_cast<std::uint16_t>(within);
        }
    }
}

void CrtFilter::Apply(const platform::PixelRect& rect, platform::PixelBuffer& buffer) const {
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        std::uint32_t* const row = buffer.pixels.data() + y * std::ptrdiff_t{size_.width};
        ApplyRow(y, rect.x, rect.x + rect.width, row);
    }
}

void CrtFilter::ApplyRow(int y, int left, int right, std::uint32_t* row) const {
    const bool scan_line = IsScanLine(y, top_, dot_);
    const auto darken = [&](int from, int to, std::size_t steps) {
        from = std::max(from, left);
        to = std::min(to, right);
        if (from < to) DarkenStretch(row + from, row + to, factors_[scan_line ? 1 : 0][steps]);
    };
    int from = 0;
    const Lightens& edge = edges_[static_cast<std::size_t>(y)];
    for (std::size_t i = 0; i < edge.size(); ++i) {
        const int to = edge[i];
        if (to == from) continue;  // most of the steps in the middle of the picture
        darken(from, to, kSteps - i);
        darken(size_.width - to, size_.width - from, kSteps - i);
        from = to;
    }
    if (scan_line) darken(from, size_.width - from, 0);
}

}  // namespace zo::gpu
