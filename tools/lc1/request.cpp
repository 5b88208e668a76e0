#include "request.h"

#include <charconv>
#include <string_view>

namespace lc1 {
namespace {

constexpr std::int32_t kMostIndent = 100;
constexpr std::int32_t kMost = 1000000;

struct TextOption {
    std::string_view name;
    TakenOption option;
    std::string Request::*text;
};
constexpr TextOption kTextOptions[] = {
    {"--ticket", kTicket, &Request::ticket},
    {"--reference", kReference, &Request::reference},
    {"--solutions", kSolutions, &Request::solutions},
};

struct NumberOption {
    std::string_view name;
    TakenOption option;
    std::int32_t Request::*number;
    std::int32_t least;
    std::int32_t most;
};
constexpr NumberOption kNumberOptions[] = {
    {"--test", kTest, &Request::test, 1, kMost},
    {"--indent", kIndent, &Request::indent, 0, kMostIndent},
    {"--hints", kHints, &Request::hints, 0, kMost},
    {"--seeds", kSeeds, &Request::seeds, 1, kMost},
};

struct Flag {
    std::string_view name;
    bool Request::*flag;
};
constexpr Flag kFlags[] = {
    {"--json", &Request::json},
    {"--help", &Request::help},
    {"--version", &Request::version},
};

template <class Row, std::size_t size>
const Row* Find(const Row (&rows)[size], std::string_view name) {
    for (const Row& row : rows) {
        if (row.name == name) return &row;
    }
    return nullptr;
}

std::optional<std::int32_t> ReadNumber(std::string_view text) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

class Reader {
public:
    Reader(std::span<const std::string> arguments, Request& request)
        : arguments_(arguments), request_(request) {}

    std::optional<Problem> Read() {
        bool options = true;
        while (next_ < arguments_.size()) {
            const std::string_view argument = arguments_[next_++];
            // A single dash is standard input in a file's place.
            if (!options || !argument.starts_with('-') || argument == "-") {
                AddFile(argument);
            } else if (argument == "--") {
                options = false;
            } else {
                ReadOption(argument);
            }
        }
        return std::move(problem_);
    }

private:
    void Fail(std::string text) {
        if (!problem_) problem_ = Problem{std::move(text)};
    }

    void AddFile(std::string_view argument) {
        if (request_.command.empty()) {
            request_.command = argument;
        } else {
            request_.files.emplace_back(argument);
        }
    }

    void ReadOption(std::string_view name) {
        if (const Flag* flag = Find(kFlags, name)) {
            request_.*flag->flag = true;
        } else if (const TextOption* text = Find(kTextOptions, name)) {
            ReadText(*text);
        } else if (const NumberOption* number = Find(kNumberOptions, name)) {
            ReadNumberOption(*number);
        } else {
            Fail("there is no option " + std::string(name) + "; lc1 --help lists them");
        }
    }

    std::optional<std::string_view> Value(std::string_view name) {
        if (next_ < arguments_.size() && !std::string_view(arguments_[next_]).starts_with("--")) {
            return arguments_[next_++];
        }
        Fail(std::string(name) + " needs a value");
        return std::nullopt;
    }

    void ReadText(const TextOption& row) {
        const std::optional<std::string_view> value = Value(row.name);
        if (!value) return;
        request_.*row.text = *value;
        request_.given |= row.option;
    }

    void ReadNumberOption(const NumberOption& row) {
        const std::optional<std::string_view> value = Value(row.name);
        if (!value) return;
        const std::optional<std::int32_t> number = ReadNumber(*value);
        if (!number || *number < row.least || *number > row.most) {
            Fail(std::string(row.name) + " takes a whole number from " + std::to_string(row.least) +
                 " to " + std::to_string(row.most));
            return;
        }
        request_.*row.number = *number;
        request_.given |= row.option;
    }

    std::span<const std::string> arguments_;
    Request& request_;
    std::size_t next_ = 0;
    std::optional<Problem> problem_;
};

template <class Row, std::size_t size>
std::string_view NameOf(const Row (&rows)[size], TakenOption option) {
    for (const Row& row : rows) {
        if (row.option == option) return row.name;
    }
    return {};
}

}  // namespace

std::optional<Problem> ReadArguments(std::span<const std::string> arguments, Request& request) {
    return Reader(arguments, request).Read();
}

std::string OptionName(TakenOption option) {
    const std::string_view text = NameOf(kTextOptions, option);
    return std::string(text.empty() ? NameOf(kNumberOptions, option) : text);
}

}  // namespace lc1
