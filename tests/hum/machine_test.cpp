#include "hum/machine.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "compiled.h"
#include "hum/assemble.h"
#include "hum/instruments.h"
#include "hum/opcodes.h"

namespace {

constexpr hum::Engine kEngines[] = {hum::Engine::Plain, hum::Engine::Fast};

// "SAMPLE: MESSAGE", or "ran" after 8 samples.
std::string End(hum::Machine& machine) {
    std::vector<float> stereo(16);
    machine.Start();
    machine.Run(stereo);
    const std::optional<hum::Stop>& stop = machine.Stopped();
    return stop ? std::to_string(stop->sample) + ": " + stop->message : "ran";
}

}  // namespace

TEST_CASE("hand-written code that breaks a rule is stopped with its message") {
    const struct {
        std::string text;
        std::string end;
    } cases[] = {
        {".master\nload i0, [0xf]\nhalt\n", "0: int load out of range (addr=15 size=98624 pc=0)"},
        {".master\nload i0, [0x10]\nloadf f0, [0x1813f]\nhalt\n", "ran"},
        {".master\nli i3, 98620\nloadf f0, [i3+4]\nhalt\n",
         "0: float load out of range (addr=98624 size=98624 pc=1)"},
        {".master\nli i3, -1\nstore [i3], i0\nhalt\n",
         "0: memory store out of range (addr=4294967295 size=98624 pc=1)"},
        {".master\nli i1, 4\nli i0, 400\naload i2, i1, i0  count 4, stride 2\nhalt\n",
         "0: int load out of range (addr=408 size=98624 pc=2)"},
        {".master\nli i1, -1\nli i0, 400\nastoref f2, i1, i0  count 4, stride 2\nhalt\n",
         "0: memory store out of range (addr=398 size=98624 pc=2)"},
        {".master\nli i1, 7\nli i0, 400\narowa i2, i1, i0  count 4, stride 2\nhalt\n",
         "0: int load out of range (addr=414 size=98624 pc=2)"},
        {".master\nli i1, 7\nli i0, 400\naloadwf f2, i1, i0  count 0, stride 2\nhalt\n",
         "0: float load out of range (addr=414 size=98624 pc=2)"},
        {".master\nli i1, -7\nli i0, 400\naloadw i2, i1, i0  count 4, stride 2\nhalt\n", "ran"},
        {".master\nli i0, 98624\nsvc rd=0 ra=0 rb=0 imm=30\nhalt\n",
         "0: builtin pointer out of range (addr=98624 pc=1)"},
        {".master\nli i0, 98621\nsvc rd=0 ra=0 rb=0 imm=55\nhalt\n",  // its last word is outside
         "0: builtin pointer out of range (addr=98621 pc=1)"},
        {".master\nli i0, -3\nsvc rd=0 ra=0 rb=0 imm=41\nhalt\n",
         "0: builtin pointer out of range (addr=-3 pc=1)"},
        {".master\nli i0, 400\nli i2, 410\nsvc rd=0 ra=0 rb=0 imm=53\nhalt\n",
         "0: comb/allpass needs a delay of 1 or more"},
        {".master\nli i0, 400\nli i1, 2147483647\nli i2, 410\nsvc rd=0 ra=0 rb=0 imm=54\nhalt\n",
         "0: builtin pointer out of range (addr=400 pc=3)"},
        {".master\njmp 0\n", "0: runaway module (missing wait)"},
        {".master\ncall rd=0 ra=0 rb=0 imm=0\n", "0: call stack overflow"},
        {".master\nret rd=0 ra=0 rb=0 imm=0\n", "0: call stack underflow"},
        {".master\nenter rd=0 ra=0 rb=0 imm=1\n", "0: call stack underflow"},
        {".master\ncall rd=0 ra=0 rb=0 imm=2\nhalt\nenter rd=0 ra=0 rb=0 imm=16385\n",
         "0: frame overflow"},
        {".master\ncall rd=0 ra=0 rb=0 imm=2\nhalt\nenter rd=0 ra=0 rb=0 imm=16384\nret rd=0 ra=0 "
         "rb=0 imm=0\n",
         "ran"},
        {".master\npush i0\njmp 0\n", "0: frame overflow"},
        {".master\ncall rd=0 ra=0 rb=0 imm=2\nhalt\npush i0\nret rd=0 ra=0 rb=0 imm=0\n",
         "0: return with a damaged stack"},
        {".master\npop i0\nhalt\n", "0: return with a damaged stack"},
        {".master\nwait rd=0 ra=0 rb=0 imm=0\nhalt\n", "0: wait from master"},
        {".master\njmp 2\nhalt\n", "0: invalid program counter"},
        {".master\njz i0, -1\nhalt\n", "0: invalid program counter"},
        {".master\njnz i0, -1\nhalt\n", "ran"},
        {".master\ncall rd=0 ra=0 rb=0 imm=9\nhalt\n", "0: invalid program counter"},
        {".master\nnop\n", "0: program counter walked off the end"},
        {".master\nop68 rd=0 ra=0 rb=0 imm=0\nhalt\n", "0: unknown opcode"},
        {".master\nop255 rd=0 ra=0 rb=0 imm=0\nhalt\n", "0: unknown opcode"},
        {".master\nsvc rd=0 ra=0 rb=0 imm=83\nhalt\n", "0: unknown opcode"},
        {".master\nmov rd=12 ra=0 rb=0 imm=0\nhalt\n", "0: unknown opcode"},
        {".master\nlf f0, inf\nstoref [0x21], f0\nhalt\n", "0: kernel output is not finite"},
        {"", "0: null kernel"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.text);
        hum::Program program;
        const std::optional<hum::Fault> fault = hum::Assemble("", c.text, program);
        REQUIRE_MESSAGE(!fault, hum::FaultText(*fault));
        for (const hum::Engine engine : kEngines) {
            hum::Machine machine(program, {.engine = engine});
            CHECK(End(machine) == c.end);
        }
    }
}

