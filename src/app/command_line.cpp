#include "command_line.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "base/format.h"

namespace Kest {
namespace {

constexpr zo::ui::PixelSize kLeastSize = {320, 240};
constexpr int kMostPixels = 16384;     // either way; a larger picture would not fit the memory
constexpr double kLongestDelay = 600;  // seconds

// Reads as far as the text is a number and gives 0 when it is none.
int Integer(const std::string& text) {
    const long value = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX));
}

// The same for seconds. What is no length of time, or none at all, is 0.
double Delay(const std::string& text) {
    const double seconds = std::strtod(text.c_str(), nullptr);
    return seconds > 0 ? std::min(seconds, kLongestDelay) : 0;
}

using Options = LaunchOptions;
using Word = const std::string&;

struct Option {
    const char* name;
    const char* argument;  // what the usage text calls it; null for a switch
    const char* effect;
    void (*apply)(Options& options, Word word);  // null for what stands for itself anywhere
};
constexpr const char* kAudioRender = "--audio-render";
constexpr const char* kFonts = "--fonts";
constexpr Option kOptions[] = {
    {"--windowed", nullptr, "never start full screen", [](Options& o, Word) { o.windowed = true; }},
    {"--width", "PIXELS", "width of the window, at least 320",
     [](Options& o, Word w) {
         o.size.width = std::clamp(Integer(w), kLeastSize.width, kMostPixels);
     }},
    {"--height", "PIXELS", "height of the window, at least 240",
     [](Options& o, Word w) {
         o.size.height = std::clamp(Integer(w), kLeastSize.height, kMostPixels);
     }},
    {"--look", "NAME", "classic or modern", [](Options& o, Word w) { o.look = w; }},
    {"--theme", "NAME", "vga, amber, green or lcd", [](Options& o, Word w) { o.theme = w; }},
    {"--text", "SIZE", "large or normal",
     [](Options& o, Word w) { o.large_text = w == "large"    ? 1
                                             : w == "normal" ? 0
                                                             : -1; }},
    {"--terminal", nullptr, "play in this terminal", [](Options& o, Word) { o.terminal = true; }},
    {"--speak", nullptr, "say what happens in plain lines on the error stream",
     [](Options& o, Word) { o.speak = true; }},
    {"--vi", nullptr, "switch vi keys on for this run", [](Options& o, Word) { o.vi_keys = true; }},
    {"--closed", "COUNT", "treat so many tickets as closed; progress is not saved",
     [](Options& o, Word w) { o.closed = std::max(Integer(w), 0); }},
    {"--fresh", nullptr, "treat no ticket as closed; progress is not saved",
     [](Options& o, Word) { o.closed = 0; }},
    {"--capture", "FILE", "write a picture to the file and end",
     [](Options& o, Word w) { o.capture = w; }},
    {"--scene", "WORDS", "what the picture shows: words separated by colons",
     [](Options& o, Word w) { o.scene = w; }},
    {"--gif", "FILE", "write a run of --scene's ticket as an animation and end",
     [](Options& o, Word w) { o.gif = w; }},
    {"--firmware", "FILE", "what the animation runs, else the first slot",
     [](Options& o, Word w) { o.firmware = w; }},
    {"--test", "COUNT", "the test that it shows, from 1",
     [](Options& o, Word w) { o.test = Integer(w); }},
    {"--capture-delay", "SECONDS", "time that passes before the picture",
     [](Options& o, Word w) { o.capture_delay = Delay(w); }},
    {"--dpi", "COUNT", "dots per inch of the picture, from 100 to 400",
     [](Options& o, Word w) { o.dots_per_inch = Integer(w); }},
    {"--smoke", nullptr, "check the program itself and end",
     [](Options& o, Word) { o.smoke = true; }},
    {kAudioRender, "FILE", "write the soundtrack to a WAV file and end", nullptr},
    {kFonts, nullptr, "list the font families and end", nullptr},
    {"--help", nullptr, "show this list", [](Options& o, Word) { o.help = true; }},
    {"--version", nullptr, "show the version", [](Options& o, Word) { o.version = true; }},
};

const Option* FindOption(std::string_view name) {
    const auto* found =
        std::find_if(std::begin(kOptions), std::end(kOptions),
                     [&](const Option& option) { return option.apply && option.name == name; });
    return found == std::end(kOptions) ? nullptr : found;
}

}  // namespace

LaunchOptions ParseCommandLine(std::span<const std::string_view> arguments) {
    LaunchOptions options;
    for (std::size_t k = 0; k < arguments.size(); ++k) {
        const Option* option = FindOption(arguments[k]);
        if (!option) continue;
        const bool takes = option->argument && k + 1 < arguments.size();
        option->apply(options, takes ? std::string(arguments[++k]) : std::string());
    }
    const auto render = std::ranges::find(arguments, kAudioRender);
    if (arguments.end() - render > 1) options.audio_render = *(render + 1);
    options.fonts = std::ranges::count(arguments, kFonts) > 0;
    return options;
}

void Override(Settings& settings, const LaunchOptions& options) {
    if (!options.look.empty()) settings.modern_look = IsModernLook(options.look);
    if (!options.theme.empty()) settings.theme = ThemeNamed(options.theme);
    if (options.large_text >= 0) settings.large_text = options.large_text == 1;
    if (options.vi_keys) settings.vi_keys = true;
}

std::string UsageText() {
    std::string text = "Usage: vantor-kest [options]\n";
    for (const Option& option : kOptions) {
        const std::string name =
            option.argument ? base::Format("%s %s", option.name, option.argument) : option.name;
        text += base::Format("  %-26s %s\n", name.c_str(), option.effect);
    }
    return text;
}

}  // namespace Kest
