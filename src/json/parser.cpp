#include "json/parser.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <system_error>

namespace json {
namespace {

constexpr int kDeepest = 128;  // the depth of the innermost container; the document's is 0
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsNumberByte(char c) {
    return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E';
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Encodes whatever fits into 21 bits: unpaired surrogates are kept as they stand in the document.
void AppendUtf8(std::string& text, std::uint32_t code) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | code >> 6);
        tail(0);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0 | code >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | code >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

// Reads as strtod does and so accepts forms such as "1." and "01", but in any locale.
bool ReadNumber(std::string_view run, double& number) {
    const char* end = run.data() + run.size();
    const auto [stop, status] = std::from_chars(run.data(), end, number);
    if (status == std::errc::invalid_argument || stop != end) return false;
    // from_chars reports a number too close to zero as it does one too large; strtod gives 0.
    if (status != std::errc()) number = std::strtod(std::string(run).c_str(), nullptr);
    return std::isfinite(number);
}

// One pass over the text. Every function that reads returns false once an error is set.
class Parser {
public:
    explicit Parser(std::string_view text)
        : begin_(text.data()), at_(begin_), end_(begin_ + text.size()) {}

    bool ParseDocument(Value& value) {
        SkipBlank();
        if (!ParseValue(value, 0)) return false;
        SkipBlank();
        return AtEnd() || Fail("unexpected text after the document");
    }

    // The line and column are worked out only here, for the one error that is reported.
    Error LocatedError() const {
        Error error{1, 1, message_};
        for (const char* p = begin_; p < at_; ++p) {
            ++error.column;
            if (*p == '\n') {
                ++error.line;
                error.column = 1;
            }
        }
        return error;
    }

private:
    bool AtEnd() const { return at_ == end_; }
    bool Sees(char c) const { return at_ != end_ && *at_ == c; }
    std::string_view Rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }

    bool Take(char c) {
        if (!Sees(c)) return false;
        ++at_;
        return true;
    }

    // Always false, so that a reader can end with `return Fail(...)`. Every reader gives up at once
    // when another has failed, so the cursor stays where the first error was found.
    bool Fail(const char* message) {
        message_ = message;
        return false;
    }

    void SkipBlank();
    bool ParseValue(Value& value, int depth);
    bool ParseWord(std::string_view word, const char* message);
    bool ParseNumber(Value& value);
    bool ParseArray(Value& value, int depth);
    bool ParseObject(Value& value, int depth);
    bool ParseMember(Value& object, int depth);
    bool ParseString(std::string& text);
    bool ParseEscape(std::string& text);
    bool ParseUnicodeEscape(std::string& text);
    bool ParseHexWord(std::uint32_t& word);

