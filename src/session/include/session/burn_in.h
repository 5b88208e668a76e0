#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "session/verify.h"

namespace kp {

// A draw of a seeded test that a firmware does not pass.
struct BurnInMiss {
    std::uint32_t draw = 0;
    Test test;
    ExpectedOutput expected;
    Verdict verdict;  // of the reference, when that fails
    bool reference_fails = false;
};

// Firmware against fresh draws of a ticket's seeded tests, which tells a card that solves the
// ticket from one that knows its deck. It counts for nothing. The ticket and the firmware, which
// must assemble, are copied.
class BurnIn {
public:
    static constexpr std::uint32_t kDraws = 100;

    // Draws the tests from number 1 on.
    BurnIn(const Ticket& ticket, std::string_view reference, const Assembly& firmware,
           std::uint32_t draws = kDraws);

    // Whether the ticket has a seeded test at all.
    static bool Suits(const Ticket& ticket);

    // Runs this many ticks more, or a test more than that. False once every draw has run.
    bool Run(Tick ticks);
    bool Finished() const { return draw_ > draws_; }
    std::uint32_t Draws() const { return draws_; }
    std::uint32_t Passed() const { return passed_; }
    const std::optional<BurnInMiss>& FirstMiss() const { return miss_; }

private:
    bool Draw();
    bool RunTest(std::size_t test);
    bool Miss(std::size_t test, Verdict verdict, bool reference_fails);

    Ticket ticket_;  // with the tests of the draw
    Program reference_;
    Program program_;
    Session session_;
    ExpectedOutput expected_;
    std::uint32_t draws_;
    std::uint32_t draw_ = 1;
    std::uint32_t passed_ = 0;
    Tick ticks_ = 0;  // that the last test took, reference and firmware
    std::optional<BurnInMiss> miss_;
};

// "Burn-in: 100 of 100.", or that and what the first draw that failed says.
std::string BurnInText(const BurnIn& burn_in);

}  // namespace kp
