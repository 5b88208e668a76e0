#include "request.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace hum_command {
namespace {

constexpr std::int64_t kMostSamples = 1000000000;

class Reader {
public:
    Reader(std::span<const std::string> arguments, Request& request)
        : arguments_(arguments), request_(request) {}

    std::optional<Problem> Read() {
        bool options = true;
        while (next_ < arguments_.size()) {
            const std::string_view argument = arguments_[next_++];
            // A single dash is standard input in a file's place.
            if (options && argument == "--") {
                options = false;
            } else if (options && argument.starts_with('-') && argument != "-") {
                ReadOption(argument);
            } else if (request_.command.empty()) {
                request_.command = argument;
            } else {
                request_.files.emplace_back(argument);
            }
        }
        return std::move(problem_);
    }

private:
    void Fail(std::string text) {
        if (!problem_) problem_ = Problem{std::move(text)};
    }

    void ReadOption(std::string_view name) {
        if (name == "--json") {
            request_.given |= kJson;
        } else if (name == "--no-library") {
            request_.library = false;
        } else if (name == "--help") {
            request_.help = true;
        } else if (name == "--version") {
            request_.version = true;
        } else if (name == "--samples") {
            ReadNumber(name, kSamples, request_.samples);
        } else if (name == "--skip") {
            ReadNumber(name, kSkip, request_.skip);
        } else if (name == "--set") {
            ReadParam();
        } else {
            Fail("there is no option " + std::string(name) + "; hum --help lists them");
        }
    }

    std::optional<std::string_view> Value(std::string_view name) {
        if (next_ < arguments_.size() && !std::string_view(arguments_[next_]).starts_with("--")) {
            return arguments_[next_++];
        }
        Fail(std::string(name) + " needs a value");
        return std::nullopt;
    }

    void ReadNumber(std::string_view name, TakenOption option, std::int64_t& number) {
        const std::optional<std::string_view> text = Value(name);
        if (!text) return;
        const char* end = text->data() + text->size();
        const auto [stop, status] = std::from_chars(text->data(), end, number);
        if (status != std::errc() || stop != end || number < 0 || number > kMostSamples) {
            return Fail(std::string(name) + " takes a whole number from 0 to " +
                        std::to_string(kMostSamples));
        }
        request_.given |= option;
    }

    void ReadParam() {
        const std::optional<std::string_view> text = Value("--set");
        if (!text) return;
        const std::size_t equals = text->find('=');
        const std::string value(text->substr(std::min(equals, text->size() - 1) + 1));
        char* end = nullptr;
        const float number = std::strtof(value.c_str(), &end);
        if (equals == std::string_view::npos || equals == 0 || value.empty() || *end != '\0') {
            return Fail("--set takes NAME=VALUE, the value a number");
        }
        request_.params.emplace_back(text->substr(0, equals), number);
        request_.given |= kSet;
    }

    std::span<const std::string> arguments_;
    Request& request_;
    std::size_t next_ = 0;
    std::optional<Problem> problem_;
};

}  // namespace

std::optional<Problem> ReadArguments(std::span<const std::string> arguments, Request& request) {
    return Reader(arguments, request).Read();
}

std::string_view OptionName(TakenOption option) {
    switch (option) {
        case kSamples:
            return "--samples";
        case kSkip:
            return "--skip";
        case kSet:
            return "--set";
        default:
            return "--json";
    }
}

}  // namespace hum_command
