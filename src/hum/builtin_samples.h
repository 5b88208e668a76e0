#pragma once

#include "formulas.h"

// Built-ins that play sampled sound: clips, the kit and the piano.
namespace hum::formula {

float ClipAt(Runtime& runtime, Address clip, float position);
float ClipAtPart(Runtime& runtime, Address clip, float part);
float ClipChannel(Runtime& runtime, Address clip, float position, std::int32_t channel);
std::int32_t ClipLength(Runtime& runtime, Address clip);
float KitAt(Runtime& runtime, std::int32_t sound, float position);
std::int32_t KitLength(Runtime& runtime, std::int32_t sound);
float InstrumentAt(Runtime& runtime, std::int32_t instrument, float note, float position,
                   Address velocity_and_right);
std::int32_t InstrumentLength(Runtime& runtime, std::int32_t instrument, std::int32_t note);

}  // namespace hum::formula
