#include "bench/bench_run.h"

#include <algorithm>

#include "base/format.h"
#include "session/explain.h"

namespace Kest {
namespace {

// After a stall, a run does not catch up on more than this.
constexpr double kMostCatchUpSeconds = 0.25;

// Of a verify's ticks in one frame: a few milliseconds.
constexpr kp::Tick kVerifySlice = 400000;
// Of the ticks of a deck whose first failure ends it.
constexpr kp::Tick kLookSlice = 1000;
// Between two marks of a verify, and in all.
constexpr double kMarkSeconds = 0.06;
constexpr double kMostMarksSeconds = 1.2;

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
    test_title_ = NumberOf(test_) + ": " + Loaded().ticket.tests[test_].name;
    reference_ = RecordReference(Loaded(), test_, reference_program_, scratch_);
    Forget();
    Say(test_title_ + ".");
}

void BenchRun::AddTest(std::string name, kp::Test test, kp::ExpectedOutput expected) {
    Forget();
    before_ = {};
    extended_ = loaded_;
    extended_->ticket.tests.push_back(std::move(test));
    extended_->reference.outputs.push_back(std::move(expected));
    added_name_ = std::move(name);
    marks_.resize(TestCount());
    marks_.back() = TestMark::None;
    SelectTest(DeckSize());
}

std::string BenchRun::NumberOf(std::size_t test) const {
    return IsOfDeck(test) ? TestNumber(test, DeckSize()) : added_name_;
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
    if (begun_ && !live_.Session().Finished()) return true;
    if (!Ready()) return false;
    Forget();
    for (Moment* moment : {&live_, &past_}) {
        const base::Status begun = moment->Begin(Loaded(), test_, program_);
        if (!begun) return Refuse(begun.Message());
    }
    begun_ = arrives_ = true;
    return true;
}

// Puts card, trace and verdict back to the start of a test.
void BenchRun::Forget() {
    if (begun_) KeepRun();
    begun_ = looks_back_ = false;
    state_ = RunState::NotRunning;
    verify_.reset();
    card_ticks_.clear();
    verdict_text_.clear();
    explanation_.clear();
}

// For the next run to be compared with. One that has sent and delivered nothing is not worth it.
void BenchRun::KeepRun() {
    RunBefore run{test_, {}, {}};
    for (const kp::TraceEvent& event : live_.Session().Trace()) {
        const auto byte = static_cast<std::uint8_t>(event.value);
        if (event.kind == kp::Happening::Transmitted) run.sent.push_back({event.tick, byte});
        if (event.kind == kp::Happening::Delivered) run.delivered.push_back({event.tick, byte});
    }
    if (!run.sent.empty() || !run.delivered.empty()) before_ = std::move(run);
}

bool BenchRun::Run() {
    const bool goes_on = state_ == RunState::Paused;
    if (!EnsureSession()) return false;
    // The breakpoint at which it paused does not hold it again.
    if (goes_on) arrives_ = false;
    looks_back_ = false;
    state_ = RunState::Running;
    ticks_due_ = 1;
    Say("Running " + test_title_ + ".");
    return true;
}

void BenchRun::Pause() {
    if (state_ != RunState::Running) return;
    state_ = RunState::Paused;
    Say(base::Format("Paused at tick %u.", live_.Session().CurrentTick()));
}

bool BenchRun::Step() {
    if (!EnsureSession()) return false;
    looks_back_ = false;
    state_ = RunState::Paused;
    live_.RememberWords();
    do {
        RunTick();
    } while (!live_.Session().Finished() && !live_.Session().ExecutedThisTick());
    if (live_.Session().Finished()) {
        Finish();
    } else {
        SayNextLine();
    }
    return true;
}

void BenchRun::SayNextLine() {
    Say(base::Format("Tick %u. Next line %u.", live_.Session().CurrentTick(),
                     static_cast<unsigned>(live_.Session().Card().Line())));
}

bool BenchRun::RunToEnd() {
    if (!EnsureSession()) return false;
    looks_back_ = false;
    while (!live_.Session().Finished()) {
        live_.RememberWords();
        RunTick();
    }
    Finish();
    return true;
}

void BenchRun::Reset() {
    Forget();
    Say("Reset to tick 0.");
}

bool BenchRun::StepBack() {
    if (!begun_ || state_ == RunState::Running) return false;
    const kp::Tick shown = CardTick();
    if (shown == 0) return false;
    live_.GoTo(InstructionBefore(shown));
    card_ticks_.resize(live_.Session().CurrentTick());
    looks_back_ = false;
    arrives_ = true;
    state_ = RunState::Paused;
    verdict_text_.clear();
    explanation_.clear();
    SayNextLine();
    return true;
}

// The tick on which the instruction began that was under way, or had ended, when this tick began.
kp::Tick BenchRun::InstructionBefore(kp::Tick tick) const {
    const auto executed = [this](kp::Tick t) {
        const kp::CardState state = card_ticks_[t].state;
        return state == kp::CardState::Running || state == kp::CardState::Faulted;
    };
    --tick;
    while (tick > 0 && !executed(tick - 1)) --tick;
    return tick;
}

void BenchRun::Look(std::optional<kp::Tick> tick) {
    looks_back_ = begun_ && tick && *tick + 1 < live_.Session().CurrentTick();
    if (looks_back_) past_.GoTo(*tick + 1);
}

void BenchRun::Advance(double seconds) {
    if (state_ == RunState::Verifying) return AdvanceVerify(seconds);
    if (state_ != RunState::Running) return;
    const int speed = kRunSpeeds[static_cast<std::size_t>(speed_)].ticks_per_second;
    ticks_due_ += std::min(seconds, kMostCatchUpSeconds) * speed;
    for (; ticks_due_ >= 1 && !live_.Session().Finished(); ticks_due_ -= 1) {
        if (AtBreakpoint()) {
            state_ = RunState::Paused;
            return Say(base::Format("Paused at the breakpoint on line %d", ShownLine()));
        }
        live_.RememberWords();
        RunTick();
    }
    if (live_.Session().Finished()) Finish();
}

bool BenchRun::AtBreakpoint() const {
    const int line = live_.Session().Card().Line();
    return arrives_ && std::ranges::find(breakpoints_, line) != breakpoints_.end();
}

double BenchRun::SecondsToNextTick() const {
    if (state_ == RunState::Verifying) return 0;
    return std::max(0.0, 1 - ticks_due_) /
           kRunSpeeds[static_cast<std::size_t>(speed_)].ticks_per_second;
}

bool BenchRun::WouldPass() {
    if (!assembly_.errors.empty() || assembly_.instructions.empty()) return false;
    verify_.reset();  // it has the same session
    kp::VerifyRun deck(loaded_.ticket, loaded_.reference, assembly_, scratch_);
    bool goes_on = true;
    while (goes_on) {
        goes_on = deck.Run(kLookSlice);
        const auto& tests = deck.Result().tests;
        if (!tests.empty() && !tests.back().verdict.passed) return false;
    }
    return deck.Result().AllPassed();
}

bool BenchRun::BeginVerify() {
    if (!Ready()) return false;
    Forget();
    std::ranges::fill(marks_, TestMark::None);
    verify_.emplace(loaded_.ticket, loaded_.reference, assembly_, scratch_);
    verify_seconds_ = 0;
    marks_shown_ = 0;
    state_ = RunState::Verifying;
    Say("Verifying " + Counted(static_cast<long long>(DeckSize()), "test") + "...");
    return true;
}

void BenchRun::AdvanceVerify(double seconds) {
    verify_->Run(kVerifySlice);
    verify_seconds_ += seconds;
    const double between =
        std::min(kMarkSeconds, kMostMarksSeconds / static_cast<double>(DeckSize()));
    const auto due = static_cast<std::size_t>(verify_seconds_ / between) + 1;
    const std::size_t done = verify_->Result().tests.size();
    ShowMarks(motion_ ? std::min(due, done) : done);
    if (marks_shown_ == DeckSize()) EndVerify();
}

void BenchRun::FinishVerify() {
    if (state_ != RunState::Verifying) return;
    while (verify_->Run(kVerifySlice)) {
    }
    ShowMarks(DeckSize());
    EndVerify();
}

void BenchRun::ShowMarks(std::size_t count) {
    for (; marks_shown_ < count; ++marks_shown_) {
        const bool passed = verify_->Result().tests[marks_shown_].verdict.passed;
        marks_[marks_shown_] = passed ? TestMark::Passed : TestMark::Failed;
    }
}

void BenchRun::EndVerify() {
    verified_ = verify_->Result();
    verify_.reset();
    state_ = RunState::NotRunning;
    std::string text =
        base::Format("Verify: %d of %d passed.", verified_->passed, verified_->total);
    if (const std::optional<std::size_t> failed = FirstFailed()) {
        const kp::Verdict& verdict = verified_->tests[*failed].verdict;
        verdict_text_ = kp::TestFailureText(*failed, DeckSize(), verdict);
        text += " " + verdict_text_;
        if (verdict.kind == kp::FailureKind::TickLimit) Explain(*failed);
    }
    Say(std::move(text));
}

std::optional<std::size_t> BenchRun::FirstFailed() const {
    const auto failed = std::ranges::find(marks_, TestMark::Failed);
    if (failed == marks_.end()) return std::nullopt;
    return static_cast<std::size_t>(failed - marks_.begin());
}

void BenchRun::RunTick() {
    const std::uint16_t line = live_.Session().Card().Line();
    live_.RunTick();
    const kp::CardState state = live_.Session().Card().State();
    const bool executed = live_.Session().ExecutedThisTick() && state != kp::CardState::Faulted;
    arrives_ = executed;
    card_ticks_.push_back({executed ? kp::CardState::Running : state, line});
}

void BenchRun::Finish() {
    const kp::Verdict& verdict = live_.Session().Verdict();
    const std::string test = NumberOf(test_);
    marks_[test_] = verdict.passed ? TestMark::Passed : TestMark::Failed;
    if (verdict.passed) {
        state_ = RunState::Passed;
        Say(base::Format("%s: PASS. Last output at tick %u.", test.c_str(),
                         std::max<kp::Tick>(live_.Session().OutputTicks(), 1) - 1));
        return;
    }
    state_ = RunState::Failed;
    verdict_text_ = test + ": FAIL. " + verdict.message;
    if (verdict.kind == kp::FailureKind::TickLimit) Explain(test_);
    Say(verdict_text_, true);
}

void BenchRun::Explain(std::size_t test) {
    explanation_ = kp::ExplainTickLimit(Loaded().ticket, test, assembly_, program_,
                                        Loaded().reference.outputs[test], scratch_);
}

kp::Tick BenchRun::ShownTick() const {
    return ShownState() == RunState::Failed ? live_.Session().Verdict().tick : CardTick();
}

int BenchRun::ShownLine() const {
    if (!begun_) return 0;
    if (ShownState() == RunState::Failed) return live_.Session().Verdict().line.value_or(0);
    return Shown().Session().Card().Line();
}

int BenchRun::LineOf(std::uint16_t instruction) const {
    return instruction < program_.steps.size() ? program_.steps[instruction].line : 0;
}

TraceData BenchRun::Trace() const {
    TraceData trace;
    trace.to_transmit = reference_.transmitted;
    trace.to_deliver = reference_.delivered;
    trace.card = card_ticks_;
    if (compares_ && before_.test == test_) {
        trace.sent_before = before_.sent;
        trace.delivered_before = before_.delivered;
    }
    if (!begun_) return trace;
    trace.events = live_.Session().Trace();
    trace.windows = live_.Session().Windows();
    trace.notes = live_.Session().Notes();
    if (state_ == RunState::Failed) trace.failed = live_.Session().Verdict().tick;
    return trace;
}

void BenchRun::Say(std::string text, bool alert) {
    standing_ = std::move(text);
    alert_ = alert;
}

}  // namespace Kest
