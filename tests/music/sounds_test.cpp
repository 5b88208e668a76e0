// Interface sounds and the line voice, measured.
#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "music/effects.h"
#include "music/line_voice.h"
#include "music/wav_file.h"

namespace {

using Kest::Effect;
using Kest::Frame;
using Kest::LineVoice;

float Peak(std::span<const float> samples) {
    float peak = 0;
    for (const float sample : samples) peak = std::max(peak, std::abs(sample));
    return peak;
}

// How much of a frequency a stretch of samples holds, as the amplitude of a sine.
float Strength(std::span<const float> samples, float hz) {
    std::complex<double> sum = 0;
    for (std::size_t k = 0; k < samples.size(); ++k) {
        const double angle = 2 * std::numbers::pi * hz * static_cast<double>(k) / Kest::kSampleRate;
        sum += static_cast<double>(samples[k]) * std::polar(1.0, -angle);
    }
    return static_cast<float>(2 * std::abs(sum) / static_cast<double>(samples.size()));
}

struct Channels {
    std::vector<float> left, right;
};

Channels Play(LineVoice& voice, int frames) {
    Channels played;
    for (int k = 0; k < frames; ++k) {
        const Frame frame = voice.Next();
        played.left.push_back(frame.left);
        played.right.push_back(frame.right);
    }
    return played;
}

float HzOf(int note) {
    return 440 * std::exp2(static_cast<float>(note - 69) / 12);
}

}  // namespace

TEST_CASE("every interface sound is short, ends in silence and keeps to a quarter of full scale") {
    const Kest::EffectTables tables;
    for (std::size_t k = 1; k < Kest::kEffects; ++k) {
        const auto samples = tables.Samples(static_cast<Effect>(k));
        CAPTURE(k);
        if (static_cast<Effect>(k) == Effect::LineByte) {
            CHECK(samples.empty());
            continue;
        }
        REQUIRE(samples.size() > 400);
        CHECK(samples.size() < 2 * Kest::kSampleRate);
        const float peak = Peak(samples) * Kest::EffectVolume(static_cast<Effect>(k));
        CHECK(peak < 0.26F);
        CHECK(peak > std::pow(10.0F, -30.0F / 20));
        CHECK(Peak(samples.last(8)) < 0.001F);
    }
}

TEST_CASE("a sound has the pitches of its recipe, one after another") {
    const Kest::EffectTables tables;
    const auto pass = tables.Samples(Effect::Pass);
    const auto stretch = [&](int ms) {
        return pass.subspan(static_cast<std::size_t>(Kest::SamplesOf(static_cast<float>(ms))),
                            static_cast<std::size_t>(Kest::SamplesOf(50)));
    };
    CHECK(Strength(stretch(10), 587) > 8 * Strength(stretch(10), 740));
    CHECK(Strength(stretch(95), 740) > 2 * Strength(stretch(95), 880));
    CHECK(Strength(stretch(175), 880) > 2 * Strength(stretch(175), 740));
}

TEST_CASE("a byte is two tones of the scale, and its way is heard") {
    CHECK(Kest::LineNote(0, 2) == 50);
    CHECK(Kest::LineNote(15, 2) == 86);
    CHECK(Kest::LineNote(7, 9) == 48 - 3 + 12 + 4);

    for (const bool toward_card : {false, true}) {
        CAPTURE(toward_card);
        LineVoice voice;
        CHECK(voice.Play(0x4F, toward_card, 2));
        const Channels played = Play(voice, 2 * 2496 + 10);
        const auto high = std::span(played.left).subspan(0, 2496);
        const auto low = std::span(played.left).subspan(2496, 2496);
        const float hz = HzOf(Kest::LineNote(4, 2));
        CHECK(Strength(high, hz) > 4 * Strength(high, HzOf(Kest::LineNote(5, 2))));
        CHECK(Strength(low, HzOf(86)) > 0.01F);
        CHECK((Strength(high, 2 * hz) > Strength(high, hz) / 8) == !toward_card);
        CHECK((Peak(played.left) > Peak(played.right)) == !toward_card);
        CHECK(Peak(std::span(played.left).last(10)) == 0);
        CHECK(Peak(played.left) < 0.13F);
    }
}

TEST_CASE("bytes that crowd are passed over, and one that is cut off does not click") {
    LineVoice voice;
    CHECK(voice.Play(0x00, false, 2));
    CHECK_FALSE(voice.Play(0x01, false, 2));
    CHECK(voice.Play(0x01, true, 2));
    Play(voice, 959);
    CHECK_FALSE(voice.Play(0x01, false, 2));
    Play(voice, 1);
    const Frame before = voice.Next();
    CHECK(voice.Play(0xFF, false, 2));
    const Frame after = voice.Next();
    CHECK(std::abs(after.left - before.left) < 0.02F);
}

TEST_CASE("a WAV file's header counts its bytes") {
    std::string wav = Kest::WavHeader(3);
    Kest::AppendSamples(wav, std::array<std::int16_t, 6>{1, -2, 300, 0, 0, -32768});
    REQUIRE(wav.size() == 44 + 12);
    CHECK(wav.substr(0, 4) == "RIFF");
    CHECK(wav[4] == 36 + 12);
    CHECK(wav.substr(8, 8) == "WAVEfmt ");
    CHECK(wav[40] == 12);
    CHECK(wav.substr(44) == std::string("\x01\x00\xFE\xFF\x2C\x01\x00\x00\x00\x00\x00\x80", 12));
}
