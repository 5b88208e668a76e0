#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "benchmarks.h"
#include "hum/compile.h"
#include "hum/machine.h"
#include "native_patch.h"

namespace bench {
namespace {

constexpr int kBlock = 4096;
constexpr int kBlocks = 24;
constexpr double kSampleNanoseconds = 1e9 / hum::kSampleRate;
constexpr int kSamples = 9;

double NanosecondsASample(hum::Machine& machine, std::vector<float>& stereo) {
    Stopwatch watch;
    for (int k = 0; k < kBlocks; ++k) machine.Run(stereo);
    Keep(stereo.data());
    return watch.Nanoseconds() / (kBlock * kBlocks);
}

double NanosecondsASample(NativePatch& patch, std::vector<float>& stereo) {
    Stopwatch watch;
    for (int k = 0; k < kBlocks; ++k) patch.Run(stereo.data(), kBlock);
    Keep(stereo.data());
    return watch.Nanoseconds() / (kBlock * kBlocks);
}

}  // namespace

void RunMachine(Report& report) {
    std::stringstream text;
    text << std::ifstream(KEST_HUM_PATCH).rdbuf();
    const std::string source = text.str();
    hum::ProgramText program_text;
    program_text.text = source;
    hum::Program program;
    if (hum::Compile(program_text, program)) return;
    std::vector<float> stereo(2 * kBlock);
    NativePatch native;
    hum::Machine fast(program);
    hum::MachineSettings plainly;
    plainly.engine = hum::Engine::Plain;
    hum::Machine plain(program, plainly);
    fast.Start();
    plain.Start();
    report.Sample("machine: 8 saws and drums, times real time", "x", kSamples,
                  [&] { return kSampleNanoseconds / NanosecondsASample(fast, stereo); });
    report.Sample("machine: the same in C++, times real time", "x", kSamples,
                  [&] { return kSampleNanoseconds / NanosecondsASample(native, stereo); });
    // One after the other in each sample, so that both see the same load.
    report.Sample("machine: its speed as a part of that", "", kSamples, [&] {
        const double of_native = NanosecondsASample(native, stereo);
        return of_native / NanosecondsASample(fast, stereo);
    });
    report.Sample("machine: the plain one, times real time", "x", kSamples,
                  [&] { return kSampleNanoseconds / NanosecondsASample(plain, stereo); });
    report.Sample("machine: a start of the patch", "us", kSamples, [&] {
        Stopwatch watch;
        fast.Start();
        return watch.Nanoseconds() / 1000;
    });
}

}  // namespace bench
