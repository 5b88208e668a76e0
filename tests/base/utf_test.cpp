#include "base/utf.h"

#include <doctest/doctest.h>

TEST_CASE("well-formed text goes to UTF-32 and back") {
    const struct {
        std::string_view utf8;
        std::u32string_view text;
    } cases[] = {
        {"", U""},
        {"a~", U"a~"},
        {"\x7F\xC2\x80\xDF\xBF", U"\x7F\x80\u07FF"},
        {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", U"\u0800\uD7FF\uE000\uFFFF"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", U"\U00010000\U0010FFFF"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.utf8);
        CHECK((base::ToUtf32(c.utf8) == c.text));
        CHECK(base::ToUtf8(c.text) == c.utf8);
        CHECK(base::CodePoints(c.utf8) == c.text.size());
    }
}

TEST_CASE("each byte that starts nothing well-formed reads as one replacement") {
    const struct {
        std::string_view utf8;
        std::u32string_view text;
    } cases[] = {
        {"\x80x", U"\uFFFDx"},                              // a following byte alone
        {"\xC1\xBF", U"\uFFFD\uFFFD"},                      // overlong
        {"\xE0\x9F\xBF", U"\uFFFD\uFFFD\uFFFD"},            // overlong
        {"\xF0\x8F\xBF\xBF", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // overlong
        {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},            // a surrogate
        {"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // past the last code point
        {"\xFF", U"\uFFFD"},
        {"\xE2\x82", U"\uFFFD\uFFFD"},    // cut off by the end
        {"\xE2\x82x", U"\uFFFD\uFFFDx"},  // cut off by a character
        {"\xE2\xC3\xA9", U"\uFFFD\u00E9"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.utf8);
        CHECK((base::ToUtf32(c.utf8) == c.text));
        CHECK(base::CodePoints(c.utf8) == c.text.size());
    }
}

TEST_CASE("what is no code point is written as the replacement") {
    for (const char32_t value : {0xD800u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu}) {
        std::string text = "a";
        base::AppendUtf8(text, value);
        CHECK(text == "a\xEF\xBF\xBD");
    }
}

TEST_CASE("text goes to UTF-16 and back, and half a pair is written as the replacement") {
    CHECK((base::ToUtf16("a\xC3\xA9\xF0\x90\x80\x80\xF4\x8F\xBF\xBF") ==
           u"a\u00E9\U00010000\U0010FFFF"));
    CHECK(base::ToUtf8(std::u16string_view(u"a\u00E9\U00010000\U0010FFFF")) ==
          "a\xC3\xA9\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
    const char16_t halves[] = {0xDC00, u'x', 0xD800, 0xD800, 0xDC00, 0xD800};
    CHECK(base::ToUtf8(std::u16string_view(halves, 6)) ==
          "\xEF\xBF\xBDx\xEF\xBF\xBD\xF0\x90\x80\x80\xEF\xBF\xBD");
}
