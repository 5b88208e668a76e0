#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lc1 {

enum class Ink : std::uint8_t { Plain, Good, Bad, Dim };

inline constexpr std::string_view kPassMark = "√";
inline constexpr std::string_view kFailMark = "!";

// The text in this ink; as it is where colour is off.
std::string Inked(std::string_view text, Ink ink, bool colour);

// Writes text and a line feed to standard output.
void PutLine(std::string_view text = {});

// Rows of cells in aligned columns. A column is as wide as its widest cell, and one without any
// text in its rows is left out.
class TextTable {
public:
    enum class Align : std::uint8_t { Left, Right };
    struct Column {
        std::string_view title;  // with all titles empty the table has no head
        Align align = Align::Left;
    };

    explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}
    // One cell a column. The ink is the first cell's.
    void Add(std::vector<std::string> cells, Ink ink = Ink::Plain);
    void Print(bool colour) const;

private:
    struct Row {
        std::vector<std::string> cells;
        Ink ink;
    };
    std::vector<std::size_t> Widths() const;

    std::vector<Column> columns_;
    std::vector<Row> rows_;
};

}  // namespace lc1
