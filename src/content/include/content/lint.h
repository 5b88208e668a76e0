#pragma once

#include <string>
#include <vector>

#include "content/content.h"
#include "content/solutions.h"

namespace kp {

// Everything the loader reports of a store's content, and what an author wants to know beyond it:
// keys and values that were not taken as they stand, texts too long for their places, tests that
// are one another's copies or short of time; with kept firmware, also what LintSolutions says. A
// line each, led by the ticket's id or by the binder or coach.
std::vector<std::string> Lint(const ContentStore& store,
                              const std::vector<Solutions>* kept = nullptr);

// What the kept firmware says of the decks: good firmware that fails, wrong programs that are not
// caught as they claim, tests that catch none first, and cards too small for the plain solution.
std::vector<std::string> LintSolutions(const Content& content, const std::vector<Solutions>& kept);

// The binder as it stands: texts too long for their places, links and tickets that lead nowhere,
// pages to which nothing leads.
std::vector<std::string> LintBinder(const Content& content);
// What a whole binder cannot lack: a page for each instruction, and those that the bench opens.
std::vector<std::string> LintBinderWhole(const Content& content);

// The coach's entries: tickets and parts that are not there, texts too long for their places, a
// suggested instruction that does not fit its starter.
std::vector<std::string> LintCoach(const Content& content);

}  // namespace kp
