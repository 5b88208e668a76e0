#include "session/session.h"

#include <algorithm>
#include <utility>

#include "verdict_text.h"

namespace kp {
namespace {

// Room for a usual run, so that only an unusually long one has to grow its storage.
constexpr std::size_t kUsualEvents = 8192;
constexpr std::size_t kUsualBytes = 1024;

// Beyond every tick limit, with room for sums: what is scheduled later stays here.
constexpr Tick kEndOfTime = 0x40000000;

std::uint16_t StreamIndex(std::size_t position) {
    return static_cast<std::uint16_t>(std::min<std::size_t>(position, 65535));
}

}  // namespace

void Session::Arrivals::Clear() {
    flights_.clear();
    head_ = 0;
    next_at_ = kNever;
}

void Session::Arrivals::Add(Tick at, std::uint8_t byte) {
    if (Empty()) next_at_ = at;
    flights_.push_back({at, byte});
}

std::uint8_t Session::Arrivals::Take() {
    const std::uint8_t byte = flights_[head_++].byte;
    next_at_ = head_ < flights_.size() ? flights_[head_].at : kNever;
    return byte;
}

Session::Session() {
    to_card_.Reserve(kUsualBytes);
    transmitted_.reserve(kUsualBytes);
    delivered_.reserve(kUsualBytes);
    trace_.reserve(kUsualEvents);
}

Session::~Session() = default;

void Session::Begin(const kp::Ticket& ticket, const kp::Test& test, const Program& program,
                    std::unique_ptr<Peer> peer, const ExpectedOutput* expected) {
    ticket_ = &ticket;
    test_ = &test;
    expected_ = expected;
    peer_ = std::move(peer);
    card_.Reset(program);
    tick_ = last_activity_ = output_ticks_ = line_free_ = 0;
    deadline_passed_at_ = kNever;
    open_windows_ = first_open_ = host_message_ = host_byte_ = 0;
    finished_ = false;
    to_far_end_.reset();
    to_card_.Clear();
    transmitted_.clear();
    delivered_.clear();
    trace_.clear();
    windows_.Clear();
    notes_.Clear();
    verdict_ = {};
}

bool Session::StepTick() {
    act_at_ = tick_;
    return RunTick();
}

bool Session::RunTick() {
    if (finished_) return false;
    if (tick_ == 0) Start();
    if (to_far_end_) HearCard();
    if (tick_ >= act_at_) peer_->Act(tick_, *this);
    ArriveAtCard();
    if (!finished_) {
        if (card_.RunTimer(tick_)) Record(Happening::TimerRanOut, 0, 0, 0);
        card_.Run(tick_, *this);
    }
    EndTick();
    return !finished_;
}

void Session::EndTick() {
    if (!finished_ && card_.Fault() != FaultKind::None) FailFault();
    if (!finished_ && tick_ >= deadline_passed_at_) JudgeMissedDeadlines();
    if (!finished_) DecideEnd();
    ++tick_;
}

bool Session::StepInstruction() {
    while (StepTick()) {
        if (card_.Executed()) return true;
    }
    return false;
}

void Session::RunUpTo(Tick tick) {
    stop_at_ = tick;
    act_at_ = tick_;
    while (tick_ < stop_at_ && RunTick()) {
        if (act_at_ < tick_) act_at_ = peer_->NextAct();  // it has acted, or heard something
        RunUntouched();
    }
}

// Up to a tick that has to be run whole: a running card runs, a waiting card waits, and bytes reach
// their ends on the way.
void Session::RunUntouched() {
    while (!finished_) {
        if (to_far_end_ && !HearOnTheRun()) return;
        const bool arrives = to_card_.NextAt() <= tick_;
        if (arrives && !ReceiveOnTheRun()) return;
        const Tick bound = NextOutside();
        if (bound <= tick_) return;
        const bool reads = arrives && card_.State() == CardState::WaitingByte;
        if (reads || card_.State() == CardState::Running) {
            RunCard(bound);
        } else {
            tick_ = bound;
        }
    }
}

// Runs the card up to this tick, or until it waits or owes nothing more: until then no quiet ends
// the test. What the far end hears on the way, and the timer that the card sets, can bring the tick
// nearer.
void Session::RunCard(Tick bound) {
    while (tick_ < bound) {
        card_.RunInward(tick_, bound, *this);
        if (tick_ == bound) return;
        if (card_.Fault() == FaultKind::None) card_.Run(tick_, *this);
        if (finished_ || card_.State() != CardState::Running) return EndTick();
        ++tick_;
        if (!Owes()) return;
        bound = std::min(bound, card_.NextAct());
        if (!to_far_end_) continue;
        if (!HearOnTheRun()) return;
        bound = std::min(bound, NextOfFarEnd());
    }
}

// While the card runs and still owes bytes, a tick on which the far end hears one of them cannot
// end the test, so it need not be run whole.
bool Session::HearOnTheRun() {
    if (card_.State() != CardState::Running || !Owes()) return false;
    HearCard();
    act_at_ = peer_->NextAct();
    if (act_at_ > tick_) return true;
    peer_->Act(tick_, *this);
    act_at_ = std::max(peer_->NextAct(), tick_ + 1);
    return true;
}

// A byte that ends the line's quiet for a card that neither reads it at once nor owes anything can
// end the test, and its tick has to be run whole.
bool Session::ReceiveOnTheRun() {
    const bool reads = card_.State() == CardState::WaitingByte;
    const bool runs = card_.State() == CardState::Running && Owes();
    if (act_at_ <= tick_ || !(reads || runs)) return false;
    ArriveAtCard();
    if (finished_) EndTick();
    return !finished_;
}

// The first tick from now on that has to be run whole, when the far end has heard all that was
// sent. It may be too early, never too late.
Tick Session::NextOutside() const {
    Tick next = std::min({ticket_->max_ticks - 1, stop_at_, NextOfFarEnd(), card_.NextAct()});
    const bool quiet_may_end = card_.State() != CardState::Running || !Owes();
    if (quiet_may_end && to_card_.Empty()) next = std::min(next, NextSettled());
    if (card_.State() == CardState::WaitingHost && host_message_ < test_->host.size()) {
        next = std::min(next, test_->host[host_message_].at);
    }
    return next;
}

// The next tick on which the far end, or what it has sent or asked for, matters.
Tick Session::NextOfFarEnd() const {
    return std::min({act_at_, deadline_passed_at_, to_card_.NextAt()});
}

// The next tick on which enough quiet may have passed to end the test.
Tick Session::NextSettled() const {
    const Tick settled = last_activity_ + ticket_->settle;
    if (settled >= tick_) return settled;
    return settled + kPatience >= tick_ ? settled + kPatience : kNever;
}

void Session::Start() {
    peer_->Start(*this);
    if (card_.State() == CardState::Halted) Record(Happening::CardHalted, 0, 0, 0);
}

// A byte sent on tick t reaches the far end on tick t + 1.
void Session::HearCard() {
    act_at_ = tick_;
    peer_->Receive(tick_, *std::exchange(to_far_end_, std::nullopt), *this);
}

void Session::ArriveAtCard() {
    while (!finished_ && to_card_.NextAt() <= tick_) {
        const std::uint8_t byte = to_card_.Take();
        if (card_.Receive(byte)) {
            Record(Happening::Received, byte, 0, 0);
        } else {
            Record(Happening::LostByte, byte, 0, 0);
            const std::uint16_t line = card_.Line();
            card_.Stop();
            Record(Happening::CardFaulted, 0, 0, line);
            Fail(FailureKind::Overflow, std::nullopt,
                 OverflowText(tick_, byte, ticket_->machine.rx_buffer));
        }
    }
}

void Session::Record(Happening kind, std::uint16_t value, std::uint16_t index, std::uint16_t line) {
    trace_.push_back({tick_, value, index, line, kind});
}

Tick Session::Send(Tick tick, std::span<const std::uint8_t> bytes, int spacing) {
    const auto step = static_cast<std::uint64_t>(std::max(spacing, 1));
    Tick at = std::max({tick, line_free_, tick_});
    if (bytes.empty()) return line_free_ = at;
    Tick last = at;
    for (const std::uint8_t byte : bytes) {
        to_card_.Add(at, byte);
        last = at;
        at = static_cast<Tick>(std::min<std::uint64_t>(at + step, kEndOfTime));
    }
    line_free_ = at;
    return last;
}

void Session::Expect(WindowKind kind, Tick until, std::string_view label, Tick from) {
    TimingWindow& window = windows_.Add();
    window.kind = kind;
    window.from = std::max(from, tick_);
    window.until = until;
    window.done = false;
    window.what = label;
    ++open_windows_;
    if (kind == WindowKind::Deadline) {
        deadline_passed_at_ = std::min(deadline_passed_at_, until + 1);
    }
}

void Session::Note(Tick tick, std::string_view text, int flag) {
    FarEndNote& note = notes_.Add();
    note.tick = tick;
    note.text = text;
    note.flag = flag;
}

bool Session::Transmit(std::uint8_t byte) {
    Record(Happening::Transmitted, byte, StreamIndex(transmitted_.size()), card_.Line());
    to_far_end_ = byte;
    transmitted_.push_back(byte);
    last_activity_ = tick_;
    output_ticks_ = tick_ + 1;
    return JudgeTransmitted(byte);
}

bool Session::Deliver(std::uint8_t byte) {
    Record(Happening::Delivered, byte, StreamIndex(delivered_.size()), card_.Line());
    delivered_.push_back(byte);
    last_activity_ = tick_;
    output_ticks_ = tick_ + 1;
    return JudgeDelivered(byte);
}

bool Session::TakeHostWord(std::uint16_t& word) {
    if (host_message_ == test_->host.size()) return false;
    const HostMessage& message = test_->host[host_message_];
    if (message.at > tick_) return false;
    if (host_byte_ < message.bytes.size()) {
        word = message.bytes[host_byte_++];
    } else {
        word = 0xFFFF;
        ++host_message_;
        host_byte_ = 0;
    }
    return true;
}

void Session::Happened(Happening what, std::uint16_t value) {
    if (what == Happening::ReadByte || what == Happening::ReadHost) last_activity_ = tick_;
    Record(what, value, 0, card_.Line());
}

}  // namespace kp
