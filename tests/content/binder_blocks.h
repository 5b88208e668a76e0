#pragma once

#include <doctest/doctest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "content/content.h"
#include "ticket/bytes.h"

// The built-in binder as its tests read it: pages with blocks of kept lines under a caption, and
// columns that stand two blanks apart.
namespace binder {

const kp::Content& Content();
const kp::BinderPage& Page(std::string_view id);
// The prose of a page in one text, an item a line.
std::string ProseOf(const kp::BinderPage& page);

struct Block {
    const kp::BinderPage* page = nullptr;
    std::string caption;            // without its colon
    std::vector<std::string> rows;  // without their two blanks
    std::string Where() const { return page->title + ", " + caption; }
};

// The blocks of all pages whose caption begins with these words, in order; there are some.
std::vector<Block> BlocksLedBy(std::string_view words);
// The one block of a page whose caption begins with these words.
Block BlockOf(std::string_view page_id, std::string_view words);

// The cells of a row.
std::vector<std::string> Columns(std::string_view row);
std::vector<std::string> Words(std::string_view text);

// "C1 02" with one blank between; no bytes when the text is anything else.
kp::Bytes BytesIn(std::string_view text);
std::string HexOf(const kp::Bytes& bytes);  // the other way
std::string Dollar(unsigned value, int digits);

}  // namespace binder
