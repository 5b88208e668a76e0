#include "writer.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <random>

#include "support/rounds.h"
#include "terminal_model.h"

using zo::term::Abilities;
using zo::term::Charset;
using zo::term::Depth;
using zo::term::Repeats;
using zo::term::Writer;
using zo::ui::CaretShape;
using zo::ui::Cell;
using zo::ui::Frame;
using zo::ui::Role;

namespace {

Frame Blank(int columns, int rows) {
    Frame frame;
    frame.Resize({.columns = columns, .rows = rows});
    for (Cell& cell : frame.cells) cell.ground = {1, 2, 3};
    return frame;
}

void Put(Frame& frame, int x, int y, std::u32string_view glyphs, zo::ui::Rgb ink = {}) {
    for (const char32_t glyph : glyphs) {
        frame.At(x, y).glyph = glyph;
        frame.At(x++, y).ink = ink;
    }
}

// Sequences with a sign in the place of Esc.
std::string Readable(std::string text) {
    std::ranges::replace(text, '\x1b', '~');
    return text;
}

struct Pair {
    Writer writer;
    std::string out;
    Pair(int columns, int rows, const Abilities& abilities) {
        writer.SetAbilities(abilities);
        writer.Resize(columns, rows);
    }
    std::string Draw(const Frame& frame) {
        out.clear();
        writer.Draw(frame, out);
        return Readable(out);
    }
};

constexpr Abilities kFull = {Depth::Direct, Charset::Unicode, Repeats::Everything, false};

// A picture with runs, blanks, foreign glyphs and a caret now and then, or a change of the last.
class RandomFrames {
public:
    RandomFrames(unsigned seed, int columns, int rows)
        : random_(seed), frame_(Blank(columns, rows)) {}

    const Frame& Next() {
        const int changes = Below(4) == 0 ? 200 : Below(6);
        for (int k = 0; k < changes; ++k) ChangeRun();
        frame_.caret = {static_cast<CaretShape>(Below(4)),
                        Below(frame_.grid.columns + 1),
                        Below(frame_.grid.rows + 1),
                        {}};
        return frame_;
    }
    void Resize(int columns, int rows) { frame_ = Blank(columns, rows); }

private:
    int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    void ChangeRun() {
        constexpr char32_t kGlyphs[] = U"  aZ─░█►é漢\u0301\x1b\u200B♦😀";
        const int y = Below(frame_.grid.rows);
        const int from = Below(frame_.grid.columns);
        const int to = std::min(from + (Below(3) == 0 ? Below(40) : 1), frame_.grid.columns);
        Cell cell;
        cell.glyph = kGlyphs[Below(static_cast<int>(std::size(kGlyphs)) - 1)];
        cell.role = static_cast<Role>(Below(zo::ui::kRoles));
        const zo::ui::Ink colours = zo::ui::Colours(zo::ui::Look::Modern, Below(2), cell.role);
        cell.ink = colours.ink;
        cell.ground = colours.ground;
        if (Below(8) == 0) cell.style = zo::ui::Style::Underline;
        for (int x = from; x < to; ++x) frame_.At(x, y) = cell;
    }

    std::mt19937 random_;
    Frame frame_;
};

}  // namespace

