// What comes out of the mixer, and when.
#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <thread>
#include <vector>

#include "music/mixer.h"

namespace {

using Kest::Effect;
using Kest::Frame;
using Kest::Mixer;
using Kest::MixerInput;

// A mixer with everything at full volume, past the time in which volumes reach their values.
struct Rig {
    Rig() {
        input->music_volume = 1;
        input->effects_volume = 1;
        input->line_volume = 1;
        input->effects = &tables;
        Mix(2400);
    }

    // Mixes over a steady music of 0.1.
    std::vector<Frame> Mix(std::size_t frames) {
        std::vector<Frame> mixed(frames);
        for (std::size_t done = 0; done < frames;) {
            const std::size_t count = std::min<std::size_t>(frames - done, 256);
            const std::vector<Frame> music(count, {level, level});
            input->music.Write(music);
            mixer.Mix(std::span(mixed).subspan(done, count));
            done += count;
        }
        return mixed;
    }

    void Post(Effect effect, std::uint16_t parameter = 0) {
        input->posts.Write(std::array{Kest::Post{effect, 1, parameter, 1}});
    }

    float level = 0.1F;
    std::unique_ptr<MixerInput> input = std::make_unique<MixerInput>();
    Kest::EffectTables tables;
    Mixer mixer{*input};
};

float Loudest(const std::vector<Frame>& frames) {
    float peak = 0;
    for (const Frame& frame : frames)
        peak = std::max({peak, std::abs(frame.left), std::abs(frame.right)});
    return peak;
}

}  // namespace

TEST_CASE("volumes and the focus move in a straight line and never jump") {
    Rig rig;
    CHECK(rig.Mix(1)[0] == Frame{0.1F, 0.1F});
    rig.input->music_volume = 0;
    const auto falling = rig.Mix(2400);
    CHECK(falling[1199].left == doctest::Approx(0.05).epsilon(0.01));
    CHECK(falling[2399].left == doctest::Approx(0).epsilon(0.0001));
    rig.input->music_volume = 1;
    rig.Mix(2400);
    rig.input->heard = false;
    const auto fading = rig.Mix(5760);
    CHECK(fading[2879].left == doctest::Approx(0.05).epsilon(0.01));
    CHECK(fading[5759].left < 0.0001F);
}

TEST_CASE("other sounds hold the music down, for as long as they last and a little longer") {
    struct Case {
        Effect effect;
        float under;
    };
    for (const Case& row :
         {Case{Effect::LineByte, 0.71F}, Case{Effect::Closed, 0.63F}, Case{Effect::Click, 1.0F}}) {
        CAPTURE(static_cast<int>(row.effect));
        Kest::Ducker ducker;
        Rig rig;
        rig.input->effects_volume = 0;
        rig.input->line_volume = 0;
        rig.Mix(2400);
        rig.Post(row.effect);
        const auto mixed = rig.Mix(48000 * 4);
        CHECK(mixed[720].left <= 0.1F);
        CHECK(mixed[11000].left == doctest::Approx(0.1F * row.under).epsilon(0.01));
        CHECK(mixed[12000 + 28800].left ==
              doctest::Approx(0.1F * (1 - (1 - row.under) * std::exp(-1.0F))).epsilon(0.01));
        CHECK(mixed.back().left == doctest::Approx(0.1).epsilon(0.01));
    }
}

TEST_CASE("the same sound at once is passed over, and the oldest of sixteen gives way") {
    Rig rig;
    rig.level = 0;
    rig.Post(Effect::TestTone);
    rig.Post(Effect::TestTone);
    const auto tone = rig.tables.Samples(Effect::TestTone);
    CHECK(Loudest(rig.Mix(96000)) ==
          doctest::Approx(*std::ranges::max_element(tone)).epsilon(0.01));

    // Sixteen others leave no room for it, as if it had never been.
    Rig never;
    never.level = 0;
    never.Mix(96000);
    for (Rig* each : {&rig, &never}) {
        if (each == &rig) each->Post(Effect::TestTone);
        each->Mix(256);
        for (std::uint16_t number = 5; number < 21; ++number) {
            each->Post(static_cast<Effect>(number));
        }
    }
    const auto mixed = rig.Mix(4800);
    const auto expected = never.Mix(4800);
    float apart = 0;
    for (std::size_t k = 0; k < mixed.size(); ++k) {
        apart = std::max(apart, std::abs(mixed[k].left - expected[k].left));
    }
    CHECK(apart < 1e-5F);
}

TEST_CASE("what is loud bends under full scale, and what is quiet is left alone") {
    CHECK(Kest::Ceiling(0.8F) == 0.8F);
    CHECK(Kest::Ceiling(-0.3F) == -0.3F);
    CHECK(Kest::Ceiling(1) == doctest::Approx(0.8 + 0.2 * std::tanh(1.0)));
    CHECK(Kest::Ceiling(-100) == doctest::Approx(-1));

    Rig rig;
    rig.level = 0.25F;
    std::vector<std::int16_t> exact(512);
    rig.input->music.Write(std::vector<Frame>(256, {0.25F, 0.25F}));
    rig.mixer.MixTo16Bits(exact, Kest::Dither::No);
    CHECK(std::ranges::all_of(exact, [](std::int16_t s) { return s == 8192; }));
    rig.input->music.Write(std::vector<Frame>(256, {0.25F, 0.25F}));
    rig.mixer.MixTo16Bits(exact, Kest::Dither::Yes);
    CHECK(std::ranges::count(exact, 8192) < 512);
    CHECK(std::ranges::all_of(exact, [](std::int16_t s) { return std::abs(s - 8192) <= 1; }));
}

TEST_CASE("a ring between two threads loses and repeats nothing") {
    Kest::SpscRing<int, 64> ring;
    std::array<int, 80> many{};
    CHECK(ring.Write(many) == 63);
    CHECK(ring.Read(many) == 63);
    constexpr int kCount = 20000;
    std::thread writer([&] {
        for (int k = 0; k < kCount;) k += static_cast<int>(ring.Write({&k, 1}));
    });
    int expected = 0;
    while (expected < kCount) {
        int value = -1;
        if (ring.Read({&value, 1}) == 1 && value != expected++) break;
    }
    writer.join();
    CHECK(expected == kCount);
}
