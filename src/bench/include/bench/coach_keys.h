#pragma once

#include <string>
#include <vector>

#include "content/content.h"

namespace Kest {

// A line for each text of the coach that names a key which the bench does not know, or would not
// take yet when the text can first show.
std::vector<std::string> LintCoachKeys(const kp::Content& content);

}  // namespace Kest
