#include "base/format.h"

#include <cstdarg>
#include <cstdio>

namespace base {

std::string Format(const char* format, ...) {
    char most[256];  // what nearly every text fits into, so that it is made in one go
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(most, sizeof most, format, arguments);
    va_end(arguments);
    std::string text;
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof most) {
        text.assign(most, static_cast<std::size_t>(length));
    } else if (length > 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

}  // namespace base
