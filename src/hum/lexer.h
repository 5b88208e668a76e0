#pragma once

#include <cstdint>
#include <string_view>

#include "sources.h"
#include "token.h"

namespace hum {

// Cuts one text into tokens, one at a time. A text is at most 4 GB long.
class Lexer {
public:
    Lexer(Tokens& tokens, std::uint16_t source);

    // The next token; one of kind End at the end. False when the text is at fault there.
    bool Next(Token& token);
    // The same within the line of the token before; End at the line's end.
    bool NextOnLine(Token& token);
    // Whether the '#' just read as a Bad token is the first on its line.
    bool IsDirective(const Token& token) const;
    // The word behind a '#' that begins this line's rest; empty where there is none. Reads nothing.
    std::string_view DirectiveWord() const;
    void SkipLine();
    bool AtEnd() const { return at_ == end_; }
    Spot Here() const;
    std::uint16_t SourceNumber() const { return source_; }

    // What is wrong where Next or NextOnLine returned false.
    std::string_view Message() const { return message_; }
    Spot Place() const { return place_; }

private:
    bool Fail(const char* place, std::uint32_t line, std::string_view message);
    bool SkipBlanks(bool within_line);
    bool Scan(Token& token);
    bool ScanName(Token& token);
    bool ScanNumber(Token& token);
    bool ScanHex(Token& token);
    bool ScanFloat(Token& token, const char* digits_end);
    bool ScanString(Token& token);
    void ScanOperator(Token& token);

    Tokens& tokens_;
    std::uint16_t source_;
    std::uint32_t line_ = 1;
    const char* begin_;
    const char* at_;
    const char* end_;
    std::string_view message_;
    Spot place_;
};

}  // namespace hum
