#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zo::gpu {

// A small picture of dots, as a glyph of the classic face is drawn. Bit x of a row is column x.
struct Dots {
    static constexpr int kMaxRows = 18;
    int columns = 0;
    int rows = 0;
    std::array<std::uint16_t, kMaxRows> bits = {};

    bool At(int x, int y) const { return (bits[static_cast<std::size_t>(y)] >> x & 1) != 0; }
    bool ColumnIsBlank(int x) const;

    // Takes out the one of the columns, or rows, from first to last whose loss shows the least: one
    // like its neighbour, and with little ink.
    void TakeOutColumn(int first, int last);
    void TakeOutRow(int first, int last);

private:
    int ColumnLoss(int x) const;
    int RowLoss(int y) const;
};

}  // namespace zo::gpu
