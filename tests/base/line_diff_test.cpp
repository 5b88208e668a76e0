#include "base/line_diff.h"

#include <doctest/doctest.h>

#include <random>
#include <string>

#include "support/rounds.h"

namespace {

std::string Shown(std::string_view first, std::string_view second) {
    std::string text;
    for (const base::DiffRow& row : base::DiffLines(first, second)) {
        text += static_cast<char>(row.of) + std::to_string(row.number) + " ";
        text += std::string(row.line) + "\n";
    }
    return text;
}

std::string RandomText(std::mt19937& random) {
    std::string text;
    for (unsigned lines = random() % 12; lines > 0; --lines)
        text += "abc"[random() % 3] + std::string("\n");
    return text;
}

}  // namespace

TEST_CASE("texts are laid side by side line by line") {
    const struct {
        std::string_view first, second, shown;
    } cases[] = {
        {"", "", ""},
        {"a\nb\n", "a \r\nb", " 1 a\n 2 b\n"},
        {"a\nb\nc\n", "a\nx\ny\nc\n", " 1 a\n-2 b\n+2 x\n+3 y\n 4 c\n"},
        {"", "a\n", "+1 a\n"},
        {"a\nb\n", "", "-1 a\n-2 b\n"},
        {"a\nb\nc\nd\n", "b\nd\ne\n", "-1 a\n 1 b\n-3 c\n 2 d\n+3 e\n"},
        {"a\n\nb\n", "a\nb\n", " 1 a\n-2 \n 2 b\n"},
    };
    for (const auto& c : cases) CHECK(Shown(c.first, c.second) == c.shown);
}

TEST_CASE("either text can be read from the rows") {
    std::mt19937 random(3);
    for (int round = support::Rounds(2000); round > 0; --round) {
        const std::string first = RandomText(random);
        const std::string second = RandomText(random);
        std::string left, right;
        int number = 0;
        for (const base::DiffRow& row : base::DiffLines(first, second)) {
            if (row.of != base::DiffRow::Of::Second) left += std::string(row.line) + "\n";
            if (row.of != base::DiffRow::Of::First) {
                right += std::string(row.line) + "\n";
                CHECK(row.number == ++number);
            }
        }
        CHECK(left == first);
        CHECK(right == second);
    }
}

TEST_CASE("texts too long to be compared in full are still shown whole") {
    std::string first = "same\n", second = "same\n";
    for (int k = 0; k < 4000; ++k) {
        first += "a" + std::to_string(k) + "\n";
        second += "b" + std::to_string(k) + "\n";
    }
    CHECK(base::DiffLines(first, second).size() == 8001);
}
