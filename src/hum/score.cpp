#include "score.h"

#include <algorithm>
#include <array>

namespace hum {
namespace {

constexpr std::uint32_t kLargest = 100000;  // what a larger number counts as
constexpr std::size_t kMaxRepeats = 16;
constexpr std::size_t kNoPlace = static_cast<std::size_t>(-1);

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}

// An event under way: its length stays exact until the end.
struct Event {
    std::int32_t midi;
    double beats;
    std::int32_t velocity;
    bool in_chord;  // and not its last note
    bool operator==(const Event&) const = default;
};

class Reader {
public:
    Reader(std::string_view text, ScoreFault& fault) : text_(text), fault_(fault) {}

    bool Read() {
        for (SkipBlanks(); at_ < text_.size(); SkipBlanks()) {
            if (!ReadToken()) return false;
        }
        return repeats_.empty() || Fail("a repeat is missing its )", repeats_.back().open);
    }
    const std::vector<Event>& Events() const { return events_; }

private:
    struct Repeat {
        std::size_t open;   // of its '('
        std::size_t first;  // event
    };

    bool Fail(std::string_view message, std::size_t place) {
        fault_ = {std::string(message), place + 1};
        return false;
    }
    void SkipBlanks() {
        while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
    }
    char Peek() const { return at_ < text_.size() ? Lower(text_[at_]) : '\0'; }
    bool AtDigit() const { return Peek() >= '0' && Peek() <= '9'; }
    std::uint32_t Number() {
        std::uint32_t number = 0;
        for (; AtDigit(); ++at_) {
            number = std::min(number * 10 + static_cast<std::uint32_t>(Peek() - '0'), kLargest);
        }
        return number;
    }

    bool ReadToken();
    bool ReadNote();
    bool ReadRest();
    bool ReadNumbered();
    bool ReadTie();
    bool ReadExtension();
    bool ReadVelocity(std::int32_t& velocity);
    bool ReadOctave(std::int32_t& octave);
    bool ReadDefaultLength();
    bool ReadChord();
    bool OpenRepeat();
    bool CloseRepeat();
    std::int32_t Pitch(std::int32_t octave);
    bool NumberedPitch(std::int32_t& midi);
    bool Length(double& beats);
    double Dotted(double beats);
    bool AddNote(std::int32_t midi, double beats, std::size_t place);
    bool AddEvent(const Event& event, std::size_t place);

