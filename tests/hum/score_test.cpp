// Runs scores.txt.

#include <doctest/doctest.h>

#include <algorithm>
#include <bit>

#include "base/format.h"
#include "compiled.h"
#include "support/cases.h"

namespace {

// The events of the only score of a program, each as "midi beats velocity start step".
std::string EventsOf(const hum::Program& program, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        const auto word = [&](int field) {
            const std::uint32_t address = static_cast<std::uint32_t>(320 + 5 * i + field);
            for (const hum::StartWord& start : program.start) {
                if (start.address == address) return start.word;
            }
            return 0u;
        };
        const auto number = [&](int field) {
            return static_cast<double>(std::bit_cast<float>(word(field)));
        };
        text += base::Format("%d %g %g %g %g\n", static_cast<int>(word(0)), number(1),
                             number(2) * 127, number(3), number(4));
    }
    return text;
}

}  // namespace

TEST_CASE("a score is read note by note") {
    for (const support::Case& steps : support::Cases("hum/scores.txt")) {
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            CAPTURE(step.value);
            const Compiled compiled =
                CompileText("score s \"" + step.value + "\"; int n = len(s);");
            if (step.key == "fault") {
                CHECK(compiled.fault + "\n" == "1:9: score: " + step.text);
                continue;
            }
            CHECK(compiled.fault == "");
            const auto lines = std::count(step.text.begin(), step.text.end(), '\n');
            const int words = static_cast<int>(compiled.program.data_words) - 1 - 320;
            CHECK(words == 5 * lines);
            CHECK(EventsOf(compiled.program, words / 5) == step.text);
        }
    }
}
