// Writes random cases with what the editor makes of them, for vim to play after it:
//
//     vi_random 20000 1    so many cases, and the seed
#include <cstdio>
#include <cstdlib>
#include <random>

#include "ui/editor_case.h"

namespace {

using Random = std::mt19937;

template <std::size_t size>
std::string_view OneOf(Random& random, const std::string_view (&of)[size]) {
    return of[random() % size];
}

constexpr std::string_view kPieces[] = {
    "rx",  " ",    "a",   ", ", "mov", "  ", "$C1", ";",  "loop:", "tx a", "(b)", "[x]", "_1",
    "djn", "    ", "b.c", "--", ")",   "A",  "'q'", "\"", "Wait",  "0",    "x",   "{y}",
};
constexpr std::string_view kLines[] = {"rx a",   "    tx a", "",      "",     "loop: mov a, $C1",
                                       "jmp aa", "  halt",   "; a a", "    ", "djn b, loop"};

constexpr std::string_view kMotions[] = {
    "h",  "j",  "k",  "l",  "w", "b",  "e",  "W",         "B",         "E",
    "0",  "^",  "$",  "gg", "G", "{",  "}",  "fa",        "Fa",        "ta",
    "Ta", ";",  ",",  "n",  "N", "*",  "#",  "%",         "_",         "+",
    "-",  "ge", "gE", "g_", "|", "f ", "t,", "/a<Enter>", "?x<Enter>", "<Enter>",
};
// Those that take something: what vim makes of the case of nothing is a quirk.
constexpr std::string_view kTakingMotions[] = {"w", "W", "e", "E", "$", "j", "k", "G", "gg", "fa"};
constexpr std::string_view kObjects[] = {"iw", "aw", "iW", "aW", "ip", "ap"};
constexpr std::string_view kOperators[] = {"d", "y", "c", ">", "<<>", "g~", "gu", "gU", "d", "c"};
constexpr std::string_view kDoubled[] = {"dd", "yy", "cc", ">>", "<<><<>", "g~~", "guu", "gUU"};
constexpr std::string_view kChanges[] = {"x", "X",  "D",  "C",        "s", "S", "Y",
                                         "J", "gJ", "r-", "~",        "p", "P", "p",
                                         "P", ".",  ".",  "r<Enter>", "u", "u", "<Ctrl+Y>"};
constexpr std::string_view kInserts[] = {"i", "a", "I", "A", "o", "O"};
constexpr std::string_view kTyped[] = {
    "x",  "zz ",   ";",  ", ",  "<Enter>", "<Enter>",  "<Backspace>", "<Backspace>",
    "Tx", "<Del>", "  ", "nop", "<Tab>",   "<Ctrl+W>", "<Ctrl+U>",    "a",
};
// These are commands that both know where nothing takes them for text.
constexpr std::size_t kHarmless = 12;
constexpr std::string_view kVisualActs[] = {"d", "x", "y", "c", "s",  ">", "<<>",
                                            "~", "u", "U", "J", "r=", "p", "P",
                                            "D", "Y", "C", "X", "S",  "R", "gJ"};

std::string Count(Random& random) {
    return random() % 4 == 0 ? std::to_string(2 + random() % 4) : std::string();
}

std::string Motion(Random& random) {
    return Count(random) + std::string(OneOf(random, kMotions));
}

std::string Typing(Random& random, std::size_t of = kHarmless) {
    std::string typed;
    for (auto k = random() % 5; k > 0; --k) typed += kTyped[random() % of];
    return typed + "<Esc>";
}

std::string Object(Random& random, std::string_view op) {
    return std::string(OneOf(random, kObjects)) + (op == "c" ? Typing(random) : "");
}

std::string Visual(Random& random) {
    std::string keys(random() % 3 == 0 ? "V" : "v");
    if (random() % 4 == 0) keys += OneOf(random, kObjects);
    for (auto k = random() % 4; k > 0; --k) {
        keys += random() % 8 == 0 ? std::string("o") : Motion(random);
    }
    const std::string_view act = OneOf(random, kVisualActs);
    keys += random() % 12 == 0 ? std::string("<Esc>") : std::string(act);
    if (act == "c" || act == "s" || act == "C" || act == "S" || act == "R") keys += Typing(random);
    return keys;
}

std::string Command(Random& random) {
    switch (random() % 12) {
        case 0:
        case 1:
        case 2:
            return Motion(random);
        case 3:
        case 4:
        case 5: {
            const std::string_view op = OneOf(random, kOperators);
            const bool object = random() % 4 == 0;
            if (object) return std::string(op) + Object(random, op);
            std::string keys = Count(random) + std::string(op);
            keys += op[0] == 'g' ? std::string(OneOf(random, kTakingMotions)) : Motion(random);
            return op == "c" ? keys + Typing(random) : keys;
        }
        case 6: {
            const std::string_view keys = OneOf(random, kDoubled);
            return Count(random) + std::string(keys) + (keys == "cc" ? Typing(random) : "");
        }
        case 7:
        case 8: {
            const std::string_view keys = OneOf(random, kChanges);
            const bool types = keys == "C" || keys == "s" || keys == "S";
            return Count(random) + std::string(keys) + (types ? Typing(random) : "");
        }
        case 9:
        case 10:
            return Count(random) + std::string(OneOf(random, kInserts)) +
                   Typing(random, std::size(kTyped));
        default:
            return Visual(random);
    }
}

std::string Text(Random& random) {
    std::string text;
    for (auto lines = 1 + random() % 6; lines > 0; --lines) {
        if (random() % 2 == 0) {
            text += OneOf(random, kLines);
        } else {
            for (auto k = random() % 6; k > 0; --k) text += OneOf(random, kPieces);
        }
        if (lines > 1) text += '\n';
    }
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 200;
    Random random(argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1U);
    for (int k = 0; k < count; ++k) {
        zo::ui::CodeEditor editor;
        editor.SetViKeys(true);
        editor.SetText(Text(random));
        const int line = static_cast<int>(random()) % editor.Buffer().LineCount();
        const int length = editor.Buffer().Length(std::abs(line));
        editor.SetCaret(
            {std::abs(line), length > 0 ? static_cast<int>(random() % 97) % length : 0});
        const std::string before = editor_case::Marked(editor);
        // What "." and "p" begin with is known.
        std::string keys = "i.<Esc>yl";
        for (auto commands = 1 + random() % 6; commands > 0; --commands) keys += Command(random);
        keys += "<Esc><Esc>";
        if (std::getenv("VI_TRACE"))
            std::fprintf(stderr, "%s  in %s\n", keys.c_str(), before.c_str());
        editor_case::Send(editor, keys);
        std::printf("keys %s  in %s  out %s\n", keys.c_str(), before.c_str(),
                    editor_case::Marked(editor).c_str());
    }
    return 0;
}
