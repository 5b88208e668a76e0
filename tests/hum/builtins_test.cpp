#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

#include "hum/builtins.h"
#include "played.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kRate = 48000;
constexpr std::size_t kSamples = 1000;
constexpr double kNear = 1e-4;

// The same built-in in double, from its definition. x runs from -1 to 1 over the samples, u from 0
// to 1; s is what it keeps.
struct Case {
    const char* body;  // of master; leaves its value in y
    std::function<double(double x, double u, double* s)> reference;
    double jumps_above = 1e9;  // a difference of more is a jump that came a sample early or late
};

double Fraction(double x) {
    return x - std::floor(x);
}

// A phase lies in a word of memory, so it is a float from sample to sample.
double Step(double freq, double& phase) {
    const double p = phase;
    phase = static_cast<double>(static_cast<float>(Fraction(p + freq / kRate)));
    return p;
}

double Correction(double t, double d) {
    if (t < d) return 2 * t / d - t / d * t / d - 1;
    if (t > 1 - d) return (t - 1) / d * (t - 1) / d + 2 * (t - 1) / d + 1;
    return 0;
}

double BlepSaw(double freq, double& phase) {
    const double p = Step(freq, phase);
    return 2 * p - 1 - Correction(p, std::fabs(freq) / kRate);
}

double Square(double freq, double& phase) {
    const double p = Step(freq, phase);
    const double d = std::fabs(freq) / kRate;
    return (p < 0.5 ? 1 : -1) + Correction(p, d) - Correction(Fraction(p + 0.5), d);
}

double Triangle(double p) {
    return p < 0.25 ? 4 * p : (p < 0.75 ? 2 - 4 * p : 4 * p - 4);
}

struct Bands {
    double lp, bp, hp;
};

Bands Svf(double x, double* s, double hz, double q) {
    const double g = std::tan(kPi * hz / kRate);
    const double k = 1 / q, a1 = 1 / (1 + g * (g + k)), a2 = g * a1, a3 = g * a2;
    const double v3 = x - s[1], v1 = a1 * s[0] + a2 * v3, v2 = s[1] + a2 * s[0] + a3 * v3;
    s[0] = 2 * v1 - s[0];
    s[1] = 2 * v2 - s[1];
    return {v2, k * v1, x - k * v1 - v2};
}

double Smooth(double& s, double x, double a) {
    return s += a * (x - s);
}

double OnePoleStep(double hz) {
    return 1 - std::exp(-2 * kPi * hz / kRate);
}

double Ladder(double x, double* s, double hz, double res, double drive) {
    const double g = std::tan(kPi * hz / kRate), G = g / (1 + g), h = 1 / (1 + g), k = 4 * res;
    const double tail = G * G * G * s[0] + G * G * s[1] + G * s[2] + s[3];
    double u = std::tanh((drive * x - k * h * tail) / (1 + k * G * G * G * G));
    for (int pole = 0; pole < 4; ++pole) {
        const double v = (u - s[pole]) * G, y = v + s[pole];
        s[pole] = y + v;
        u = y;
    }
    return u;
}

double Voice(double freq, double level, double* s) {
    const double t = level > s[3] ? 0.008 : 0.12;
    s[3] += (1 - std::exp(-1 / (t * kRate))) * (level - s[3]);
    const double e = s[3];
    const double w = 0.38 * BlepSaw(1.0023 * freq, s[0]) + 0.38 * BlepSaw(0.9977 * freq, s[1]) +
                     0.30 * std::sin(2 * kPi * Step(freq / 2, s[2]));
    return Svf(w, s + 4, 200 + 1.5 * freq + 5200 * e * e, 0.8).lp * e;
}

double Ring(double* s, double x, double feedback, bool all_pass) {
    // s[0] is the place, the ring lies behind it.
    const auto at = static_cast<std::size_t>(s[0]);
    const double d = s[1 + at];
    const double v = x + feedback * d;
    s[1 + at] = v;
    s[0] = at + 1 < 5 ? static_cast<double>(at + 1) : 0;
    return all_pass ? d - feedback * v : d;
}

