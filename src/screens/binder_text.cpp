#include "binder_text.h"

#include <algorithm>

namespace Kest {
namespace {

using zo::ui::Paragraph;

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool HoldsIn(std::string_view text, std::string_view words) {
    const auto same = [](char a, char b) { return Lower(a) == Lower(b); };
    return std::ranges::search(text, words, same).begin() != text.end();
}

}  // namespace

std::string PageWords(const kp::BinderPage& page) {
    const std::string_view number = page.Number();
    if (number.empty()) return page.title;
    const std::size_t name = std::min(number.size() + 1, page.title.size());
    return "page " + std::string(number) + ", " + page.title.substr(name);
}

std::vector<Paragraph> PageText(const kp::Content& content, const kp::BinderPage& page,
                                const std::function<void(const std::string& id)>& open) {
    std::vector<Paragraph> text;
    for (const std::string& item : page.body) {
        Paragraph& paragraph = text.emplace_back();
        paragraph.text = item;
        if (kp::IsKept(item)) {
            paragraph.role = zo::ui::Role::Code;
            paragraph.wrap = zo::ui::Wrap::Kept;
        }
        for (const kp::PageLink& link : kp::LinksIn(item)) {
            const kp::BinderPage* to = kp::FindPage(content.pages, link.number);
            if (to == nullptr || to == &page) continue;
            paragraph.links.push_back({.from = link.at,
                                       .to = link.at + link.length,
                                       .hint = "Link: " + PageWords(*to) + ".",
                                       .act = [open, id = to->id] { open(id); }});
        }
    }
    return text;
}

bool Holds(const kp::BinderPage& page, std::string_view words) {
    return HoldsIn(page.title, words) ||
           std::ranges::any_of(page.body,
                               [words](const std::string& item) { return HoldsIn(item, words); });
}

}  // namespace Kest
