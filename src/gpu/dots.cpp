#include "dots.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace zo::gpu {
namespace {

constexpr int kDifference = 4;  // what a dot that is unlike its neighbour weighs against one of ink

int Loss(int difference, int ink) {
    return kDifference * difference + ink;
}

}  // namespace

bool Dots::ColumnIsBlank(int x) const {
    return std::none_of(bits.begin(), bits.begin() + rows,
                        [x](std::uint16_t row) { return (row >> x & 1) != 0; });
}

int Dots::ColumnLoss(int x) const {
    int ink = 0, left = 0, right = 0;
    for (int y = 0; y < rows; ++y) {
        const bool dot = At(x, y);
        ink += dot;
        left += dot != (x > 0 && At(x - 1, y));
        right += dot != (x + 1 < columns && At(x + 1, y));
    }
    return Loss(std::min(left, right), ink);
}

int Dots::RowLoss(int y) const {
    const auto row = [this](int at) {
        return at < 0 || at >= rows ? std::uint16_t{0} : bits[static_cast<std::size_t>(at)];
    };
    const auto difference = [](std::uint16_t a, std::uint16_t b) {
        return std::popcount(static_cast<std::uint16_t>(a ^ b));
    };
    return Loss(std::min(difference(row(y), row(y - 1)), difference(row(y), row(y + 1))),
                std::popcount(row(y)));
}

// Of equal losses the last column goes, which keeps a letter left in its cell.
void Dots::TakeOutColumn(int first, int last) {
    int column = first;
    int least = std::numeric_limits<int>::max();
    for (int x = first; x <= last; ++x) {
        const int loss = ColumnLoss(x);
        if (loss > least) continue;
        least = loss;
        column = x;
    }
    for (std::uint16_t& row : bits) {
        const int left = row & ((1 << column) - 1);
        row = static_cast<std::uint16_t>(left | (row >> (column + 1) << column));
    }
    --columns;
}

void Dots::TakeOutRow(int first, int last) {
    int row = first;
    for (int y = first + 1; y <= last; ++y) {
        if (RowLoss(y) < RowLoss(row)) row = y;
    }
    std::copy(bits.begin() + row + 1, bits.begin() + rows, bits.begin() + row);
    --rows;
}

}  // namespace zo::gpu
