// Compiles and runs the examples of docs/hum.md, and holds its tables to the compiler's.

#include <doctest/doctest.h>

#include "compiled.h"
#include "hum/builtins.h"
#include "hum/opcodes.h"
#include "outcome.h"
#include "support/cases.h"

namespace {

// The comment lines that end an example, as they are written in results.txt.
std::string Expectation(const std::string& example) {
    std::string expected;
    for (const std::string_view word : {"left", "right", "stop"}) {
        const std::string mark = "// " + std::string(word);
        const std::size_t at = example.find(mark);
        if (at == std::string::npos) continue;
        std::string line = example.substr(at + 3, example.find('\n', at) - at - 2);
        const std::size_t colon = line.find(':');
        expected += word == "stop" ? line : line.erase(colon, 1);
    }
    return expected;
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST_CASE("every example of the manual does what it says") {
    const std::string manual = support::ReadText("../docs/hum.md");
    constexpr std::string_view kFence = "```hum\n";
    int examples = 0;
    for (std::size_t at = 0; (at = manual.find(kFence, at)) != std::string::npos; ++examples) {
        at += kFence.size();
        const std::string example = manual.substr(at, manual.find("```", at) - at);
        CAPTURE(example);
        const Compiled compiled = CompileText(example);
        CHECK(compiled.fault == "");
        const std::string expected = Expectation(example);
        CHECK(expected != "");
        CHECK(Outcome(compiled.program, hum::Engine::Fast, expected) == expected);
    }
    CHECK(examples >= 12);
}

TEST_CASE("the manual names every built-in and every instruction") {
    const std::string manual = support::ReadText("../docs/hum.md");
    for (const hum::Builtin& builtin : hum::kBuiltins) {
        std::string call = "`" + std::string(builtin.name) + "(";
        for (const char letter : builtin.arguments) {
            call += (call.back() == '(' ? "" : ", ") + std::string(1, letter);
        }
        CAPTURE(call);
        CHECK(Contains(manual, call + ")`") != builtin.hidden);
    }
    int number = 0;
    for (const hum::Opcode& opcode : hum::kOpcodes) {
        const std::string name =
            std::to_string(number++) + " `" + std::string(opcode.mnemonic) + "`";
        CAPTURE(name);
        CHECK(Contains(manual, name));
    }
}
