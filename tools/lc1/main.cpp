#include <cstdio>

#include "base/format.h"
#include "base/version.h"
#include "commands.h"
#include "json_line.h"
#include "native/program.h"
#include "text.h"

namespace lc1 {
namespace {

constexpr std::string_view kHelpEnd =
    "\n"
    "TICKET is a built-in ticket's id or its first four characters, such as 1-02, or a file:\n"
    "--ticket T.json --reference R.lc1 (asm, bytes and show need no reference).\n"
    "FIRMWARE is a file, or - for standard input. Options may stand anywhere.\n"
    "DIR holds a folder a ticket: plain.lc1, pass with good firmware, fail with wrong one.\n"
    "PAGE is a page's id, its number, or an instruction's name: ack-nak, 3.6, djn.\n"
    "\n"
    "  --json     one JSON object on one line; binder, lint, list and show write text only\n"
    "  --help     this text, or a command's own\n"
    "  --version  the program's version\n"
    "\n"
    "The exit code is 0 for a pass, 1 for a fail, 2 when there is no answer.\n";

bool WantsColour() {
    const bool is_refused = !zo::platform::EnvironmentVariable("NO_COLOR").value_or("").empty();
    return !is_refused && zo::platform::OutputIsTerminal();
}

std::string Usage(const Command& command) {
    std::string usage = "lc1 " + std::string(command.name);
    if (!command.usage.empty()) usage += ' ' + std::string(command.usage);
    return usage;
}

void PrintVersion() {
    PutLine("lc1 " + std::string(base::Version()));
}

void PrintHelp() {
    PutLine("lc1: the LC-1 card from a shell.\n");
    TextTable table({{}, {}});
    for (const Command& command : Commands()) {
        table.Add({"  " + Usage(command), std::string(command.summary)});
    }
    table.Print(false);
    std::fwrite(kHelpEnd.data(), 1, kHelpEnd.size(), stdout);
}

void PrintHelp(const Command& command) {
    PutLine("usage: " + Usage(command));
    PutLine(command.summary);
}

std::optional<Problem> CheckUsage(const Command& command, const Request& request) {
    const std::string usage = "; usage: " + Usage(command);
    const std::string name(command.name);
    const bool has_ticket = (request.given & kTicket) != 0;
    for (const TakenOption option : {kTicket, kReference, kTest, kIndent, kHints, kSolutions}) {
        const bool is_given = (request.given & option) != 0;
        const bool is_needed =
            (command.needed & option) != 0 && (option != kReference || has_ticket);
        if (is_given && (command.options & option) == 0) {
            return Problem{name + " takes no " + OptionName(option) + usage};
        }
        if (!is_given && is_needed) return Problem{name + " needs " + OptionName(option) + usage};
    }
    if ((request.given & kReference) != 0 && !has_ticket) {
        return Problem{"--reference goes with --ticket" + usage};
    }
    const std::size_t files = command.files - (has_ticket ? 1 : 0);
    if (request.files.size() < files) return Problem{name + " needs more than that" + usage};
    const std::size_t most = files + command.more_files;
    if (request.files.size() > most) {
        return Problem{name + " has no use for " + request.files[most] + usage};
    }
    return std::nullopt;
}

Outcome Answer(const Request& request) {
    if (request.version) {
        PrintVersion();
        return ExitCode::Pass;
    }
    if (request.command.empty()) {
        if (!request.help) return Problem{"a command is missing; lc1 --help lists them"};
        PrintHelp();
        return ExitCode::Pass;
    }
    const Command* command = FindCommand(request.command);
    if (command == nullptr) {
        return Problem{"there is no command " + request.command + "; lc1 --help lists them"};
    }
    if (request.help) {
        PrintHelp(*command);
        return ExitCode::Pass;
    }
    if (std::optional<Problem> problem = CheckUsage(*command, request)) return *problem;
    return command->run(request);
}

void Report(const Problem& problem, bool as_json) {
    if (!as_json) {
        std::fprintf(stderr, "lc1: %s\n", problem.text.c_str());
        return;
    }
    JsonLine out;
    out.Text("problem", problem.text);
    if (problem.line == 0) return;
    out.Number("line", problem.line);
    out.Number("column", problem.column);
}

ExitCode Main(std::span<const std::string> arguments) {
    Request request;
    const std::optional<Problem> misread = ReadArguments(arguments, request);
    request.colour = WantsColour();
    const Outcome outcome = misread ? Outcome(*misread) : Answer(request);
    const Problem* problem = std::get_if<Problem>(&outcome);
    if (problem != nullptr) Report(*problem, request.json);
    if (std::fflush(stdout) != 0) {
        std::fputs("lc1: the answer could not be written\n", stderr);
        return ExitCode::Unusable;
    }
    return problem != nullptr ? ExitCode::Unusable : std::get<ExitCode>(outcome);
}

}  // namespace
}  // namespace lc1

int main(int count, char** arguments) {
    zo::platform::JoinConsole();
    return static_cast<int>(lc1::Main(zo::platform::ProgramArguments(count, arguments)));
}
