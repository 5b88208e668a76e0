#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "card/processor.h"
#include "peers/peer.h"
#include "session/trace.h"
#include "session/verdict.h"
#include "ticket/ticket.h"

namespace kp {

// What a test's reference run sent and delivered, which is what the card must send and deliver.
struct ExpectedOutput {
    Bytes transmitted;
    Bytes delivered;
};

// How much longer than its ticket's `settle` a test waits for a card that owes bytes and only
// waits.
inline constexpr Tick kPatience = 400;

// One run of one test: the card, the line, the host and the far end, tick by tick, with its trace
// and its judgement. A session is made once and begun anew for every run, so that its storage is
// reused; nothing is allocated per tick. Ticket, test, program and expected output must outlive the
// run.
class Session final : private PeerLink, private CardPorts {
public:
    Session();
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Puts everything into its reset state for this test. With `expected` null the run is recorded,
    // not judged: it passes when it ends by itself.
    void Begin(const kp::Ticket& ticket, const kp::Test& test, const Program& program,
               std::unique_ptr<Peer> peer, const ExpectedOutput* expected);

    // Runs one tick. False once the test has finished.
    bool StepTick();
    // Runs until the processor has completed one instruction, or the test has finished.
    bool StepInstruction();
    // The same ticks as StepTick by StepTick, faster: what nothing from outside can touch is run,
    // or waited for, in one go.
    void RunToEnd() { RunUpTo(kNever); }
    // The same, but stops before this tick if the test has not finished earlier. A card that waited
    // on the last tick may not have looked at its clock then, so that its `clk` lags.
    void RunUpTo(Tick tick);

    bool Finished() const { return finished_; }
    const kp::Verdict& Verdict() const { return verdict_; }  // once finished
    // The tick that runs next; after the end, the last one that ran plus one.
    Tick CurrentTick() const { return tick_; }
    // The tick after the last tx or hout; 0 when there was none.
    Tick OutputTicks() const { return output_ticks_; }
    bool ExecutedThisTick() const { return card_.Executed(); }

    const Processor& Card() const { return card_; }
    std::span<const TraceEvent> Trace() const { return trace_; }
    std::span<const TimingWindow> Windows() const { return windows_.Items(); }
    std::span<const FarEndNote> Notes() const { return notes_.Items(); }
    const Bytes& Transmitted() const { return transmitted_; }
    const Bytes& Delivered() const { return delivered_; }
    // The host's messages: the one being read, and the bytes of it read so far.
    std::size_t HostMessageIndex() const { return host_message_; }
    std::size_t HostBytesRead() const { return host_byte_; }
    const kp::Ticket& RunTicket() const { return *ticket_; }
    const kp::Test& RunTest() const { return *test_; }

private:
    // Bytes on their way to the card, in the order of their arrival. Storage is kept from run to
    // run.
    class Arrivals {
    public:
        void Reserve(std::size_t bytes) { flights_.reserve(bytes); }
        void Clear();
        void Add(Tick at, std::uint8_t byte);
        std::uint8_t Take();
        bool Empty() const { return next_at_ == kNever; }
        Tick NextAt() const { return next_at_; }  // kNever when none is on its way

    private:
        struct Flight {
            Tick at;
            std::uint8_t byte;
        };
        std::vector<Flight> flights_;
        std::size_t head_ = 0;
        Tick next_at_ = kNever;
    };

    // A list that keeps its items' storage, texts included, when it is cleared.
    template <class Item>
    class Reused {
    public:
        Item& Add() {
            if (count_ == items_.size()) items_.emplace_back();
            return items_[count_++];
        }
        void Clear() { count_ = 0; }
        std::span<Item> Items() { return {items_.data(), count_}; }
        std::span<const Item> Items() const { return {items_.data(), count_}; }

    private:
        std::vector<Item> items_;
        std::size_t count_ = 0;
    };

    // PeerLink
    Tick Now() const override { return tick_; }
    Tick Send(Tick tick, std::span<const std::uint8_t> bytes, int spacing) override;
    Tick LineFreeAt() const override { return line_free_; }
    void Expect(WindowKind kind, Tick until, std::string_view label, Tick from) override;
    void Note(Tick tick, std::string_view text, int flag) override;
    const kp::Ticket& Ticket() const override { return *ticket_; }
    const kp::Test& Test() const override { return *test_; }

    // CardPorts
    bool Transmit(std::uint8_t byte) override;
    bool Deliver(std::uint8_t byte) override;
    bool TakeHostWord(std::uint16_t& word) override;
    void Happened(Happening what, std::uint16_t value) override;

    void Start();
    bool RunTick();
    void EndTick();
    Tick NextOutside() const;
    Tick NextOfFarEnd() const;
    Tick NextSettled() const;
    void RunUntouched();
    void RunCard(Tick bound);
    bool HearOnTheRun();
    bool ReceiveOnTheRun();
    void HearCard();
    void ArriveAtCard();
    void Record(Happening kind, std::uint16_t value, std::uint16_t index, std::uint16_t line);

    // The judge (judge.cpp).
    bool JudgeWindows();
    bool JudgeTransmitted(std::uint8_t byte);
    bool JudgeDelivered(std::uint8_t byte);
    void JudgeMissedDeadlines();
    void FailFault();
    void DecideEnd();
    void DecideEndJudging();
    void DecideEndRecording();
    bool LineQuiet() const;
    bool StuckForGood() const;
    bool CardStuck() const;
    bool HostDone() const;
    bool Complete() const;
    bool Owes() const;
    void Pass();
    void PassOrDiagnose();
    void Fail(FailureKind kind, std::optional<int> line, std::string message);

    const kp::Ticket* ticket_ = nullptr;
    const kp::Test* test_ = nullptr;
    const ExpectedOutput* expected_ = nullptr;
    std::unique_ptr<Peer> peer_;
    Processor card_;
    Tick tick_ = 0;
    Tick last_activity_ = 0;
    Tick output_ticks_ = 0;
    Tick line_free_ = 0;
    Tick stop_at_ = kNever;             // RunUpTo's
    Tick act_at_ = 0;                   // the far end need not act before this tick
    Tick deadline_passed_at_ = kNever;  // the first tick on which an open deadline has been missed
    std::size_t open_windows_ = 0;
    std::size_t first_open_ = 0;  // no window before it is open
    std::size_t host_message_ = 0;
    std::size_t host_byte_ = 0;
    bool finished_ = true;
    std::optional<std::uint8_t> to_far_end_;  // sent on the tick before
    Arrivals to_card_;
    Bytes transmitted_;
    Bytes delivered_;
    std::vector<TraceEvent> trace_;
    Reused<TimingWindow> windows_;
    Reused<FarEndNote> notes_;
    kp::Verdict verdict_;
};

}  // namespace kp
