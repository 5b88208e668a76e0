#include "music/loudness.h"

#include <doctest/doctest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double kRate = 48000;

// Both channels alike: a tone of so many dB under full scale.
std::vector<Kest::Frame> Tone(double hertz, double decibels, double seconds, double phase = 0) {
    const double peak = std::pow(10, decibels / 20);
    std::vector<Kest::Frame> frames(static_cast<std::size_t>(seconds * kRate));
    for (std::size_t k = 0; k < frames.size(); ++k) {
        const double turn = hertz * static_cast<double>(k) / kRate;
        const auto sample =
            static_cast<float>(peak * std::sin(2 * std::numbers::pi * (turn + phase)));
        frames[k] = {sample, sample};
    }
    return frames;
}

double Integrated(std::initializer_list<std::vector<Kest::Frame>> parts) {
    Kest::Loudness loudness;
    for (const auto& part : parts) loudness.Add(part);
    return loudness.Integrated();
}

}  // namespace

// EBU Tech 3341, "Loudness Metering: 'EBU Mode' metering", 2016, gives these signals and a
// tolerance of a tenth.
TEST_CASE("the loudness of the reference tones is what the standard says") {
    CHECK(Integrated({Tone(1000, -23, 20)}) == doctest::Approx(-23).epsilon(0.1 / 23));
    CHECK(Integrated({Tone(1000, -33, 20)}) == doctest::Approx(-33).epsilon(0.1 / 33));
    // What lies under the gates does not count.
    CHECK(Integrated({Tone(1000, -36, 10), Tone(1000, -23, 60), Tone(1000, -36, 10)}) ==
          doctest::Approx(-23).epsilon(0.1 / 23));
    CHECK(Integrated({Tone(1000, -72, 10), Tone(1000, -36, 10), Tone(1000, -23, 60),
                      Tone(1000, -36, 10), Tone(1000, -72, 10)}) ==
          doctest::Approx(-23).epsilon(0.1 / 23));
    CHECK(Integrated({Tone(1000, -26, 20), Tone(1000, -20, 20.1), Tone(1000, -26, 20)}) ==
          doctest::Approx(-23).epsilon(0.1 / 23));
    CHECK(Integrated({Tone(1000, -90, 20)}) == -70);
}

TEST_CASE("the true peak is found between the samples") {
    const struct {
        double hertz, decibels, phase;
    } cases[] = {{12000, -6, 0.125}, {8000, -6, 1.0 / 6}, {6000, -6, 1.0 / 16}, {997, 0, 0}};
    for (const auto& c : cases) {
        CAPTURE(c.hertz);
        Kest::Loudness loudness;
        loudness.Add(Tone(c.hertz, c.decibels, 1, c.phase));
        // A tone that begins at once overshoots where it begins.
        CHECK(loudness.TruePeak() > c.decibels - 0.4);
        CHECK(loudness.TruePeak() < c.decibels + 1.2);
    }
}
