#pragma once

#include <string>
#include <string_view>

namespace zo::platform {

// Between UTF-8 and the system's UTF-16. What is no text becomes U+FFFD.
std::string Narrow(std::wstring_view text);
std::wstring Widen(std::string_view text);

}  // namespace zo::platform