    std::string_view text_;
    ScoreFault& fault_;
    std::size_t at_ = 0;
    std::int32_t octave_ = 4;
    std::int32_t velocity_ = 100;
    double length_ = 1;
    std::vector<Event> events_;
    std::vector<Repeat> repeats_;
    std::size_t last_first_ = kNoPlace;  // where the last note, rest or chord begins in events_
    // What a tie would stand directly behind.
    bool last_is_note_ = false;
    bool last_is_chord_ = false;
    std::size_t tie_ = kNoPlace;  // the '&' that waits for its second note
};

bool Reader::ReadToken() {
    const std::size_t place = at_;
    const char c = Peek();
    const bool is_note = (c >= 'a' && c <= 'g') || c == 'n';
    if (tie_ != kNoPlace && !is_note) {
        if (c == '[') return Fail("& ties a single note, not a chord", tie_);
        return Fail("& must be followed by the same pitch", tie_);
    }
    if (c != '&' && c != '^') last_is_note_ = last_is_chord_ = false;
    switch (c) {
        case 'r':
            return ReadRest();
        case 'n':
            return ReadNumbered();
        case '&':
            return ReadTie();
        case '^':
            return ReadExtension();
        case 'v':
            return ReadVelocity(velocity_);
        case 'o':
            return ReadOctave(octave_);
        case 'l':
            return ReadDefaultLength();
        case '[':
            return ReadChord();
        case ']':
            return Fail("unknown token", place);
        case '(':
            return OpenRepeat();
        case ')':
            return CloseRepeat();
        case 't':
            return Fail("T is not used; set bpm in master", place);
        default:
            return is_note ? ReadNote() : Fail("unknown token", place);
    }
}

// A letter with its sign.
std::int32_t Reader::Pitch(std::int32_t octave) {
    constexpr std::array<std::int32_t, 7> kSteps = {9, 11, 0, 2, 4, 5, 7};  // from A
    std::int32_t midi = 12 * (octave + 1) + kSteps[static_cast<std::size_t>(Peek() - 'a')];
    ++at_;
    if (Peek() == '#') {
        ++midi;
        ++at_;
    }
    return midi;
}

double Reader::Dotted(double beats) {
    double added = beats;
    for (; Peek() == '.'; ++at_) beats += added /= 2;
    return beats;
}

bool Reader::Length(double& beats) {
    beats = length_;
    if (AtDigit()) {
        const std::size_t place = at_;
        const std::uint32_t number = Number();
        if (number == 0) return Fail("L expects a length of 1 or more", place);
        beats = 4.0 / number;
    }
    beats = Dotted(beats);
    return true;
}

bool Reader::ReadNote() {
    const std::size_t place = at_;
    const std::int32_t midi = Pitch(octave_);
    double beats = 0;
    return Length(beats) && AddNote(midi, beats, place);
}

bool Reader::ReadRest() {
    const std::size_t place = at_++;
    double beats = 0;
    if (!Length(beats)) return false;
    last_first_ = events_.size();
    return AddEvent({kRest, beats, 0, false}, place);
}

bool Reader::NumberedPitch(std::int32_t& midi) {
    const std::size_t place = at_++;
    if (!AtDigit()) return Fail("N expects a MIDI note 0..127", place);
    const std::uint32_t number = Number();
    if (number > 127) return Fail("N expects a MIDI note 0..127", place);
    midi = static_cast<std::int32_t>(number);
    return true;
}

bool Reader::ReadNumbered() {
    const std::size_t place = at_;
    std::int32_t midi = 0;
    return NumberedPitch(midi) && AddNote(midi, Dotted(length_), place);
}

bool Reader::AddNote(std::int32_t midi, double beats, std::size_t place) {
    if (tie_ != kNoPlace) {
        if (events_.back().midi != midi) return Fail("& must be followed by the same pitch", tie_);
        events_.back().beats += beats;
        tie_ = kNoPlace;
        last_is_note_ = true;
        return true;
    }
    last_first_ = events_.size();
    last_is_note_ = true;
    return AddEvent({midi, beats, velocity_, false}, place);
}

bool Reader::AddEvent(const Event& event, std::size_t place) {
    if (events_.size() == kMaxEvents) return Fail("too many events (the limit is 4096)", place);
    events_.push_back(event);
    return true;
}

bool Reader::ReadTie() {
    if (last_is_chord_) return Fail("& ties a single note, not a chord", at_);
    if (!last_is_note_) return Fail("& must be followed by the same pitch", at_);
    tie_ = at_++;
    SkipBlanks();
    if (at_ == text_.size()) return Fail("& must be followed by the same pitch", tie_);
    return true;
}

bool Reader::ReadExtension() {
    const std::size_t place = at_++;
    const std::uint32_t number = Number();
    if (number == 0) return Fail("^ expects a length, as in ^8", place);
    const double beats = Dotted(4.0 / number);
    if (last_first_ == kNoPlace) {
        last_first_ = events_.size();
        return AddEvent({kRest, beats, 0, false}, place);
    }
    for (std::size_t i = last_first_; i < events_.size(); ++i) events_[i].beats += beats;
    return true;
}

bool Reader::ReadVelocity(std::int32_t& velocity) {
    const std::size_t place = at_++;
    const bool has_number = AtDigit();
    const std::uint32_t number = Number();
    if (!has_number || number > 127) return Fail("V expects 0..127", place);
    velocity = static_cast<std::int32_t>(number);
    return true;
}

bool Reader::ReadOctave(std::int32_t& octave) {
    const std::size_t place = at_++;
    const bool has_number = AtDigit();
    const std::uint32_t number = Number();
    if (!has_number || number > 8) return Fail("O expects an octave 0..8", place);
    octave = static_cast<std::int32_t>(number);
    return true;
}

bool Reader::ReadDefaultLength() {
    const std::size_t place = at_++;
    const std::uint32_t number = Number();
    if (number == 0) return Fail("L expects a length of 1 or more", place);
    length_ = Dotted(4.0 / number);
    return true;
}

bool Reader::ReadChord() {
    const std::size_t open = at_++;
    const std::size_t first = events_.size();
    std::int32_t octave = octave_;
    std::int32_t velocity = velocity_;
    for (;;) {
        SkipBlanks();
        if (at_ == text_.size()) return Fail("a chord is missing its ]", open);
        const char c = Peek();
        const std::size_t place = at_;
        if (c == ']') break;
        if (c == 'o') {
            if (!ReadOctave(octave)) return false;
        } else if (c == 'v') {
            if (!ReadVelocity(velocity)) return false;
        } else if ((c >= 'a' && c <= 'g') || c == 'n') {
            std::int32_t midi = 0;
            if (c != 'n') midi = Pitch(octave);
            if (c == 'n' && !NumberedPitch(midi)) return false;
            if (!AddEvent({midi, 0, velocity, true}, place)) return false;
        } else if ((c >= '0' && c <= '9') || c == '.' || c == '^') {
            return Fail("a chord takes its length after the ]", place);
        } else {
            return Fail("unexpected character in a chord: " + std::string(1, text_[at_]), place);
        }
    }
    ++at_;
    if (events_.size() == first) return Fail("an empty chord", open);
    double beats = 0;
    if (!Length(beats)) return false;
    for (std::size_t i = first; i < events_.size(); ++i) events_[i].beats = beats;
    events_.back().in_chord = false;
    last_first_ = first;
    last_is_chord_ = true;
    return true;
}

bool Reader::OpenRepeat() {
    if (repeats_.size() == kMaxRepeats) return Fail("repeat nesting exceeds 16", at_);
    repeats_.push_back({at_, events_.size()});
    ++at_;
    return true;
}

bool Reader::CloseRepeat() {
    const std::size_t place = at_++;
    if (repeats_.empty()) return Fail("unmatched repeat close", place);
    const Repeat repeat = repeats_.back();
    repeats_.pop_back();
    const std::uint32_t count = Number();
    if (count < 1 || count > 256) {
        return Fail("repeat expects a count 1..256, as in (C E G)4", place);
    }
    const std::size_t inside = events_.size() - repeat.first;
    if (inside == 0) return Fail("empty repeat", repeat.open);
    if (repeat.first + inside * count > kMaxEvents) {
        return Fail("too many events (the limit is 4096)", place);
    }
    const std::size_t last = last_first_;
    for (std::uint32_t copy = 1; copy < count; ++copy) {
        for (std::size_t i = 0; i < inside; ++i) events_.push_back(events_[repeat.first + i]);
    }
    if (last != kNoPlace) last_first_ = last + inside * (count - 1);
    return true;
}

}  // namespace

bool ReadScore(std::string_view text, std::vector<ScoreEvent>& events, ScoreFault& fault) {
    Reader reader(text, fault);
    if (!reader.Read()) return false;
    double start = 0;
    for (const Event& event : reader.Events()) {
        const double step = event.in_chord ? 0 : event.beats;
        events.push_back({event.midi, static_cast<float>(event.beats),
                          static_cast<float>(event.velocity) / 127.0f, static_cast<float>(start),
                          static_cast<float>(step)});
        start += step;
    }
    return true;
}

}  // namespace hum
