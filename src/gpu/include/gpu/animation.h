#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/disk.h"
#include "base/result.h"
#include "outside/outside.h"

namespace zo::gpu {

// Pictures of one size as an animation in indexed colours, in which each picture holds no more than
// what differs from the one before (CompuServe, "Graphics Interchange Format, Version
// 89a", 1990). It plays again and again.
class GifEncoder {
public:
    explicit GifEncoder(ui::PixelSize size) : size_(size) {}

    // Shows the picture for so many hundredths of a second. Of more than 255 colours the later ones
    // become the nearest of those before.
    void Add(const platform::PixelBuffer& picture, int hundredths);
    // The whole file; nothing is added behind it.
    std::string Finish() const;

private:
    struct Picture {
        platform::PixelRect at;
        std::string data;  // compressed indices
        int hundredths = 0;
    };

    std::size_t PixelAt(int x, int y) const;
    std::uint8_t IndexOf(std::uint32_t colour);
    platform::PixelRect Changed(std::span<const std::uint8_t> indices) const;

    ui::PixelSize size_;
    std::vector<std::uint32_t> colours_;
    std::vector<std::uint8_t> shown_;  // indices of the last picture
    std::vector<Picture> pictures_;
};

// Draws the frames and writes them as such an animation, each for so many hundredths of a second
// and the last one a hundred times as long as that, up to three seconds.
base::Status WriteAnimation(std::span<const ui::Frame> frames, int hundredths, ui::PixelSize size,
                            base::Disk& disk, const std::filesystem::path& path);

}  // namespace zo::gpu
