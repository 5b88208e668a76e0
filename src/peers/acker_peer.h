#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frame_decoder.h"
#include "peer_settings.h"
#include "peers/peer.h"
#include "plan.h"

namespace kp {

// What becomes of a frame that reaches the acker.
struct AckerFate {
    enum Kind : std::uint8_t {
        Ack,      // acknowledged when it is intact, refused when it is damaged
        AckLate,  // the same, but the ACK comes 20 ticks later
        Nak,      // the noise damaged it: refused
        Busy,     // put off: the card may try again after a pause
        LostAck,  // taken, but its answer is lost
        Ignore,   // lost itself
        Say,      // lost, and other bytes come where its answer should be
    };
    Kind kind = Ack;
    Bytes words;  // that Say sends, as they are
};

// The far end of a stop-and-wait line: it answers every frame of the card `delay` ticks after its
// last byte with `ack`, `nak` or `busy`, as the frame's check and the plan say. A frame without an
// answer must be sent again within `retry_after`, one that was put off after `backoff`, one that
// was refused within `nak_retry_within`. Outside frames it answers single command bytes; the
// `final` one closes the session.
class AckerPeer final : public Peer {
public:
    explicit AckerPeer(PeerSettings& settings);
    void Act(Tick tick, PeerLink& link) override;
    void Receive(Tick tick, std::uint8_t byte, PeerLink& link) override;
    bool Done() const override;
    Tick NextAct() const override;

private:
    bool IsCommand(std::uint8_t byte) const;
    const Bytes* AnswerTo(std::uint8_t command) const;
    void HearCommand(Tick tick, std::uint8_t command, PeerLink& link);
    void HearFrame(Tick tick, PeerLink& link);
    void Refuse(Tick tick, PeerLink& link);
    void PutOff(Tick tick, PeerLink& link);
    void ExpectAgain(Tick tick, PeerLink& link) const;
    Tick Answer(Tick tick, const Bytes& bytes, PeerLink& link) const;
    std::string Frame() const;

    Bytes ack_, nak_, busy_;
    Tick delay_;  // from a frame's last byte, or from a command, to the answer; at least 1
    Plan<AckerFate> plan_;
    bool answers_with_flags_;  // a frame's flags byte follows each answer
    RetryWindow retry_after_;
    Tick nak_retry_within_;      // 0 for none
    int frames_;                 // to be acknowledged
    std::vector<Tick> backoff_;  // least pauses after the first, second and later BUSY in a row
    Tick backoff_slack_;
    std::vector<std::pair<Bytes, Bytes>> commands_;  // with their answers
    Bytes final_;

    FrameDecoder decoder_;
    int received_ = 0;  // frames, damaged and repeated ones included
    int acknowledged_ = 0;
    std::size_t busy_in_a_row_ = 0;
    Tick closed_at_ = kNever;  // when the answer to the final command has arrived
    Tick now_ = 0;
};

}  // namespace kp
