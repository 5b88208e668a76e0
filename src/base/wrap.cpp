#include "base/wrap.h"

#include <algorithm>

#include "base/utf.h"

namespace base {
namespace {

struct Word {
    LineRange at;
    int cells;
};

std::vector<Word> SplitWords(std::string_view text) {
    std::vector<Word> words;
    for (std::size_t end = 0;;) {
        const std::size_t from = text.find_first_not_of(' ', end);
        if (from == std::string_view::npos) return words;
        end = std::min(text.find(' ', from), text.size());
        words.push_back({{from, end}, static_cast<int>(CodePoints(text.substr(from, end - from)))});
    }
}

std::size_t Advance(std::string_view text, std::size_t at, int cells) {
    while (cells-- > 0) NextCodePoint(text, at);
    return at;
}

// Takes the text's words line by line.
std::vector<LineRange> Fill(std::string_view text, const std::vector<Word>& words, int width) {
    std::vector<LineRange> lines;
    int cells = 0;  // of the last line
    for (Word word : words) {
        const int gap = lines.empty() ? width : static_cast<int>(word.at.from - lines.back().to);
        if (cells + gap + word.cells <= width) {
            lines.back().to = word.at.to;
            cells += gap + word.cells;
            continue;
        }
        while (word.cells > width) {
            const std::size_t cut = Advance(text, word.at.from, width);
            lines.push_back({word.at.from, cut});
            word = {{cut, word.at.to}, word.cells - width};
        }
        lines.push_back(word.at);
        cells = word.cells;
    }
    if (lines.empty()) lines.emplace_back();
    return lines;
}

std::vector<std::string> Cut(std::string_view text, const std::vector<LineRange>& lines) {
    std::vector<std::string> cut;
    for (const LineRange& line : lines)
        cut.emplace_back(text.substr(line.from, line.to - line.from));
    return cut;
}

}  // namespace

std::vector<LineRange> BreakPlain(std::string_view text, int width) {
    return Fill(text, SplitWords(text), std::max(width, 1));
}

std::vector<LineRange> BreakEven(std::string_view text, int width) {
    const std::vector<Word> words = SplitWords(text);
    width = std::max(width, 1);
    const std::size_t lines = Fill(text, words, width).size();
    int least = 1;
    for (const Word& word : words) least = std::max(least, std::min(word.cells, width));
    // The line count never grows with the width, so the smallest width is found by halving.
    int low = least;
    int high = width;
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (Fill(text, words, middle).size() <= lines) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return Fill(text, words, low);
}

std::vector<std::string> WrapPlain(std::string_view text, int width) {
    return Cut(text, BreakPlain(text, width));
}

std::vector<std::string> WrapEven(std::string_view text, int width) {
    return Cut(text, BreakEven(text, width));
}

}  // namespace base
