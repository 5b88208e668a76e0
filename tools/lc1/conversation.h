#pragma once

#include "session/session.h"

namespace lc1 {

// A finished run as a table with a row for each tick on which anything happened: what went to and
// fro on the line, what passed between card and host, the timer, and what the far end had to say.
void PrintConversation(const kp::Session& session, bool colour);

}  // namespace lc1
