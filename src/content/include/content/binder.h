#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "content/store.h"
#include "json/fields.h"

namespace kp {

struct BinderPage {
    std::string id;
    std::string title;  // led by its number: "3.4 CRC"
    std::string section;
    std::vector<std::string> body;  // one item per line of the page

    std::string_view Number() const;  // "3.4"; empty without one
};

// A line of a page that is shown as it stands, never wrapped: firmware, bytes, tables.
bool IsKept(std::string_view item);

// A place in a page's text that leads to another page: the words "page 3.4".
struct PageLink {
    std::size_t at = 0;  // in bytes
    std::size_t length = 0;
    std::string_view number;  // "3.4", a part of the text
};

// The links of an item, in order; a kept line has none.
std::vector<PageLink> LinksIn(std::string_view item);

// The binder alone; the failure is one line.
base::Result<std::vector<BinderPage>> LoadBinder(const ContentStore& store,
                                                 json::Remarks* remarks = nullptr);

// The page with this id or number, or of the instruction of this name; null without one.
const BinderPage* FindPage(const std::vector<BinderPage>& pages, std::string_view name);

}  // namespace kp
