#include "script_peer.h"

#include <algorithm>

namespace kp {

void ScriptPeer::Start(PeerLink& link) {
    for (const LineEntry& entry : link.Test().rx) {
        const Tick first = std::max({entry.at, link.LineFreeAt(), link.Now()});
        const Tick last = link.Send(entry.at, entry.bytes, static_cast<int>(entry.gap));
        last_scheduled_ = std::max(last_scheduled_, last);
        if (!entry.label.empty()) link.Note(first, entry.label);
        if (entry.reply_within > 0) {
            deadlines_.push_back(
                {last, static_cast<Tick>(entry.reply_within), "the reply to " + entry.label});
        }
    }
    started_ = true;
}

void ScriptPeer::Act(Tick tick, PeerLink& link) {
    now_ = tick;
    while (next_deadline_ < deadlines_.size() && deadlines_[next_deadline_].last_byte <= tick) {
        const Deadline& due = deadlines_[next_deadline_++];
        link.Expect(WindowKind::Deadline, due.last_byte + due.allowance, due.what, 0);
    }
}

bool ScriptPeer::Done() const {
    return started_ && next_deadline_ == deadlines_.size() && now_ >= last_scheduled_;
}

Tick ScriptPeer::NextAct() const {
    if (next_deadline_ < deadlines_.size()) return deadlines_[next_deadline_].last_byte;
    return now_ >= last_scheduled_ ? kNever : last_scheduled_;
}

}  // namespace kp
