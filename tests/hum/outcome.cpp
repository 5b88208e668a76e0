#include "outcome.h"

#include <sstream>
#include <vector>

#include "base/format.h"

namespace {

constexpr std::size_t kLongest = 64;  // samples of a program that is expected to stop

std::string ChannelText(const std::string& name, const std::vector<float>& stereo,
                        std::size_t channel) {
    std::string text = name;
    for (std::size_t i = channel; i < stereo.size(); i += 2) {
        text += base::Format(" %.9g", static_cast<double>(stereo[i]));
    }
    return text + "\n";
}

std::size_t CountWords(const std::string& text) {
    std::istringstream words(text.substr(0, text.find('\n')));
    std::size_t count = 0;
    for (std::string word; words >> word;) ++count;
    return count;
}

}  // namespace

std::string Outcome(const hum::Program& program, hum::Engine engine, const std::string& expected) {
    hum::Machine machine(program, {.engine = engine});
    const bool stops = expected.starts_with("stop");
    std::vector<float> stereo(2 * (stops ? kLongest : CountWords(expected) - 1));
    if (machine.Start()) stereo.resize(2 * machine.Run(stereo));
    if (machine.Stopped()) {
        return "stop " + std::to_string(machine.Stopped()->sample) + ": " +
               machine.Stopped()->message + "\n";
    }
    std::string text = ChannelText("left", stereo, 0);
    if (expected.find("right") != std::string::npos) text += ChannelText("right", stereo, 1);
    return text;
}
