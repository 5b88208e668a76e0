#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cells/input.h"

namespace zo::term {

struct MouseReport {
    ui::PointerAction action = ui::PointerAction::Move;
    int x = 0, y = 0;  // cells from 0
    int button = 0;    // 1 left, 2 middle, 3 right
    int wheel = 0;     // steps, up positive
    ui::Modifiers with = {};
};
struct Paste {
    std::string text;  // with line feeds alone as line ends
};
struct FocusReport {
    bool active = false;
};
// Answers to what a terminal was asked.
struct CursorReport {
    int x = 0, y = 0;
};
struct ModeReport {
    int mode = 0;
    bool known = false;
};
struct StatusReport {};  // what was sent before the question has been shown

using Report = std::variant<ui::KeyPress, ui::TextInput, MouseReport, Paste, FocusReport,
                            CursorReport, ModeReport, StatusReport>;

// Reads what a terminal sends. Sequences that it does not know mean nothing; no input whatever can
// harm it or make it grow beyond one paste.
class Parser {
public:
    static constexpr std::size_t kLongestPaste = 16u << 20;  // bytes; the rest of it is dropped

    // The character that the backspace key sends in place of DEL.
    void SetBackspace(std::uint8_t byte) { backspace_ = byte; }

    // Appends what the bytes say to the reports.
    void Read(std::string_view bytes, std::vector<Report>& reports);
    // Whether an Esc has come that may be a key or the beginning of something.
    bool WaitsAfterEscape() const {
        return state_ == State::Escape || state_ == State::String || state_ == State::StringEscape;
    }
    // Nothing came after it, so it was a key.
    void TimeOut(std::vector<Report>& reports);

private:
    enum class State : std::uint8_t {
        Ground,
        Escape,    // behind Esc
        Sequence,  // behind CSI
        Function,  // behind SS3
        Console,   // behind CSI [, with which the system's own console begins the first F keys
        OldMouse,  // the three bytes behind CSI M
        String,    // of a sequence that carries a text, which is not for us
        StringEscape,
        Paste,
    };

    void Step(std::uint8_t byte);
    void StepGround(std::uint8_t byte);
    void StepEscape(std::uint8_t byte);
    void StepSequence(std::uint8_t byte);
    void StepString(std::uint8_t byte);
    void StepPaste(std::uint8_t byte);
    void StepOldMouse(std::uint8_t byte);
    void Begin(State state);
    void EndCharacter();
    void EndSequence(char last);
    void EndNumbered();
    void EndCode();
    void EndMouse(bool pressed);
    void EndPaste();
    void ReportMouse(int code, int x, int y, bool pressed);
    void ReportKey(ui::KeyPress press);
    void ReportLoneEscape();
    void ReportNews(Report report);
    void ReportNamed(ui::Key key, int modifiers);
    int Number(std::size_t index, int otherwise) const;

    std::vector<Report>* reports_ = nullptr;  // while it reads
    State state_ = State::Ground;
    bool alt_ = false;  // an Esc came before
    std::uint8_t backspace_ = 0x7F;
    char prefix_ = 0;  // of a sequence: one of < = > ?
    char intermediate_ = 0;
    std::array<int, 8> numbers_{};  // -1 where one was left out
    std::size_t count_ = 0;
    bool skips_ = false;             // a part of a number that is not wanted
    int length_ = 0;                 // bytes of the sequence
    std::uint8_t string_start_ = 0;  // what stood behind the Esc of a text
    std::array<int, 3> old_mouse_{};
    std::array<char, 4> utf8_{};  // a character that has begun
    std::size_t utf8_count_ = 0, utf8_size_ = 0;
    std::string paste_;
    std::size_t ending_ = 0;  // bytes seen of what ends a paste
};

}  // namespace zo::term
