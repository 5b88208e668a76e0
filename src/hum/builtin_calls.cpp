#include "builtin_calls.h"

#include <cmath>
#include <iterator>

#include "builtin_samples.h"
#include "clock.h"
#include "formulas.h"
#include "hum/arithmetic.h"
#include "hum/builtins.h"

namespace hum {
namespace formula {
namespace {

using Math1 = double (*)(double);
using Math2 = double (*)(double, double);

template <Math1 kFunction>
float InDouble(float x) {
    return static_cast<float>(kFunction(static_cast<double>(x)));
}
template <Math2 kFunction>
float InDouble2(float x, float y) {
    return static_cast<float>(kFunction(static_cast<double>(x), static_cast<double>(y)));
}

float Clamp01(float x) {
    return Clamp(x, 0.0f, 1.0f);
}

std::int32_t RandomBelow(Runtime& runtime, std::int32_t n) {
    const std::uint64_t x = Draw(runtime);
    return n < 1 ? 0 : static_cast<std::int32_t>(x * static_cast<std::uint64_t>(n) >> 32);
}

float HertzToNote(float hertz) {
    const double held = std::max(static_cast<double>(hertz), 1e-6);
    return static_cast<float>(69.0 + 12.0 * std::log2(held / 440.0));
}
float DecibelsToLevel(float decibels) {
    return static_cast<float>(std::pow(10.0, static_cast<double>(decibels) / 20.0));
}
float LevelToDecibels(float level) {
    return static_cast<float>(20.0 * std::log10(std::max(static_cast<double>(level), 1e-6)));
}

void SvfTick(float x, State s1, State s2, float cutoff_hz, float q, State lp, State bp, State hp) {
    const SvfBands bands = SvfStep(x, s1, s2, cutoff_hz, q);
    lp.Set(0, bands.lp);
    bp.Set(0, bands.bp);
    hp.Set(0, bands.hp);
}

enum class Pass : std::uint8_t { Low, High };

template <Pass kPass>
void BiquadCoefficients(float cutoff_hz, float q, State b0, State b1, State b2, State a1,
                        State a2) {
    const double turn = static_cast<double>(HeldCutoff(cutoff_hz)) / kSampleRate;
    const double alpha = SineOfTurn(turn) / (2.0 * (q > 0.1f ? static_cast<double>(q) : 0.1));
    const double c = SineOfTurn(turn + 0.25);
    const double scale = 1.0 / (1.0 + alpha);
    const double sign = kPass == Pass::Low ? -1.0 : 1.0;
    const double edge = (1.0 + sign * c) / 2;
    b0.Set(0, static_cast<float>(edge * scale));
    b1.Set(0, static_cast<float>(-2 * sign * edge * scale));
    b2.Set(0, static_cast<float>(edge * scale));
    a1.Set(0, static_cast<float>(-2 * c * scale));
    a2.Set(0, static_cast<float>((1.0 - alpha) * scale));
}

float Ladder(float x, Words<4> s, float cutoff_hz, float resonance, float drive) {
    const float g = Prewarped(cutoff_hz);
    const float big_g = g / (1.0f + g);
    const float h = 1.0f / (1.0f + g);
    const float k = 4.0f * Clamp01(resonance);
    const float g2 = big_g * big_g;
    const float tail = g2 * big_g * s[0] + g2 * s[1] + big_g * s[2] + s[3];
    float u = InDouble<std::tanh>((drive * x - k * h * tail) / (1.0f + k * g2 * g2));
    for (std::uint32_t pole = 0; pole < 4; ++pole) {
        const float v = (u - s[pole]) * big_g;
        const float y = v + s[pole];
        s.Set(pole, y + v);
        u = y;
    }
    return u;
}

float Voice(float freq, float level, Words<8> s) {
    // 1 - exp(-1 / (t * rate)) for 8 and for 120 ms.
    constexpr float kRise = 0.0026007788f;
    constexpr float kFall = 0.00017359604f;
    const float target = Clamp01(level);
    const float e = s[3] + (target > s[3] ? kRise : kFall) * (target - s[3]);
    s.Set(3, e);
    const float w = 0.38f * BlepSaw(1.0023f * freq, State{s.at}) +
                    0.38f * BlepSaw(0.9977f * freq, State{s.at + 1}) +
                    0.30f * Sine(freq / 2, State{s.at + 2});
    const float cutoff_hz = 200.0f + 1.5f * freq + 5200.0f * e * e;
    return SvfLowPass(w, State{s.at + 4}, State{s.at + 5}, cutoff_hz, 0.8f) * e;
}

double QuarterSamples(const Runtime& runtime) {
    return kQuarterSamples / static_cast<double>(HeldBpm(runtime.Float(kBpmAddress)));
}

std::int32_t Nearest(double samples) {
    if (std::isnan(samples)) return 0;
    return static_cast<std::int32_t>(
        std::clamp(std::floor(samples + 0.5), -2147483648.0, 2147483647.0));
}

std::int32_t BeatLength(Runtime& runtime) {
    return Nearest(QuarterSamples(runtime));
}
std::int32_t BarLength(Runtime& runtime) {
    return Nearest(QuarterSamples(runtime) * BarBeats(runtime.clock));
}
std::int32_t StepLength(Runtime& runtime, float division) {
    return division > 0 ? Nearest(QuarterSamples(runtime) * 4 / static_cast<double>(division)) : 0;
}
std::int32_t NoteLength(Runtime& runtime, float quarters) {
    return Nearest(QuarterSamples(runtime) * static_cast<double>(quarters));
}
float BarQuarters(Runtime& runtime) {
    return static_cast<float>(BarBeats(runtime.clock));
}

void SetTimeSignature(Runtime& runtime, std::int32_t n, std::int32_t d) {
    if (n < 1 || n > 32 || d < 1 || d > 32 || (d & (d - 1)) != 0) return;
    Clock& clock = runtime.clock;
    const double bars = BarsSince(clock, BeatAt(clock, runtime.sample));
    clock.bar_origin += static_cast<std::int64_t>(bars);
    clock.bar_origin_beat += bars * BarBeats(clock);
    clock.beats_per_bar_n = n;
    clock.beats_per_bar_d = d;
    WriteTimeSignature(runtime);
}

float Dotted(float quarters) {
    return 1.5f * quarters;
}
float DoubleDotted(float quarters) {
    return 1.75f * quarters;
}
float Triplet(float quarters) {
    return 2.0f * quarters / 3.0f;
}
float Tuplet(float quarters, std::int32_t n, std::int32_t m) {
    return n == 0 ? 0.0f : quarters * static_cast<float>(m) / static_cast<float>(n);
}

// Whole samples of a length, with the carry of those before it; what is left over is the carry of
// the next.
std::int32_t Span(Runtime& runtime, double samples) {
    constexpr double kLongest = 2000000000.0;
    double& carry = runtime.running->carry;
    const double exact = std::min(std::isnan(samples) ? 0.0 : samples, kLongest) + carry;
    const double whole = std::floor(exact + 0.5);
    if (whole < 1) {
        carry = std::max(exact, -0.5);
        return 0;
    }
    carry = exact - whole;
    return static_cast<std::int32_t>(whole);
}

std::int32_t SpanSamples(Runtime& runtime, float n) {
    return Span(runtime, static_cast<double>(n));
}
std::int32_t SpanBeats(Runtime& runtime, float beats) {
    return Span(runtime, static_cast<double>(beats) * QuarterSamples(runtime));
}
std::int32_t SpanBars(Runtime& runtime, float bars) {
    return Span(runtime,
                static_cast<double>(bars) * QuarterSamples(runtime) * BarBeats(runtime.clock));
}
std::int32_t SpanMilliseconds(Runtime& runtime, float ms) {
    return Span(runtime, static_cast<double>(ms) * (kSampleRate / 1000.0));
}
std::int32_t SpanSeconds(Runtime& runtime, float seconds) {
    return Span(runtime, static_cast<double>(seconds) * kSampleRate);
}

// A hostile carry must not leave what a wait can hold.
float SwapCarry(Runtime& runtime, float carry) {
    const double held = std::isnan(carry) ? 0.0 : std::clamp(static_cast<double>(carry), -0.5, 0.5);
    return static_cast<float>(std::exchange(runtime.running->carry, held));
}

void ClearWords(Runtime& runtime, Address at, std::int32_t words) {
    if (words <= 0) return;
    const auto address = static_cast<std::uint32_t>(at.word);
    if (!runtime.InMemory(address, static_cast<std::uint32_t>(words))) {
        runtime.Fail(Trouble::BuiltinPointer, address);
        return;
    }
    std::fill_n(runtime.memory + address, words, 0u);
    // A loop that clears much is as long as one that does much.
    runtime.extra += words / 8;
}

float ClampOf(float x, float low, float high) {
    return Clamp(x, low, high);
}
double RoundAway(double x) {
    return std::round(x);
}

}  // namespace
}  // namespace formula

using namespace formula;

const BuiltinCode kBuiltinCode[] = {
    Invoke<InDouble<std::sin>>,
    Invoke<InDouble<std::cos>>,
    Invoke<InDouble<std::tan>>,
    Invoke<InDouble<std::asin>>,
    Invoke<InDouble<std::acos>>,
    Invoke<InDouble<std::atan>>,
    Invoke<InDouble<std::tanh>>,
    Invoke<InDouble<std::exp>>,
    Invoke<InDouble<std::log>>,
    Invoke<InDouble<std::log10>>,
    Invoke<InDouble<std::sqrt>>,
    Invoke<Floor>,
    Invoke<InDouble<std::ceil>>,
    Invoke<InDouble<RoundAway>>,
    Invoke<InDouble<std::fabs>>,
    Invoke<InDouble<std::fabs>>,
    Invoke<InDouble2<std::atan2>>,
    Invoke<InDouble2<std::pow>>,
    Invoke<InDouble2<std::fmod>>,
    Invoke<Min>,
    Invoke<Max>,
    Invoke<InDouble2<std::hypot>>,
    Invoke<ClampOf>,
    Invoke<Lerp>,
    Invoke<Wrap01>,
    Invoke<Clamp01>,
    Invoke<Random>,
    Invoke<RandomBelow>,
    Invoke<Noise>,
    Invoke<Phasor>,
    Invoke<Sine>,
    Invoke<Saw>,
    Invoke<BlepSaw>,
    Invoke<Square>,
    Invoke<Triangle>,
    Invoke<NoteToHertz>,
    Invoke<HertzToNote>,
    Invoke<DecibelsToLevel>,
    Invoke<LevelToDecibels>,
    Invoke<HeldUnit>,
    Invoke<SoftClip>,
    Invoke<Lpf1>,
    Invoke<Hpf1>,
    Invoke<OnePole>,
    Invoke<OnePole>,
    Invoke<DcBlock>,
    Invoke<SvfLowPass>,
    Invoke<SvfBandPass>,
    Invoke<SvfHighPass>,
    Invoke<SvfTick>,
    Invoke<BiquadCoefficients<Pass::Low>>,
    Invoke<BiquadCoefficients<Pass::High>>,
    Invoke<Biquad>,
    Invoke<Comb>,
    Invoke<AllPass>,
    Invoke<Ladder>,
    Invoke<ClipAt>,
    Invoke<ClipAtPart>,
    Invoke<ClipChannel>,
    Invoke<KitAt>,
    Invoke<KitLength>,
    Invoke<InstrumentAt>,
    Invoke<InstrumentLength>,
    Invoke<Voice>,
    Invoke<Envelope>,
    Invoke<BeatLength>,
    Invoke<BarLength>,
    Invoke<StepLength>,
    Invoke<NoteLength>,
    Invoke<BarQuarters>,
    Invoke<SetTimeSignature>,
    Invoke<Dotted>,
    Invoke<DoubleDotted>,
    Invoke<Triplet>,
    Invoke<Tuplet>,
    Invoke<ClipLength>,
    Invoke<SpanSamples>,
    Invoke<SpanBeats>,
    Invoke<SpanBars>,
    Invoke<SpanMilliseconds>,
    Invoke<SpanSeconds>,
    Invoke<SwapCarry>,
    Invoke<ClearWords>,
};
static_assert(std::size(kBuiltinCode) == kBuiltinCount);

}  // namespace hum
