#include <algorithm>
#include <vector>

#include "bench/bench_run.h"
#include "benchmarks.h"
#include "content/content.h"

namespace bench {
namespace {

constexpr kp::Tick kLongest = 200000;
constexpr int kWidth = 142;  // of the lanes on a grid of 160 columns

// A test as long as any may be, whose card never rests: it takes a byte, works, and answers.
kp::LoadedTicket LongTicket() {
    kp::LoadedTicket loaded;
    loaded.ticket.id = "long";
    loaded.ticket.max_ticks = kLongest;
    loaded.ticket.machine.rom = 64;
    loaded.ticket.tests.resize(1);
    loaded.reference.outputs.resize(1);
    for (kp::Tick k = 0; k < kLongest; ++k) {
        loaded.reference.outputs[0].transmitted.push_back(static_cast<std::uint8_t>(k));
    }
    loaded.reference_text = "halt";
    return loaded;
}

constexpr std::string_view kBusy =
    "next: tx a\nadd a, 1\nmov b, a\nxor b, c\nmov c, b\nand a, $FF\njmp next";

void TimeTravel(Report& report, Kest::BenchRun& run) {
    kp::Tick tick = 0;
    report.Time("bench: any past tick of 200,000 shown", [&] {
        tick = (tick + 77777) % kLongest;
        run.Look(tick);
        Keep(&run.Card());
        return 1.0;
    });
    report.Time("bench: the next tick of 200,000 shown", [&] {
        tick = (tick + 1) % kLongest;
        run.Look(tick);
        Keep(&run.Card());
        return 1.0;
    });
}

void TimeTrace(Report& report, const Kest::BenchRun& run, std::string_view name, int level) {
    constexpr Kest::Lane kLanes[] = {Kest::Lane::SpecTx, Kest::Lane::Tx, Kest::Lane::Rx,
                                     Kest::Lane::Timer, Kest::Lane::Card};
    const Kest::TraceData trace = run.Trace();
    Kest::TraceCells cells;
    report.Time(name, [&] {
        cells.Draw(trace, kLanes, {.first = 0, .level = level}, kWidth);
        return 1.0;
    });
}

void TimeVerify(Report& report) {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    constexpr std::string_view kName = "bench: a verify of the heaviest ticket";
    if (!report.Wants(kName)) return;
    double most = 0;
    const kp::LoadedTicket* heaviest = nullptr;
    const auto verify = [](Kest::BenchRun& run) {
        Stopwatch watch;
        if (run.BeginVerify()) run.FinishVerify();
        return watch.Nanoseconds();
    };
    for (const kp::LoadedTicket* loaded : content.Tickets()) {
        Kest::BenchRun run(*loaded);
        run.SetFirmware(loaded->reference_text);
        verify(run);
        if (const double time = verify(run); time > most) most = time, heaviest = loaded;
    }
    if (heaviest == nullptr) return;
    Kest::BenchRun run(*heaviest);
    run.SetFirmware(heaviest->reference_text);
    report.Sample(kName, "us", 25, [&] { return verify(run) / 1e3; });
}

}  // namespace

void RunBench(Report& report) {
    const kp::LoadedTicket loaded = LongTicket();
    Kest::BenchRun run(loaded);
    run.SetFirmware(kBusy);
    run.RunToEnd();
    TimeTravel(report, run);
    run.Look(std::nullopt);
    TimeTrace(report, run, "bench: the trace of a long test drawn, three cells a tick", 1);
    TimeTrace(report, run, "bench: the trace of a long test drawn, 512 ticks a cell", 12);
    TimeVerify(report);
}

}  // namespace bench
