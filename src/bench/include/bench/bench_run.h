#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bench/moment.h"
#include "bench/trace_cells.h"
#include "card/assembler.h"
#include "content/content.h"
#include "save/settings.h"
#include "session/session.h"
#include "session/verify.h"

namespace Kest {

enum class RunState : std::uint8_t { NotRunning, Running, Paused, Passed, Failed, Verifying };
enum class TestMark : std::uint8_t { None, Passed, Failed };

// What the reference did in a test: the bytes that the card is to send and deliver, the bytes that
// it received, and how long it took.
struct ReferenceRun {
    std::vector<SpecByte> transmitted;
    std::vector<SpecByte> delivered;
    kp::Bytes received;
    kp::Tick ticks = 0;
};

// Firmware at work on a ticket's tests: assembles it, runs, steps and verifies, and says in the
// standing message what came of it. It knows neither screen nor disk. The ticket must outlive it.
class BenchRun {
public:
    explicit BenchRun(const kp::LoadedTicket& loaded);
    BenchRun(const BenchRun&) = delete;
    BenchRun& operator=(const BenchRun&) = delete;

    // Assembles the text and forgets the run and all marks.
    void SetFirmware(std::string_view text);
    // Forgets the run and turns to another test of the deck.
    void SelectTest(std::size_t test);
    // Puts a test behind the deck, in the place of an earlier such one, and turns to it. A verify
    // leaves it out. `name` is what stands in the place of its number.
    void AddTest(std::string name, kp::Test test, kp::ExpectedOutput expected);
    bool IsOfDeck(std::size_t test) const { return test < loaded_.ticket.tests.size(); }

    // These are false when the firmware cannot run; the standing message says why.
    bool Run();       // goes on with a paused test; a finished one starts again
    bool Step();      // one instruction, however many ticks it takes
    bool RunToEnd();  // at once, past every breakpoint
    // Whether the firmware would pass every test. Nothing of it is shown.
    bool WouldPass();
    // Every test from reset, in order; Advance does it in slices, FinishVerify at once.
    bool BeginVerify();
    void FinishVerify();

    void Pause();
    void Reset();
    // Back to where the instruction before the shown tick began; what the run did from there on is
    // forgotten. False when there is nothing to go back to.
    bool StepBack();
    // Lets a running test have its ticks of the time that has passed, and a verify its slice.
    void Advance(double seconds);
    // Until Advance has something to do.
    double SecondsToNextTick() const;
    // Source lines, from 1, before whose instructions a running test pauses.
    void SetBreakpoints(std::vector<int> lines) { breakpoints_ = std::move(lines); }
    // Whether a verify sets its marks one after the other for the eye.
    void SetMotion(bool motion) { motion_ = motion; }
    // Whether the trace holds what the run of this test before sent and delivered.
    void SetCompare(bool compare) { compares_ = compare; }
    bool Compares() const { return compares_; }
    void SetSpeed(int index) { speed_ = index; }
    int Speed() const { return speed_; }

    RunState State() const { return state_; }
    // The last thing that the assembler, the run or the verify said.
    const std::string& Standing() const { return standing_; }
    bool StandingIsAlert() const { return alert_; }
    // The failure that the last run or verify ended with, until the next; empty without one.
    const std::string& VerdictText() const { return verdict_text_; }
    // Why a test reached its tick limit; empty otherwise.
    const std::string& Explanation() const { return explanation_; }

    // With a test that was added.
    const kp::LoadedTicket& Loaded() const { return extended_ ? *extended_ : loaded_; }
    const kp::Assembly& Firmware() const { return assembly_; }
    std::size_t TestIndex() const { return test_; }
    std::size_t TestCount() const { return Loaded().ticket.tests.size(); }
    TestMark Mark(std::size_t test) const { return marks_[test]; }
    const std::string& TestTitle() const { return test_title_; }  // "Test 2 of 6: One NAK"
    const ReferenceRun& CalledFor() const { return reference_; }
    const kp::ExpectedOutput& CalledForBytes() const { return Loaded().reference.outputs[test_]; }
    // The first test of the deck whose last run failed.
    std::optional<std::size_t> FirstFailed() const;
    // The last verify; null when the firmware has changed since.
    const kp::VerifyResult* LastVerify() const { return verified_ ? &*verified_ : nullptr; }

