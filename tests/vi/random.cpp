// Writes random cases with what the editor makes of them, for vim to play after it:
//
//     vi_random            200 of them, or 20,000 in the long form of the tests
//     vi_random 5000 7     so many, and the seed
#include <cstdio>
#include <cstdlib>
#include <random>

#include "support/picture.h"
#include "support/rounds.h"
#include "ui/canvas.h"
#include "ui/editor_case.h"
#include "vi/differences.h"

namespace {

using Random = std::mt19937;
using Words = std::string_view;

constexpr Words kPieces[] = {
    "rx",  " ",  "a",   ", ",   "mov", "  ", "$C1", ";", "loop:", "tx a", "(b)",
    "[x]", "_1", "djn", "    ", "b.c", "--", ")",   "A", "'q'",   "\"",   "Wait",
    "0",   "x",  "{y}", "(",    "\"s", "'",  "[",   "]", "((",    "'' ",
};
constexpr Words kLines[] = {"rx a",   "    tx a", "",      "",     "loop: mov a, $C1",
                            "jmp aa", "  halt",   "; a a", "    ", "djn b, loop"};

constexpr Words kMotions[] = {
    "h",      "j",     "k",           "l",       "w",         "b",         "e",
    "W",      "B",     "E",           "0",       "^",         "$",         "gg",
    "G",      "{",     "}",           "fa",      "Fa",        "ta",        "Ta",
    ";",      ",",     "n",           "N",       "*",         "#",         "%",
    "_",      "+",     "-",           "ge",      "gE",        "g_",        "|",
    "f ",     "t,",    " ",           "<Left>",  "<Right>",   "<Up>",      "<Down>",
    "<Home>", "<End>", "<Backspace>", "<Enter>", "/a<Enter>", "?x<Enter>", "/<Enter>",
};
// Those that take something.
constexpr Words kTakingMotions[] = {"w", "W", "e", "E", "$", "j", "k", "G", "gg", "fa"};
constexpr Words kObjects[] = {"iw", "aw", "iW", "aW", "ip", "ap", "iw",  "aw",
                              "iW", "aW", "ip", "ap", "i'", "a'", "i\"", "a\"",
                              "i(", "a(", "i)", "a)", "i[", "a[", "i]",  "a]"};
constexpr Words kOperators[] = {"d", "y", "c", ">", "<<>", "g~", "gu", "gU", "d", "c"};
constexpr Words kDoubled[] = {"dd", "yy", "cc", ">>", "<<><<>", "g~~", "guu", "gUU"};
constexpr Words kChanges[] = {"x", "X",  "D", "C",        "s", "S",        "Y",    "J",
                              "~", "gJ", "p", "P",        "p", "P",        ".",    ".",
                              ".", "r-", "u", "r<Enter>", "u", "<Ctrl+Y>", "<Del>"};
constexpr Words kInserts[] = {"i", "a", "I", "A", "o", "O"};
constexpr Words kTyped[] = {
    "x",           "zz ",      ";",     ", ",     "<Enter>",  "<Enter>",  "<Backspace>",
    "<Backspace>", "Tx",       "<Del>", "  ",     "nop",      "<Tab>",    "a",
    "<Ctrl+H>",    "<Ctrl+W>", "y {z}", "<Tab>a", "<Ctrl+U>", "<Ctrl+W>",
};
constexpr Words kCursorKeys[] = {"<Left>", "<Right>", "<Up>", "<Down>", "<Home>", "<End>"};
constexpr Words kVisualActs[] = {"d",  "x",  "y",  "c",  "s",     ">", "<<>", "~",    "u", "U",
                                 "J",  "r=", "p",  "P",  "D",     "Y", "C",   "X",    "S", "R",
                                 "gJ", "g~", "gu", "gU", "<Esc>", "v", "V",   "<Del>"};

// A case that comes about key by key, in the editor itself.
class Player {
public:
    explicit Player(Random& random) : random_(random) {
        editor_.SetViKeys(true);
        editor_.SetText(Text());
        zo::ui::Frame frame = fake::BlankFrame(80, 40);
        zo::ui::Canvas canvas(frame, 0);
        zo::ui::Pressables pressables;
        editor_.Draw(canvas, pressables, {0, 0, 80, 40}, true);
        const int line = Below(editor_.Buffer().LineCount());
        editor_.SetCaret({line, Below(std::max(editor_.Buffer().Length(line), 1))});
        before_ = editor_case::Marked(editor_);
        // What "." and "p" begin with is known.
        Send("i.<Esc>yl");
    }

