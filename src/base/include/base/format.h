#pragma once

#include <string>

namespace base {

// printf into a string; the compiler checks the arguments against the format.
#ifdef __MINGW32__
[[gnu::format(gnu_printf, 1, 2)]]
#else
[[gnu::format(printf, 1, 2)]]
#endif
std::string
Format(const char* format, ...);

}  // namespace base
