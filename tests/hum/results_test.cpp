// Runs the programs of results.txt on both engines.

#include <doctest/doctest.h>

#include "compiled.h"
#include "outcome.h"
#include "support/cases.h"

TEST_CASE("a program does what it says, on both engines") {
    for (const support::Case& steps : support::Cases("hum/results.txt")) {
        std::string lines;  // of a program that takes more than one
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            CAPTURE(step.value);
            if (step.key == "program") {
                lines = step.text;
                continue;
            }
            const Compiled compiled = CompileText(step.key == "result" ? lines : step.value);
            CHECK(compiled.fault == "");
            CHECK(Outcome(compiled.program, hum::Engine::Plain, step.text) == step.text);
            CHECK(Outcome(compiled.program, hum::Engine::Fast, step.text) == step.text);
        }
    }
}
