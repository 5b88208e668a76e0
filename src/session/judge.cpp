#include <algorithm>

#include "session/session.h"
#include "ticket/labels.h"
#include "verdict_text.h"

namespace kp {

bool Session::JudgeTransmitted(std::uint8_t byte) {
    if (open_windows_ > 0 && !JudgeWindows()) return false;
    if (expected_ == nullptr) return true;
    const Bytes& expected = expected_->transmitted;
    const std::size_t index = transmitted_.size() - 1;
    if (index >= expected.size()) {
        Fail(FailureKind::TxExtra, card_.Line(),
             ExtraTransmittedText(tick_, byte, expected.size(), card_.HasWrapped()));
    } else if (expected[index] != byte) {
        Fail(FailureKind::TxWrong, card_.Line(),
             WrongTransmittedText(tick_, byte, LabelOf(expected, index, ticket_->frame),
                                  expected[index]));
    }
    return !finished_;
}

// The card's byte settles every window that has opened; the first that it breaks is the verdict.
bool Session::JudgeWindows() {
    deadline_passed_at_ = kNever;
    const std::span<TimingWindow> windows = windows_.Items();
    while (first_open_ < windows.size() && windows[first_open_].done) ++first_open_;
    for (TimingWindow& window : windows.subspan(first_open_)) {
        if (window.done) continue;
        if (window.from > tick_) {
            if (window.kind == WindowKind::Deadline) {
                deadline_passed_at_ = std::min(deadline_passed_at_, window.until + 1);
            }
            continue;
        }
        window.done = true;
        --open_windows_;
        if (finished_) continue;
        if (window.kind == WindowKind::Earliest && window.until > tick_) {
            Fail(FailureKind::Early, card_.Line(), EarlyText(tick_, window));
        } else if (window.kind == WindowKind::Deadline && window.until < tick_) {
            Fail(FailureKind::Late, card_.Line(), LateText(tick_, window));
        }
    }
    return !finished_;
}

bool Session::JudgeDelivered(std::uint8_t byte) {
    if (expected_ == nullptr) return true;
    const Bytes& expected = expected_->delivered;
    const std::size_t index = delivered_.size() - 1;
    if (index >= expected.size()) {
        Fail(FailureKind::HostExtra, card_.Line(),
             ExtraDeliveredText(tick_, byte, expected.size(), card_.HasWrapped()));
    } else if (expected[index] != byte) {
        Fail(FailureKind::HostWrong, card_.Line(),
             WrongDeliveredText(tick_, byte, index, expected[index]));
    }
    return !finished_;
}

void Session::JudgeMissedDeadlines() {
    for (TimingWindow& window : windows_.Items()) {
        const bool missed = !window.done && window.kind == WindowKind::Deadline &&
                            window.from <= tick_ && window.until < tick_;
        if (!missed) continue;
        window.done = true;
        --open_windows_;
        return Fail(FailureKind::Deadline, card_.Line(), MissedText(tick_, window, card_.State()));
    }
}

void Session::FailFault() {
    Fail(FailureKind::Fault, card_.Line(),
         FaultText(card_.Fault(), card_.Line(), card_.FaultValue(), ticket_->machine.ram));
}

void Session::DecideEnd() {
    if (expected_ != nullptr) {
        DecideEndJudging();
    } else {
        DecideEndRecording();
    }
}

void Session::DecideEndJudging() {
    if (card_.State() == CardState::Halted) return PassOrDiagnose();
    const Tick quiet = tick_ - last_activity_;
    if (card_.State() != CardState::Running || Complete()) {
        if (LineQuiet()) {
            if (CardStuck()) return PassOrDiagnose();
            if (Complete() && quiet >= ticket_->settle) return Pass();
            if (HostDone() && quiet >= ticket_->settle + kPatience) return PassOrDiagnose();
        }
        if (StuckForGood()) return PassOrDiagnose();
    }
    if (tick_ + 1 < ticket_->max_ticks) return;
    if (Complete()) return Pass();
    Fail(FailureKind::TickLimit, card_.Line(),
         TickLimitText(ticket_->max_ticks, card_.State(), card_.Line()));
}

void Session::DecideEndRecording() {
    if (card_.State() == CardState::Halted) return Pass();
    if (card_.State() != CardState::Running) {
        const bool settled = HostDone() && tick_ - last_activity_ >= ticket_->settle;
        if ((LineQuiet() && (CardStuck() || settled)) || StuckForGood()) return Pass();
    }
    if (tick_ + 1 < ticket_->max_ticks) return;
    Fail(FailureKind::TickLimit, card_.Line(), StillRunningText(tick_));
}

bool Session::LineQuiet() const {
    return !to_far_end_ && to_card_.Empty() && peer_->Done();
}

// The card waits, and nothing that is still to come can end its wait. Bytes in flight and what the
// far end may yet send are the callers' to look at.
bool Session::CardStuck() const {
    if (card_.WaitCanTimeOut()) return false;
    const bool host_read = host_message_ == test_->host.size();
    return card_.State() == CardState::WaitingByte ||
           (card_.State() == CardState::WaitingHost && host_read);
}

// The far end may be waiting too, for a byte that the card will never send; then neither moves.
bool Session::StuckForGood() const {
    return !to_far_end_ && to_card_.Empty() && deadline_passed_at_ == kNever && CardStuck() &&
           peer_->NextAct() == kNever;
}

bool Session::HostDone() const {
    return card_.State() != CardState::Running && host_message_ == test_->host.size();
}

bool Session::Complete() const {
    return transmitted_.size() == expected_->transmitted.size() &&
           delivered_.size() == expected_->delivered.size();
}

// A running card that owes something cannot be ended by quiet, and one that is recorded never is.
bool Session::Owes() const {
    return expected_ == nullptr || !Complete();
}

void Session::Pass() {
    finished_ = true;
    verdict_.passed = true;
    verdict_.tick = tick_;
}

void Session::PassOrDiagnose() {
    if (expected_ == nullptr || Complete()) return Pass();
    const std::size_t sent = transmitted_.size();
    const std::size_t delivered = delivered_.size();
    const bool short_of_line = sent < expected_->transmitted.size();
    std::string message =
        short_of_line ? ShortTransmittedText(sent, expected_->transmitted.size(),
                                             expected_->transmitted[sent],
                                             LabelOf(expected_->transmitted, sent, ticket_->frame))
                      : ShortDeliveredText(delivered, expected_->delivered.size(),
                                           expected_->delivered[delivered]);
    message += ShortStateText(card_.State(), card_.Line());
    Fail(FailureKind::Short, card_.Line(), std::move(message));
}

// Only the first failure counts.
void Session::Fail(FailureKind kind, std::optional<int> line, std::string message) {
    if (finished_) return;
    finished_ = true;
    if (line == 0) line.reset();
    verdict_ = {false, kind, tick_, line, std::move(message)};
}

}  // namespace kp
