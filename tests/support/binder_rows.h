#pragma once

#include <doctest/doctest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "content/content.h"

namespace support {

// The rows under a caption of a page of the binder, without their two blanks.
inline std::vector<std::string> RowsUnder(const kp::Content& content, std::string_view page_id,
                                          std::string_view caption) {
    const kp::BinderPage* page = content.FindPage(page_id);
    REQUIRE(page != nullptr);
    auto item = std::ranges::find(page->body, caption);
    REQUIRE(item != page->body.end());
    std::vector<std::string> rows;
    while (++item != page->body.end() && kp::IsKept(*item)) rows.push_back(item->substr(2));
    return rows;
}

// The names at the start of such rows, which stand in so many columns; a row that goes on has none.
inline std::vector<std::string> NamesUnder(const kp::Content& content, std::string_view page_id,
                                           std::string_view caption, std::size_t columns) {
    std::vector<std::string> names;
    for (const std::string& row : RowsUnder(content, page_id, caption)) {
        std::istringstream listed(row.substr(0, columns));
        for (std::string name; listed >> name;) names.push_back(name);
    }
    return names;
}

inline constexpr std::size_t kKeyColumns = 21;  // of the pages that list keys

}  // namespace support
