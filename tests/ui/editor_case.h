#pragma once

#include <string>
#include <string_view>

#include "base/utf.h"
#include "support/keys.h"
#include "ui/code_editor.h"

// Texts of the editor's cases on one line: lines are joined by " / ", an empty one is ∅, blanks at
// a line's ends are ·, the caret is | and the other end of what is selected ^.
namespace editor_case {

struct Case {
    std::string keys, in, out, message;
};

// "<keys>  in <text>  out <text>", and "  message <sentence>" where one is due.
inline Case Read(std::string_view line) {
    const auto cut = [&line](std::string_view mark) {
        const std::size_t at = line.find(mark);
        std::string_view taken = line.substr(0, at);
        line.remove_prefix(at == std::string_view::npos ? line.size() : at + mark.size());
        while (taken.ends_with("  ")) taken.remove_suffix(1);
        return std::string(taken.ends_with(' ') ? taken.substr(0, taken.size() - 1) : taken);
    };
    Case read;
    read.keys = cut("  in ");
    read.in = cut("  out ");
    read.out = cut("  message ");
    read.message = line;
    return read;
}

inline std::string Replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

inline void Load(zo::ui::CodeEditor& editor, std::string_view marked) {
    std::string text = Replaced(std::string(marked), " / ", "\n");
    text = Replaced(Replaced(std::move(text), "·", " "), "∅", "");
    const std::size_t bar = text.find('|');
    const zo::ui::TextPosition caret =
        zo::ui::EndOf(base::ToUtf16(text.substr(0, bar)), zo::ui::TextPosition{});
    editor.SetText(text.erase(bar, 1));
    editor.SetCaret(caret);
}

inline std::string ShowBlanks(std::string line) {
    if (line.empty()) return "∅";
    const auto blank = [](char c) { return c == ' ' || c == '|' || c == '^'; };
    std::size_t from = 0, to = line.size();
    while (from < line.size() && blank(line[from])) ++from;
    while (to > from && blank(line[to - 1])) --to;
    return Replaced(line.substr(0, from), " ", "·") + line.substr(from, to - from) +
           Replaced(line.substr(to), " ", "·");
}

inline std::string Marked(const zo::ui::CodeEditor& editor) {
    const zo::ui::TextBuffer& buffer = editor.Buffer();
    const zo::ui::Selection& selected = editor.Selected();
    const bool caret_first = selected.caret <= selected.anchor;
    std::u16string text = buffer.Text({}, selected.From()) + (caret_first ? u'|' : u'^');
    if (!selected.Empty()) {
        text += buffer.Text(selected.From(), selected.To()) + (caret_first ? u'^' : u'|');
    }
    text += buffer.Text(selected.To(), buffer.End());
    std::string rest = base::ToUtf8(std::u16string_view(text));
    std::string marked;
    for (;;) {
        const std::size_t end = rest.find('\n');
        marked += ShowBlanks(rest.substr(0, end));
        if (end == std::string::npos) return marked;
        marked += " / ";
        rest.erase(0, end + 1);
    }
}

inline void Send(zo::ui::CodeEditor& editor, std::string_view keys) {
    bool used = false;
    for (const zo::ui::InputEvent& event : fake::Keys(keys)) {
        if (const auto* key = std::get_if<zo::ui::KeyPress>(&event)) used = editor.Key(*key);
        const auto* text = std::get_if<zo::ui::TextInput>(&event);
        if (text && !used) editor.Type(text->text);
    }
}

}  // namespace editor_case
