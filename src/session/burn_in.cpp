#include "session/burn_in.h"

#include <algorithm>
#include <utility>

#include "base/format.h"

namespace kp {

BurnIn::BurnIn(const Ticket& ticket, std::string_view reference, const Assembly& firmware,
               std::uint32_t draws)
    : ticket_(ticket),
      reference_(Load(Assemble(reference, ticket.machine), ticket.machine)),
      program_(Load(firmware, ticket.machine)),
      draws_(Suits(ticket) ? draws : 0) {}

bool BurnIn::Suits(const Ticket& ticket) {
    return std::ranges::any_of(ticket.tests, &Test::seeded);
}

bool BurnIn::Run(Tick ticks) {
    while (!Finished()) {
        bool passed = Draw();
        for (std::size_t k = 0; passed && k < ticket_.tests.size(); ++k) {
            passed = RunTest(k);
            ticks -= std::min(ticks, ticks_);
        }
        passed_ += passed ? 1 : 0;
        ++draw_;
        if (ticks == 0) break;
    }
    return !Finished();
}

bool BurnIn::Draw() {
    const base::Status drawn = DrawTests(ticket_, draw_);
    if (!drawn && !miss_) {
        miss_.emplace().draw = draw_;
        miss_->verdict.message = drawn.Message();
    }
    return static_cast<bool>(drawn);
}

// The reference's outputs are what the firmware's must be, as in the deck.
bool BurnIn::RunTest(std::size_t test) {
    if (!BeginTest(session_, ticket_, test, reference_, nullptr)) return false;
    session_.RunToEnd();
    ticks_ = session_.CurrentTick();
    expected_ = {session_.Transmitted(), session_.Delivered()};
    if (!session_.Verdict().passed) return Miss(test, session_.Verdict(), true);
    if (!BeginTest(session_, ticket_, test, program_, &expected_)) return false;
    session_.RunToEnd();
    ticks_ += session_.CurrentTick();
    return session_.Verdict().passed || Miss(test, session_.Verdict(), false);
}

// Always false, so that a test can end with it.
bool BurnIn::Miss(std::size_t test, Verdict verdict, bool reference_fails) {
    if (!miss_) {
        miss_ = {.draw = draw_,
                 .test = ticket_.tests[test],
                 .expected = expected_,
                 .verdict = std::move(verdict),
                 .reference_fails = reference_fails};
    }
    return false;
}

std::string BurnInText(const BurnIn& burn_in) {
    std::string text = base::Format("Burn-in: %u of %u.", burn_in.Passed(), burn_in.Draws());
    if (const auto& miss = burn_in.FirstMiss()) {
        text += base::Format(" Seed %u, %s: ", miss->draw, miss->test.name.c_str());
        if (miss->reference_fails) text += "the reference fails. ";
        text += miss->verdict.message;
    }
    return text;
}

}  // namespace kp
