// Runs assembler.txt, and looks at what stands beside the instructions.

#include "card/assembler.h"

#include <doctest/doctest.h>

#include "listing.h"
#include "support/cases.h"
#include "support/text.h"

namespace {

void CheckNumber(const std::string& word, const std::string& number, const kp::CardConfig& card) {
    CHECK(Listing(kp::Assemble("tx " + number, card)) == "tx " + word);
    CHECK(Listing(kp::Assemble("def N " + number + "\ntx n", card)) == "tx " + word);
    if (std::stoi(word) < card.ram) {
        CHECK(Listing(kp::Assemble("mov a, [" + number + "]", card)) == "mov a [" + word + "]");
    }
}

void CheckRefused(const std::string& number, const std::string& message,
                  const kp::CardConfig& card) {
    CHECK(Errors(kp::Assemble("tx " + number, card)) ==
          "1:4+" + std::to_string(number.size()) + " " + message + "\n");
}

void CheckAssembly(const support::Step& step, const kp::Assembly& assembly) {
    if (step.key == "error") {
        const std::string one = step.value.empty() ? "" : support::Unmarked(step.value) + "\n";
        CHECK(Errors(assembly) == one + step.text);
    } else if (step.key == "rom") {
        CHECK(assembly.lines == step.Number());
    } else {
        REQUIRE(step.key == "listing");
        CHECK(Errors(assembly) == "");
        CHECK(Listing(assembly) == step.value);
    }
}

}  // namespace

TEST_CASE("firmware is assembled as assembler.txt says") {
    for (const support::Case& steps : support::Cases("card/assembler.txt")) {
        kp::CardConfig card;
        std::string source;
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            std::string_view rest = step.value;
            if (step.key == "card") {
                card = *kp::ReadCardConfig(support::Json(step.value));
            } else if (step.key == "source") {
                source = support::Unmarked(step.Lines() + step.text);
            } else if (step.key == "number") {
                const std::string word(support::Cut(rest, " "));
                CheckNumber(word, support::Unmarked(rest), card);
            } else if (step.key == "malformed") {
                const std::string number = support::Unmarked(rest);
                CheckRefused(number, "\"" + number + "\" is not a valid number.", card);
            } else if (step.key == "too_large") {
                const std::string printed(support::Cut(rest, " "));
                CheckRefused(std::string(rest),
                             "The number " + printed + " does not fit in 16 bits.", card);
            } else {
                CheckAssembly(step, kp::Assemble(source, card));
            }
        }
    }
}

TEST_CASE("labels and constants keep the spelling and the line of their definition") {
    const kp::Assembly assembly =
        kp::Assemble("def One, 1\n\nLoop: x: tx x\ndef Two one\nx1: jmp LOOP\ndef X -2", {});
    REQUIRE(assembly.labels.size() == 3);
    CHECK(assembly.labels[0].name == "Loop");
    CHECK(assembly.labels[0].line == 3);
    CHECK(assembly.labels[2].value == 1);
    REQUIRE(assembly.constants.size() == 3);
    CHECK(assembly.constants[1].name == "Two");
    CHECK(assembly.constants[1].value == 1);
    CHECK(assembly.constants[2].value == 65534);
    CHECK(assembly.constants[2].line == 6);
    // The name of both a label and a constant is the constant where a value stands.
    CHECK(Listing(assembly) == "tx 65534; jmp >0");
    CHECK(assembly.instructions[1].line == 5);
}
