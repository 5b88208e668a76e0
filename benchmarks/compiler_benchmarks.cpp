#include <algorithm>
#include <cstdlib>
#include <string>

#include "benchmarks.h"
#include "hum/compile.h"

namespace bench {
namespace {

constexpr int kVoices = 380;
constexpr int kModules = 250;

// A part of a program as somebody would write it, '#' standing for its number.
constexpr std::string_view kVoice = R"(
// An oscillator, an envelope and a filter.
float level_#;

float voice_#(float *state, float freq, int gate)
{
  /* The envelope follows the gate. */
  float target = gate ? 1.0 : 0.0;
  state[0] += (target - state[0]) * 0.001;
  float wave = saw(freq, &state[1]);
  if (wave > 0.5) {
    wave = 0.5;
  } else {
    wave -= level_# * 0.1;
  }
  for (int i = 0; i < 3; i++)
    wave = lerp(wave, state[2], 0.25);
  return wave * state[0];
}

score tune_# "L8 O4 C E G O5 C R4";
)";

constexpr std::string_view kModule = R"(
module Out *part_# {
  float s[4];
  int k = 0;
  while (1) {
    sustain_note(tune_#[k].beats)
      this->l = voice_#(s, mtof(tune_#[k].midi), 1);
    this->r = this->l * 0.5;
    k++;
  }
}
)";

std::string Numbered(std::string_view text, int number) {
    std::string all;
    for (const char c : text) all += c == '#' ? std::to_string(number) : std::string(1, c);
    return all;
}

std::string LongProgram() {
    std::string text = "struct Out { float l; float r; };\n";
    for (int i = 0; i < kVoices; ++i) text += Numbered(kVoice, i);
    for (int i = 0; i < kModules; ++i) text += Numbered(kModule, i);
    text += "master {\n";
    for (int i = 0; i < kModules; ++i) text += Numbered("  sound->channel1 += part_#.l;\n", i);
    return text + "}\n";
}

}  // namespace

void RunCompiler(Report& report) {
    const std::string text = LongProgram();
    const auto lines = static_cast<double>(std::count(text.begin(), text.end(), '\n'));
    hum::Program program;
    report.Time("hum: compiling a line", [&] {
        if (hum::Compile({"", "", text, ""}, program)) std::abort();
        return lines;
    });
}

}  // namespace bench
