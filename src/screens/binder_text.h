#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "content/content.h"
#include "ui/text_layout.h"

namespace Kest {

// A page as text to read. Its links to other pages call `open` with their ids.
std::vector<zo::ui::Paragraph> PageText(const kp::Content& content, const kp::BinderPage& page,
                                        const std::function<void(const std::string& id)>& open);

// "page 3.4, CRC"
std::string PageWords(const kp::BinderPage& page);

// Whether its title or a line of its text holds these words, in either case.
bool Holds(const kp::BinderPage& page, std::string_view words);

}  // namespace Kest
