#include "gpu/animation.h"

#include <algorithm>
#include <limits>

#include "gpu/renderer.h"

namespace zo::gpu {
namespace {

using platform::PixelRect;

constexpr std::size_t kMostColours = 255;
constexpr std::uint8_t kUnchanged = 255;  // the index of what stays as it is
constexpr int kCodeBits = 8;              // of a colour's index
constexpr int kMostCodeBits = 12;
constexpr int kLongestHold = 300;  // hundredths

void PutWord(std::string& bytes, int value) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8 & 0xFF);
}

// Codes of a growing number of bits, lowest bit first.
class BitWriter {
public:
    void Put(int code, int bits) {
        held_ |= static_cast<std::uint32_t>(code) << count_;
        for (count_ += bits; count_ >= 8; count_ -= 8, held_ >>= 8) {
            bytes_ += static_cast<char>(held_ & 0xFF);
        }
    }
    std::string Finish() {
        if (count_ > 0) bytes_ += static_cast<char>(held_ & 0xFF);
        return std::move(bytes_);
    }

private:
    std::string bytes_;
    std::uint32_t held_ = 0;
    int count_ = 0;
};

// The format's own LZW (Welch, "A Technique for High-Performance Data Compression", 1984).
class Compressor {
public:
    std::string Compress(std::span<const std::uint8_t> indices) {
        Clear();
        int prefix = indices.front();
        for (const std::uint8_t index : indices.subspan(1)) {
            std::uint16_t& longer = codes_[static_cast<std::size_t>(prefix) << 8 | index];
            if (longer != 0) {
                prefix = longer;
                continue;
            }
            bits_.Put(prefix, width_);
            prefix = index;
            if (next_ == 1 << kMostCodeBits) {
                Clear();
                continue;
            }
            if (next_ == 1 << width_) ++width_;
            longer = static_cast<std::uint16_t>(next_++);
        }
        bits_.Put(prefix, width_);
        if (next_ == 1 << width_ && width_ < kMostCodeBits) ++width_;
        bits_.Put(kEnd, width_);
        return bits_.Finish();
    }

private:
    static constexpr int kClear = 1 << kCodeBits;
    static constexpr int kEnd = kClear + 1;

    void Clear() {
        bits_.Put(kClear, width_);
        std::ranges::fill(codes_, std::uint16_t{0});
        next_ = kEnd + 1;
        width_ = kCodeBits + 1;
    }

    BitWriter bits_;
    std::vector<std::uint16_t> codes_ = std::vector<std::uint16_t>(std::size_t{1} << 20);
    int next_ = kEnd + 1;
    int width_ = kCodeBits + 1;
};

// In blocks of up to 255 bytes, the last of them empty.
void PutBlocks(std::string& file, std::string_view data) {
    constexpr std::size_t kMost = 255;
    for (; !data.empty(); data.remove_prefix(std::min(kMost, data.size()))) {
        const std::string_view block = data.substr(0, kMost);
        file += static_cast<char>(block.size());
        file += block;
    }
    file += '\0';
}

int Distance(std::uint32_t one, std::uint32_t other) {
    int sum = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const int by =
            static_cast<int>(one >> shift & 0xFF) - static_cast<int>(other >> shift & 0xFF);
        sum += by * by;
    }
    return sum;
}

}  // namespace

std::size_t GifEncoder::PixelAt(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width) +
           static_cast<std::size_t>(x);
}

std::uint8_t GifEncoder::IndexOf(std::uint32_t colour) {
    auto found = std::ranges::find(colours_, colour);
    if (found == colours_.end()) {
        if (colours_.size() < kMostColours) {
            colours_.push_back(colour);
            return static_cast<std::uint8_t>(colours_.size() - 1);
        }
        found = std::ranges::min_element(
            colours_, {}, [colour](std::uint32_t known) { return Distance(colour, known); });
    }
    return static_cast<std::uint8_t>(found - colours_.begin());
}