    // The run; null before the first tick and after a reset.
    const kp::Session* Session() const { return begun_ ? &live_.Session() : nullptr; }
    std::span<const std::uint8_t> Received() const { return live_.Received(); }
    std::size_t BytesRead() const { return live_.BytesRead(); }

    // Shows the card as it was when this past tick had ended; without one, or on the run's last
    // tick and behind it, as it is.
    void Look(std::optional<kp::Tick> tick);

    // What is shown: the run as it stands, or a past tick of it.
    RunState ShownState() const { return looks_back_ ? RunState::Paused : state_; }
    // The card, in its reset state without a run.
    const kp::Processor& Card() const { return begun_ ? Shown().Session().Card() : idle_card_; }
    const CardWords& WordsBefore() const { return Shown().WordsBefore(); }
    int TimerTicks() const { return Shown().TimerTicks(); }
    // The tick that begins now on the card.
    kp::Tick CardTick() const { return begun_ ? Shown().Session().CurrentTick() : 0; }
    // The tick to show as the run's: the next one, or the one that failed.
    kp::Tick ShownTick() const;
    // The source line that runs next, or that the test failed on; 0 without a run.
    int ShownLine() const;
    int LineOf(std::uint16_t instruction) const;
    TraceData Trace() const;

private:
    const Moment& Shown() const { return looks_back_ ? past_ : live_; }
    bool Ready();
    bool Refuse(std::string why);
    bool EnsureSession();
    void Forget();
    void KeepRun();
    void RunTick();
    bool AtBreakpoint() const;
    kp::Tick InstructionBefore(kp::Tick tick) const;
    void SayNextLine();
    void AdvanceVerify(double seconds);
    void ShowMarks(std::size_t count);
    void EndVerify();
    void Finish();
    void Explain(std::size_t test);
    std::size_t DeckSize() const { return loaded_.ticket.tests.size(); }
    std::string NumberOf(std::size_t test) const;
    void Say(std::string text, bool alert = false);

    const kp::LoadedTicket& loaded_;
    std::optional<kp::LoadedTicket> extended_;  // once a test was added
    std::string added_name_;
    kp::Program reference_program_;
    kp::Program idle_program_;
    kp::Processor idle_card_;
    kp::Assembly assembly_;
    kp::Program program_;
    // What the run that was forgotten last sent and delivered.
    struct RunBefore {
        std::size_t test = 0;
        std::vector<SpecByte> sent;
        std::vector<SpecByte> delivered;
    };

    Moment live_;
    Moment past_;
    RunBefore before_;
    bool compares_ = false;
    bool looks_back_ = false;
    kp::Session scratch_;  // for whatever must not disturb the run that is shown
    ReferenceRun reference_;
    std::size_t test_ = 0;
    std::string test_title_;
    bool begun_ = false;
    RunState state_ = RunState::NotRunning;
    int speed_ = kDefaultRunSpeed;
    bool motion_ = false;
    double ticks_due_ = 0;
    std::vector<Kest::CardTick> card_ticks_;
    std::vector<int> breakpoints_;
    bool arrives_ = false;  // the next instruction has not been begun
    std::vector<TestMark> marks_;
    std::optional<kp::VerifyRun> verify_;  // while one is under way
    double verify_seconds_ = 0;
    std::size_t marks_shown_ = 0;  // of the verify
    std::optional<kp::VerifyResult> verified_;
    std::string standing_;
    bool alert_ = false;
    std::string verdict_text_;
    std::string explanation_;
};

}  // namespace Kest
