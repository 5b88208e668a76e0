#pragma once

#include "content/content.h"
#include "content/solutions.h"

namespace lc1 {

// The shifts with their tickets and the references' scores, for a person; with kept firmware also
// the scores of each ticket's plain solution and of the one that was written from its text alone.
void PrintCampaign(const kp::Content& content, bool colour,
                   const std::vector<kp::Solutions>* kept = nullptr);

// What the whole campaign comes to: tickets, tests, words, pages.
void PrintTotals(const kp::Content& content);

// "♦♦♦··"
std::string DifficultyText(int difficulty);

}  // namespace lc1
