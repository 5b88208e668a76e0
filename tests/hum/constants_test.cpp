// Holds the compiler's arithmetic to the machine's.

#include <doctest/doctest.h>

#include <vector>

#include "compiled.h"
#include "hum/machine.h"

namespace {

constexpr std::string_view kValues[] = {"0",     "1",          "-3",          "7",
                                        "33",    "2147483647", "-2147483648", "0.5",
                                        "-2.25", "1e10",       "1e-30",       "3e38"};
constexpr std::string_view kOfBoth[] = {"a + b",     "a - b",        "a * b",           "a / b",
                                        "a % b",     "a == b",       "a != b",          "a < b",
                                        "a >= b",    "a && b",       "(int)a - (int)b", "!a + -b",
                                        "a ? b : a", "(float)a / b", "a || b",          "a <= b"};
constexpr std::string_view kOfInts[] = {"a & b",  "a | b",   "a ^ b", "a << b",
                                        "a >> b", "a >>> b", "~a + b"};

std::string_view TypeOf(std::string_view value) {
    return value.find_first_of(".e") == std::string_view::npos ? "int" : "float";
}

std::string Declared(std::string_view before, std::string_view name, std::string_view value) {
    return std::string(before) + std::string(TypeOf(value)) + ' ' + std::string(name) + " = " +
           std::string(value) + "; ";
}

}  // namespace

TEST_CASE("a constant is worked out as the machine would") {
    for (const std::string_view a : kValues) {
        for (const std::string_view b : kValues) {
            std::vector<std::string> wholes(std::begin(kOfBoth), std::end(kOfBoth));
            if (TypeOf(a) == "int" && TypeOf(b) == "int") {
                wholes.insert(wholes.end(), std::begin(kOfInts), std::end(kOfInts));
            }
            std::string constants, sums;
            for (const std::string& whole : wholes) {
                constants += "put(constants, " + whole + "); ";
                sums += "put(sums, " + whole + "); ";
            }
            // Nothing infinite may reach the output.
            const std::string text =
                "float constants[32], sums[32]; int n; "
                "void put(float *to, float x) { to[n++] = x == x ? clamp_f(x, -1e38, 1e38) : 0.1; "
                "} " +
                Declared("const ", "a", a) + Declared("const ", "b", b) + "master { n = 0; " +
                constants + "{ n = 0; " + Declared("", "a", a) + Declared("", "b", b) + sums +
                "} sound->channel1 = constants[sample]; sound->channel2 = sums[sample]; }";
            const Compiled compiled = CompileText(text);
            CAPTURE(text);
            REQUIRE(compiled.fault == "");
            hum::Machine machine(compiled.program);
            machine.Start();
            std::vector<float> stereo(2 * wholes.size());
            CHECK(machine.Run(stereo) == wholes.size());
            for (std::size_t i = 0; i < stereo.size(); i += 2) {
                CAPTURE(wholes[i / 2]);
                CHECK(stereo[i] == stereo[i + 1]);
            }
        }
    }
}
