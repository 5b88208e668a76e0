#pragma once

#include "report.h"

namespace bench {

// The card and its engine: ticks, steps, setting up, assembling.
void RunCard(Report& report);
// A judged tick of each far end's conversation.
void RunFarEnds(Report& report);
// Loading and proving the campaign, and lc1 as a process.
void RunContent(Report& report);
// Compiling Hum programs.
void RunCompiler(Report& report);
// A patch of Hum in the machine, and the same in C++.
void RunMachine(Report& report);
// The instruments' tables, and songs with the sounds over them.
void RunMusic(Report& report);
// Screens drawn and turned to pixels, whole and changed.
void RunPictures(Report& report);
// Runs on the bench: past ticks, the trace, a verify.
void RunBench(Report& report);
// What the bench sends to a terminal.
void RunTerminal(Report& report);
// The whole program but for the system it runs on, from its start on.
void RunApp(Report& report);

}  // namespace bench