    void PlayCommand() {
        switch (Below(12)) {
            case 0:
            case 1:
            case 2:
                Send(Below(40) == 0 ? std::string(":2<Enter>") : Motion());
                break;
            case 3:
            case 4:
            case 5:
                Operate();
                break;
            case 6:
                Send(Count() + OneOf(kDoubled));
                break;
            case 7:
            case 8:
                Send(Count() + OneOf(kChanges));
                break;
            case 9:
            case 10:
                Send(Count() + OneOf(kInserts));
                break;
            default:
                Select();
                break;
        }
        if (editor_.ModeName() == "INSERT") Type();
    }

    void Print() {
        Send("<Esc><Esc>");
        std::printf("keys %s  in %s  out %s\n", keys_.c_str(), before_.c_str(),
                    editor_case::Marked(editor_).c_str());
    }

private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    template <std::size_t size>
    std::string OneOf(const Words (&of)[size]) {
        return std::string(of[random_() % size]);
    }
    std::string Count() { return Below(4) == 0 ? std::to_string(2 + Below(4)) : std::string(); }
    std::string Motion() {
        const std::string motion = OneOf(kMotions);
        return motion == "0" ? motion : Count() + motion;  // which would be part of the count
    }

    std::string Text() {
        std::string text;
        for (int lines = 1 + Below(6); lines > 0; --lines) {
            if (Below(2) == 0) {
                text += OneOf(kLines);
            } else {
                for (int k = Below(6); k > 0; --k) text += OneOf(kPieces);
            }
            if (lines > 1) text += '\n';
        }
        return text;
    }

    // Keys at which the two are to differ are not sent.
    void Send(const std::string& keys) {
        const vi_case::Moment moment = {editor_, keys, keys_, moved_in_insertion_};
        for (const vi_case::Difference& difference : vi_case::kDifferences) {
            if (difference.meets && difference.meets(moment)) return;
        }
        editor_case::Send(editor_, keys);
        keys_ += keys;
    }

    void Operate() {
        const std::string op = Count() + OneOf(kOperators);
        if (Below(4) == 0) return Send(op + Count() + OneOf(kObjects));
        Send(op + (op.find('g') == std::string::npos ? Motion() : OneOf(kTakingMotions)));
    }

    void Select() {
        Send(Below(3) == 0 ? "V" : "v");
        for (int k = Below(4); k > 0; --k) {
            if (Below(4) == 0) {
                Send(Count() + OneOf(kObjects));
            } else {
                Send(Below(8) == 0 ? std::string("o") : Motion());
            }
        }
        Send((Below(8) == 0 ? Count() : "") + OneOf(kVisualActs));
        if (editor_.ModeName().starts_with("VISUAL")) Send("<Esc>");
    }

    void Type() {
        moved_in_insertion_ = false;
        for (int k = Below(6); k > 0; --k) {
            const bool moves = Below(16) == 0;
            Send(moves ? OneOf(kCursorKeys) : OneOf(kTyped));
            moved_in_insertion_ |= moves;
        }
        Send("<Esc>");
    }

    Random& random_;
    zo::ui::CodeEditor editor_;
    std::string before_;
    std::string keys_;
    bool moved_in_insertion_ = false;
};

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : support::Rounds(200);
    Random random(argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1U);
    for (int k = 0; k < count; ++k) {
        Player player(random);
        for (auto commands = 1 + random() % 8; commands > 0; --commands) player.PlayCommand();
        player.Print();
    }
    return 0;
}
