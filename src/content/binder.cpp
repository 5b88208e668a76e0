#include "content/binder.h"

#include <algorithm>

namespace kp {
namespace {

constexpr std::string_view kBinderFile = "missions/binder.json";
constexpr std::string_view kLinkWord = "page ";
constexpr std::string_view kInstructionPage = "op-";

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t DigitsAt(std::string_view text, std::size_t at) {
    std::size_t count = 0;
    while (at + count < text.size() && IsDigit(text[at + count])) ++count;
    return count;
}

// The page number that a text begins with, such as "3.4"; empty when it does not begin with one.
std::string_view LeadingNumber(std::string_view text) {
    const std::size_t part = DigitsAt(text, 0);
    if (part == 0 || part == text.size() || text[part] != '.') return {};
    const std::size_t page = DigitsAt(text, part + 1);
    return page == 0 ? std::string_view() : text.substr(0, part + 1 + page);
}

template <class Fits>
const BinderPage* FindIf(const std::vector<BinderPage>& pages, Fits fits) {
    const auto page = std::ranges::find_if(pages, fits);
    return page == pages.end() ? nullptr : &*page;
}

}  // namespace

std::string_view BinderPage::Number() const {
    return LeadingNumber(title);
}

bool IsKept(std::string_view item) {
    return item.starts_with("  ");
}

std::vector<PageLink> LinksIn(std::string_view item) {
    std::vector<PageLink> links;
    if (IsKept(item)) return links;
    for (std::size_t at = item.find(kLinkWord); at != std::string_view::npos;
         at = item.find(kLinkWord, at + kLinkWord.size())) {
        const std::string_view number = LeadingNumber(item.substr(at + kLinkWord.size()));
        if (!number.empty()) links.push_back({at, kLinkWord.size() + number.size(), number});
    }
    return links;
}

base::Result<std::vector<BinderPage>> LoadBinder(const ContentStore& store,
                                                 json::Remarks* remarks) {
    const base::Result<json::Value> file = store.ReadJson(kBinderFile);
    if (!file) return base::Failure{file.Message()};
    json::Fields binder(*file, remarks,
                        remarks != nullptr ? std::string(kBinderFile) : std::string());
    std::vector<BinderPage> pages;
    const std::size_t count = binder.List("pages").size();
    for (std::size_t k = 0; k < count; ++k) {
        json::Fields page = binder.Item("pages", k);
        pages.push_back(
            {page.Text("id"), page.Text("title"), page.Text("section"), page.Texts("body")});
        page.RemarkUnknown();
    }
    binder.RemarkUnknown();
    return pages;
}

const BinderPage* FindPage(const std::vector<BinderPage>& pages, std::string_view name) {
    if (name.empty()) return nullptr;
    if (const auto* page = FindIf(pages, [&](const BinderPage& p) { return p.id == name; })) {
        return page;
    }
    const std::string instruction = std::string(kInstructionPage) + std::string(name);
    return FindIf(pages,
                  [&](const BinderPage& p) { return p.Number() == name || p.id == instruction; });
}

}  // namespace kp
