// icon_writer DRAWINGS FOLDER: writes vantor-kest.ico and vantor-kest-SIZE.png into the folder,
// from the drawings: palette.txt, a letter and its colour a line, and icon-16.txt and icon-32.txt,
// a letter a pixel. icon_writer DRAWINGS --check: fails unless the vantor-kest.ico beside them is
// what they give.
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "native/program.h"
#include "native/system_disk.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace {

namespace fs = std::filesystem;

constexpr int kChannels = 4;

// A size and the drawing whose pixels it repeats.
struct Size {
    int size, drawing;
};
constexpr Size kSizes[] = {{16, 16}, {32, 32}, {48, 16}, {64, 32}, {128, 32}, {256, 32}};

struct Pixel {
    unsigned char red = 0, green = 0, blue = 0, opacity = 0;
};
using Palette = std::map<char, Pixel>;

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    lines.pop_back();
    return lines;
}

Palette ReadPalette(const std::string& text) {
    Palette palette;
    for (const std::string& line : Lines(text)) {
        Pixel pixel;
        if (std::sscanf(line.c_str() + 1, " %2hhx%2hhx%2hhx", &pixel.red, &pixel.green,
                        &pixel.blue) == 3) {
            pixel.opacity = 255;
        }
        palette[line[0]] = pixel;
    }
    return palette;
}

void Append(void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                               static_cast<std::size_t>(size));
}

std::string Png(const std::vector<std::string>& drawing, const Palette& palette, Size size) {
    std::vector<Pixel> pixels;
    const int scale = size.size / size.drawing;
    for (int y = 0; y < size.size; ++y) {
        for (int x = 0; x < size.size; ++x) {
            pixels.push_back(palette.at(drawing.at(static_cast<std::size_t>(y / scale))
                                            .at(static_cast<std::size_t>(x / scale))));
        }
    }
    std::string png;
    stbi_write_png_to_func(Append, &png, size.size, size.size, kChannels, pixels.data(),
                           size.size * kChannels);
    return png;
}

// Little endian.
void Put(std::string& to, unsigned long number, int bytes) {
    for (int byte = 0; byte < bytes; ++byte) {
        to += static_cast<char>(number & 0xFF);
        number >>= 8;
    }
}

// A header, an entry a picture, and the pictures as PNG, which Windows takes since Vista.
std::string Ico(const std::vector<std::string>& pngs) {
    std::string ico, pictures;
    Put(ico, 0, 2);
    Put(ico, 1, 2);
    Put(ico, pngs.size(), 2);
    constexpr std::size_t kHeader = 6, kEntry = 16;
    for (std::size_t index = 0; index < pngs.size(); ++index) {
        const auto size = static_cast<unsigned long>(kSizes[index].size);
        Put(ico, size, 1);  // 256 is written as 0
        Put(ico, size, 1);
        Put(ico, 0, 2);
        Put(ico, 1, 2);
        Put(ico, 32, 2);
        Put(ico, pngs[index].size(), 4);
        Put(ico, kHeader + kEntry * pngs.size() + pictures.size(), 4);
        pictures += pngs[index];
    }
    return ico + pictures;
}

std::optional<std::vector<std::string>> Draw(base::Disk& disk, const fs::path& folder) {
    const auto palette = disk.Read(folder / "palette.txt");
    std::vector<std::string> pngs;
    for (const Size& size : kSizes) {
        const auto drawing = disk.Read(folder / ("icon-" + std::to_string(size.drawing) + ".txt"));
        if (!palette || !drawing) return std::nullopt;
        pngs.push_back(Png(Lines(*drawing), ReadPalette(*palette), size));
    }
    return pngs;
}

int Check(base::Disk& disk, const fs::path& folder, const std::string& ico) {
    const auto kept = disk.Read(folder / "vantor-kest.ico");
    if (kept && *kept == ico) return 0;
    std::fputs("icon_writer: vantor-kest.ico is not what the drawings give\n", stderr);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments = zo::platform::ProgramArguments(argc, argv);
    if (arguments.size() != 2) return 2;
    zo::platform::SystemDisk disk;
    const auto pngs = Draw(disk, arguments[0]);
    if (!pngs) {
        std::fprintf(stderr, "icon_writer: no drawings in %s\n", arguments[0].c_str());
        return 2;
    }
    if (arguments[1] == "--check") return Check(disk, arguments[0], Ico(*pngs));
    const fs::path folder = arguments[1];
    bool written = static_cast<bool>(disk.Write(folder / "vantor-kest.ico", Ico(*pngs)));
    for (std::size_t index = 0; index < pngs->size(); ++index) {
        const std::string name = "vantor-kest-" + std::to_string(kSizes[index].size) + ".png";
        written = disk.Write(folder / name, (*pngs)[index]) && written;
    }
    if (!written) std::fputs("icon_writer: cannot write there\n", stderr);
    return written ? 0 : 1;
}
