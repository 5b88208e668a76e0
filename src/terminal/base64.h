#pragma once

#include <string>
#include <string_view>

namespace zo::term {

void AppendBase64(std::string& out, std::string_view bytes);

}  // namespace zo::term
