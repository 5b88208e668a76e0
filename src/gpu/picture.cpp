#include "gpu/picture.h"

#include "gpu/renderer.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace zo::gpu {
namespace {

constexpr int kChannels = 3;

std::string Channels(const std::vector<std::uint32_t>& pixels) {
    std::string bytes;
    bytes.reserve(pixels.size() * kChannels);
    for (const std::uint32_t pixel : pixels) {
        for (const unsigned shift : {16U, 8U, 0U})
            bytes += static_cast<char>(pixel >> shift & 0xFF);
    }
    return bytes;
}

void Append(void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                               static_cast<std::size_t>(size));
}

}  // namespace

std::string EncodePng(const platform::PixelBuffer& picture) {
    const std::string bytes = Channels(picture.pixels);
    std::string png;
    stbi_write_png_to_func(Append, &png, picture.size.width, picture.size.height, kChannels,
                           bytes.data(), picture.size.width * kChannels);
    return png;
}

base::Status WritePicture(const ui::Frame& frame, ui::PixelSize size, base::Disk& disk,
                          const std::filesystem::path& path) {
    platform::PixelBuffer picture{.size = size, .pixels = {}};
    MakeRenderer()->Paint(frame, picture);
    base::Status written = disk.Write(path, EncodePng(picture));
    if (written) return written;
    return base::Failure{"cannot write " + base::PathText(path) + " (" + written.Message() + ")"};
}

}  // namespace zo::gpu
