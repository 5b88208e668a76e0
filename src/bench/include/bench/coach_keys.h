#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "content/content.h"

namespace Kest {

// Whether a coach's text names this key, or any.
bool NamesKey(std::string_view text, std::string_view key);
bool NamesAnyKey(std::string_view text);

// A line for each text of the coach that names a key which the bench does not know, or would not
// take yet when the text can first show.
std::vector<std::string> LintCoachKeys(const kp::Content& content);

}  // namespace Kest
