#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cells/frame.h"
#include "colours.h"
#include "glyphs.h"

namespace zo::term {

// Which characters a terminal prints again on CSI n b.
enum class Repeats : std::uint8_t { Nothing, Letters, Everything };

// What a terminal can do beyond the least that the game asks of one.
struct Abilities {
    Depth depth = Depth::Sixteen;
    Charset charset = Charset::Ascii;
    Repeats repeats = Repeats::Nothing;
    bool synchronises = false;  // holds a picture back until it is whole
};

// Turns pictures into what brings a terminal from the one it shows to the next. It knows what the
// terminal shows, given that all that it wrote arrives.
class Writer {
public:
    void SetAbilities(const Abilities& abilities);
    // The terminal has so many cells now, and shows nothing that is known.
    void Resize(int columns, int rows);

    // Appends what shows the picture; what of it the terminal has no cells for is left out, and
    // what of the terminal it does not cover is blank. Appends nothing for an equal picture.
    void Draw(const ui::Frame& frame, std::string& out);

private:
    struct Shown {
        char32_t glyph = U' ';
        Pen pen;
    };
    // A place of the terminal's own cursor; the column behind the last means that it is not known.
    struct Place {
        int x = 0, y = 0;
    };

    Shown ShownAs(const ui::Cell& cell) const;
    const Shown& At(int x, int y) const;
    void DrawRow(int y);
    int RunFrom(int x, int y) const;
    void Print(const Shown& cell, int count);
    void MoveTo(int x, int y);
    bool PrintAcross(int x, int y, std::size_t cheaper_than);
    void TakePen(const Shown& cell);
    bool PenSuits(const Shown& cell) const;
    void PlaceCaret(const ui::Caret& caret);
    void Finish(std::string& out);

    Abilities abilities_;
    int columns_ = 0, rows_ = 0;
    std::vector<ui::Cell> cells_;        // as drawn last
    std::vector<Shown> shown_;           // likewise, as the terminal has them
    std::vector<std::uint8_t> changed_;  // of one row
    std::string body_;                   // of one picture
    std::optional<Place> cursor_;
    std::optional<Pen> pen_;
    bool known_ = false;  // what the terminal shows
    bool caret_shown_ = false;
    ui::CaretShape caret_shape_ = ui::CaretShape::None;
    Place caret_place_;
};

}  // namespace zo::term