double Biquad(double x, double* z, bool high) {
    const double w = 2 * kPi * 3000 / kRate, al = std::sin(w) / 1.6, a0 = 1 + al, c = std::cos(w);
    const double b0 = (high ? 1 + c : 1 - c) / 2 / a0, b1 = (high ? -2 : 2) * b0;
    const double y = b0 * x + z[0];
    z[0] = b1 * x - -2 * c / a0 * y + z[1];
    z[1] = b0 * x - (1 - al) / a0 * y;
    return y;
}

const Case kCases[] = {
    {"y = sin(9 * x);", [](double x, double, double*) { return std::sin(9 * x); }},
    {"y = cos(9 * x);", [](double x, double, double*) { return std::cos(9 * x); }},
    {"y = tan(1.3 * x);", [](double x, double, double*) { return std::tan(1.3 * x); }},
    {"y = asin(x);", [](double x, double, double*) { return std::asin(x); }},
    {"y = acos(x);", [](double x, double, double*) { return std::acos(x); }},
    {"y = atan(5 * x);", [](double x, double, double*) { return std::atan(5 * x); }},
    {"y = tanh(5 * x);", [](double x, double, double*) { return std::tanh(5 * x); }},
    {"y = exp(2 * x);", [](double x, double, double*) { return std::exp(2 * x); }},
    {"y = log(u + 0.1);", [](double, double u, double*) { return std::log(u + 0.1); }},
    {"y = log10(u + 0.1);", [](double, double u, double*) { return std::log10(u + 0.1); }},
    {"y = sqrt(u);", [](double, double u, double*) { return std::sqrt(u); }},
    {"y = floor(9 * x);", [](double x, double, double*) { return std::floor(9 * x); }, 0.9},
    {"y = ceil(9 * x);", [](double x, double, double*) { return std::ceil(9 * x); }, 0.9},
    {"y = round(9 * x);", [](double x, double, double*) { return std::round(9 * x); }, 0.9},
    {"y = round(-2.5) + round(0.5);", [](double, double, double*) { return -2.0; }},
    {"y = fabs(x) + abs(x - 1);",
     [](double x, double, double*) { return std::fabs(x) + std::fabs(x - 1); }},
    {"y = atan2(x, u - 0.3);", [](double x, double u, double*) { return std::atan2(x, u - 0.3); },
     3},
    {"y = pow(u + 0.5, 3 * x);",
     [](double x, double u, double*) { return std::pow(u + 0.5, 3 * x); }},
    {"y = fmod(9 * x, 2.0);", [](double x, double, double*) { return std::fmod(9 * x, 2); }, 1.9},
    {"y = min(x, 0.2) + 10 * max(x, -0.2);",
     [](double x, double, double*) { return std::min(x, 0.2) + 10 * std::max(x, -0.2); }},
    {"y = hypot(x, u);", [](double x, double u, double*) { return std::hypot(x, u); }},
    {"y = clamp_f(x, -0.5, 0.25);",
     [](double x, double, double*) { return std::clamp(x, -0.5, 0.25); }},
    {"y = lerp(3, 5, x);", [](double x, double, double*) { return 3 + 2 * x; }},
    {"y = wrap01(7 * x);", [](double x, double, double*) { return Fraction(7 * x); }, 0.9},
    {"y = clamp01(2 * x);", [](double x, double, double*) { return std::clamp(2 * x, 0.0, 1.0); }},
    {"y = mtof(60 + 24 * x) / 100;",
     [](double x, double, double*) { return 4.4 * std::exp2((24 * x - 9) / 12); }},
    {"y = ftom(100 + 90 * x);",
     [](double x, double, double*) { return 69 + 12 * std::log2((100 + 90 * x) / 440); }},
    {"y = dbamp(20 * x);", [](double x, double, double*) { return std::pow(10, x); }},
    {"y = ampdb(u + 0.01);", [](double, double u, double*) { return 20 * std::log10(u + 0.01); }},
    {"y = clip(2 * x);", [](double x, double, double*) { return std::clamp(2 * x, -1.0, 1.0); }},
    {"y = softclip(2 * x);",
     [](double x, double, double*) {
         const double y = std::clamp(2 * x, -1.5, 1.5);
         return y - 4.0 / 27 * y * y * y;
     }},
    {"y = phasor(441, s);", [](double, double, double* s) { return Step(441, s[0]); }, 0.9},
    {"y = phasor(-441, s);", [](double, double, double* s) { return Step(-441, s[0]); }, 0.9},
    {"y = sine(441 + 200 * u, s);",
     [](double, double u, double* s) { return std::sin(2 * kPi * Step(441 + 200 * u, s[0])); }},
    {"y = saw(441, s);", [](double, double, double* s) { return 2 * Step(441, s[0]) - 1; }, 1.9},
    {"y = tri(441, s);", [](double, double, double* s) { return Triangle(Step(441, s[0])); }},
    {"y = blep_saw(110, s);", [](double, double, double* s) { return BlepSaw(110, s[0]); }, 0.5},
    {"y = blep_saw(2000 + 3000 * u, s);",
     [](double, double u, double* s) { return BlepSaw(2000 + 3000 * u, s[0]); }, 0.9},
    {"y = sq(3000, s);", [](double, double, double* s) { return Square(3000, s[0]); }, 0.9},
    {"y = lpf1(x, s, 500);",
     [](double x, double, double* s) { return Smooth(s[0], x, OnePoleStep(500)); }},
    {"y = lpf1(x, s, 9000);",
     [](double x, double, double* s) { return Smooth(s[0], x, OnePoleStep(9000)); }},
    {"y = hpf1(x, s, 500);",
     [](double x, double, double* s) { return x - Smooth(s[0], x, OnePoleStep(500)); }},
    {"y = onepole(s, x, 0.01) + one_pole(&s[1], x, 0.1);",
     [](double x, double, double* s) { return Smooth(s[0], x, 0.01) + Smooth(s[1], x, 0.1); }},
    {"y = dcblock(x, s, &s[1]);",
     [](double x, double, double* s) {
         s[1] = x - s[0] + 0.9975 * s[1];
         s[0] = x;
         return s[1];
     }},
    {"y = svf_lp(x, s, &s[1], 300 + 2000 * u, 4);",
     [](double x, double u, double* s) { return Svf(x, s, 300 + 2000 * u, 4).lp; }},
    {"y = svf_bp(x, s, &s[1], 900, 0.2);",  // a q too low for it is 0.5
     [](double x, double, double* s) { return Svf(x, s, 900, 0.5).bp; }},
    {"y = svf_hp(x, s, &s[1], 900, 2);",
     [](double x, double, double* s) { return Svf(x, s, 900, 2).hp; }},
    {"svf_tick(x, s, &s[1], 900, 2, &s[2], &s[3], &s[4]); y = s[2] + 2 * s[3] + 4 * s[4];",
     [](double x, double, double* s) {
         const Bands b = Svf(x, s, 900, 2);
         return b.lp + 2 * b.bp + 4 * b.hp;
     }},
    {"rbj_lp(3000, 0.8, s, &s[1], &s[2], &s[3], &s[4]);"
     "y = biquad(x, &s[5], &s[6], s[0], s[1], s[2], s[3], s[4]);",
     [](double x, double, double* s) { return Biquad(x, s, false); }},
    {"rbj_hp(3000, 0.8, s, &s[1], &s[2], &s[3], &s[4]);"
     "y = biquad(x, &s[5], &s[6], s[0], s[1], s[2], s[3], s[4]);",
     [](double x, double, double* s) { return Biquad(x, s, true); }},
    {"y = comb(x, s, 5, &k, 0.7);",
     [](double x, double, double* s) { return Ring(s, x, 0.7, false); }},
    {"y = allpass(x, s, 5, &k, 0.6);",
     [](double x, double, double* s) { return Ring(s, x, 0.6, true); }},
    {"y = ladder4(x, s, 1200, 0.7, 3);",
     [](double x, double, double* s) { return Ladder(x, s, 1200, 0.7, 3); }},
    {"y = voice(220, sample < 600, s);",
     [](double, double u, double* s) { return Voice(220, u < 0.6 ? 1 : 0, s); }},
    {"y = env_exp(s, 0.01, 0.002, sample < 600);",
     [](double, double u, double* s) {
         const double t = u < 0.6 ? 0.01 : 0.002;
         return Smooth(s[0], u < 0.6 ? 1 : 0, 1 - std::exp(-6.907755 / (t * kRate)));
     }},
    {"y = dotted(u) + dotted2(u) + triplet(u) + tuplet(u, 5, 4) + tuplet(u, 0, 4);",
     [](double, double u, double*) { return u * (1.5 + 1.75 + 2.0 / 3 + 0.8); }},
};

}  // namespace

