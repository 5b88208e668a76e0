#include "clock.h"

#include <cmath>

namespace hum {
namespace {

constexpr std::uint32_t Host(std::string_view name) {
    for (const HostVariable& variable : kHostVariables) {
        if (variable.name == name) return variable.address;
    }
    return 0;
}

}  // namespace

float HeldBpm(float bpm) {
    if (!(bpm > 1.0f)) return 1.0f;
    return bpm < 1000.0f ? bpm : 1000.0f;
}

double BeatAt(const Clock& clock, std::int64_t sample) {
    return clock.beat_origin + static_cast<double>(sample - clock.sample_origin) *
                                   static_cast<double>(clock.bpm) / kQuarterSamples;
}

double BarBeats(const Clock& clock) {
    return 4.0 * clock.beats_per_bar_n / clock.beats_per_bar_d;
}

double BarsSince(const Clock& clock, double beat) {
    return std::floor((beat - clock.bar_origin_beat) / BarBeats(clock));
}

void WriteHostVariables(Runtime& runtime) {
    const Clock& clock = runtime.clock;
    const double beat = BeatAt(clock, runtime.sample);
    const double bars = BarsSince(clock, beat);
    const double bar_start = clock.bar_origin_beat + bars * BarBeats(clock);
    std::uint32_t* memory = runtime.memory;
    const auto put = [&](std::uint32_t address, double value) {
        runtime.SetFloat(address, static_cast<float>(value));
    };
    put(Host("sr"), kSampleRate);
    memory[Host("ksmps")] = kBlockSamples;
    memory[Host("sample")] = static_cast<std::uint32_t>(runtime.sample);
    put(Host("time"), static_cast<double>(runtime.sample) / kSampleRate);
    runtime.SetFloat(Host("bpm"), clock.bpm);
    put(Host("beat"), beat);
    memory[Host("playing")] = 1;
    memory[Host("bar")] =
        static_cast<std::uint32_t>(clock.bar_origin + static_cast<std::int64_t>(bars));
    put(Host("bar_beat"), beat - bar_start);
    WriteTimeSignature(runtime);
    memory[Host("nch")] = 2;
    memory[Host("sound")] = kSoundAddress;
    memory[Host("input")] = kInputAddress;
    memory[Host("midi")] = kMidiAddress;
}

void WriteTimeSignature(Runtime& runtime) {
    const Clock& clock = runtime.clock;
    runtime.memory[Host("timesig_n")] = static_cast<std::uint32_t>(clock.beats_per_bar_n);
    runtime.memory[Host("timesig_d")] = static_cast<std::uint32_t>(clock.beats_per_bar_d);
}

void FollowTempo(Runtime& runtime) {
    const float wanted = runtime.Float(kBpmAddress);
    Clock& clock = runtime.clock;
    if (wanted == clock.bpm) return;
    const float bpm = HeldBpm(wanted);
    if (bpm == clock.bpm) return;
    clock.beat_origin = BeatAt(clock, runtime.sample);
    clock.sample_origin = runtime.sample;
    clock.bpm = bpm;
}

}  // namespace hum
