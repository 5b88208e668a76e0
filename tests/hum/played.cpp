#include "played.h"

#include <doctest/doctest.h>

#include "compiled.h"
#include "hum/machine.h"

std::vector<float> Played(const std::string& text, std::size_t samples) {
    const Compiled compiled = CompileText(text);
    REQUIRE_MESSAGE(compiled.fault.empty(), compiled.fault);
    hum::Machine machine(compiled.program);
    machine.Start();
    std::vector<float> stereo(2 * samples);
    stereo.resize(2 * machine.Run(stereo));
    return stereo;
}
