#include "gpu/animation.h"

#include <doctest/doctest.h>

#include <random>

#include "support/rounds.h"

using zo::platform::PixelBuffer;

namespace {

// Reads what the encoder writes, as the format describes it, and plays it.
class Player {
public:
    explicit Player(const std::string& file) : file_(file) {
        REQUIRE(file_.starts_with("GIF89a"));
        at_ = 6;
        width_ = Word();
        height_ = Word();
        REQUIRE(Byte() == 0xF7);
        at_ += 2;
        for (int k = 0; k < 256; ++k) {
            const int red = Byte(), green = Byte(), blue = Byte();
            colours_.push_back(static_cast<std::uint32_t>(red << 16 | green << 8 | blue));
        }
        REQUIRE(file_.substr(at_, 16) == std::string("\x21\xFF\x0BNETSCAPE2.0\x03\x01", 16));
        at_ += 19;
        screen_.resize(static_cast<std::size_t>(width_ * height_));
    }
    // False at the end.
    bool Next() {
        if (Byte() == 0x3B) {
            CHECK(at_ == file_.size());
            return false;
        }
        REQUIRE(Byte() == 0xF9);
        REQUIRE(Byte() == 4);
        REQUIRE(Byte() == 5);
        hundredths = Word();
        const int unchanged = Byte();
        REQUIRE(Byte() == 0);
        REQUIRE(Byte() == 0x2C);
        const int left = Word(), top = Word(), width = Word(), height = Word();
        REQUIRE(Byte() == 0);
        const std::vector<int> indices = Indices();
        REQUIRE(indices.size() == static_cast<std::size_t>(width * height));
        for (int k = 0; k < width * height; ++k) {
            const int index = indices[static_cast<std::size_t>(k)];
            if (index == unchanged) continue;
            const int pixel = (top + k / width) * width_ + left + k % width;
            screen_.at(static_cast<std::size_t>(pixel)) = colours_[static_cast<std::size_t>(index)];
        }
        return true;
    }
    const std::vector<std::uint32_t>& Screen() const { return screen_; }

    int hundredths = 0;

private:
    int Byte() { return static_cast<std::uint8_t>(file_.at(at_++)); }
    int Word() {
        const int low = Byte();
        return low | Byte() << 8;
    }

    std::vector<int> Indices() {
        REQUIRE(Byte() == 8);
        std::string data;
        while (const int length = Byte()) {
            data += file_.substr(at_, static_cast<std::size_t>(length));
            at_ += static_cast<std::size_t>(length);
        }
        std::vector<int> indices;
        std::vector<std::vector<int>> table;
        std::vector<int> before;
        int width = 9;
        std::size_t bit = 0;
        for (;;) {
            int code = 0;
            for (int k = 0; k < width; ++k, ++bit) {
                code |= (static_cast<std::uint8_t>(data.at(bit / 8)) >> bit % 8 & 1) << k;
            }
            if (code == 257) return indices;
            if (code == 256) {
                table.clear();
                for (int k = 0; k < 258; ++k) table.push_back({k});
                before.clear();
                width = 9;
                continue;
            }
            std::vector<int> entry;
            if (static_cast<std::size_t>(code) < table.size()) {
                entry = table[static_cast<std::size_t>(code)];
            } else {
                REQUIRE(static_cast<std::size_t>(code) == table.size());
                entry = before;
                entry.push_back(before.front());
            }
            indices.insert(indices.end(), entry.begin(), entry.end());
            if (!before.empty() && table.size() < 4096) {
                before.push_back(entry.front());
                table.push_back(before);
            }
            before = entry;
            if (table.size() == std::size_t{1} << width && width < 12) ++width;
        }
    }

    const std::string& file_;
    std::size_t at_ = 0;
    int width_ = 0, height_ = 0;
    std::vector<std::uint32_t> colours_;
    std::vector<std::uint32_t> screen_;
};

PixelBuffer Blank(int width, int height) {
    const auto count = static_cast<std::size_t>(width * height);
    return {.size = {width, height}, .pixels = std::vector<std::uint32_t>(count, 0x0000AA)};
}

}  // namespace

TEST_CASE("an animation shows every picture as it was") {
    std::mt19937 random(5);
    for (int round = support::Rounds(3); round > 0; --round) {
        const int colours = 2 + static_cast<int>(random() % 200);
        PixelBuffer picture = Blank(90 + static_cast<int>(random() % 40), 70);
        zo::gpu::GifEncoder encoder(picture.size);
        std::vector<std::vector<std::uint32_t>> added;
        for (int k = 0; k < 6; ++k) {
            // Runs and noise, so that the table of codes fills and is cleared.
            for (unsigned changes = random() % 3000; changes > 0; --changes) {
                picture.pixels[random() % picture.pixels.size()] =
                    0x010203U * (random() % static_cast<unsigned>(colours) % 85);
            }
            picture.pixels[0] = static_cast<std::uint32_t>(k);
            encoder.Add(picture, 8);
            added.push_back(picture.pixels);
        }
        const std::string file = encoder.Finish();
        Player player(file);
        for (const auto& pixels : added) {
            REQUIRE(player.Next());
            CHECK(player.hundredths == 8);
            CHECK((player.Screen() == pixels));
        }
        CHECK_FALSE(player.Next());
    }
}

TEST_CASE("a picture like the one before makes that one last longer") {
    PixelBuffer picture = Blank(16, 16);
    zo::gpu::GifEncoder encoder(picture.size);
    encoder.Add(picture, 8);
    encoder.Add(picture, 30);
    picture.pixels[17] = 0xFFFFFF;
    encoder.Add(picture, 8);
    const std::string file = encoder.Finish();
    Player player(file);
    REQUIRE(player.Next());
    CHECK(player.hundredths == 38);
    REQUIRE(player.Next());
    CHECK((player.Screen() == picture.pixels));
    CHECK_FALSE(player.Next());
}

TEST_CASE("colours beyond the table become the nearest that it has") {
    PixelBuffer picture = Blank(20, 20);
    for (std::size_t k = 0; k < picture.pixels.size(); ++k) {
        picture.pixels[k] = static_cast<std::uint32_t>(k < 254 ? k << 8 : 0xFF0000 + k);
    }
    zo::gpu::GifEncoder encoder(picture.size);
    encoder.Add(picture, 8);
    const std::string file = encoder.Finish();
    Player player(file);
    REQUIRE(player.Next());
    CHECK(player.Screen()[253] == 253U << 8);
    CHECK(player.Screen()[399] == 0xFF0000 + 254);
}