TEST_CASE("what is not a number has one pattern in memory, whichever pattern it came with") {
    hum::Program program;
    REQUIRE_FALSE(hum::Assemble("",
                                ".master\nlf rd=0 ra=0 rb=0 imm=-4194304\nlf rd=1 ra=0 rb=0 "
                                "imm=2143289345\naddf f1, f1, f0\nstoref [0x150], f0\nload i0, "
                                "[0x150]\npushf f1\npop i1\nxor i1, i1, i0\nli i2, "
                                "2143289344\nsub i0, i0, i2\nor i0, i0, i1\ni2f f0, i0\nstoref "
                                "[0x20], f0\nhalt\n",
                                program));
    for (const hum::Engine engine : kEngines) {
        hum::Machine machine(program, {.engine = engine});
        std::vector<float> stereo(2, 1.0f);
        machine.Start();
        machine.Run(stereo);
        CHECK(stereo[0] == 0.0f);
    }
}

TEST_CASE("the limit of a resume is exact to a loop's turn") {
    // Two instructions a turn.
    hum::Program program;
    REQUIRE_FALSE(
        hum::Assemble("", ".master\nli i1, 1\nsub i0, i0, i1\njnz i0, 1\nhalt\n", program));
    for (const hum::Engine engine : kEngines) {
        for (const std::int32_t turns : {999998, 999999, 1000001}) {
            hum::Program counted = program;
            counted.code.insert(counted.code.begin(),
                                {static_cast<std::uint8_t>(hum::Op::Li), 0, 0, 0, turns});
            counted.code[3].imm = 2;
            hum::Machine machine(counted, {.engine = engine});
            CHECK(End(machine) == (turns < 1000000 ? "ran" : "0: runaway module (missing wait)"));
        }
    }
}

TEST_CASE("a stop tells its place, stays, and ends with a new start") {
    const Compiled compiled = CompileText(
        "persist int starts; int runs;\nmain { starts++; }\n"
        "master { runs++;\n  int a[4]; a[sample + starts] = 1; sound->channel1 = starts * 10 + "
        "runs; }");
    REQUIRE(compiled.fault == "");
    hum::Machine machine(compiled.program);
    std::vector<float> stereo(16);
    CHECK(machine.Start());
    CHECK(machine.Run(stereo) == 3);
    CHECK(machine.Stopped()->line == 4);
    CHECK(machine.Run(stereo) == 0);
    CHECK(machine.Start());
    CHECK_FALSE(machine.Stopped());
    CHECK(machine.Run(stereo) == 2);
    CHECK(stereo[0] == 21);  // what persists was kept, the rest was not
}

