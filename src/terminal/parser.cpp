#include "parser.h"

#include <algorithm>
#include <utility>

#include "base/utf.h"
#include "keys.h"

namespace zo::term {
namespace {

using ui::Key;
using ui::KeyPress;

constexpr std::uint8_t kEscape = 0x1B;
constexpr std::uint8_t kBell = 0x07;
constexpr std::uint8_t kCancel = 0x18;
constexpr int kLongestSequence = 64;
constexpr int kLargestNumber = 2000000;  // above every character
constexpr std::string_view kPasteEnd = "\x1b[201~";

// How many bytes a character takes that begins with this one; 0 for one that begins none.
std::size_t Utf8Size(std::uint8_t first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

std::string WithLineFeeds(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool pair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
        if (!pair) out += text[at] == '\r' ? '\n' : text[at];
    }
    return out;
}

}  // namespace

void Parser::Read(std::string_view bytes, std::vector<Report>& reports) {
    reports_ = &reports;
    for (const char byte : bytes) Step(static_cast<std::uint8_t>(byte));
    reports_ = nullptr;
}

void Parser::TimeOut(std::vector<Report>& reports) {
    if (!WaitsAfterEscape()) return;
    reports_ = &reports;
    ReportLoneEscape();
    if (state_ == State::Escape) {
        ReportKey({.key = Key::Escape});
    } else if (length_ == 0) {
        ReportKey(KeyOfCode(string_start_, {.alt = true}));
    }
    state_ = State::Ground;
    reports_ = nullptr;
}

void Parser::Step(std::uint8_t byte) {
    switch (state_) {
        case State::Ground:
            return StepGround(byte);
        case State::Escape:
            return StepEscape(byte);
        case State::Sequence:
            return StepSequence(byte);
        case State::Function:
            state_ = State::Ground;
            return ReportNamed(KeyOfLetter(static_cast<char>(byte)), 1);
        case State::Console:
            state_ = State::Ground;
            if (byte >= 'A' && byte <= 'E') ReportNamed(KeyOfNumber(11 + byte - 'A'), 1);
            alt_ = false;
            return;
        case State::OldMouse:
            return StepOldMouse(byte);
        case State::String:
        case State::StringEscape:
            return StepString(byte);
        case State::Paste:
            return StepPaste(byte);
    }
}

void Parser::StepGround(std::uint8_t byte) {
    if (utf8_count_ > 0) {
        if ((byte & 0xC0) == 0x80) {
            utf8_[utf8_count_++] = static_cast<char>(byte);
            if (utf8_count_ == utf8_size_) EndCharacter();
            return;
        }
        utf8_count_ = 0;  // it broke off
        alt_ = false;
    }
    if (byte == kEscape) {
        state_ = State::Escape;
    } else if (byte == backspace_) {
        ReportKey({.key = Key::Backspace});
    } else if (byte == 0x08 || byte == 0x7F) {  // the other of the two is sent with Ctrl
        ReportKey({.key = Key::Backspace, .with = {.control = true}});
    } else if (byte < 0x20) {
        ReportKey(KeyOfControl(byte));
    } else if (const std::size_t size = Utf8Size(byte); size > 0) {
        utf8_[0] = static_cast<char>(byte);
        utf8_count_ = 1;
        utf8_size_ = size;
        if (size == 1) EndCharacter();
    } else {
        alt_ = false;
    }
}

void Parser::EndCharacter() {
    const std::string_view text(utf8_.data(), utf8_count_);
    utf8_count_ = 0;
    std::size_t at = 0;
    const char32_t character = base::NextCodePoint(text, at);
    if (at != text.size() || (character >= 0x80 && character < 0xA0)) {
        alt_ = false;
        return;
    }
    ReportKey(KeyOfCode(character, {}));
}

// The character that a key without Ctrl and Alt makes follows as text.
void Parser::ReportKey(KeyPress press) {
    if (std::exchange(alt_, false)) press.with.alt = true;
    if (press.key == Key::None) return;
    reports_->push_back(press);
    if (press.key != Key::Character || press.with.control || press.with.alt) return;
    const bool capital = press.with.shift && press.character >= U'a' && press.character <= U'z';
    ui::TextInput input;
    base::AppendUtf8(input.text, capital ? press.character - U'a' + U'A' : press.character);
    reports_->push_back(std::move(input));
}

void Parser::ReportNamed(Key key, int modifiers) {
    const auto with = ModifiersOf(modifiers);
    if (!with) {
        alt_ = false;
        return;
    }
    ReportKey({.key = key, .with = *with});
}

void Parser::Begin(State state) {
    state_ = state;
    prefix_ = intermediate_ = 0;
    numbers_.fill(-1);
    count_ = 0;
    skips_ = false;
    length_ = 0;
}

void Parser::StepEscape(std::uint8_t byte) {
    state_ = State::Ground;
    switch (byte) {
        case '[':
            return Begin(State::Sequence);
        case 'O':
            return Begin(State::Function);
        case ']':
        case 'P':
            string_start_ = byte;
            return Begin(State::String);
        case kEscape:
            // Twice the key, or Alt with one that begins with it.
            ReportLoneEscape();
            alt_ = true;
            state_ = State::Escape;
            return;
        default:
            ReportLoneEscape();
            alt_ = true;
            return StepGround(byte);
    }
}

void Parser::StepSequence(std::uint8_t byte) {
    if (++length_ > kLongestSequence || byte == kCancel || byte >= 0x7F) {
        state_ = State::Ground;
        alt_ = false;
    } else if (byte == kEscape) {
        alt_ = false;
        state_ = State::Escape;
    } else if (byte == '[' && length_ == 1) {
        state_ = State::Console;
    } else if (byte == 'M' && length_ == 1) {
        Begin(State::OldMouse);
    } else if (byte >= '0' && byte <= '9') {
        if (count_ == 0) count_ = 1;
        int& number = numbers_[count_ - 1];
        if (!skips_) number = std::min(std::max(number, 0) * 10 + byte - '0', kLargestNumber);
    } else if (byte == ';') {
        count_ = std::min(std::max<std::size_t>(count_, 1) + 1, numbers_.size());
        skips_ = false;
    } else if (byte == ':') {
        skips_ = true;
    } else if (byte >= '<' && byte <= '?') {
        prefix_ = static_cast<char>(byte);
    } else if (byte >= 0x20 && byte < 0x30) {
        intermediate_ = static_cast<char>(byte);
    } else if (byte >= 0x40) {
        state_ = State::Ground;
        EndSequence(static_cast<char>(byte));
        ReportLoneEscape();
    }
}

int Parser::Number(std::size_t index, int otherwise) const {
    return numbers_[index] < 0 ? otherwise : numbers_[index];
}

// An Esc was the key, since what came behind it is no key that it could belong to: the terminal
// said something by itself.
void Parser::ReportLoneEscape() {
    if (std::exchange(alt_, false)) ReportKey({.key = Key::Escape});
}

void Parser::ReportNews(Report report) {
    ReportLoneEscape();
    reports_->push_back(std::move(report));
}

void Parser::EndSequence(char last) {
    if (prefix_ == '<') {
        if (last == 'M' || last == 'm') EndMouse(last == 'M');
        return;
    }
    if (prefix_ == '?' && intermediate_ == '$' && last == 'y') {
        const int value = Number(1, 0);
        ReportNews(ModeReport{Number(0, 0), value == 1 || value == 2});
        return;
    }
    if (prefix_ != 0 || intermediate_ != 0) return;
    switch (last) {
        case '~':
            return EndNumbered();
        case 'u':
            return EndCode();
        case 'I':
        case 'O':
            return ReportNews(FocusReport{last == 'I'});
        case 'n':
            if (Number(0, -1) == 0) ReportNews(StatusReport{});
            return;
        case 'R':
            // The first row's could as well be F3 with a modifier, so nobody asks there.
            if (Number(0, 1) > 1) {
                ReportNews(CursorReport{Number(1, 1) - 1, Number(0, 1) - 1});
                return;
            }
            break;
        case 'Z':
            return ReportNamed(Key::Tab, ((Number(1, 1) - 1) | 1) + 1);
        case 'a':
        case 'b':
        case 'c':
        case 'd':  // arrows with Shift, of some terminals
            return ReportNamed(KeyOfLetter(static_cast<char>(last - 'a' + 'A')), 2);
        default:
            break;
    }
    if (last != 'M') ReportNamed(KeyOfLetter(last), Number(1, 1));
}

void Parser::EndNumbered() {
    const int name = Number(0, 0);
    if (name == 200) {
        ReportLoneEscape();
        paste_.clear();
        ending_ = 0;
        state_ = State::Paste;
    } else if (name == 27) {
        const auto with = ModifiersOf(Number(1, 1));
        if (with) ReportKey(KeyOfCode(static_cast<char32_t>(Number(2, 0)), *with));
    } else if (const Key shifted = ShiftedKeyOfNumber(name); shifted != Key::None) {
        ReportNamed(shifted, 2);
    } else {
        ReportNamed(KeyOfNumber(name), Number(1, 1));
    }
}

void Parser::EndCode() {
    const auto with = ModifiersOf(Number(1, 1));
    if (with) ReportKey(KeyOfCode(static_cast<char32_t>(Number(0, 0)), *with));
}

void Parser::EndMouse(bool pressed) {
    ReportMouse(Number(0, 0), Number(1, 1) - 1, Number(2, 1) - 1, pressed);
}

void Parser::StepOldMouse(std::uint8_t byte) {
    old_mouse_[count_++] = byte - 32;
    if (count_ < old_mouse_.size()) return;
    state_ = State::Ground;
    const bool released = (old_mouse_[0] & 3) == 3 && (old_mouse_[0] & 32) == 0;
    const int code = released ? old_mouse_[0] & ~3 : old_mouse_[0];
    ReportMouse(code, old_mouse_[1] - 1, old_mouse_[2] - 1, !released);
    ReportLoneEscape();
}

void Parser::ReportMouse(int code, int x, int y, bool pressed) {
    MouseReport mouse;
    mouse.x = x;
    mouse.y = y;
    mouse.with = {.shift = (code & 4) != 0, .control = (code & 16) != 0, .alt = (code & 8) != 0};
    const int button = code & 3;
    if ((code & 128) != 0) return;  // buttons beyond the third
    if ((code & 64) != 0) {
        mouse.action = ui::PointerAction::Wheel;
        // One that turns sideways does what the wheel does with Shift.
        if (button >= 2) mouse.with.shift = true;
        mouse.wheel = button % 2 == 0 ? 1 : -1;
    } else if ((code & 32) != 0) {
        mouse.action = ui::PointerAction::Move;
    } else if (button == 3) {
        return;
    } else {
        mouse.action = pressed ? ui::PointerAction::Press : ui::PointerAction::Release;
        mouse.button = button + 1;
    }
    ReportNews(mouse);
}

void Parser::StepString(std::uint8_t byte) {
    const bool ends =
        byte == kBell || byte == kCancel || (state_ == State::StringEscape && byte == '\\');
    if (ends) {
        state_ = State::Ground;
        alt_ = false;
    } else {
        state_ = byte == kEscape ? State::StringEscape : State::String;
        length_ = 1;
    }
}

void Parser::StepPaste(std::uint8_t byte) {
    if (byte == static_cast<std::uint8_t>(kPasteEnd[ending_])) {
        if (++ending_ == kPasteEnd.size()) EndPaste();
        return;
    }
    // What looked like the end was text; only its first byte can begin another.
    if (paste_.size() + ending_ < kLongestPaste) {
        paste_.append(kPasteEnd.substr(0, ending_));
    }
    ending_ = 0;
    if (byte == kEscape) {
        ending_ = 1;
    } else if (paste_.size() < kLongestPaste) {
        paste_ += static_cast<char>(byte);
    }
}

void Parser::EndPaste() {
    state_ = State::Ground;
    ReportNews(Paste{WithLineFeeds(paste_)});
    paste_ = {};
}

}  // namespace zo::term
