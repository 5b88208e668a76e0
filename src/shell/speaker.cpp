#include "shell/speaker.h"

#include <algorithm>

namespace Kest {
namespace {

// A line that is being typed in is said when so long nothing has been typed.
constexpr double kRestSeconds = 0.8;

}  // namespace

void Speaker::SayIfNew(std::string& said, const std::string& text) {
    if (text == said) return;
    said = text;
    if (!text.empty()) say_(text);
}

// Until it rests neither the line nor what the status line makes of every letter is said.
bool Speaker::IsBeingTyped(const Speech& speech, double now) {
    const bool same_line = !speech.place.empty() && speech.focus == said_.focus &&
                           speech.place == said_.place && speech.line != said_.line;
    if (!same_line) {
        due_.reset();
        return false;
    }
    if (!due_ || speech.line != typed_) due_ = now + kRestSeconds;
    typed_ = speech.line;
    return *due_ > now;
}

// What the status line says comes first: it is the answer to the last key.
void Speaker::Tell(const Speech& speech, double now) {
    const bool being_typed = IsBeingTyped(speech, now);
    if (!being_typed || speech.is_alert) {
        const std::string sign = speech.is_alert && !speech.status.empty() ? "Alert: " : "";
        SayIfNew(said_.status, sign + speech.status);
    }
    SayPlace(speech);
    if (!being_typed) SayLine(speech);
    SayIfNew(said_.note, speech.note);
    SayIfNew(said_.advice, speech.advice);
}

// Of a text that has scrolled, and of values that have changed, the new rows are said.
void Speaker::SayPlace(const Speech& speech) {
    const bool moved = speech.focus != said_.focus;
    if (moved) said_.place = said_.line = {};
    SayIfNew(said_.focus, speech.focus);
    for (const std::string& row : speech.rows) {
        const bool known = !moved && std::ranges::find(said_.rows, row) != said_.rows.end();
        if (!known) say_(row);
    }
    said_.rows = speech.rows;
}

void Speaker::SayLine(const Speech& speech) {
    due_.reset();
    if (speech.place == said_.place && speech.line == said_.line) return;
    said_.place = speech.place;
    said_.line = speech.line;
    if (!speech.line.empty()) {
        say_(speech.place.empty() ? speech.line : speech.place + ": " + speech.line);
    }
}

}  // namespace Kest
