#pragma once

#include <algorithm>
#include <string_view>

#include "ui/code_editor.h"

// In what the editor's vi keys differ from vim on purpose.
namespace vi_case {

// What the editor is about to be sent.
struct Moment {
    const zo::ui::CodeEditor& editor;
    std::string_view keys;
    std::string_view played;  // all that it was sent before
    bool moved_in_insertion;  // the last insertion was typed in more than one place

    bool Has(std::string_view part) const { return keys.find(part) != std::string_view::npos; }
    bool Repeats() const { return keys.ends_with('.'); }
    bool HasAnyOf(std::string_view characters) const {
        return keys.find_first_of(characters) != std::string_view::npos;
    }
    bool AimsForColumn() const {
        return HasAnyOf("jkY") || Has("<Up>") || Has("<Down>") || Has("yy");
    }
    bool TextHasAnyOf(std::u16string_view characters) const {
        return editor.Buffer().Text().find_first_of(characters) != std::u16string::npos;
    }
    bool Played(std::string_view part) const { return played.find(part) != std::string_view::npos; }
    bool RepeatsAnyOf(std::string_view characters) const {
        return Repeats() && played.find_first_of(characters) != std::string_view::npos;
    }
    zo::ui::TextPosition Caret() const { return editor.CaretAt(); }
    bool AtTextEnd() const { return Caret() == editor.Buffer().End(); }
    bool OnEmptyLastLine() const { return AtTextEnd() && Caret().column == 0; }
    bool InOneLine() const { return editor.Buffer().LineCount() == 1; }
    bool Inserts() const { return editor.ModeName() == "INSERT"; }
    bool Selects() const { return editor.ModeName().starts_with("VISUAL"); }
};

struct Difference {
    std::string_view rule;
    bool (*meets)(const Moment& moment);  // null where the random cases have no such keys
};

inline constexpr Difference kDifferences[] = {
    {"Redo is Ctrl+Y; Ctrl+R is the card's. The cases give vim the one for the other.", nullptr},
    {"Ctrl+D, Ctrl+U, Ctrl+F and Ctrl+B go by half or all of the rows in sight, times the count.",
     nullptr},
    {"/ and ? look for the text as it stands: no patterns, no offsets.", nullptr},
    {"Behind : stands a command of the bench or the number of a line, and no count before it.",
     nullptr},
    {"H, M and L, zt, zz and zb go by the rows in sight, which vim has none of here.", nullptr},
    {"gv selects the places that were selected last, whatever came before them since.", nullptr},
    {"g~, gu and gU change nothing where their motion takes nothing.", nullptr},
    {"Brackets are brackets, in quotes and behind a backslash too.",
     [](const Moment& m) { return m.Has("%") && m.TextHasAnyOf(u"'\""); }},
    {"i' a' i\" a\" select around the caret alone, and nothing where more is selected.",
     [](const Moment& m) { return m.Selects() && (m.Has("'") || m.Has("\"")); }},
    {"{ in a text of one line goes to its start, not to its end.",
     [](const Moment& m) { return m.InOneLine() && (m.Has("{") || m.RepeatsAnyOf("{")); }},
    {"iw and iW take nothing of an empty last line, not the end of the line above.",
     [](const Moment& m) {
         return m.OnEmptyLastLine() && (m.Has("iw") || m.Has("iW") || m.RepeatsAnyOf("wW"));
     }},
    {"Del at the end of the text is no part of an insertion, to undo or to repeat.",
     [](const Moment& m) {
         return (m.Inserts() && m.AtTextEnd() && m.Has("<Del>")) ||
                (m.Repeats() && m.Played("<Del>"));
     }},
    {". behind $ in Visual mode acts from the caret to the line's end, not to its start.",
     [](const Moment& m) { return m.RepeatsAnyOf("vV") && m.RepeatsAnyOf("$_E"); }},
    {"j and k aim for where the move before them ended. Vim may aim for the column of an earlier "
     "|, "
     "for nothing is drawn here between the keys.",
     [](const Moment& m) { return m.AimsForColumn() && (m.Played("|") || m.Played("<Home>")); }},
    {". does not repeat an insertion that was typed in more than one place, and says so.",
     [](const Moment& m) { return m.Repeats() && m.moved_in_insertion; }},
};

}  // namespace vi_case
