#include "json/writer.h"

#include <charconv>
#include <cmath>

namespace json {
namespace {

// Below this every integral double has one plain decimal form of at most 16 digits.
constexpr double kPlainIntegerLimit = 9e15;

void AppendNumber(std::string& text, double number) {
    char digits[64];
    const bool plain = std::trunc(number) == number && std::abs(number) < kPlainIntegerLimit;
    const auto end =
        plain ? std::to_chars(digits, std::end(digits), number, std::chars_format::fixed, 0)
              : std::to_chars(digits, std::end(digits), number, std::chars_format::general, 17);
    text.append(digits, end.ptr);
}

// The escape of a byte; empty for one that stands for itself.
std::string_view ShortEscape(char c) {
    switch (c) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\t':
            return "\\t";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        default:
            return {};
    }
}

void AppendEscaped(std::string& text, std::string_view bytes) {
    constexpr std::string_view kHex = "0123456789abcdef";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (const std::string_view escape = ShortEscape(c); !escape.empty()) {
            text += escape;
        } else if (byte < 0x20) {
            text += "\\u00";
            text += kHex[byte >> 4];
            text += kHex[byte & 0xF];
        } else {
            text += c;
        }
    }
}

class Writer {
public:
    explicit Writer(int indent) : indent_(static_cast<std::size_t>(indent > 0 ? indent : 0)) {}

    std::string Finish() {
        if (indent_ > 0) text_ += '\n';
        return std::move(text_);
    }

    void Write(const Value& value) {
        switch (value.kind) {
            case Kind::Null:
                text_ += "null";
                break;
            case Kind::Boolean:
                text_ += value.boolean ? "true" : "false";
                break;
            case Kind::Number:
                AppendNumber(text_, value.number);
                break;
            case Kind::String:
                WriteString(value.string);
                break;
            case Kind::Array:
                WriteList('[', ']', value.items, [&](const Value& item) { Write(item); });
                break;
            case Kind::Object:
                WriteList('{', '}', value.members, [&](const auto& member) {
                    WriteString(member.first);
                    text_ += indent_ > 0 ? ": " : ":";
                    Write(member.second);
                });
                break;
        }
    }

private:
    void WriteString(std::string_view bytes) {
        text_ += '"';
        AppendEscaped(text_, bytes);
        text_ += '"';
    }

    template <class List, class WriteElement>
    void WriteList(char open, char close, const List& list, WriteElement write_element) {
        text_ += open;
        ++depth_;
        bool first = true;
        for (const auto& element : list) {
            if (!first) text_ += ',';
            first = false;
            BreakLine();
            write_element(element);
        }
        --depth_;
        if (!list.empty()) BreakLine();
        text_ += close;
    }

    void BreakLine() {
        if (indent_ == 0) return;
        text_ += '\n';
        text_.append(indent_ * depth_, ' ');
    }

    std::size_t indent_;  // spaces a level, 0 for one line without blanks
    std::size_t depth_ = 0;
    std::string text_;
};

}  // namespace

std::string Write(const Value& value, int indent) {
    Writer writer(indent);
    writer.Write(value);
    return writer.Finish();
}

std::string EscapeString(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    AppendEscaped(text, bytes);
    return text;
}

}  // namespace json
