#pragma once

#include <array>
#include <cstddef>

namespace zo::term {

// Keeps pictures from piling up on the way to a far terminal. Each is followed by a question, and
// the terminal's answer says that it has been shown; until then only a little more is sent. A
// terminal that does not answer is sent whatever its line takes.
class Pace {
public:
    static constexpr std::size_t kMostPictures = 8;
    static constexpr std::size_t kMostBytes = 2048;
    static constexpr double kPatience = 3;  // seconds for an answer

    // Whether a picture is to be followed by the question.
    bool Asks() const { return answers_; }
    void Sent(std::size_t bytes, double now);
    void Answered(double now);
    std::size_t UnderWay() const { return count_; }

    bool MaySend(double now);
    // When it may without an answer; negative when an answer is not waited for.
    double SecondsToSend(double now) const;

private:
    bool answers_ = false;
    std::array<std::size_t, kMostPictures> sizes_{};  // of those under way, a ring
    std::size_t first_ = 0;
    std::size_t count_ = 0;
    std::size_t bytes_ = 0;  // of them together
    double since_ = 0;       // the last answer, or the first picture sent since then
};

}  // namespace zo::term
