#include "base/wrap.h"

#include <algorithm>

#include "base/utf.h"

namespace base {
namespace {

struct Word {
    std::string_view text;
    int cells;
};

std::vector<Word> SplitWords(std::string_view text) {
    std::vector<Word> words;
    while (true) {
        const std::size_t from = text.find_first_not_of(' ');
        if (from == std::string_view::npos) return words;
        const std::size_t end = std::min(text.find(' ', from), text.size());
        const std::string_view word = text.substr(from, end - from);
        words.push_back({word, static_cast<int>(CodePoints(word))});
        text.remove_prefix(end);
    }
}

// Fills lines word by word; `line` is the one being filled.
class Filler {
public:
    explicit Filler(int width) : width_(width) {}

    void Add(const Word& word) {
        if (cells_ > 0 && cells_ + 1 + word.cells <= width_) {
            line_ += ' ';
            line_ += word.text;
            cells_ += 1 + word.cells;
            return;
        }
        if (cells_ > 0) EndLine();
        AddCells(word);
    }

    std::vector<std::string> Finish() {
        if (cells_ > 0 || lines_.empty()) EndLine();
        return std::move(lines_);
    }

private:
    void AddCells(const Word& word) {
        if (word.cells <= width_) {
            line_ = word.text;
            cells_ = word.cells;
            return;
        }
        for (std::size_t at = 0; at < word.text.size();) {
            const std::size_t from = at;
            NextCodePoint(word.text, at);
            if (cells_ == width_) EndLine();
            line_ += word.text.substr(from, at - from);
            ++cells_;
        }
    }

    void EndLine() {
        lines_.push_back(std::move(line_));
        line_.clear();
        cells_ = 0;
    }

    int width_;
    int cells_ = 0;
    std::string line_;
    std::vector<std::string> lines_;
};

std::vector<std::string> Fill(const std::vector<Word>& words, int width) {
    Filler filler(width);
    for (const Word& word : words) filler.Add(word);
    return filler.Finish();
}

}  // namespace

std::vector<std::string> WrapPlain(std::string_view text, int width) {
    return Fill(SplitWords(text), std::max(width, 1));
}

std::vector<std::string> WrapEven(std::string_view text, int width) {
    const std::vector<Word> words = SplitWords(text);
    width = std::max(width, 1);
    const std::size_t lines = Fill(words, width).size();
    int least = 1;
    for (const Word& word : words) least = std::max(least, std::min(word.cells, width));
    // The line count never grows with the width, so the smallest width is found by halving.
    int low = least;
    int high = width;
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (Fill(words, middle).size() <= lines) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return Fill(words, low);
}

}  // namespace base
