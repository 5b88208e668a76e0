#include "bench/bench.h"
#include "shell/shell.h"

namespace Kest {
namespace {

// Of the ticks in one frame: a few milliseconds.
constexpr kp::Tick kBurnInSlice = 400000;

}  // namespace

// The firmware that has closed the ticket meets fresh draws of the seeded tests; nothing of it
// counts.
void Bench::BeginBurnIn() {
    burn_in_.reset();
    if (!kp::BurnIn::Suits(loaded_.ticket)) return;
    burn_in_.emplace(loaded_.ticket, loaded_.reference_text, run_.Firmware());
}

bool Bench::BurnsIn() const {
    return burn_in_ && !burn_in_->Finished() && run_.State() != RunState::Running &&
           run_.State() != RunState::Verifying;
}

void Bench::AdvanceBurnIn() {
    shell_.RequestRedraw();
    if (burn_in_->Run(kBurnInSlice)) return;
    FillNotes();
    const bool alert = burn_in_->FirstMiss().has_value();
    shell_.SetStatus(kp::BurnInText(*burn_in_), alert ? Alert::Yes : Alert::No);
}

// What the burn-in has come to, and the way to the draw that failed.
void Bench::AddBurnIn(std::vector<zo::ui::Paragraph>& text) {
    if (!burn_in_ || !burn_in_->Finished()) return;
    zo::ui::Paragraph& row = text.emplace_back();
    row.text = kp::BurnInText(*burn_in_);
    if (!burn_in_->FirstMiss()) return;
    row.role = zo::ui::Role::Warn;
    const std::string name = "Open the test";
    text.push_back(
        {.text = name,
         .label = "►",
         .label_role = zo::ui::Role::Link,
         .links = {{.from = 0, .to = name.size(), .hint = "The draw that failed.", .act = [this] {
                        OpenMiss();
                    }}}});
}

// The draw that failed stands behind the deck's tests, with the firmware's run on it.
void Bench::OpenMiss() {
    const kp::BurnInMiss& miss = *burn_in_->FirstMiss();
    run_.AddTest("Seed " + std::to_string(miss.draw), miss.test, miss.expected);
    trace_.ShowStart();
    RunToEnd();
}

}  // namespace Kest