TEST_CASE("params are held, finite, and taken up at a block's start") {
    const Compiled compiled = CompileText(
        "param float tempo = 300; param float bars = 3.4; param float level = 0.25;\n"
        "master { sound->channel1 = level; sound->channel2 = tempo + bars; }");
    hum::Machine machine(compiled.program);
    const std::size_t level = *machine.FindParam("level");
    CHECK_FALSE(machine.FindParam("depth"));
    REQUIRE(machine.Start());
    CHECK(machine.Tempo() == 160);
    CHECK(machine.Bars() == 8);
    CHECK(machine.LengthSamples() == 576000);
    std::vector<float> stereo(2 * 65);
    machine.SetParam(level, 0.5f);
    machine.Run(std::span(stereo).first(2));
    CHECK(stereo[0] == 0.5f);
    CHECK(stereo[1] == 168);
    machine.SetParam(level, 0.75f);
    machine.Run(std::span(stereo).first(2 * 63));
    CHECK(stereo[2 * 62] == 0.5f);
    machine.Run(std::span(stereo).first(2));
    CHECK(stereo[0] == 0.75f);
    machine.SetParam(level, std::numeric_limits<float>::quiet_NaN());
    CHECK(machine.Run(stereo) == 63);
    CHECK(machine.Stopped()->message == "kernel input is not finite");
    CHECK_FALSE(machine.Start());
}

TEST_CASE("the kit and the piano are levelled, and silent outside their length") {
    const hum::Instruments instruments = hum::MakeInstruments();
    const float peaks[] = {0.95f, 0.80f, 0.50f, 0.50f, 0.85f, 0.70f, 0.60f, 0.45f};
    for (std::size_t k = 0; k < instruments.kit.size(); ++k) {
        float peak = 0;
        for (const float frame : instruments.kit[k]) peak = std::max(peak, std::fabs(frame));
        CHECK(peak == doctest::Approx(peaks[k]).epsilon(0.01));
        CHECK(std::fabs(instruments.kit[k].back()) < 0.001f);
    }
    for (const hum::Instruments::Anchor& anchor : instruments.piano) {
        for (const hum::Instruments::Layer* layer : {&anchor.soft, &anchor.hard}) {
            double power = 0;
            for (std::size_t k = 0; k < 12000; ++k) {
                const double x = static_cast<double>(layer->gain) * layer->frames[k];
                power += x * x / 12000;
            }
            CHECK(std::sqrt(power) == doctest::Approx(0.11).epsilon(0.01));
        }
    }
    const Compiled compiled = CompileText(
        "clip k = \"kit:rim\"; clip p = \"piano:57\"; clip none = \"kit:gong\"; clip d = {1, 2, 4} "
        "loop cubic;\n"
        "master { float vr[2]; vr[0] = 0.8; float far = inst_len(0, 57) + 20;\n"
        "  float a = inst(0, 57.0, 500.0, vr);\n"
        "  sound->channel1 = sample == 0 ? samp(k, 100.0) - kit(KIT_RIM, 100.0)\n"
        "    : sample == 1 ? samp(p, 500.0) - (a + vr[1]) / 2\n"
        "    : sample == 2 ? samp(none, 0.0) + kit(8, 3.0) + kit(0, -2.0) + inst(1, 57.0, 3.0)\n"
        "    : sample == 3 ? inst(0, 57.0, far) + inst(0, 57.0, -20.0)\n"
        "    : sample == 4 ? samp(d, -1.0) : sample == 5 ? len(k) - kit_len(KIT_RIM) : samp(d, "
        "0.5);\n"
        "  sound->channel2 = fabs(a) > 0.0001; }");
    REQUIRE(compiled.fault == "");
    hum::Machine machine(compiled.program, {.instruments = &instruments});
    std::vector<float> stereo(14);
    REQUIRE(machine.Start());
    REQUIRE(machine.Run(stereo) == 7);
    const float wanted[] = {0, 0, 0, 0, 4, 0, 1.1875f};
    for (std::size_t k = 0; k < 7; ++k) {
        CAPTURE(k);
        CHECK(stereo[2 * k] == doctest::Approx(wanted[k]).epsilon(1e-6));
        CHECK(stereo[2 * k + 1] == 1);
    }
}
