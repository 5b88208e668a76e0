#include "gpu/picture.h"

#include <doctest/doctest.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#include <stb/stb_image.h>

#include <filesystem>

#include "canvas.h"
#include "native/system_disk.h"

using namespace gpu_test;

TEST_CASE("a picture has exactly the size asked for, and its pixels") {
    const zo::ui::Frame frame = Text(Classic(8, 3, 2), {"A░│", "é▄♦"});
    const zo::ui::PixelSize size = {29, 37};
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / "vantor-kest-picture-test.png";
    zo::platform::SystemDisk disk;
    REQUIRE(zo::gpu::WritePicture(frame, size, disk, path));
    const base::Result<std::string> png = disk.Read(path);
    REQUIRE(png);
    CHECK(disk.Remove(path));

    const auto expected = Painted(frame, size);
    CHECK(*png == zo::gpu::EncodePng(expected));
    int width = 0, height = 0, channels = 0;
    stbi_uc* const pixels =
        stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(png->data()),
                              static_cast<int>(png->size()), &width, &height, &channels, 3);
    REQUIRE(pixels != nullptr);
    CHECK(zo::ui::PixelSize{width, height} == size);
    for (std::size_t i = 0; i < expected.pixels.size(); ++i) {
        const stbi_uc* const pixel = pixels + 3 * i;
        REQUIRE((pixel[0] << 16 | pixel[1] << 8 | pixel[2]) ==
                static_cast<int>(expected.pixels[i]));
    }
    stbi_image_free(pixels);
}

TEST_CASE("a picture that cannot be written says where and why") {
    zo::platform::SystemDisk disk;
    const base::Status status =
        zo::gpu::WritePicture(Blank(Classic(8, 1, 1)), {8, 16}, disk, "/no/such/folder/a.png");
    CHECK(status.Message() == "cannot write " + base::PathText("/no/such/folder/a.png") +
                                  " (No such file or directory)");
}