TEST_CASE("a built-in agrees with its formula") {
    for (const Case& c : kCases) {
        const std::string body = c.body;
        CAPTURE(body);
        const std::vector<float> stereo =
            Played(std::string("master { static float s[8]; static int k; float y = 0;"
                               "float u = sample / 1000.0; float x = 2 * u - 1;") +
                       c.body + "sound->channel1 = y; }",
                   kSamples);
        REQUIRE(stereo.size() == 2 * kSamples);
        double state[8] = {};
        double worst = 0;
        int jumps = 0;
        for (std::size_t n = 0; n < kSamples; ++n) {
            const double u = static_cast<double>(static_cast<float>(n) / 1000.0f);
            const double wanted = c.reference(2 * u - 1, u, state);
            const double off = std::fabs(wanted - static_cast<double>(stereo[2 * n]));
            off > c.jumps_above ? static_cast<void>(++jumps)
                                : static_cast<void>(worst = std::max(worst, off));
        }
        CHECK(worst <= kNear);
        CHECK(jumps <= 3);
    }
}

TEST_CASE("the generators draw one sequence") {
    std::uint32_t x = 0x2545F491;
    const auto draw = [&] {
        x ^= x << 13;
        x ^= x >> 17;
        return x ^= x << 5;
    };
    const std::vector<float> stereo = Played(
        "master { sound->channel1 = rand() + 4 * noise(); sound->channel2 = irand(1000); }", 200);
    for (std::size_t n = 0; n < 200; ++n) {
        const float uniform = static_cast<float>(draw() >> 8) / 16777216.0f;
        const float noise = static_cast<float>(draw() >> 8) / 8388608.0f - 1.0f;
        CHECK(stereo[2 * n] == uniform + 4 * noise);
        CHECK(stereo[2 * n + 1] == static_cast<float>(draw() * std::uint64_t{1000} >> 32));
    }
}

