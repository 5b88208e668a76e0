#include "card/processor.h"

#include <algorithm>
#include <limits>

#include "card/crc16.h"

namespace kp {
namespace {

constexpr std::array<std::string_view, 7> kStateNames = {"running",
                                                         "waiting for a byte",
                                                         "waiting for the host",
                                                         "waiting for the transmitter",
                                                         "waiting",
                                                         "halted",
                                                         "stopped by a fault"};

std::int16_t Signed(std::uint16_t word) {
    return static_cast<std::int16_t>(word);
}

std::uint16_t ShiftLeft(std::uint16_t word, std::uint16_t by) {
    return by < 16 ? static_cast<std::uint16_t>(word << by) : std::uint16_t{0};
}

std::uint16_t ShiftRight(std::uint16_t word, std::uint16_t by) {
    return by < 16 ? static_cast<std::uint16_t>(word >> by) : std::uint16_t{0};
}

}  // namespace

std::string_view StateName(CardState state) {
    return kStateNames[static_cast<std::size_t>(state)];
}

void Processor::Reset(const Program& program) {
    program_ = &program;
    steps_ = program.steps.data();
    size_ = static_cast<std::uint16_t>(program.steps.size());
    pc_ = 0;
    state_ = size_ == 0 ? CardState::Halted : CardState::Running;
    executed_ = wrapped_ = timer_runs_ = timer_out_ = false;
    fault_ = FaultKind::None;
    fault_value_ = 0;
    wait_until_ = transmitter_free_ = timer_deadline_ = 0;
    rx_count_ = 0;
    rx_head_ = 0;
    depth_ = 0;
    std::copy(program.image.begin(), program.image.end(), words_.begin());
}

bool Processor::Receive(std::uint8_t byte) {
    if (rx_count_ >= program_->config.rx_buffer) return false;
    rx_[static_cast<std::uint8_t>(rx_head_ + rx_count_)] = byte;
    words_[kRxn] = ++rx_count_;
    return true;
}

bool Processor::TimerRunsOut() {
    timer_runs_ = false;
    timer_out_ = true;
    return true;
}

std::uint16_t Processor::Line() const {
    return pc_ < size_ ? steps_[pc_].line : std::uint16_t{0};
}

std::span<const std::uint16_t> Processor::Ram() const {
    return {words_.data() + kRegisterWords, static_cast<std::size_t>(program_->config.ram)};
}

bool Processor::WaitCanTimeOut() const {
    const bool waits = state_ == CardState::WaitingByte || state_ == CardState::WaitingHost;
    return waits && steps_[pc_].has_target && (timer_runs_ || timer_out_);
}

Tick Processor::NextAct() const {
    Tick next = timer_runs_ ? timer_deadline_ : std::numeric_limits<Tick>::max();
    if (state_ == CardState::InWait) next = std::min(next, wait_until_);
    if (state_ == CardState::WaitingTransmitter) next = std::min(next, transmitter_free_);
    return next;
}

void Processor::RunInward(Tick& now, Tick until, CardPorts& ports) {
    while (now < until && steps_[pc_].inward) {
        words_[kClk] = static_cast<std::uint16_t>(now);
        Execute(steps_[pc_], now, ports);
        if (state_ != CardState::Running) return;
        ++now;
    }
}

void Processor::Advance(CardPorts& ports) {
    state_ = CardState::Running;
    executed_ = true;
    if (++pc_ < size_) return;
    if (!wrapped_) {
        wrapped_ = true;
        pc_ = static_cast<std::uint16_t>(size_ - 1);  // the event belongs to the last line
        ports.Happened(Happening::Wrapped, 0);
    }
    pc_ = 0;
}

void Processor::FailWith(FaultKind kind, std::uint16_t value, CardPorts& ports) {
    state_ = CardState::Faulted;
    executed_ = true;
    fault_ = kind;
    fault_value_ = value;
    ports.Happened(Happening::CardFaulted, 0);
}

void Processor::JumpTo(std::uint16_t index) {
    state_ = CardState::Running;
    executed_ = true;
    pc_ = index;
}

void Processor::Execute(const Step& step, Tick t, CardPorts& ports) {
    std::uint16_t& x = words_[step.x];
    const std::uint16_t y = words_[step.y];
    const auto jump_if = [&](bool taken) { taken ? JumpTo(step.target) : Advance(ports); };
    switch (step.op) {
        case Op::Nop:
            break;
        case Op::Mov:
            if (step.access != Access::Direct) return ExecuteIndirect(step, ports);
            x = y;
            break;
        case Op::Add:
            x = static_cast<std::uint16_t>(x + y);
            break;
        case Op::Sub:
            x = static_cast<std::uint16_t>(x - y);
            break;
        case Op::And:
            x &= y;
            break;
        case Op::Or:
            x |= y;
            break;
        case Op::Xor:
            x ^= y;
            break;
        case Op::Shl:
            x = ShiftLeft(x, y);
            break;
        case Op::Shr:
            x = ShiftRight(x, y);
            break;
        case Op::Jmp:
            return JumpTo(step.target);
        case Op::Jeq:
            return jump_if(x == y);
        case Op::Jne:
            return jump_if(x != y);
        case Op::Jlt:
            return jump_if(Signed(x) < Signed(y));
        case Op::Jgt:
            return jump_if(Signed(x) > Signed(y));
        case Op::Djn:
            return jump_if(--x != 0);
        case Op::Call:
            return ExecuteCall(step, ports);
        case Op::Ret:
            return ExecuteReturn(ports);
        case Op::Tx:
            return ExecuteTransmit(step, t, ports);
        case Op::Rx:
            return ExecuteRead(step, ports);
        case Op::Hin:
            return ExecuteHostRead(step, ports);
        case Op::Hout:
            return ExecuteDeliver(step, ports);
        case Op::Wait:
            return ExecuteWait(step, t, ports);
        case Op::Tmr:
            ExecuteTimer(step, t, ports);
            break;
        case Op::Crc:
            words_[kCrc] = Crc16Step(words_[kCrc], static_cast<std::uint8_t>(x));
            break;
        case Op::Halt:
            return ExecuteHalt(ports);
    }
    Advance(ports);
}

void Processor::ExecuteIndirect(const Step& step, CardPorts& ports) {
    const bool load = step.access == Access::Load;
    const std::uint16_t address = words_[load ? step.y : step.x];
    if (address >= program_->config.ram) return FailWith(FaultKind::RamAddress, address, ports);
    std::uint16_t& cell = words_[static_cast<std::size_t>(kRegisterWords + address)];
    if (load) {
        words_[step.x] = cell;
    } else {
        cell = words_[step.y];
    }
    Advance(ports);
}

void Processor::ExecuteCall(const Step& step, CardPorts& ports) {
    if (depth_ >= program_->config.stack) {
        return FailWith(FaultKind::CallDepth, static_cast<std::uint16_t>(depth_ + 1), ports);
    }
    const auto next = static_cast<std::uint16_t>(pc_ + 1);
    stack_[depth_++] = next < size_ ? next : std::uint16_t{0};
    JumpTo(step.target);
}

void Processor::ExecuteReturn(CardPorts& ports) {
    if (depth_ == 0) return FailWith(FaultKind::RetWithoutCall, 0, ports);
    JumpTo(stack_[--depth_]);
}

void Processor::ExecuteTransmit(const Step& step, Tick t, CardPorts& ports) {
    if (t < transmitter_free_) {
        state_ = CardState::WaitingTransmitter;
        return;
    }
    state_ = CardState::Running;
    executed_ = true;
    transmitter_free_ = t + static_cast<Tick>(program_->config.tx_gap);
    if (ports.Transmit(static_cast<std::uint8_t>(words_[step.x]))) Advance(ports);
}

void Processor::ExecuteDeliver(const Step& step, CardPorts& ports) {
    state_ = CardState::Running;
    executed_ = true;
    if (ports.Deliver(static_cast<std::uint8_t>(words_[step.x]))) Advance(ports);
}

void Processor::ExecuteRead(const Step& step, CardPorts& ports) {
    if (rx_count_ == 0) {
        if (!TakeTimeout(step, ports)) state_ = CardState::WaitingByte;
        return;
    }
    const std::uint8_t byte = rx_[rx_head_++];
    words_[kRxn] = --rx_count_;
    words_[step.x] = byte;
    ports.Happened(Happening::ReadByte, byte);
    Advance(ports);
}

void Processor::ExecuteHostRead(const Step& step, CardPorts& ports) {
    std::uint16_t word = 0;
    if (!ports.TakeHostWord(word)) {
        if (!TakeTimeout(step, ports)) state_ = CardState::WaitingHost;
        return;
    }
    words_[step.x] = word;
    ports.Happened(Happening::ReadHost, word);
    Advance(ports);
}

bool Processor::TakeTimeout(const Step& step, CardPorts& ports) {
    if (!step.has_target || !timer_out_) return false;
    timer_out_ = false;
    ports.Happened(Happening::TookTarget, 0);
    JumpTo(step.target);
    return true;
}

void Processor::ExecuteWait(const Step& step, Tick t, CardPorts& ports) {
    const std::int16_t ticks = Signed(words_[step.x]);
    Advance(ports);
    if (ticks < 1) return;
    wait_until_ = t + static_cast<Tick>(ticks);
    state_ = CardState::InWait;
}

void Processor::ExecuteTimer(const Step& step, Tick t, CardPorts& ports) {
    const std::int16_t ticks = Signed(words_[step.x]);
    timer_out_ = false;
    timer_runs_ = ticks > 0;
    if (timer_runs_) {
        timer_deadline_ = t + static_cast<Tick>(ticks);
        ports.Happened(Happening::TimerStarted, static_cast<std::uint16_t>(ticks));
    } else {
        ports.Happened(Happening::TimerStopped, 0);
    }
}

void Processor::ExecuteHalt(CardPorts& ports) {
    state_ = CardState::Halted;
    executed_ = true;
    ports.Happened(Happening::CardHalted, 0);
}

}  // namespace kp
