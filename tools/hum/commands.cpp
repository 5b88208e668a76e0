#include "commands.h"

#include <cstdio>

#include "hum/listing.h"
#include "render_command.h"
#include "run_command.h"
#include "subject.h"

namespace hum_command {
namespace {

Outcome RunCheck(const Request& request) {
    Subject subject;
    if (std::optional<Problem> problem = LoadSubject(request, subject)) return *problem;
    if (subject.fault) return ReportFault(request, *subject.fault);
    if (request.Json()) {
        std::printf("{\"ok\": true, \"instructions\": %zu, \"words\": %u}\n",
                    subject.program.code.size(), hum::MemoryWords(subject.program));
    }
    return ExitCode::Good;
}

Outcome RunList(const Request& request) {
    Subject subject;
    if (std::optional<Problem> problem = LoadSubject(request, subject)) return *problem;
    if (subject.fault) return ReportFault(request, *subject.fault);
    const std::string listing = hum::Listing(subject.program);
    std::fwrite(listing.data(), 1, listing.size(), stdout);
    return ExitCode::Good;
}

constexpr Command kCommands[] = {
    // name, usage, summary, options, needed, files, function
    {"check", "FILE", "Compiles a program and says what is wrong with it.", kJson, 0, 1, RunCheck},
    {"list", "FILE", "Compiles a program and prints its listing.", 0, 0, 1, RunList},
    {"run", "FILE --samples N", "Runs a program and writes its samples.",
     kSamples | kSkip | kSet | kJson, kSamples, 1, RunRun},
    {"render", "FILE OUT.wav", "Renders a whole song with its fade-out.", kSamples | kSet, 0, 2,
     RunRender},
    {"measure", "FILE", "Measures how loud a whole song is and what it costs.", kSet | kJson, 0, 1,
     RunMeasure},
};

}  // namespace

std::span<const Command> Commands() {
    return kCommands;
}

}  // namespace hum_command
