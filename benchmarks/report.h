#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

// Measures figures and prints a line each: name, median, least and greatest of the samples, unit,
// and the ratio to a yardstick measured in the same process, since machines drift.
class Report {
public:
    // Only figures whose name contains one of the words are measured; all when there are none.
    explicit Report(std::vector<std::string> words);

    bool Wants(std::string_view name) const;

    // Runs `work` again and again and divides each sample's nanoseconds by what it returns: the
    // operations that it did.
    void Time(std::string_view name, const std::function<double()>& work);
    // Takes samples of a figure that the caller measures itself.
    void Sample(std::string_view name, std::string_view unit, int samples,
                const std::function<double()>& measure);
    void Print(std::string_view name, std::string_view unit, std::vector<double> samples);

private:
    std::vector<std::string> words_;
    double yardstick_ = 0;  // nanoseconds of one turn
};

// Wall time since it was made.
class Stopwatch {
public:
    double Nanoseconds() const {
        return std::chrono::duration<double, std::nano>(Clock::now() - start_).count();
    }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point start_ = Clock::now();
};

// Keeps a result from being optimised away.
inline void Keep(const void* result) {
    asm volatile("" : : "g"(result) : "memory");
}

}  // namespace bench