TEST_CASE("only what changes is sent, in the fewest bytes") {
    Pair pair(40, 8, kFull);
    Frame frame = Blank(40, 8);
    pair.Draw(frame);
    const struct {
        std::string_view what;
        void (*change)(Frame& frame);
        std::string_view sent;
    } cases[] = {
        {"nothing", [](Frame&) {}, ""},
        {"one cell", [](Frame& f) { Put(f, 4, 2, U"x"); }, "~[3;5Hx"},
        {"the next", [](Frame& f) { Put(f, 5, 2, U"y"); }, "y"},
        {"over a gap of blanks", [](Frame& f) { Put(f, 8, 2, U"z"); }, "  z"},
        {"over a wide gap", [](Frame& f) { Put(f, 30, 2, U"z"); }, "~[21Cz"},
        {"a step back", [](Frame& f) { Put(f, 29, 2, U"w"); }, "~[2Dw"},
        {"the row below", [](Frame& f) { Put(f, 30, 3, U"v"); }, "\nv"},
        {"its start", [](Frame& f) { Put(f, 0, 4, U"u"); }, "\r\nu"},
        {"a colour",
         [](Frame& f) {
             Put(f, 1, 4, U"t", {9, 8, 7});
         },
         "~[38;2;9;8;7mt"},
        {"a blank, whose ink is not seen",
         [](Frame& f) {
             Put(f, 1, 4, U" ", {5, 5, 5});
         },
         "~[D "},
        {"a run",
         [](Frame& f) {
             Put(f, 2, 4, U"──────────", {9, 8, 7});
         },
         "─~[9b"},
        {"the last column, behind which no terminal is sure of itself",
         [](Frame& f) {
             Put(f, 39, 4, U"q", {9, 8, 7});
         },
         "~[27Cq"},
        {"anything after that",
         [](Frame& f) {
             Put(f, 0, 5, U"p", {9, 8, 7});
         },
         "~[6Hp"},
        {"a caret",
         [](Frame& f) {
             f.caret = {CaretShape::Bar, 1, 5, {}};
         },
         "~[6 q~[?25h"},
        {"a letter at the caret",
         [](Frame& f) {
             Put(f, 1, 5, U"o", {9, 8, 7});
             f.caret.x = 2;
         },
         "o"},
        {"the caret off", [](Frame& f) { f.caret = {}; }, "~[?25l"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.what);
        c.change(frame);
        CHECK(pair.Draw(frame) == c.sent);
    }
}

TEST_CASE("a large picture is held back, or at least its cursor is off") {
    for (const bool synchronises : {true, false}) {
        Abilities abilities = kFull;
        abilities.synchronises = synchronises;
        Pair pair(80, 25, abilities);
        Frame frame = Blank(80, 25);
        frame.caret = {CaretShape::Block, 3, 3, {}};
        pair.Draw(frame);
        for (Cell& cell : frame.cells) cell.glyph = U'a';
        for (int x = 0; x < 80; x += 2) frame.At(x, 7).ink.r ^= 1;  // no runs here
        const std::string sent = pair.Draw(frame);
        CHECK(sent.starts_with(synchronises ? "~[?2026h" : "~[?25l"));
        CHECK(sent.ends_with(synchronises ? "~[?2026l" : "~[?25h"));
    }
}

// Frames of every kind over terminals of every kind, also smaller and larger than the frames, and
// resized meanwhile.
TEST_CASE("a terminal shows every picture that is drawn on it") {
    const int rounds = support::Rounds(40);
    for (int round = 0; round < rounds; ++round) {
        CAPTURE(round);
        std::mt19937 random(static_cast<unsigned>(round));
        const auto below = [&](unsigned count) { return static_cast<int>(random() % count); };
        const Abilities abilities = {static_cast<Depth>(below(3)), static_cast<Charset>(below(2)),
                                     static_cast<Repeats>(below(3)), below(2) == 0};
        RandomFrames frames(random(), 60, 20);
        Pair pair(60, 20, abilities);
        for (int resize = 0; resize < 3; ++resize) {
            const int columns = 2 + below(90), rows = 1 + below(30);
            pair.writer.Resize(columns, rows);
            fake::TerminalModel terminal(columns, rows, abilities);
            if (below(2) == 0) frames.Resize(1 + below(70), 1 + below(30));
            for (int k = 0; k < 20; ++k) {
                const Frame& frame = frames.Next();
                pair.Draw(frame);
                terminal.Read(pair.out);
                REQUIRE(terminal.Faults() == "");
                REQUIRE(terminal.Differences(frame) == "");
                REQUIRE(pair.Draw(frame) == "");
            }
        }
    }
}
