#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cells/frame.h"
#include "writer.h"

namespace fake {

// A terminal of so many cells that understands exactly what the writer may send, and notes
// everything else as a fault.
class TerminalModel {
public:
    TerminalModel(int columns, int rows, const zo::term::Abilities& abilities);

    void Read(std::string_view bytes);

    // Where it differs from the picture, a line a cell, at most a few; empty when it shows it.
    std::string Differences(const zo::ui::Frame& frame) const;
    std::string Row(int y) const;
    const std::string& Faults() const { return faults_; }

private:
    struct Cell {
        char32_t glyph = U'X';  // what another program left
        zo::term::Pen pen = {99, 99, true};
    };

    void Print(char32_t glyph);
    std::size_t Sequence(std::string_view bytes);
    void Control(char last, std::string_view prefix, const std::vector<int>& numbers);
    void TakePen(const std::vector<int>& numbers);
    void SetMode(int mode, bool on);
    void Clear();
    void Fault(std::string_view what);
    const Cell& At(int x, int y) const;

    int columns_, rows_;
    zo::term::Abilities abilities_;
    std::vector<Cell> cells_;
    int x_ = 0, y_ = 0;
    bool behind_ = false;  // the last column was printed
    zo::term::Pen pen_ = {99, 99, true};
    char32_t last_ = 0;
    bool cursor_on_ = true;
    bool held_back_ = false;
    int shape_ = 0;
    std::string faults_;
};

}  // namespace fake