TEST_CASE("lengths follow tempo and metre") {
    CHECK(Played("param float tempo = 120; master { sound->channel1 = beat_len() + bar_len();"
                 "sound->channel2 = step_len(16) + note_len(0.5) + step_len(0); }",
                 1) == std::vector<float>{24000 + 96000, 6000 + 12000});
    CHECK(Played("param float tempo = 120; master { timesig(sample < 1 ? 3 : 99, 4);"
                 "sound->channel1 = bar_beats(); sound->channel2 = bar_len(); }",
                 2) == std::vector<float>{3, 72000, 3, 72000});
}

TEST_CASE("filters stay finite and settle at any cutoff and resonance") {
    const char* const calls[] = {"svf_lp(x, s, &s[1], fc, q)",
                                 "svf_bp(x, s, &s[1], fc, q)",
                                 "svf_hp(x, s, &s[1], fc, q)",
                                 "ladder4(x, s, fc, q, 4)",
                                 "lpf1(x, s, fc)",
                                 "hpf1(x, s, fc)"};
    for (const char* call : calls) {
        for (const char* cutoff : {"0", "-5", "20", "23520", "1e30", "12000 + 12000 * noise()"}) {
            for (const char* q : {"-1", "0.5", "1", "100", "1e9"}) {
                CAPTURE(call);
                CAPTURE(cutoff);
                CAPTURE(q);
                const std::vector<float> stereo = Played(
                    std::string("master { static float s[4]; float fc = ") + cutoff +
                        "; float q = " + q +
                        "; float x = sample < 2000 ? noise() : 0; sound->channel1 = " + call +
                        "; }",
                    4000);
                REQUIRE(stereo.size() == 8000);
                float loudest = 0;
                for (const float y : stereo) loudest = std::max(loudest, std::fabs(y));
                CHECK(loudest < 300.0f);
            }
        }
    }
}
