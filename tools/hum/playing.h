#pragma once

#include <optional>

#include "hum/instruments.h"
#include "hum/machine.h"
#include "subject.h"

namespace hum_command {

// A program with all that it needs to run.
struct Playing {
    Subject subject;
    hum::Instruments instruments;
    std::optional<hum::Machine> machine;
};

// Compiles the call's file, sets its params and starts it; returns an outcome when that cannot be.
std::optional<Outcome> Start(const Request& request, Playing& playing);

// Says on standard error where and why the program stopped, if it did.
ExitCode ReportStop(const hum::Machine& machine);

}  // namespace hum_command
