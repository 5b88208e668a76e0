#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "peer_settings.h"
#include "peers/peer.h"
#include "plan.h"

namespace kp {

// What becomes of one sending of a frame.
struct SendingFate {
    std::vector<std::size_t> garbled;  // bytes that the noise strikes
    bool lost = false;                 // nothing of it arrives
    bool answer_lost = false;          // no answer to it is heard
    bool taken_as_nak = false;         // any answer to it is heard as a NAK
};

// A station that sends the test's frames and waits for the card's answer to each. It sends a frame
// again after a NAK, and `timeout` ticks after its last byte when no answer has come; after eight
// sendings it gives the frame up. It is half-duplex: while it sends, it hears nothing.
class SenderPeer final : public Peer {
public:
    explicit SenderPeer(PeerSettings& settings);
    void Act(Tick tick, PeerLink& link) override;
    void Receive(Tick tick, std::uint8_t byte, PeerLink& link) override;
    bool Done() const override { return phase_ == Phase::Finished; }
    Tick NextAct() const override;

private:
    enum class Phase : std::uint8_t { Resting, Sending, Listening, Finished };
    enum class Answer : std::uint8_t { Ack, Nak };

    int Number() const { return static_cast<int>(frame_) + 1; }
    void SendFrame(Tick tick, PeerLink& link);
    void NoteSending(Tick first, bool damaged, PeerLink& link) const;
    void OpenWindows(Tick first, PeerLink& link) const;
    void Listen();
    void Rest(Tick until);
    void HearAnswer(Tick tick, Answer answer, PeerLink& link);
    void HearNothing(Tick tick, PeerLink& link);
    bool GivesUp(Tick tick, PeerLink& link);
    void NextFrame(Tick tick);

    const std::vector<Bytes>& frames_;  // the test's
    std::size_t count_;                 // of them, those that are sent
    int gap_;                           // ticks from one byte to the next, at least 1
    Tick pause_;                        // from an answer to the next sending, at least 1
    Tick timeout_;                      // from a frame's last byte to its repetition
    Tick reply_within_;                 // from a frame's last byte to the card's answer, 0 for none
    bool answer_after_frame_;           // the card may not transmit while a frame arrives
    Bytes ack_, nak_;
    Plan<SendingFate> plan_;

    Phase phase_ = Phase::Resting;
    Tick rest_until_;
    std::size_t frame_ = 0;  // from 0
    int sendings_ = 0;       // of this frame
    SendingFate fate_;       // of the last sending
    Tick last_byte_ = 0;     // the tick on which the last sending's last byte arrives
    Bytes heard_;            // since then
};

}  // namespace kp
