#include <algorithm>

#include "vi/machine.h"

namespace zo::ui::vi {

// What a key does that is neither operator nor motion. The tables are the whole truth about them.
struct Acts {
    static bool Insert(Machine& m, const Command& command, TextPosition at) {
        m.StartInsert(at, command.Times());
        return true;
    }
    static TextPosition BehindCaret(const Machine& m) {
        return std::min(m.Text().After(m.Caret()), m.Text().EndOf(m.Caret().line));
    }
    static TextPosition AtText(const Machine& m) {
        return {m.Caret().line, m.Text().Indent(m.Caret().line)};
    }

    static void ReplaceSelected(Machine& m, const Command& command, const Region& region) {
        m.ReplaceSelected(region, command.character);
    }
    template <bool tight>
    static void JoinSelected(Machine& m, const Command&, const Region& region) {
        m.JoinSelected(region, tight);
    }
    template <bool keep>
    static void PutOver(Machine& m, const Command& command, const Region& region) {
        m.PutOver(region, command.Times(), keep);
    }
    static constexpr bool kErasesFirst = true;

    static const ActRow kEither[];
    static const ActRow kNormal[];
    static const ActRow kVisual[];
};

// In Normal and Visual mode.
const ActRow Acts::kEither[] = {
    {U"v", [](Machine& m, Command&) { return m.Select(Mode::Visual); }},
    {U"V", [](Machine& m, Command&) { return m.Select(Mode::VisualLine); }},
    {U"gv", [](Machine& m, Command&) { return m.SelectAgain(); }},
    {U":", [](Machine& m, Command&) { return m.OpenCommandLine(); }},
    {U"\x04", [](Machine& m, Command& c) { return m.Page(c, 1, false); }},   // Ctrl+D
    {U"\x15", [](Machine& m, Command& c) { return m.Page(c, -1, false); }},  // Ctrl+U
    {U"\x06", [](Machine& m, Command& c) { return m.Page(c, 1, true); }},    // Ctrl+F
    {U"\x02", [](Machine& m, Command& c) { return m.Page(c, -1, true); }},   // Ctrl+B
    {U"zt", [](Machine& m, Command&) { return m.WishCaretRow(CaretRow::Top); }},
    {U"zz", [](Machine& m, Command&) { return m.WishCaretRow(CaretRow::Middle); }},
    {U"zb", [](Machine& m, Command&) { return m.WishCaretRow(CaretRow::Bottom); }},
};

const ActRow Acts::kNormal[] = {
    // keys, what they do, changes the text, takes a character
    {U"i", [](Machine& m, Command& c) { return Insert(m, c, m.Caret()); }, true},
    {U"a", [](Machine& m, Command& c) { return Insert(m, c, BehindCaret(m)); }, true},
    {U"I", [](Machine& m, Command& c) { return Insert(m, c, AtText(m)); }, true},
    {U"A", [](Machine& m, Command& c) { return Insert(m, c, m.Text().EndOf(m.Caret().line)); },
     true},
    {U"o", [](Machine& m, Command& c) { return m.OpenLine(c, true); }, true},
    {U"O", [](Machine& m, Command& c) { return m.OpenLine(c, false); }, true},
    {U"r", [](Machine& m, Command& c) { return m.ReplaceCharacters(c); }, true, true},
    {U"~", [](Machine& m, Command& c) { return m.SwapCase(c.Times()); }, true},
    {U"J", [](Machine& m, Command& c) { return m.JoinCounted(c, false); }, true},
    {U"gJ", [](Machine& m, Command& c) { return m.JoinCounted(c, true); }, true},
    {U"p", [](Machine& m, Command& c) { return m.Put(c.Times(), false); }, true},
    {U"P", [](Machine& m, Command& c) { return m.Put(c.Times(), true); }, true},
    {U".", [](Machine& m, Command& c) { return m.Repeat(c.count); }},
    {U"u", [](Machine& m, Command& c) { return m.UndoSteps(c.Times(), false); }},
    {U"\x19", [](Machine& m, Command& c) { return m.UndoSteps(c.Times(), true); }},  // Ctrl+Y
};

const ActRow Acts::kVisual[] = {
    // keys, in Visual mode, changes the text, takes a character, with what is selected
    {U"o", [](Machine& m, Command&) { return m.SwapEnds(); }},
    {U"r", nullptr, true, true, ReplaceSelected},
    {U"J", nullptr, true, false, JoinSelected<false>},
    {U"gJ", nullptr, true, false, JoinSelected<true>},
    {U"p", nullptr, true, false, PutOver<false>, kErasesFirst},
    {U"P", nullptr, true, false, PutOver<true>, kErasesFirst},
};

std::span<const ActRow> ActsInEitherMode() {
    return Acts::kEither;
}
std::span<const ActRow> NormalActs() {
    return Acts::kNormal;
}
std::span<const ActRow> VisualActs() {
    return Acts::kVisual;
}

}  // namespace zo::ui::vi
