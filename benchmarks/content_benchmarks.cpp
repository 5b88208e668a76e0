#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <ctime>

#include "benchmarks.h"
#include "content/content.h"

namespace bench {
namespace {

double CpuMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

struct Process {
    double milliseconds = 0;  // from start to end, as a shell sees it
    double megabytes = 0;     // resident at most
};

Process RunProcess(const std::vector<const char*>& arguments) {
    Stopwatch watch;
    const pid_t child = vfork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        execv(arguments[0], const_cast<char* const*>(arguments.data()));
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    return {watch.Nanoseconds() / 1e6, static_cast<double>(usage.ru_maxrss) / 1024};
}

}  // namespace

void RunContent(Report& report) {
    const kp::ContentStore store = kp::ContentStore::BuiltIn();
    report.Sample("content: all tickets read and proven, CPU", "ms", 25, [&] {
        const double before = CpuMilliseconds();
        const kp::Content content = kp::LoadContent(store);
        Keep(&content);
        return CpuMilliseconds() - before;
    });
    const std::vector<const char*> verify = {KEST_LC1, "verify", "1-02",
                                             KEST_SOLUTIONS "/1-02-loopback/plain.lc1", nullptr};
    report.Sample("lc1 verify: whole process", "ms", 51,
                  [&] { return RunProcess(verify).milliseconds; });
    report.Sample("lc1 verify: resident memory", "MB", 5,
                  [&] { return RunProcess(verify).megabytes; });
}

}  // namespace bench
