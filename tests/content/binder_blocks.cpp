#include "binder_blocks.h"

#include <algorithm>
#include <regex>
#include <sstream>

#include "base/format.h"
#include "ticket/hex.h"

namespace binder {
namespace {

std::vector<Block> BlocksOf(const kp::BinderPage& page) {
    std::vector<Block> blocks;
    bool inside = false;
    for (std::size_t k = 0; k < page.body.size(); ++k) {
        const bool kept = kp::IsKept(page.body[k]);
        if (kept && !inside) {
            std::string caption = k > 0 ? page.body[k - 1] : std::string();
            if (caption.ends_with(':')) caption.pop_back();
            blocks.push_back({&page, caption, {}});
        }
        if (kept) blocks.back().rows.push_back(page.body[k].substr(2));
        inside = kept;
    }
    return blocks;
}

}  // namespace

const kp::Content& Content() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

const kp::BinderPage& Page(std::string_view id) {
    const kp::BinderPage* page = Content().FindPage(id);
    REQUIRE(page != nullptr);
    return *page;
}

std::string ProseOf(const kp::BinderPage& page) {
    std::string text;
    for (const std::string& item : page.body) {
        if (!kp::IsKept(item)) text += item + '\n';
    }
    return text;
}

std::vector<Block> BlocksLedBy(std::string_view words) {
    std::vector<Block> found;
    for (const kp::BinderPage& page : Content().pages) {
        for (Block& block : BlocksOf(page)) {
            if (block.caption.starts_with(words)) found.push_back(std::move(block));
        }
    }
    REQUIRE_FALSE(found.empty());
    return found;
}

Block BlockOf(std::string_view page_id, std::string_view words) {
    std::vector<Block> found = BlocksOf(Page(page_id));
    std::erase_if(found, [&](const Block& block) { return !block.caption.starts_with(words); });
    REQUIRE(found.size() == 1);
    return found.front();
}

std::vector<std::string> Columns(std::string_view row) {
    std::vector<std::string> columns;
    while (!row.empty()) {
        const std::size_t end = std::min(row.find("  "), row.size());
        columns.emplace_back(row.substr(0, end));
        const std::size_t next = row.find_first_not_of(' ', end);
        row = next == std::string_view::npos ? std::string_view() : row.substr(next);
    }
    return columns;
}

std::vector<std::string> Words(std::string_view text) {
    std::istringstream in{std::string(text)};
    std::vector<std::string> words;
    for (std::string word; in >> word;) words.push_back(word);
    return words;
}

kp::Bytes BytesIn(std::string_view text) {
    static const std::regex kPattern("[0-9A-F]{2}( [0-9A-F]{2})*");
    if (!std::regex_match(text.begin(), text.end(), kPattern)) return {};
    return *kp::ReadHex(text);
}

std::string HexOf(const kp::Bytes& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += base::Format(text.empty() ? "%02X" : " %02X", byte);
    }
    return text;
}

std::string Dollar(unsigned value, int digits) {
    return base::Format("$%0*X", digits, value);
}

}  // namespace binder