// The smallest rectangle with all that differs from what is shown; empty when nothing does.
PixelRect GifEncoder::Changed(std::span<const std::uint8_t> indices) const {
    if (shown_.empty()) return {0, 0, size_.width, size_.height};
    int left = size_.width, top = size_.height, right = 0, bottom = 0;
    for (int y = 0; y < size_.height; ++y) {
        for (int x = 0; x < size_.width; ++x) {
            if (indices[PixelAt(x, y)] == shown_[PixelAt(x, y)]) continue;
            left = std::min(left, x);
            right = std::max(right, x + 1);
            top = std::min(top, y);
            bottom = y + 1;
        }
    }
    if (right == 0) return {};
    return {left, top, right - left, bottom - top};
}

void GifEncoder::Add(const platform::PixelBuffer& picture, int hundredths) {
    std::vector<std::uint8_t> indices;
    indices.reserve(picture.pixels.size());
    std::uint32_t last = 0;
    for (const std::uint32_t colour : picture.pixels) {
        const bool same = !indices.empty() && colour == last;
        indices.push_back(same ? indices.back() : IndexOf(colour));
        last = colour;
    }
    const PixelRect at = Changed(indices);
    if (at.width == 0) {
        pictures_.back().hundredths += hundredths;
        return;
    }
    std::vector<std::uint8_t> part;
    for (int y = at.y; y < at.y + at.height; ++y) {
        for (int x = at.x; x < at.x + at.width; ++x) {
            const std::size_t pixel = PixelAt(x, y);
            const bool same = !shown_.empty() && indices[pixel] == shown_[pixel];
            part.push_back(same ? kUnchanged : indices[pixel]);
        }
    }
    pictures_.push_back({at, Compressor().Compress(part), hundredths});
    shown_ = std::move(indices);
}

std::string GifEncoder::Finish() const {
    std::string file = "GIF89a";
    PutWord(file, size_.width);
    PutWord(file, size_.height);
    file += '\xF7';  // a table of 256 colours
    file += std::string(2, '\0');
    for (std::size_t k = 0; k <= kMostColours; ++k) {
        const std::uint32_t colour = k < colours_.size() ? colours_[k] : 0;
        for (const unsigned shift : {16U, 8U, 0U})
            file += static_cast<char>(colour >> shift & 0xFF);
    }
    file += "\x21\xFF\x0BNETSCAPE2.0\x03\x01";  // again and again
    file += std::string(3, '\0');
    for (const Picture& picture : pictures_) {
        file += "\x21\xF9\x04\x05";  // the next one is drawn over it; one index is transparent
        PutWord(file, std::min<int>(picture.hundredths, std::numeric_limits<std::uint16_t>::max()));
        file += static_cast<char>(kUnchanged);
        file += '\0';
        file += '\x2C';
        PutWord(file, picture.at.x);
        PutWord(file, picture.at.y);
        PutWord(file, picture.at.width);
        PutWord(file, picture.at.height);
        file += '\0';
        file += static_cast<char>(kCodeBits);
        PutBlocks(file, picture.data);
    }
    return file + '\x3B';
}

base::Status WriteAnimation(std::span<const ui::Frame> frames, int hundredths, ui::PixelSize size,
                            base::Disk& disk, const std::filesystem::path& path) {
    GifEncoder encoder(size);
    const auto renderer = MakeRenderer();
    platform::PixelBuffer picture{.size = size, .pixels = {}};
    for (std::size_t k = 0; k < frames.size(); ++k) {
        renderer->Paint(frames[k], picture);
        const bool last = k + 1 == frames.size();
        encoder.Add(picture, last ? std::min(100 * hundredths, kLongestHold) : hundredths);
    }
    base::Status written = disk.Write(path, encoder.Finish());
    if (written) return written;
    return base::Failure{"cannot write " + base::PathText(path) + " (" + written.Message() + ")"};
}

}  // namespace zo::gpu
