#pragma once

#include <optional>

#include "hum/program.h"
#include "hum/source.h"
#include "request.h"

namespace hum_command {

// The program that a command is about, or why it has none.
struct Subject {
    hum::Program program;
    std::optional<hum::Fault> fault;
};

// Reads the call's file, or standard input for "-", and compiles it; a file whose name ends in
// .hasm is assembled. Where there is no such file, it may be the key of a song of the game.
std::optional<Problem> LoadSubject(const Request& request, Subject& subject);

// Writes the fault as the call wants it.
ExitCode ReportFault(const Request& request, const hum::Fault& fault);

// The text as a JSON string, quotes included.
std::string JsonText(std::string_view text);

}  // namespace hum_command
