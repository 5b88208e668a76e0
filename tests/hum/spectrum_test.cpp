// Oscillators and filters by what a spectrum shows of them.

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "played.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kRate = 48000;
using Complex = std::complex<double>;

// In place; a power of two.
void Transform(std::vector<Complex>& x) {
    const std::size_t n = x.size();
    for (std::size_t i = 1, j = 0; i < n; ++i) {
        std::size_t bit = n / 2;
        for (; (j & bit) != 0; bit /= 2) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(x[i], x[j]);
    }
    for (std::size_t length = 2; length <= n; length *= 2) {
        const Complex turn = std::polar(1.0, -2 * kPi / static_cast<double>(length));
        for (std::size_t begin = 0; begin < n; begin += length) {
            Complex w = 1;
            for (std::size_t k = begin; k < begin + length / 2; ++k, w *= turn) {
                const Complex other = x[k + length / 2] * w;
                x[k + length / 2] = x[k] - other;
                x[k] += other;
            }
        }
    }
}

double Decibels(double ratio) {
    return 20 * std::log10(std::max(ratio, 1e-12));
}

// The left channel's spectrum.
std::vector<double> Spectrum(const std::vector<float>& stereo) {
    std::vector<Complex> x(stereo.size() / 2);
    for (std::size_t k = 0; k < x.size(); ++k) x[k] = static_cast<double>(stereo[2 * k]);
    Transform(x);
    std::vector<double> magnitudes(x.size() / 2);
    for (std::size_t k = 0; k < magnitudes.size(); ++k) magnitudes[k] = std::abs(x[k]);
    return magnitudes;
}

}  // namespace

TEST_CASE("the band-limited saw keeps its aliases down") {
    constexpr std::size_t kLength = 65536;
    // In bins, so that every harmonic and every alias falls on one; odd, so that they never meet.
    // 996.8 and 4997.3 Hz.
    const struct {
        std::size_t fundamental;
        double below;
    } cases[] = {{1361, -57}, {6823, -45}};
    for (const auto& c : cases) {
        const double hz = static_cast<double>(c.fundamental) * kRate / kLength;
        CAPTURE(hz);
        const std::vector<double> spectrum =
            Spectrum(Played("master { static float p; sound->channel1 = blep_saw(" +
                                std::to_string(hz) + ", &p); }",
                            kLength));
        double alias = 0;
        for (std::size_t k = 1; static_cast<double>(k) * kRate / kLength < 10000; ++k) {
            if (k % c.fundamental != 0) alias = std::max(alias, spectrum[k]);
        }
        const double ratio = Decibels(alias / spectrum[c.fundamental]);
        CHECK(ratio <= c.below);
        CHECK(ratio > c.below - 3);  // the loudest was found
    }
}

TEST_CASE("a filter responds as its transfer function says") {
    struct Case {
        const char* call;
        double hz, q;
        Complex (*response)(Complex s, double q);  // of s = j tan(w/2) / tan(w0/2)
    };
    const auto low = [](Complex s, double q) { return 1.0 / (s * s + s / q + 1.0); };
    const auto band = [](Complex s, double q) { return s / q / (s * s + s / q + 1.0); };
    const auto high = [](Complex s, double q) { return s * s / (s * s + s / q + 1.0); };
    const auto ladder = [](Complex s, double res) {
        const Complex pole = 1.0 / (1.0 + s);
        const Complex four = pole * pole * pole * pole;
        return four / (1.0 + 4.0 * res * four);
    };
    const Case cases[] = {
        {"svf_lp(x, s, &s[1], fc, q)", 100, 0.7, low},
        {"svf_lp(x, s, &s[1], fc, q)", 2000, 8, low},
        {"svf_lp(x, s, &s[1], fc, q)", 15000, 0.5, low},
        {"svf_bp(x, s, &s[1], fc, q)", 1000, 5, band},
        {"svf_hp(x, s, &s[1], fc, q)", 3000, 2, high},
        {"(rbj_lp(fc, q, &c[0], &c[1], &c[2], &c[3], &c[4]), 0)", 1500, 3, low},
        {"(rbj_hp(fc, q, &c[0], &c[1], &c[2], &c[3], &c[4]), 0)", 1500, 0.9, high},
        // Quiet enough for its tanh to be a straight line.
        {"1000 * ladder4(0.001 * x, s, fc, q, 1)", 800, 0.6, ladder},
    };
    constexpr std::size_t kLength = 32768;
    for (const Case& c : cases) {
        CAPTURE(c.call);
        CAPTURE(c.hz);
        std::string call = c.call;
        if (call.front() == '(') {
            call = "biquad(x, s, &s[1], c[0], c[1], c[2], c[3], c[4])";
        }
        const std::string set_up =
            c.call[0] == '(' ? std::string(c.call + 1, std::string(c.call).find("), 0)")) + ";"
                             : "";
        const std::vector<double> measured =
            Spectrum(Played("master { static float s[4]; static float c[5]; float fc = " +
                                std::to_string(c.hz) + "; float q = " + std::to_string(c.q) + ";" +
                                set_up + "float x = sample == 0; sound->channel1 = " + call + "; }",
                            kLength));
        double worst = 0;
        for (std::size_t k = 1; k < kLength / 2; ++k) {
            const double w = kPi * static_cast<double>(k) / kLength;
            const Complex s(0, std::tan(w) / std::tan(kPi * c.hz / kRate));
            const double wanted = Decibels(std::abs(c.response(s, c.q)));
            if (wanted > -60) worst = std::max(worst, std::fabs(Decibels(measured[k]) - wanted));
        }
        CHECK(worst <= 0.5);
    }
}

TEST_CASE("one-pole filters respond as their difference equations say") {
    constexpr std::size_t kLength = 32768;
    for (const double hz : {30.0, 1000.0, 12000.0}) {
        CAPTURE(hz);
        const std::string at = std::to_string(hz);
        const auto respond = [&](const std::string& name) {
            return Spectrum(
                Played("master { static float s; float x = sample == 0;"
                       "sound->channel1 = " +
                           name + "(x, &s, " + at + "); }",
                       kLength));
        };
        const std::vector<double> low = respond("lpf1"), high = respond("hpf1");
        const double a = 1 - std::exp(-2 * kPi * hz / kRate);
        double worst = 0;
        for (std::size_t k = 1; k < kLength / 2; ++k) {
            const double w = 2 * kPi * static_cast<double>(k) / kLength;
            const Complex h = a / (1.0 - (1 - a) * std::polar(1.0, -w));
            const auto off = [&](double measured, double wanted) {
                return Decibels(wanted) > -60 ? std::fabs(Decibels(measured) - Decibels(wanted))
                                              : 0;
            };
            worst = std::max({worst, off(low[k], std::abs(h)), off(high[k], std::abs(1.0 - h))});
        }
        CHECK(worst <= 0.5);
    }
}
