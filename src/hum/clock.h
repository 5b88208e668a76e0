#pragma once

#include "machine_state.h"

namespace hum {

inline constexpr double kQuarterSamples = 60.0 * kSampleRate;  // at a bpm of 1

// Held to what a clock can run at; not a number counts as 1.
float HeldBpm(float bpm);

double BeatAt(const Clock& clock, std::int64_t sample);
double BarBeats(const Clock& clock);
double BarsSince(const Clock& clock, double beat);  // whole bars since the bar origin

// Writes the host variables before a sample.
void WriteHostVariables(Runtime& runtime);

// Those of the time signature alone, after it has changed.
void WriteTimeSignature(Runtime& runtime);

// Takes up what master has left in bpm.
void FollowTempo(Runtime& runtime);

}  // namespace hum
