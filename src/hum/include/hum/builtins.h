#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace hum {

// A built-in function; its number, which `svc` calls it by, is its place in the table.
struct Builtin {
    std::string_view name;
    // One letter an argument: f float, i int, p pointer to floats, w pointer to int, c clip.
    std::string_view arguments;
    char result;                // f, i, or v for none
    bool hidden = false;        // for the compiler alone: not a name of the language
    std::uint8_t optional = 0;  // arguments at the end that may be left out; 0 is passed for them
};

inline constexpr Builtin kBuiltins[] = {
    {"sin", "f", 'f'},
    {"cos", "f", 'f'},
    {"tan", "f", 'f'},
    {"asin", "f", 'f'},
    {"acos", "f", 'f'},
    {"atan", "f", 'f'},
    {"tanh", "f", 'f'},
    {"exp", "f", 'f'},
    {"log", "f", 'f'},
    {"log10", "f", 'f'},
    {"sqrt", "f", 'f'},
    {"floor", "f", 'f'},
    {"ceil", "f", 'f'},
    {"round", "f", 'f'},
    {"fabs", "f", 'f'},
    {"abs", "f", 'f'},
    {"atan2", "ff", 'f'},
    {"pow", "ff", 'f'},
    {"fmod", "ff", 'f'},
    {"min", "ff", 'f'},
    {"max", "ff", 'f'},
    {"hypot", "ff", 'f'},
    {"clamp_f", "fff", 'f'},
    {"lerp", "fff", 'f'},
    {"wrap01", "f", 'f'},
    {"clamp01", "f", 'f'},
    {"rand", "", 'f'},
    {"irand", "i", 'i'},
    {"noise", "", 'f'},
    {"phasor", "fp", 'f'},
    {"sine", "fp", 'f'},
    {"saw", "fp", 'f'},
    {"blep_saw", "fp", 'f'},
    {"sq", "fp", 'f'},
    {"tri", "fp", 'f'},
    {"mtof", "f", 'f'},
    {"ftom", "f", 'f'},
    {"dbamp", "f", 'f'},
    {"ampdb", "f", 'f'},
    {"clip", "f", 'f'},
    {"softclip", "f", 'f'},
    {"lpf1", "fpf", 'f'},
    {"hpf1", "fpf", 'f'},
    {"onepole", "pff", 'f'},
    {"one_pole", "pff", 'f'},
    {"dcblock", "fpp", 'f'},
    {"svf_lp", "fppff", 'f'},
    {"svf_bp", "fppff", 'f'},
    {"svf_hp", "fppff", 'f'},
    {"svf_tick", "fppffppp", 'v'},
    {"rbj_lp", "ffppppp", 'v'},
    {"rbj_hp", "ffppppp", 'v'},
    {"biquad", "fppfffff", 'f'},
    {"comb", "fpiwf", 'f'},
    {"allpass", "fpiwf", 'f'},
    {"ladder4", "fpfff", 'f'},
    {"samp", "cf", 'f'},
    {"samp01", "cf", 'f'},
    {"sampch", "cfi", 'f'},
    {"kit", "if", 'f'},
    {"kit_len", "i", 'i'},
    {"inst", "iffp", 'f', false, 1},
    {"inst_len", "ii", 'i'},
    {"voice", "ffp", 'f'},
    {"env_exp", "pffi", 'f'},
    {"beat_len", "", 'i'},
    {"bar_len", "", 'i'},
    {"step_len", "f", 'i'},
    {"note_len", "f", 'i'},
    {"bar_beats", "", 'f'},
    {"timesig", "ii", 'v'},
    {"dotted", "f", 'f'},
    {"dotted2", "f", 'f'},
    {"triplet", "f", 'f'},
    {"tuplet", "fii", 'f'},
    {"len", "c", 'i'},  // of a clip; of an array the compiler knows it
    {"span", "f", 'i', true},
    {"span_beats", "f", 'i', true},
    {"span_bars", "f", 'i', true},
    {"span_ms", "f", 'i', true},
    {"span_sec", "f", 'i', true},
    {"carry", "f", 'f', true},
    {"clear", "ii", 'v', true},
};
inline constexpr std::size_t kBuiltinCount = sizeof kBuiltins / sizeof kBuiltins[0];
static_assert(kBuiltinCount == 83);

// The number of a built-in that the compiler or the machine calls by name.
inline constexpr std::uint32_t BuiltinNumber(std::string_view name) {
    std::uint32_t number = 0;
    while (number < kBuiltinCount && kBuiltins[number].name != name) ++number;
    return number;
}

// The host data that a clip's hint names: minus 1 minus the kit sound's number, or minus 100 minus
// the piano note's; 0 for a hint that names none.
inline constexpr std::int32_t kFirstKitClip = -1;
inline constexpr std::int32_t kFirstPianoClip = -100;
std::int32_t HostClip(std::string_view hint);

}  // namespace hum
