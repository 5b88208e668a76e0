#include "base/line_diff.h"

#include <algorithm>
#include <cstdint>

namespace base {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kMostPairs = 4'000'000;  // of lines to be compared

Lines LinesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        line = line.substr(0, line.find_last_not_of(" \t\r") + 1);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// How long the longest common subsequence of what begins at a pair of lines is.
class Lengths {
public:
    Lengths(const Lines& first, const Lines& second, std::size_t from, std::size_t first_to,
            std::size_t second_to)
        : from_(from), width_(second_to - from + 1), lengths_((first_to - from + 1) * width_) {
        for (std::size_t i = first_to; i-- > from;) {
            for (std::size_t j = second_to; j-- > from;) {
                At(i, j) = first[i] == second[j] ? At(i + 1, j + 1) + 1
                                                 : std::max(At(i + 1, j), At(i, j + 1));
            }
        }
    }
    std::uint32_t& At(std::size_t i, std::size_t j) {
        return lengths_[(i - from_) * width_ + j - from_];
    }

private:
    std::size_t from_, width_;
    std::vector<std::uint32_t> lengths_;
};

class Differ {
public:
    Differ(std::string_view first, std::string_view second)
        : first_(LinesOf(first)), second_(LinesOf(second)) {}

    std::vector<DiffRow> Rows() {
        std::size_t from = 0;
        const std::size_t least = std::min(first_.size(), second_.size());
        while (from < least && first_[from] == second_[from]) ++from;
        std::size_t same = 0;  // lines at the end
        while (same < least - from && first_.end()[-1 - same] == second_.end()[-1 - same]) ++same;
        for (std::size_t k = 0; k < from; ++k) Both(k);
        Middle(from, first_.size() - same, second_.size() - same);
        for (std::size_t k = second_.size() - same; k < second_.size(); ++k) Both(k);
        return std::move(rows_);
    }

private:
    void Both(std::size_t k) { Add(DiffRow::Of::Both, k, second_[k]); }
    void Add(DiffRow::Of of, std::size_t k, std::string_view line) {
        rows_.push_back({of, static_cast<int>(k) + 1, line});
    }

    void Middle(std::size_t from, std::size_t first_to, std::size_t second_to) {
        std::size_t i = from;
        std::size_t j = from;
        if ((first_to - from) * (second_to - from) <= kMostPairs) {
            Lengths lengths(first_, second_, from, first_to, second_to);
            std::size_t taken = j;  // the second's lines that stand in the rows
            const auto flush = [&] {
                for (; taken < j; ++taken) Add(DiffRow::Of::Second, taken, second_[taken]);
            };
            while (i < first_to && j < second_to) {
                if (first_[i] == second_[j]) {
                    flush();
                    Both(j++);
                    taken = j;
                    ++i;
                } else if (lengths.At(i + 1, j) >= lengths.At(i, j + 1)) {
                    Add(DiffRow::Of::First, i, first_[i]);
                    ++i;
                } else {
                    ++j;
                }
            }
            for (; i < first_to; ++i) Add(DiffRow::Of::First, i, first_[i]);
            flush();
        }
        for (; i < first_to; ++i) Add(DiffRow::Of::First, i, first_[i]);
        for (; j < second_to; ++j) Add(DiffRow::Of::Second, j, second_[j]);
    }

    Lines first_, second_;
    std::vector<DiffRow> rows_;
};

}  // namespace

std::vector<DiffRow> DiffLines(std::string_view first, std::string_view second) {
    return Differ(first, second).Rows();
}

}  // namespace base
