#pragma once

#include <doctest/doctest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Cases that stand in text files, where a conversation, a picture or a program reads as it is:
//
//     == what holds
//     # A remark.
//     key and the rest of the line, which is the key's value
//     | A line of text that belongs to the key above;
//     | what it says is the room's to know.
//
// Names of files and folders are relative to tests/.
namespace support {

// A text of several lines written on one, where " / " ends a line.
std::string LinesOf(std::string_view text);

struct Step {
    std::string where;  // "peers/flow.txt:12: the case's name"
    std::string key;
    std::string value;
    std::string text;  // the lines behind bars, each with its end

    std::string All() const { return text.empty() ? value : value + "\n" + text; }
    std::string Lines() const { return LinesOf(value); }
    unsigned Number() const { return static_cast<unsigned>(std::stoul(value)); }
};

using Case = std::vector<Step>;

// All cases of a file, or of the files of a folder in the order of their names. There are some.
std::vector<Case> Cases(std::string_view name);

std::filesystem::path PathOf(std::string_view name);
std::vector<std::string> NamesIn(std::string_view folder);
std::string ReadText(std::string_view file);

// Text in which <C3> stands for the byte of that value.
std::string Unmarked(std::string_view text);

// Text up to a mark, which is cut off with it; all that is left where there is no mark.
std::string_view Cut(std::string_view& text, std::string_view mark);

}  // namespace support
