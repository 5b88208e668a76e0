#include "lexer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <charconv>
#include <cstring>
#include <limits>
#include <system_error>

namespace hum {
namespace {

enum Class : std::uint8_t { kOther, kBlank, kNewline, kLetter, kDigit };

constexpr std::array<Class, 256> kClasses = [] {
    std::array<Class, 256> classes{};
    for (const char c : {' ', '\t', '\r', '\v', '\f'})
        classes[static_cast<unsigned char>(c)] = kBlank;
    classes['\n'] = kNewline;
    classes['_'] = kLetter;
    for (int c = 'a'; c <= 'z'; ++c) classes[static_cast<std::size_t>(c)] = kLetter;
    for (int c = 'A'; c <= 'Z'; ++c) classes[static_cast<std::size_t>(c)] = kLetter;
    for (int c = '0'; c <= '9'; ++c) classes[static_cast<std::size_t>(c)] = kDigit;
    return classes;
}();

Class ClassOf(char c) {
    return kClasses[static_cast<unsigned char>(c)];
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsNameByte(char c) {
    return ClassOf(c) >= kLetter;
}

// The power of ten of a number's first digit that is not 0, so far as it matters.
std::int64_t Magnitude(std::string_view number) {
    const std::size_t exponent_at = std::min(number.find_first_of("eE"), number.size());
    const std::string_view digits = number.substr(0, exponent_at);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_of("123456789");
    if (first == std::string_view::npos) return std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kLargest = 1000000000000;
    std::int64_t exponent = 0;
    const bool negative = number.find('-', exponent_at) != std::string_view::npos;
    for (const char c : number.substr(exponent_at)) {
        if (IsDigit(c)) exponent = std::min(exponent * 10 + (c - '0'), kLargest);
    }
    return (negative ? -exponent : exponent) + static_cast<std::int64_t>(point) -
           static_cast<std::int64_t>(first);
}

}  // namespace

Lexer::Lexer(Tokens& tokens, std::uint16_t source)
    : tokens_(tokens),
      source_(source),
      begin_(tokens.sources[source].text.data()),
      at_(begin_),
      end_(begin_ + tokens.sources[source].text.size()) {}

Spot Lexer::Here() const {
    return {source_, line_, static_cast<std::uint32_t>(at_ - begin_)};
}

bool Lexer::Fail(const char* place, std::uint32_t line, std::string_view message) {
    message_ = message;
    place_ = {source_, line, static_cast<std::uint32_t>(place - begin_)};
    return false;
}

// A block comment is skipped whole even within a line, as far as it goes.
bool Lexer::SkipBlanks(bool within_line) {
    while (at_ < end_) {
        const char c = *at_;
        if (ClassOf(c) == kBlank) {
            ++at_;
        } else if (c == '\n') {
            if (within_line) return true;
            ++line_;
            ++at_;
        } else if (c == '/' && end_ - at_ > 1 && at_[1] == '/') {
            const void* stop = std::memchr(at_, '\n', static_cast<std::size_t>(end_ - at_));
            at_ = stop == nullptr ? end_ : static_cast<const char*>(stop);
        } else if (c == '/' && end_ - at_ > 1 && at_[1] == '*') {
            const char* start = at_;
            const std::uint32_t start_line = line_;
            for (at_ += 2;; ++at_) {
                if (end_ - at_ < 2) return Fail(start, start_line, "unterminated block comment");
                if (*at_ == '\n') ++line_;
                if (at_[0] == '*' && at_[1] == '/') break;
            }
            at_ += 2;
        } else {
            return true;
        }
    }
    return true;
}

bool Lexer::Next(Token& token) {
    return SkipBlanks(false) && Scan(token);
}

bool Lexer::NextOnLine(Token& token) {
    if (!SkipBlanks(true)) return false;
    if (at_ == end_ || *at_ == '\n') {
        token = {Tok::End, source_, line_, static_cast<std::uint32_t>(at_ - begin_), 0};
        return true;
    }
    return Scan(token);
}

bool Lexer::IsDirective(const Token& token) const {
    const char* before = begin_ + token.offset;
    if (*before != '#') return false;
    while (before > begin_ && ClassOf(before[-1]) == kBlank) --before;
    return before == begin_ || before[-1] == '\n';
}

std::string_view Lexer::DirectiveWord() const {
    const auto skip = [this](const char* at, auto passes) {
        while (at < end_ && passes(*at)) ++at;
        return at;
    };
    const auto is_blank = [](char c) { return ClassOf(c) == kBlank; };
    const char* hash = skip(at_, is_blank);
    if (hash == end_ || *hash != '#') return {};
    const char* word = skip(hash + 1, is_blank);
    return {word, static_cast<std::size_t>(skip(word, IsNameByte) - word)};
}

void Lexer::SkipLine() {
    const void* stop = std::memchr(at_, '\n', static_cast<std::size_t>(end_ - at_));
    at_ = end_;
    if (stop == nullptr) return;
    at_ = static_cast<const char*>(stop) + 1;
    ++line_;
}

bool Lexer::Scan(Token& token) {
    token = {Tok::End, source_, line_, static_cast<std::uint32_t>(at_ - begin_), 0};
    if (at_ == end_) return true;
    switch (ClassOf(*at_)) {
        case kLetter:
            return ScanName(token);
        case kDigit:
            return ScanNumber(token);
        default:
            break;
    }
    if (*at_ == '.' && end_ - at_ > 1 && IsDigit(at_[1])) return ScanNumber(token);
    if (*at_ == '"') return ScanString(token);
    ScanOperator(token);
    return true;
}

bool Lexer::ScanName(Token& token) {
    const char* start = at_;
    while (at_ < end_ && IsNameByte(*at_)) ++at_;
    token.value = tokens_.names.Intern({start, static_cast<std::size_t>(at_ - start)});
    constexpr auto kFirst = static_cast<std::uint32_t>(Tok::Abstract);
    token.kind = token.value < kKeywords ? static_cast<Tok>(kFirst + token.value) : Tok::Name;
    return true;
}

bool Lexer::ScanNumber(Token& token) {
    const char* start = at_;
    if (*at_ == '0' && end_ - at_ > 2 && (at_[1] | 0x20) == 'x' &&
        std::isxdigit(static_cast<unsigned char>(at_[2]))) {
        return ScanHex(token);
    }
    std::uint64_t value = 0;
    while (at_ < end_ && IsDigit(*at_)) {
        value = std::min<std::uint64_t>(value * 10 + static_cast<unsigned>(*at_ - '0'), 1ull << 32);
        ++at_;
    }
    const char* stop = at_;
    if (stop < end_ && *stop == '.') {
        ++stop;
        while (stop < end_ && IsDigit(*stop)) ++stop;
    }
    if (stop < end_ && (*stop | 0x20) == 'e') {
        const char* digits = stop + 1;
        if (digits < end_ && (*digits == '+' || *digits == '-')) ++digits;
        if (digits < end_ && IsDigit(*digits)) {
            while (digits < end_ && IsDigit(*digits)) ++digits;
            stop = digits;
        }
    }
    const bool suffix =
        stop < end_ && (*stop | 0x20) == 'f' && (end_ - stop == 1 || !IsNameByte(stop[1]));
    if (stop != at_ || suffix) return ScanFloat(token, stop);
    if (value > 1ull << 31) return Fail(start, line_, "number out of range");
    token.kind = Tok::Int;
    token.value = static_cast<std::uint32_t>(value);
    return true;
}

bool Lexer::ScanHex(Token& token) {
    const char* start = at_;
    at_ += 2;
    const char* digits_end = at_;
    while (digits_end < end_ && std::isxdigit(static_cast<unsigned char>(*digits_end)))
        ++digits_end;
    const auto [stop, status] = std::from_chars(at_, digits_end, token.value, 16);
    if (status != std::errc()) return Fail(start, line_, "number out of range");
    token.kind = Tok::Int;
    at_ = stop;
    return true;
}

bool Lexer::ScanFloat(Token& token, const char* digits_end) {
    const char* start = begin_ + token.offset;
    float value = 0;
    const auto [stop, status] = std::from_chars(start, digits_end, value);
    if (status == std::errc::result_out_of_range) {
        // The library does not say which end of the range was passed.
        if (Magnitude({start, digits_end}) > 0) return Fail(start, line_, "number out of range");
        value = 0;
    }
    at_ = digits_end;
    if (at_ < end_ && (*at_ | 0x20) == 'f') ++at_;
    token.kind = Tok::Float;
    token.value = std::bit_cast<std::uint32_t>(value);
    return true;
}

bool Lexer::ScanString(Token& token) {
    const char* start = at_++;
    while (at_ < end_ && *at_ != '"' && *at_ != '\n') ++at_;
    if (at_ == end_ || *at_ == '\n') return Fail(start, line_, "unterminated quoted literal");
    token.kind = Tok::String;
    token.value = static_cast<std::uint32_t>(tokens_.strings.size());
    tokens_.strings.emplace_back(start + 1, static_cast<std::size_t>(at_ - start - 1));
    ++at_;
    return true;
}

void Lexer::ScanOperator(Token& token) {
    const auto next = [this](std::ptrdiff_t n) { return end_ - at_ > n ? at_[n] : '\0'; };
    const auto take = [&](Tok kind, int bytes) {
        token.kind = kind;
        at_ += bytes;
    };
    // The operator alone, or with a '=' behind it.
    const auto take_either = [&](Tok kind, Tok with_assign, int bytes) {
        return next(bytes) == '=' ? take(with_assign, bytes + 1) : take(kind, bytes);
    };
    switch (*at_) {
        case '+':
            return next(1) == '+' ? take(Tok::PlusPlus, 2)
                                  : take_either(Tok::Plus, Tok::PlusAssign, 1);
        case '-':
            if (next(1) == '-') return take(Tok::MinusMinus, 2);
            if (next(1) == '>') return take(Tok::Arrow, 2);
            return take_either(Tok::Minus, Tok::MinusAssign, 1);
        case '*':
            return take_either(Tok::Star, Tok::StarAssign, 1);
        case '/':
            return take_either(Tok::Slash, Tok::SlashAssign, 1);
        case '%':
            return take_either(Tok::Percent, Tok::PercentAssign, 1);
        case '^':
            return take_either(Tok::Xor, Tok::XorAssign, 1);
        case '&':
            return next(1) == '&' ? take(Tok::AndAnd, 2) : take_either(Tok::And, Tok::AndAssign, 1);
        case '|':
            return next(1) == '|' ? take(Tok::OrOr, 2) : take_either(Tok::Or, Tok::OrAssign, 1);
        case '=':
            return take_either(Tok::Assign, Tok::Equal, 1);
        case '!':
            return take_either(Tok::Not, Tok::NotEqual, 1);
        case '<':
            if (next(1) == '<') return take_either(Tok::Shl, Tok::ShlAssign, 2);
            return take_either(Tok::Less, Tok::LessEqual, 1);
        case '>':
            if (next(1) == '>' && next(2) == '>') return take_either(Tok::Shr, Tok::ShrAssign, 3);
            if (next(1) == '>') return take_either(Tok::Sar, Tok::SarAssign, 2);
            return take_either(Tok::Greater, Tok::GreaterEqual, 1);
        case '~':
            return take(Tok::Tilde, 1);
        case '?':
            return take(Tok::Question, 1);
        case ':':
            return take(Tok::Colon, 1);
        case '.':
            return take(Tok::Dot, 1);
        case ',':
            return take(Tok::Comma, 1);
        case ';':
            return take(Tok::Semicolon, 1);
        case '(':
            return take(Tok::LeftParen, 1);
        case ')':
            return take(Tok::RightParen, 1);
        case '[':
            return take(Tok::LeftBracket, 1);
        case ']':
            return take(Tok::RightBracket, 1);
        case '{':
            return take(Tok::LeftBrace, 1);
        case '}':
            return take(Tok::RightBrace, 1);
        default:
            return take(Tok::Bad, 1);
    }
}

}  // namespace hum
