#include <algorithm>
#include <set>

#include "base/format.h"
#include "base/utf.h"
#include "card/instructions.h"
#include "content/lint.h"
#include "lint_parts.h"

namespace kp {
namespace {

constexpr std::size_t kTitleCells = 21;
constexpr std::size_t kKeptCells = 50;  // the page's width on the smallest grid

// Pages that the bench opens by themselves.
constexpr std::string_view kOpenedByTheBench[] = {"lc1", "vi-keys"};

bool IsPrintable(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

bool IsNamed(const BinderPage& page, const Content& content) {
    if (std::ranges::count(kOpenedByTheBench, page.id) > 0) return true;
    const auto names = [&](const LoadedTicket* loaded) {
        return std::ranges::count(loaded->ticket.binder, page.id) > 0;
    };
    return std::ranges::any_of(content.Tickets(), names);
}

bool IsLinked(const BinderPage& page, const Content& content) {
    const auto leads_here = [&](const PageLink& link) { return link.number == page.Number(); };
    for (const BinderPage& other : content.pages) {
        if (&other == &page) continue;
        for (const std::string& item : other.body) {
            if (std::ranges::any_of(LinksIn(item), leads_here)) return true;
        }
    }
    return false;
}

bool HasPageOfNumber(const Content& content, std::string_view number) {
    return std::ranges::any_of(content.pages,
                               [&](const BinderPage& page) { return page.Number() == number; });
}

void LintItem(const std::string& item, const BinderPage& page, const Content& content,
              std::vector<std::string>& lines) {
    if (IsKept(item)) {
        LintLength("line", item, kKeptCells, lines);
        if (!IsPrintable(item)) lines.push_back("line \"" + item + "\" is not plain ASCII");
    }
    for (const PageLink& link : LinksIn(item)) {
        const std::string number(link.number);
        if (!HasPageOfNumber(content, number)) lines.push_back("there is no page " + number);
        if (number == page.Number()) lines.push_back("the page leads to itself");
    }
}

std::vector<std::string> LintPage(const BinderPage& page, const Content& content) {
    std::vector<std::string> lines;
    LintLength("title", page.title, kTitleCells, lines);
    if (page.Number().empty()) lines.push_back("the title has no number");
    for (const std::string& item : page.body) LintItem(item, page, content, lines);
    if (!IsNamed(page, content) && !IsLinked(page, content)) {
        lines.push_back("no ticket and no other page leads to it");
    }
    return lines;
}

template <class Key>
void LintTwins(const Content& content, const std::string& what, Key key,
               std::vector<std::string>& lines) {
    std::set<std::string> seen;
    for (const BinderPage& page : content.pages) {
        const std::string value(key(page));
        if (!value.empty() && !seen.insert(value).second) {
            lines.push_back("binder: two pages have the " + what + " " + value);
        }
    }
}

}  // namespace

std::vector<std::string> LintBinder(const Content& content) {
    std::vector<std::string> lines;
    LintTwins(
        content, "id", [](const BinderPage& page) { return page.id; }, lines);
    LintTwins(
        content, "number", [](const BinderPage& page) { return page.Number(); }, lines);
    for (const BinderPage& page : content.pages) {
        const std::string by = "binder, " + (page.title.empty() ? page.id : page.title) + ": ";
        for (const std::string& line : LintPage(page, content)) lines.push_back(by + line);
    }
    for (const LoadedTicket* loaded : content.Tickets()) {
        for (const std::string& id : loaded->ticket.binder) {
            if (content.FindPage(id) != nullptr) continue;
            lines.push_back(loaded->ticket.id + " names a missing binder page " + id);
        }
    }
    return lines;
}

std::vector<std::string> LintBinderWhole(const Content& content) {
    std::vector<std::string> lines;
    const auto want = [&](const std::string& id) {
        const BinderPage* page = content.FindPage(id);
        if (page == nullptr) {
            lines.push_back("binder: the page " + id + " is missing");
        } else if (page->body.empty()) {
            lines.push_back("binder: the page " + id + " is empty");
        }
    };
    for (const std::string_view id : kOpenedByTheBench) want(std::string(id));
    for (const InstructionInfo& info : Instructions()) want("op-" + std::string(info.name));
    return lines;
}

}  // namespace kp
