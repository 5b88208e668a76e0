// Crashes in the way that is asked for, having asked for a report in a folder.
//   crash_probe FOLDER write|abort|deep
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/disk.h"
#include "native/program.h"

namespace {

int Deepen(const volatile int* above) {
    volatile int here[1024] = {*above + 1};
    return here[0] < 0 ? 0 : Deepen(here) + here[0];
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments = zo::platform::ProgramArguments(argc, argv);
    if (arguments.size() != 2) return 2;
    zo::platform::ReportCrashes(base::TextPath(arguments[0]), "0.0.0");
    volatile int zero = 0;
    int* volatile nowhere = nullptr;
    if (arguments[1] == "write") *nowhere = zero;
    if (arguments[1] == "abort") std::abort();
    if (arguments[1] == "deep") return Deepen(&zero);
    return 0;
}
