#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kp {

// A part of a source line and the column in which it starts, from 1, in bytes.
struct Piece {
    std::string_view text;
    std::int32_t column = 0;
};

// One line of firmware taken apart.
struct SourceLine {
    std::int32_t number = 0;  // from 1
    std::uint32_t first = 0;  // its labels, then its operands, among all pieces
    std::uint32_t labels = 0;
    std::uint32_t operands = 0;
    Piece name;           // of its instruction; the text is empty without one
    bool is_def = false;  // the name is def; its operands are the constant's name and value

    bool HasInstruction() const { return !name.text.empty() && !is_def; }
};

// The lines of a firmware that hold anything. The text must outlive them.
class SourceLines {
public:
    explicit SourceLines(std::string_view text);

    std::span<const SourceLine> All() const { return lines_; }
    std::span<const Piece> Labels(const SourceLine& line) const {
        return std::span(pieces_).subspan(line.first, line.labels);
    }
    std::span<const Piece> Operands(const SourceLine& line) const {
        return std::span(pieces_).subspan(line.first + line.labels, line.operands);
    }

private:
    void ReadLine(std::string_view text, std::int32_t number);

    std::vector<SourceLine> lines_;
    std::vector<Piece> pieces_;
};

}  // namespace kp
