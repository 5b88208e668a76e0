#include "bench/bench_run.h"

#include <algorithm>

#include "base/format.h"
#include "session/explain.h"

namespace Kest {
namespace {

// After a stall, a run does not catch up on more than this.
constexpr double kMostCatchUpSeconds = 0.25;

std::string Counted(long long count, std::string_view one) {
    return base::Format("%lld %.*s%s", count, static_cast<int>(one.size()), one.data(),
                        count == 1 ? "" : "s");
}

std::string AssembledText(const kp::Assembly& assembly) {
    return "Assembled: " + Counted(static_cast<long long>(assembly.errors.size()), "error") + ", " +
           Counted(assembly.lines, "line") + ".";
}

std::string TestNumber(std::size_t test, std::size_t count) {
    return base::Format("Test %zu of %zu", test + 1, count);
}

// Runs the reference over one test and keeps when it did what. A loaded ticket's reference has
// passed every test already.
ReferenceRun RecordReference(const kp::LoadedTicket& loaded, std::size_t test,
                             const kp::Program& program, kp::Session& session) {
    ReferenceRun run;
    if (!kp::BeginTest(session, loaded.ticket, test, program, nullptr)) return run;
    session.RunToEnd();
    for (const kp::TraceEvent& event : session.Trace()) {
        const auto byte = static_cast<std::uint8_t>(event.value);
        if (event.kind == kp::Happening::Transmitted) run.transmitted.push_back({event.tick, byte});
        if (event.kind == kp::Happening::Delivered) run.delivered.push_back({event.tick, byte});
        if (event.kind == kp::Happening::Received) run.received.push_back(byte);
    }
    run.ticks = session.CurrentTick();
    return run;
}

kp::Program LoadReference(const kp::LoadedTicket& loaded) {
    return kp::Load(kp::Assemble(loaded.reference_text, loaded.ticket.machine),
                    loaded.ticket.machine);
}

}  // namespace

BenchRun::BenchRun(const kp::LoadedTicket& loaded)
    : loaded_(loaded),
      reference_program_(LoadReference(loaded)),
      idle_program_(kp::Load({}, loaded.ticket.machine)),
      marks_(loaded.ticket.tests.size(), TestMark::None) {
    idle_card_.Reset(idle_program_);
    card_ticks_.reserve(loaded.ticket.max_ticks);
    SelectTest(0);
    SetFirmware("");
}

void BenchRun::SetFirmware(std::string_view text) {
    assembly_ = kp::Assemble(text, loaded_.ticket.machine);
    program_ =
        assembly_.errors.empty() ? kp::Load(assembly_, loaded_.ticket.machine) : kp::Program{};
    std::ranges::fill(marks_, TestMark::None);
    verified_.reset();
    Forget();
    Say(AssembledText(assembly_));
}

void BenchRun::SelectTest(std::size_t test) {
    test_ = test;
    test_title_ = TestNumber(test_, TestCount()) + ": " + loaded_.ticket.tests[test_].name;
    reference_ = RecordReference(loaded_, test_, reference_program_, scratch_);
    received_.reserve(2 * reference_.received.size());
    Forget();
    Say(test_title_ + ".");
}

bool BenchRun::Ready() {
    if (!assembly_.errors.empty()) return Refuse(kp::FirstErrorText(assembly_));
    if (assembly_.instructions.empty()) return Refuse("No instructions to run.");
    return true;
}

// Always false, so that a check can end with it.
bool BenchRun::Refuse(std::string why) {
    Say(std::move(why), true);
    return false;
}

bool BenchRun::EnsureSession() {
    if (begun_ && !session_.Finished()) return true;
    if (!Ready()) return false;
    Forget();
    const base::Status begun =
        kp::BeginTest(session_, loaded_.ticket, test_, program_, &loaded_.reference.outputs[test_]);
    if (!begun) return Refuse(begun.Message());
    begun_ = true;
    RememberWords();
    return true;
}

// Puts card, trace and verdict back to the start of a test.
void BenchRun::Forget() {
    begun_ = false;
    state_ = RunState::NotRunning;
    card_ticks_.clear();
    received_.clear();
    bytes_read_ = 0;
    verdict_text_.clear();
    explanation_.clear();
}

bool BenchRun::Run() {
    if (!EnsureSession()) return false;
    state_ = RunState::Running;
    ticks_due_ = 1;
    Say("Running " + test_title_ + ".");
    return true;
}

void BenchRun::Pause() {
    if (state_ != RunState::Running) return;
    state_ = RunState::Paused;
    Say(base::Format("Paused at tick %u.", session_.CurrentTick()));
}

bool BenchRun::Step() {
    if (!EnsureSession()) return false;
    state_ = RunState::Paused;
    RememberWords();
    do {
        RunTick();
    } while (!session_.Finished() && !session_.ExecutedThisTick());
    if (session_.Finished()) {
        Finish();
    } else {
        Say(base::Format("Tick %u. Next line %u.", session_.CurrentTick(),
                         static_cast<unsigned>(session_.Card().Line())));
    }
    return true;
}

bool BenchRun::RunToEnd() {
    if (!EnsureSession()) return false;
    while (!session_.Finished()) {
        RememberWords();
        RunTick();
    }
    Finish();
    return true;
}

void BenchRun::Reset() {
    Forget();
    Say("Reset to tick 0.");
}

void BenchRun::Advance(double seconds) {
    if (state_ != RunState::Running) return;
    const int speed = kRunSpeeds[static_cast<std::size_t>(speed_)].ticks_per_second;
    ticks_due_ += std::min(seconds, kMostCatchUpSeconds) * speed;
    for (; ticks_due_ >= 1 && !session_.Finished(); ticks_due_ -= 1) {
        RememberWords();
        RunTick();
    }
    if (session_.Finished()) Finish();
}

double BenchRun::SecondsToNextTick() const {
    return std::max(0.0, 1 - ticks_due_) /
           kRunSpeeds[static_cast<std::size_t>(speed_)].ticks_per_second;
}

bool BenchRun::Verify() {
    if (!Ready()) return false;
    Forget();
    verified_ = kp::Verify(loaded_.ticket, loaded_.reference, assembly_, scratch_);
    std::string text =
        base::Format("Verify: %d of %d passed.", verified_->passed, verified_->total);
    std::optional<std::size_t> failed;
    for (std::size_t i = 0; i < verified_->tests.size(); ++i) {
        const bool passed = verified_->tests[i].verdict.passed;
        marks_[i] = passed ? TestMark::Passed : TestMark::Failed;
        if (!passed && !failed) failed = i;
    }
    if (failed) {
        const kp::Verdict& verdict = verified_->tests[*failed].verdict;
        verdict_text_ = kp::TestFailureText(*failed, TestCount(), verdict);
        text += " " + verdict_text_;
        if (verdict.kind == kp::FailureKind::TickLimit) Explain(*failed);
    }
    Say(std::move(text));
    return true;
}

void BenchRun::RunTick() {
    const std::uint16_t line = session_.Card().Line();
    const std::size_t events = session_.Trace().size();
    session_.StepTick();
    Follow(session_.Trace().subspan(events));
    const kp::CardState state = session_.Card().State();
    const bool executed = session_.ExecutedThisTick() && state != kp::CardState::Faulted;
    card_ticks_.push_back({executed ? kp::CardState::Running : state, line});
}

// Keeps what the panels show of the events, so that they need not search the trace.
void BenchRun::Follow(std::span<const kp::TraceEvent> events) {
    for (const kp::TraceEvent& event : events) {
        switch (event.kind) {
            case kp::Happening::Received:
                received_.push_back(static_cast<std::uint8_t>(event.value));
                break;
            case kp::Happening::ReadByte:
                ++bytes_read_;
                break;
            case kp::Happening::TimerStarted:
                timer_ticks_ = event.value;
                break;
            default:
                break;
        }
    }
}

void BenchRun::RememberWords() {
    const kp::Processor& card = session_.Card();
    for (std::size_t i = 0; i < before_.registers.size(); ++i) {
        before_.registers[i] = card.RegisterValue(static_cast<int>(i));
    }
    std::ranges::copy(card.Ram(), before_.ram.begin());
}

void BenchRun::Finish() {
    const kp::Verdict& verdict = session_.Verdict();
    const std::string test = TestNumber(test_, TestCount());
    marks_[test_] = verdict.passed ? TestMark::Passed : TestMark::Failed;
    if (verdict.passed) {
        state_ = RunState::Passed;
        Say(base::Format("%s: PASS. Last output at tick %u.", test.c_str(),
                         std::max<kp::Tick>(session_.OutputTicks(), 1) - 1));
        return;
    }
    state_ = RunState::Failed;
    verdict_text_ = test + ": FAIL. " + verdict.message;
    if (verdict.kind == kp::FailureKind::TickLimit) Explain(test_);
    Say(verdict_text_, true);
}

void BenchRun::Explain(std::size_t test) {
    explanation_ = kp::ExplainTickLimit(loaded_.ticket, test, assembly_, program_,
                                        loaded_.reference.outputs[test], scratch_);
}

kp::Tick BenchRun::ShownTick() const {
    if (!begun_) return 0;
    return state_ == RunState::Failed ? session_.Verdict().tick : session_.CurrentTick();
}

int BenchRun::ShownLine() const {
    if (!begun_) return 0;
    if (state_ == RunState::Failed) return session_.Verdict().line.value_or(0);
    return session_.Card().Line();
}

int BenchRun::LineOf(std::uint16_t instruction) const {
    return instruction < program_.steps.size() ? program_.steps[instruction].line : 0;
}

TraceData BenchRun::Trace() const {
    TraceData trace;
    trace.to_transmit = reference_.transmitted;
    trace.to_deliver = reference_.delivered;
    trace.card = card_ticks_;
    if (!begun_) return trace;
    trace.events = session_.Trace();
    trace.windows = session_.Windows();
    trace.notes = session_.Notes();
    if (state_ == RunState::Failed) trace.failed = session_.Verdict().tick;
    return trace;
}

void BenchRun::Say(std::string text, bool alert) {
    standing_ = std::move(text);
    alert_ = alert;
}

}  // namespace Kest
