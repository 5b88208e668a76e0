#include "cases.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>

namespace support {
namespace {

namespace fs = std::filesystem;

void AddCases(const std::string& name, std::vector<Case>& cases) {
    const std::string whole = ReadText(name);
    std::string_view text = whole;
    std::string title;
    for (int number = 1; !text.empty(); ++number) {
        const std::string_view line = Cut(text, "\n");
        const std::string where = name + ":" + std::to_string(number) + ": " + title;
        if (line.empty() || line.starts_with('#')) continue;
        if (line.starts_with("== ")) {
            title = line.substr(3);
            cases.emplace_back();
            continue;
        }
        const bool bar = line.starts_with('|');
        REQUIRE_MESSAGE((!cases.empty() && !(bar && cases.back().empty())), where);
        if (bar) {
            cases.back().back().text += std::string(line.substr(line.starts_with("| ") ? 2 : 1));
            cases.back().back().text += '\n';
            continue;
        }
        std::string_view rest = line;
        const std::string key(Cut(rest, " "));
        cases.back().push_back({where, key, std::string(rest), ""});
    }
}

}  // namespace

std::string LinesOf(std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        lines += Cut(text, " / ");
        if (!text.empty()) lines += '\n';
    }
    return lines;
}

std::vector<Case> Cases(std::string_view name) {
    std::vector<Case> cases;
    if (!fs::is_directory(PathOf(name))) {
        AddCases(std::string(name), cases);
    } else {
        for (const std::string& file : NamesIn(name)) {
            AddCases(std::string(name) + "/" + file, cases);
        }
    }
    REQUIRE_MESSAGE(!cases.empty(), std::string(name) << " holds no cases");
    return cases;
}

std::filesystem::path PathOf(std::string_view name) {
    return fs::path(KEST_TESTS) / name;
}

std::vector<std::string> NamesIn(std::string_view folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(PathOf(folder))) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    REQUIRE_MESSAGE(!names.empty(), std::string(folder) << " is empty");
    return names;
}

std::string ReadText(std::string_view file) {
    std::ifstream stream(PathOf(file), std::ios::binary);
    REQUIRE_MESSAGE(stream, std::string(file) << " cannot be read");
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Unmarked(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        unsigned value = 0;
        const char* digits = text.data() + 1;
        if (text.size() > 3 && text[0] == '<' && text[3] == '>' &&
            std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
            plain += static_cast<char>(value);
            text.remove_prefix(4);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

std::string_view Cut(std::string_view& text, std::string_view mark) {
    const std::size_t at = text.find(mark);
    const std::string_view taken = text.substr(0, at);
    text.remove_prefix(at == std::string_view::npos ? text.size() : at + mark.size());
    return taken;
}

}  // namespace support
