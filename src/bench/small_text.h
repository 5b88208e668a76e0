#pragma once

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <string_view>

namespace Kest {

// Formatted text for a row that is drawn anew with each frame, without the heap. At most 95 bytes.
class SmallText {
public:
#ifdef __MINGW32__
    [[gnu::format(gnu_printf, 2, 3)]]
#else
    [[gnu::format(printf, 2, 3)]]
#endif
    explicit SmallText(const char* format, ...) {
        std::va_list arguments;
        va_start(arguments, format);
        const int length = std::vsnprintf(text_.data(), text_.size(), format, arguments);
        va_end(arguments);
        length_ =
            static_cast<std::size_t>(std::clamp(length, 0, static_cast<int>(text_.size()) - 1));
    }
    operator std::string_view() const {
        return {text_.data(), length_};
    }

private:
    std::array<char, 96> text_;
    std::size_t length_ = 0;
};

}  // namespace Kest
