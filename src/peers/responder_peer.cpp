#include "responder_peer.h"

#include <algorithm>

#include "card/byte_text.h"
#include "ends_with.h"

namespace kp {
namespace {

constexpr std::size_t kNotedBytes = 12;

// Names the reply by its label, or by the beginning of its bytes.
std::string NoteOf(const Reply& reply) {
    std::string text;
    text.reserve(6 + 3 * kNotedBytes + 4);
    text = "Reply ";
    if (!reply.label.empty()) return text += reply.label;
    for (std::size_t k = 0; k < std::min(reply.send.size(), kNotedBytes); ++k) {
        if (k > 0) text += ' ';
        AppendHex(text, reply.send[k]);
    }
    if (reply.send.size() > kNotedBytes) text += " ...";
    return text;
}

}  // namespace

ResponderPeer::ResponderPeer(PeerSettings& settings)
    : replies_(settings.Test().replies),
      gap_(settings.Number("gap", 1, 1)),
      reply_within_(settings.Ticks("reply_within", 0, 0)) {}

void ResponderPeer::Act(Tick tick, PeerLink&) {
    now_ = tick;
}

void ResponderPeer::Receive(Tick tick, std::uint8_t byte, PeerLink& link) {
    if (AllGiven()) return;
    const Reply& reply = replies_[next_];
    heard_.push_back(byte);
    if (!EndsWith(heard_, reply.after)) return;
    heard_.clear();
    ++next_;
    const Tick at = tick + static_cast<Tick>(reply.delay);
    last_answer_ =
        reply.send.empty() ? std::max(at, link.LineFreeAt()) : link.Send(at, reply.send, gap_);
    link.Note(last_answer_, NoteOf(reply));
    if (reply_within_ > 0 && !AllGiven()) {
        link.Expect(WindowKind::Deadline, last_answer_ + reply_within_, "the next request",
                    last_answer_);
    }
}

Tick ResponderPeer::NextAct() const {
    return AllGiven() && !Done() ? last_answer_ : kNever;
}

}  // namespace kp
