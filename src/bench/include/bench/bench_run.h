#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bench/trace_cells.h"
#include "card/assembler.h"
#include "content/content.h"
#include "session/session.h"
#include "session/verify.h"

namespace Kest {

struct RunSpeed {
    std::string_view name;
    int ticks_per_second;
};
inline constexpr std::array<RunSpeed, 5> kRunSpeeds = {
    {{"Slow", 4}, {"Steady", 10}, {"Brisk", 24}, {"Fast", 60}, {"Rapid", 160}}};
inline constexpr int kDefaultRunSpeed = 2;

enum class RunState : std::uint8_t { NotRunning, Running, Paused, Passed, Failed };
enum class TestMark : std::uint8_t { None, Passed, Failed };

// What the reference did in a test: the bytes that the card is to send and deliver, the bytes that
// it received, and how long it took.
struct ReferenceRun {
    std::vector<SpecByte> transmitted;
    std::vector<SpecByte> delivered;
    kp::Bytes received;
    kp::Tick ticks = 0;
};

// The words that the card held before the last step or tick, to tell what that changed.
struct CardWords {
    std::array<std::uint16_t, kp::kRegisterWords> registers{};
    std::array<std::uint16_t, kp::kMostRam> ram{};
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

    // These are false when the firmware cannot run; the standing message says why.
    bool Run();       // goes on with a paused test; a finished one starts again
    bool Step();      // one instruction, however many ticks it takes
    bool RunToEnd();  // at once
    bool Verify();    // every test from reset, in order

    void Pause();
    void Reset();
    // Lets a running test have its ticks of the time that has passed.
    void Advance(double seconds);
    // Until the next tick of a running test is due.
    double SecondsToNextTick() const;
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

    const kp::LoadedTicket& Loaded() const { return loaded_; }
    const kp::Assembly& Firmware() const { return assembly_; }
    std::size_t TestIndex() const { return test_; }
    std::size_t TestCount() const { return loaded_.ticket.tests.size(); }
    TestMark Mark(std::size_t test) const { return marks_[test]; }
    const std::string& TestTitle() const { return test_title_; }  // "Test 2 of 6: One NAK"
    const ReferenceRun& CalledFor() const { return reference_; }
    // The last verify; null when the firmware has changed since.
    const kp::VerifyResult* LastVerify() const { return verified_ ? &*verified_ : nullptr; }

    // The run; null before the first tick and after a reset.
    const kp::Session* Session() const { return begun_ ? &session_ : nullptr; }
    // The card, in its reset state without a run.
    const kp::Processor& Card() const { return begun_ ? session_.Card() : idle_card_; }
    const CardWords& WordsBefore() const { return before_; }
    int TimerTicks() const { return timer_ticks_; }  // that the timer was last started with
    std::span<const std::uint8_t> Received() const { return received_; }  // that entered the buffer
    std::size_t BytesRead() const { return bytes_read_; }                 // of those
    int LineOf(std::uint16_t instruction) const;
    // The tick to show as the run's: the next one, or the one that failed.
    kp::Tick ShownTick() const;
    // The source line that runs next, or that the test failed on; 0 without a run.
    int ShownLine() const;
    TraceData Trace() const;

private:
    bool Ready();
    bool Refuse(std::string why);
    bool EnsureSession();
    void Forget();
    void RunTick();
    void Follow(std::span<const kp::TraceEvent> events);
    void RememberWords();
    void Finish();
    void Explain(std::size_t test);
    void Say(std::string text, bool alert = false);

    const kp::LoadedTicket& loaded_;
    kp::Program reference_program_;
    kp::Program idle_program_;
    kp::Processor idle_card_;
    kp::Assembly assembly_;
    kp::Program program_;
    kp::Session session_;
    kp::Session scratch_;  // for whatever must not disturb the run that is shown
    ReferenceRun reference_;
    std::size_t test_ = 0;
    std::string test_title_;
    bool begun_ = false;
    RunState state_ = RunState::NotRunning;
    int speed_ = kDefaultRunSpeed;
    double ticks_due_ = 0;
    std::vector<CardTick> card_ticks_;
    CardWords before_;
    int timer_ticks_ = 0;
    kp::Bytes received_;
    std::size_t bytes_read_ = 0;
    std::vector<TestMark> marks_;
    std::optional<kp::VerifyResult> verified_;
    std::string standing_;
    bool alert_ = false;
    std::string verdict_text_;
    std::string explanation_;
};

}  // namespace Kest
