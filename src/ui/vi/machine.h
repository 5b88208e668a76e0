#pragma once

#include <optional>
#include <string>

#include "ui/document.h"
#include "vi/commands.h"

namespace zo::ui::vi {

enum class CaretRow : std::uint8_t { Top, Middle, Bottom };

// What a key asks of the editor around the layer.
struct Wishes {
    std::string_view say = {};                   // a sentence for the player
    std::optional<std::u16string> command = {};  // a ":" line, without the colon
    std::optional<CaretRow> caret_row = {};      // where in the view the caret's line goes
    int scroll = 0;                              // lines that the view moves by
    bool refused = false;                        // a change of read-only text
};

// A line typed behind a ":", "/" or "?".
struct TypedLine {
    char32_t sign;
    std::u16string text = {};
};

// Keys with modes. It edits a text through the primitives that the plain keys use, and knows
// nothing of keyboard, screen and clipboard.
class Machine {
public:
    explicit Machine(EditState& state) : state_(state) {}

    Wishes Type(Key key, View view);
    // Normal mode, with nothing pending; for a text that is new here.
    void Reset();
    void SetReadOnly(bool read_only) { read_only_ = read_only; }

    vi::Mode Mode() const { return mode_; }
    const std::u32string& Pending() const { return pending_; }
    const TypedLine* Line() const { return line_ ? &*line_ : nullptr; }
    // Esc means something to the keys here.
    bool WantsEscape() const {
        return mode_ != vi::Mode::Normal || !pending_.empty() || line_.has_value();
    }

    // What Visual mode has selected.
    std::optional<Region> Selection() const;
    void SelectTo(TextPosition from, TextPosition to);  // Visual mode, as the mouse does

    // Text that comes from elsewhere into Insert mode, or into Normal mode at the caret.
    void Paste(std::u16string_view text);
    // The caret was put down by other means than keys.
    void CaretMoved();
    // Takes what is selected out of the text, as "d" does, and returns to Normal mode.
    void EraseSelected();
    void LeaveVisual();

private:
    friend struct Acts;

    struct Yanked {
        std::u16string text;  // of lines: without the last one's end
        bool lines = false;
    };
    // How much Visual mode had selected, for a repetition elsewhere.
    struct Size {
        vi::Mode mode = vi::Mode::Normal;
        int lines = 1;
        int columns = 0;  // of the only line, or in the last one
        bool to_line_end = false;
    };
    struct Change {
        Command command;
        Size size;             // of the selection it acted on; Mode::Normal without one
        std::u32string typed;  // in Insert mode behind it
        bool repeatable = true;
    };
    // The stay in Insert mode.
    struct Insertion {
        int times = 1;
        bool opens_lines = false;  // every time on a line of its own
        TextPosition start;        // of what was typed; erasures stop there once
        bool moved = false;        // the caret, since the last key that typed or erased
        bool start_stays = false;  // wherever the caret moves
        std::u32string typed;
        bool repeatable = true;
    };
    struct Visual {
        vi::Mode mode = vi::Mode::Visual;
        TextPosition start;
        TextPosition caret;
    };

    const TextBuffer& Text() const { return state_.Text(); }
    bool Emptied() const { return state_.document.NoLineLeft(); }
    TextPosition Caret() const { return state_.Caret(); }

    void CommandKey(Key key);
    void LineKey(Key key);
    void Enter(const TypedLine& line);
    void InsertKey(Key key);

    void Run(Command command);
    // Each that returns it tells whether the command found anything to do.
    bool Execute(Command& command);
    bool ExecuteInVisual(Command& command);
    bool Move(const Command& command);
    void Go(const Target& target);
    bool Operate(const Command& command);
    void ActOn(const Command& command, const Region& region);

    std::optional<Target> Seek(const Command& command, Asker asker);
    std::optional<Region> RegionOf(const Command& command);
    Region Between(TextPosition from, TextPosition last, Reach reach, Operator op) const;
    std::optional<Extent> Find(const Command& command) const;
    bool SelectObject(const Command& command);
    void Apply(Operator op, const Region& region, int times);

    void Delete(const Region& region);
    void ChangeText(const Region& region);
    void Yank(const Region& region);
    void ShiftLines(const Region& region, int by);
    void MapCase(Operator op, const Region& region);
    void MapCase(Operator op, TextPosition from, TextPosition to);

    bool ReplaceCharacters(const Command& command);
    void ReplaceSelected(const Region& region, char32_t character);
    bool SwapCase(int times);
    int LinesToJoin(int first, int wanted) const;
    bool JoinCounted(Command& command, bool tight);
    void JoinSelected(const Region& region, bool tight);
    void Join(int first, int lines, bool tight);
    bool Put(int times, bool before);
    void PutOver(const Region& region, int times, bool keep);
    bool OpenLine(const Command& command, bool below);
    bool OpenCommandLine();
    bool WishCaretRow(CaretRow row);
    bool Page(const Command& command, int direction, bool whole);
    bool UndoSteps(int times, bool redo);
    void CaretBehind(const EditStep& step, bool redo);
    bool Repeat(int count);

    void StartInsert(TextPosition at, int times, bool opens_lines = false);
    void TypeKey(Key key);
    void MoveStart(TextPosition from);
    void EraseWordBack();
    void EraseLineBack();
    void EraseBackTo(int column);
    void FinishInsert();
    void EndTyping();
    bool Select(vi::Mode mode);
    bool SelectAgain();
    bool SwapEnds();
    void EscapeVisual();
    Size SizeOf(const Region& region) const;
    Region RegionOfSize(const Size& size) const;

    // The next edit of this command begins its step, with the caret where it is then.
    void Touch();
    TextPosition Replace(TextPosition from, TextPosition to, std::u16string_view text);
    void ChangeNothing();         // which is a step all the same
    void Place(TextPosition at);  // clamped to where the mode lets the caret stand
    void PlaceAtText(int line);

    EditState& state_;
    bool read_only_ = false;
    vi::Mode mode_ = vi::Mode::Normal;
    std::u32string pending_;
    std::optional<TypedLine> line_;
    View view_;
    Wishes wishes_;
    bool touched_ = false;  // the step of this command is open
    Searches searches_;
    std::optional<Yanked> yanked_;
    Insertion insertion_;
    std::optional<Change> last_change_;
    TextPosition visual_start_;
    std::optional<Visual> last_visual_;
};

}  // namespace zo::ui::vi
