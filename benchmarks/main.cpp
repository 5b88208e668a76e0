#include "benchmarks.h"

int main(int argc, char** argv) {
    bench::Report report({argv + 1, argv + argc});
    bench::RunCard(report);
    bench::RunFarEnds(report);
    bench::RunContent(report);
    bench::RunCompiler(report);
    bench::RunMachine(report);
    bench::RunMusic(report);
    bench::RunPictures(report);
    bench::RunBench(report);
    bench::RunTerminal(report);
    bench::RunApp(report);
    return 0;
}
