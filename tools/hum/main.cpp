#include <algorithm>
#include <cstdio>

#include "base/version.h"
#include "commands.h"
#include "native/program.h"
#include "subject.h"

namespace hum_command {
namespace {

constexpr std::string_view kHelpEnd =
    "\n"
    "FILE is a file, or - for standard input; one that ends in .hasm is read by the assembler.\n"
    "Where there is no such file, the name of a song of the game stands for the song.\n"
    "What a file includes is looked up beside it.\n"
    "\n"
    "  --samples N       the number of samples that run reports, and that render stops after\n"
    "  --skip K          samples that run runs before those, 0 unless given\n"
    "  --set NAME=VALUE  sets a param before the start; may be given again\n"
    "  --json            one JSON object instead of text; not for list or render\n"
    "  --no-library      without the song library\n"
    "  --help            this text\n"
    "  --version         the program's version\n"
    "\n"
    "The exit code is 0 for success, 1 when the source does not compile, 2 when the call is\n"
    "unusable, 3 when the program stopped while it ran.\n";

void PrintHelp() {
    std::puts("hum: Hum programs from a shell.\n");
    for (const Command& command : Commands()) {
        const std::string usage = std::string(command.name) + " " + std::string(command.usage);
        std::printf("  hum %-24s  %s\n", usage.c_str(), std::string(command.summary).c_str());
    }
    std::fwrite(kHelpEnd.data(), 1, kHelpEnd.size(), stdout);
}

std::optional<Problem> CheckUsage(const Command& command, const Request& request) {
    const std::string name(command.name);
    const std::string usage = "; usage: hum " + name + " " + std::string(command.usage);
    for (const TakenOption option : {kSamples, kSkip, kSet, kJson}) {
        const bool is_given = (request.given & option) != 0;
        const std::string option_name(OptionName(option));
        if (is_given && (command.options & option) == 0) {
            return Problem{name + " takes no " + option_name + usage};
        }
        if (!is_given && (command.needed & option) != 0) {
            return Problem{name + " needs " + option_name + usage};
        }
    }
    if (request.files.empty()) return Problem{name + " needs a file" + usage};
    if (request.files.size() < command.files) {
        return Problem{name + " needs a file to write" + usage};
    }
    if (request.files.size() > command.files) {
        return Problem{name + " has no use for " + request.files[command.files] + usage};
    }
    return std::nullopt;
}

Outcome Answer(const Request& request) {
    if (request.version) {
        std::printf("hum %s\n", std::string(base::Version()).c_str());
        return ExitCode::Good;
    }
    if (request.help) {
        PrintHelp();
        return ExitCode::Good;
    }
    if (request.command.empty()) return Problem{"a command is missing; hum --help lists them"};
    const std::span<const Command> commands = Commands();
    const auto command = std::find_if(commands.begin(), commands.end(), [&](const Command& row) {
        return row.name == request.command;
    });
    if (command == commands.end()) {
        return Problem{"there is no command " + request.command + "; hum --help lists them"};
    }
    if (std::optional<Problem> problem = CheckUsage(*command, request)) return *problem;
    return command->run(request);
}

ExitCode Main(std::span<const std::string> arguments) {
    Request request;
    const std::optional<Problem> misread = ReadArguments(arguments, request);
    const Outcome outcome = misread ? Outcome(*misread) : Answer(request);
    if (const Problem* problem = std::get_if<Problem>(&outcome)) {
        if (request.Json()) {
            std::printf("{\"problem\": %s}\n", JsonText(problem->text).c_str());
        } else {
            std::fprintf(stderr, "hum: %s\n", problem->text.c_str());
        }
        return ExitCode::Unusable;
    }
    if (std::fflush(stdout) != 0) {
        std::fputs("hum: the answer could not be written\n", stderr);
        return ExitCode::Unusable;
    }
    return std::get<ExitCode>(outcome);
}

}  // namespace
}  // namespace hum_command

int main(int count, char** arguments) {
    zo::platform::JoinConsole();
    return static_cast<int>(hum_command::Main(zo::platform::ProgramArguments(count, arguments)));
}
