#include "report.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace bench {
namespace {

constexpr int kSamples = 15;
constexpr double kSampleNanoseconds = 2e7;

double Median(std::vector<double>& samples) {
    std::sort(samples.begin(), samples.end());
    return samples[samples.size() / 2];
}

// One turn: a step of a chain of multiplications that no compiler and no cache can shorten.
double MeasureYardstick() {
    constexpr int kTurns = 2000000;
    std::vector<double> samples;
    for (int sample = 0; sample < 9; ++sample) {
        std::uint64_t z = 1;
        const Stopwatch watch;
        for (int k = 0; k < kTurns; ++k) z = (z ^ z >> 27) * 0x94d049bb133111eb;
        samples.push_back(watch.Nanoseconds() / kTurns);
        Keep(&z);
    }
    return Median(samples);
}

}  // namespace

Report::Report(std::vector<std::string> words) : words_(std::move(words)) {
    yardstick_ = MeasureYardstick();
    std::printf("%-44s %12s %12s %12s  %-6s %9s\n", "figure", "median", "min", "max", "unit",
                "yardstick");
    std::printf("%-44s %12.3f %12s %12s  %-6s %9.2f\n", "yardstick: a turn of its chain",
                yardstick_, "", "", "ns", 1.0);
}

bool Report::Wants(std::string_view name) const {
    return words_.empty() || std::any_of(words_.begin(), words_.end(), [&](const auto& word) {
               return name.find(word) != std::string_view::npos;
           });
}

void Report::Time(std::string_view name, const std::function<double()>& work) {
    if (!Wants(name)) return;
    (void)work();  // warms caches and grows what has to grow
    std::vector<double> samples;
    for (int sample = 0; sample < kSamples; ++sample) {
        double operations = 0;
        const Stopwatch watch;
        double taken = 0;
        while (taken < kSampleNanoseconds) {
            operations += work();
            taken = watch.Nanoseconds();
        }
        samples.push_back(taken / operations);
    }
    Print(name, "ns", std::move(samples));
}

void Report::Sample(std::string_view name, std::string_view unit, int samples,
                    const std::function<double()>& measure) {
    if (!Wants(name)) return;
    std::vector<double> values;
    for (int k = 0; k < samples; ++k) values.push_back(measure());
    Print(name, unit, std::move(values));
}

void Report::Print(std::string_view name, std::string_view unit, std::vector<double> samples) {
    const double median = Median(samples);
    const std::string title(name);
    const std::string unit_text(unit);
    std::printf("%-44s %12.3f %12.3f %12.3f  %-6s", title.c_str(), median, samples.front(),
                samples.back(), unit_text.c_str());
    if (unit == "ns") std::printf(" %9.2f", median / yardstick_);
    std::printf("\n");
    std::fflush(stdout);
}

}  // namespace bench
