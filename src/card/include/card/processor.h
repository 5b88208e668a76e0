#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "card/config.h"
#include "card/program.h"

namespace kp {

enum class CardState : std::uint8_t {
    Running,
    WaitingByte,
    WaitingHost,
    WaitingTransmitter,
    InWait,
    Halted,
    Faulted,
};

// The state as messages write it, such as "waiting for a byte".
std::string_view StateName(CardState state);

// What happens on a card, in the order of the trace's numbers.
enum class Happening : std::uint8_t {
    Transmitted,
    Received,
    ReadByte,
    LostByte,
    ReadHost,
    Delivered,
    TimerStarted,
    TimerStopped,
    TimerRanOut,
    TookTarget,
    CardHalted,
    CardFaulted,
    Wrapped,
};

enum class FaultKind : std::uint8_t { None, RamAddress, CallDepth, RetWithoutCall };

// What the processor asks of the world around the card. Each call happens within one tick, on the
// tick given to Processor::Run.
class CardPorts {
public:
    virtual ~CardPorts() = default;
    // A byte leaves by the line or goes to the host. False: the byte ended the run, and the
    // instruction does not advance.
    virtual bool Transmit(std::uint8_t byte) = 0;
    virtual bool Deliver(std::uint8_t byte) = 0;
    // The next word of the host's messages; false when none is released yet.
    virtual bool TakeHostWord(std::uint16_t& word) = 0;
    // Everything else that the trace keeps.
    virtual void Happened(Happening what, std::uint16_t value) = 0;
};

// One LC-1: registers, RAM, call stack, timer, transmitter, receive buffer. It runs a program tick
// by tick, allocates nothing, and knows neither a test nor a far end. The program must outlive the
// run.
class Processor {
public:
    // Puts the card into its reset state with this program.
    void Reset(const Program& program);

    // A byte arrives from the line. False when the receive buffer was full and the byte is lost.
    bool Receive(std::uint8_t byte);
    // Lets the timer reach tick t; true when it runs out now.
    bool RunTimer(Tick t) { return timer_runs_ && t >= timer_deadline_ && TimerRunsOut(); }
    // Runs the processor for tick t: one instruction, or one tick of waiting.
    void Run(Tick t, CardPorts& ports) {
        executed_ = false;
        if (state_ >= CardState::Halted || t < wait_until_) return;
        words_[kClk] = static_cast<std::uint16_t>(t);
        Execute(steps_[pc_], t, ports);
    }
    // Runs from tick `now` as Run would, tick after tick, as long as the next instruction touches
    // nothing outside the processor, and moves `now` to the first tick that it did not run: `until`
    // at the latest. A fault ends it on its own tick.
    void RunInward(Tick& now, Tick until, CardPorts& ports);
    // Stops the card for good, as a fault that its surroundings found does.
    void Stop() { state_ = CardState::Faulted; }

    CardState State() const { return state_; }
    bool Executed() const { return executed_; }  // in the last Run, an instruction was completed
    bool HasWrapped() const { return wrapped_; }
    FaultKind Fault() const { return fault_; }
    std::uint16_t FaultValue() const {
        return fault_value_;
    }  // the RAM address, or the call's depth
    // The source line of the instruction at the program counter, 0 without one.
    std::uint16_t Line() const;
    std::uint16_t ProgramCounter() const { return pc_; }
    // The next instruction runs at once and touches nothing outside the processor.
    bool IsInward() const { return state_ == CardState::Running && steps_[pc_].inward; }
    // The card waits at rx or hin with a timeout target, and the timer runs or has run out.
    bool WaitCanTimeOut() const;

    // The next tick on which time alone moves the card: its timer, or the end of what it waits for.
    // The largest tick there is when neither can.
    Tick NextAct() const;

    std::uint16_t RegisterValue(int number) const {
        return words_[static_cast<std::size_t>(number)];
    }
    std::span<const std::uint16_t> Ram() const;
    std::span<const std::uint16_t> Stack() const { return {stack_.data(), depth_}; }
    bool TimerRuns() const { return timer_runs_; }
    bool TimerHasRunOut() const { return timer_out_; }
    Tick TimerDeadline() const { return timer_deadline_; }
    Tick TransmitterFreeAt() const { return transmitter_free_; }
    Tick WaitsUntil() const { return wait_until_; }
    int BytesWaiting() const { return rx_count_; }
    std::uint8_t WaitingByte(int index) const {
        return rx_[static_cast<std::uint8_t>(rx_head_ + index)];
    }

private:
    bool TimerRunsOut();
    void Advance(CardPorts& ports);
    void JumpTo(std::uint16_t index);
    void FailWith(FaultKind kind, std::uint16_t value, CardPorts& ports);
    void Execute(const Step& step, Tick t, CardPorts& ports);
    void ExecuteIndirect(const Step& step, CardPorts& ports);
    void ExecuteCall(const Step& step, CardPorts& ports);
    void ExecuteReturn(CardPorts& ports);
    void ExecuteTransmit(const Step& step, Tick t, CardPorts& ports);
    void ExecuteRead(const Step& step, CardPorts& ports);
    void ExecuteHostRead(const Step& step, CardPorts& ports);
    void ExecuteDeliver(const Step& step, CardPorts& ports);
    void ExecuteWait(const Step& step, Tick t, CardPorts& ports);
    void ExecuteTimer(const Step& step, Tick t, CardPorts& ports);
    void ExecuteHalt(CardPorts& ports);
    bool TakeTimeout(const Step& step, CardPorts& ports);

    const Program* program_ = nullptr;
    const Step* steps_ = nullptr;
    std::uint16_t size_ = 0;
    std::uint16_t pc_ = 0;
    CardState state_ = CardState::Halted;
    bool executed_ = false;
    bool wrapped_ = false;
    bool timer_runs_ = false;
    bool timer_out_ = false;
    FaultKind fault_ = FaultKind::None;
    std::uint16_t fault_value_ = 0;
    Tick wait_until_ = 0;
    Tick transmitter_free_ = 0;
    Tick timer_deadline_ = 0;
    std::uint16_t rx_count_ = 0;
    std::uint8_t rx_head_ = 0;
    std::uint16_t depth_ = 0;
    std::array<std::uint16_t, 32> stack_{};
    std::array<std::uint8_t, 256> rx_{};
    std::array<std::uint16_t, kMostWords> words_{};
};

}  // namespace kp