    const char* begin_;
    const char* at_;
    const char* end_;
    const char* message_ = "";
};

// Blanks and comments to the end of the line.
void Parser::SkipBlank() {
    while (at_ != end_) {
        if (*at_ == ' ' || *at_ == '\n' || *at_ == '\t' || *at_ == '\r') {
            ++at_;
        } else if (Rest().starts_with("//")) {
            while (at_ != end_ && *at_ != '\n') ++at_;
        } else {
            return;
        }
    }
}

bool Parser::ParseValue(Value& value, int depth) {
    if (depth > kDeepest) return Fail("nesting is too deep");
    if (AtEnd()) return Fail("unexpected end of text");
    switch (*at_) {
        case '{':
            return ParseObject(value, depth);
        case '[':
            return ParseArray(value, depth);
        case '"':
            value.kind = Kind::String;
            return ParseString(value.string);
        case 't':
            value.kind = Kind::Boolean;
            value.boolean = true;
            return ParseWord("true", "expected true");
        case 'f':
            value.kind = Kind::Boolean;
            return ParseWord("false", "expected false");
        case 'n':
            return ParseWord("null", "expected null");
        default:
            break;
    }
    if (*at_ != '-' && (*at_ < '0' || *at_ > '9')) return Fail("expected a value");
    return ParseNumber(value);
}

bool Parser::ParseWord(std::string_view word, const char* message) {
    if (!Rest().starts_with(word)) return Fail(message);
    at_ += word.size();
    return true;
}

bool Parser::ParseNumber(Value& value) {
    const char* stop = at_;
    while (stop != end_ && IsNumberByte(*stop)) ++stop;
    const std::string_view run(at_, static_cast<std::size_t>(stop - at_));
    if (!ReadNumber(run, value.number)) return Fail("malformed number");
    value.kind = Kind::Number;
    at_ = stop;
    return true;
}

bool Parser::ParseArray(Value& value, int depth) {
    value.kind = Kind::Array;
    ++at_;
    while (true) {
        SkipBlank();
        if (Take(']')) return true;
        if (!ParseValue(value.items.emplace_back(), depth + 1)) return false;
        SkipBlank();
        if (AtEnd()) return Fail("unterminated array");
        if (!Take(',') && !Sees(']')) return Fail("expected a comma or a closing bracket");
    }
}

bool Parser::ParseObject(Value& value, int depth) {
    value.kind = Kind::Object;
    ++at_;
    while (true) {
        SkipBlank();
        if (Take('}')) return true;
        if (!ParseMember(value, depth + 1)) return false;
        SkipBlank();
        if (AtEnd()) return Fail("unterminated object");
        if (!Take(',') && !Sees('}')) return Fail("expected a comma or a closing brace");
    }
}

bool Parser::ParseMember(Value& object, int depth) {
    if (!Sees('"')) return Fail("expected a quoted key");
    std::string key;
    if (!ParseString(key)) return false;
    SkipBlank();
    if (!Take(':')) return Fail("expected a colon");
    SkipBlank();
    for (auto& [name, member] : object.members) {
        if (name != key) continue;
        member = Value();
        return ParseValue(member, depth);
    }
    return ParseValue(object.members.emplace_back(std::move(key), Value()).second, depth);
}

bool Parser::ParseString(std::string& text) {
    ++at_;
    while (true) {
        const char* plain = at_;
        while (at_ != end_ && *at_ != '"' && *at_ != '\\') ++at_;
        text.append(plain, at_);
        if (AtEnd()) return Fail("unterminated string");
        if (Take('"')) return true;
        if (!ParseEscape(text)) return false;
    }
}

bool Parser::ParseEscape(std::string& text) {
    constexpr std::string_view kLetters = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    ++at_;
    if (AtEnd()) return Fail("unterminated escape");
    if (Take('u')) return ParseUnicodeEscape(text);
    const std::size_t index = kLetters.find(*at_);
    if (index == std::string_view::npos) return Fail("unknown escape");
    ++at_;
    text += kMeanings[index];
    return true;
}

bool Parser::ParseUnicodeEscape(std::string& text) {
    std::uint32_t code = 0;
    if (!ParseHexWord(code)) return false;
    if (code >= 0xD800 && code <= 0xDBFF && Rest().starts_with("\\u")) {
        // The second of a pair is taken on trust: whatever it is, it gives the low bits.
        at_ += 2;
        std::uint32_t low = 0;
        if (!ParseHexWord(low)) return false;
        code = ((code - 0xD7F7) << 10) + low;
    }
    AppendUtf8(text, code);
    return true;
}

bool Parser::ParseHexWord(std::uint32_t& word) {
    if (Rest().size() < 4) return Fail("short unicode escape");
    for (int k = 0; k < 4; ++k, ++at_) {
        const int digit = HexDigit(*at_);
        if (digit < 0) return Fail("bad unicode escape");
        word = word << 4 | static_cast<std::uint32_t>(digit);
    }
    return true;
}

}  // namespace

bool Parse(std::string_view text, Value& value, Error& error) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    Parser parser(text);
    value = Value();
    error = Error();
    if (parser.ParseDocument(value)) return true;
    value = Value();
    error = parser.LocatedError();
    return false;
}

}  // namespace json
