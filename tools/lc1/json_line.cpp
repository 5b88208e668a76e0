#include "json_line.h"

#include <charconv>
#include <cstdio>

#include "base/utf.h"
#include "json/writer.h"

namespace lc1 {
namespace {

void Put(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void PutQuoted(std::string_view text) {
    std::putchar('"');
    Put(json::EscapeString(text));
    std::putchar('"');
}

}  // namespace

JsonLine::JsonLine() : closing_("}") {
    std::putchar('{');
}

JsonLine::~JsonLine() {
    while (!closing_.empty()) End();
    std::putchar('\n');
}

void JsonLine::StartValue(std::string_view key) {
    if (!first_) std::putchar(',');
    first_ = false;
    if (key.empty()) return;
    PutQuoted(key);
    std::putchar(':');
}

void JsonLine::Open(std::string_view key, char opening, char closing) {
    StartValue(key);
    std::putchar(opening);
    closing_ += closing;
    first_ = true;
}

void JsonLine::End() {
    std::putchar(closing_.back());
    closing_.pop_back();
    first_ = false;
}

void JsonLine::Text(std::string_view key, std::string_view text) {
    StartValue(key);
    PutQuoted(base::ToUtf8(base::ToUtf32(text)));
}

void JsonLine::Number(std::string_view key, std::int64_t number) {
    StartValue(key);
    char digits[24];
    const char* end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    Put({digits, static_cast<std::size_t>(end - digits)});
}

void JsonLine::Boolean(std::string_view key, bool boolean) {
    StartValue(key);
    Put(boolean ? "true" : "false");
}

void JsonLine::Null(std::string_view key) {
    StartValue(key);
    Put("null");
}

}  // namespace lc1
