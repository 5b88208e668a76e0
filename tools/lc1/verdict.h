#pragma once

#include "json_line.h"
#include "subject.h"

namespace lc1 {

// The members that a test's result has in every answer that holds one.
void WriteVerdict(JsonLine& out, const kp::Verdict& verdict, kp::Tick output_ticks);

// For a person, under the verdict of a test that ran into its tick limit: why it did. Runs the test
// once more to see.
void PrintExplanation(const Subject& subject, std::size_t test, const kp::Verdict& verdict,
                      kp::Session& session);

}  // namespace lc1
