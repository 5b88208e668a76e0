#include "commands.h"

namespace lc1 {
namespace {

constexpr unsigned kTicketFiles = kTicket | kReference;

constexpr Command kCommands[] = {
    // name, usage, summary, files, options, needed, function, more files
    {"asm", "TICKET FIRMWARE", "Assembles a firmware and lists it, or its errors.", 2, kTicketFiles,
     0, RunAsm},
    {"run", "TICKET --test N FIRMWARE", "Runs one test and shows the conversation tick by tick.", 2,
     kTicketFiles | kTest, kTest | kReference, RunTest},
    {"verify", "TICKET FIRMWARE", "Runs every test.", 2, kTicketFiles, kReference, RunVerify},
    {"burn", "TICKET [--seeds N] FIRMWARE",
     "Runs the seeded tests with N fresh seeds, 100 of them.", 2, kTicketFiles | kSeeds, kReference,
     RunBurnIn},
    {"bytes", "TICKET", "Lists every test with its bytes.", 1, kTicketFiles, 0, RunBytes},
    {"json", "[--indent N] FILE", "Reads a JSON file and writes it back.", 1, kIndent, 0, RunJson},
    {"content", "FOLDER", "Loads the content folder that holds \"missions\".", 1, 0, 0, RunContent},
    {"lint", "[FOLDER] [--solutions DIR]",
     "Lists what is amiss in the content, and in kept firmware.", 0, kSolutions, 0, RunLint, 1},
    {"show", "TICKET [--hints N]", "Shows a ticket, and its first N hints.", 1,
     kTicketFiles | kHints, 0, RunShow},
    {"binder", "[PAGE]", "Prints a page of the Spec Binder, or all of it.", 0, 0, 0, RunBinder, 1},
    {"list", "[--solutions DIR]", "Lists the tickets with their scores, and what they come to.", 0,
     kSolutions, 0, RunList},
};

}  // namespace

std::span<const Command> Commands() {
    return kCommands;
}

const Command* FindCommand(std::string_view name) {
    for (const Command& command : kCommands) {
        if (command.name == name) return &command;
    }
    return nullptr;
}

}  // namespace lc1
