#include "shell/speech.h"

#include <algorithm>

#include "base/utf.h"

namespace Kest {
namespace {

using zo::ui::Cell;
using zo::ui::Frame;
using zo::ui::Rect;
using zo::ui::Role;

bool IsIn(Role role, std::initializer_list<Role> roles) {
    return std::ranges::find(roles, role) != roles.end();
}

bool IsChosen(Role role) {
    return IsIn(role, {Role::Sel, Role::SelHot});
}

bool IsOfDialog(Role role) {
    return IsIn(role, {Role::Dialog, Role::DialogDim, Role::DialogHot});
}

// What stands around a pane's text.
bool IsAround(Role role) {
    return IsIn(role, {Role::ScrollTrack, Role::ScrollThumb, Role::Frame, Role::FrameActive,
                       Role::Title, Role::TitleActive, Role::Tab, Role::TabOn});
}

struct Word {
    std::u32string_view mark;
    std::u32string_view word;
};
// The longer ones first.
constexpr Word kWords[] = {
    {U"[√]", U"on"},      {U"[ ]", U"off"},      {U"[·]", U"unavailable"},
    {U"(•)", U"chosen:"}, {U"( )", U""},         {U"√", U"closed"},
    {U"■", U"locked"},    {U"•", U"breakpoint"}, {U"►", U""},
    {U"◄", U""},          {U"[", U""},           {U"]", U""},
};

bool IsPicture(char32_t glyph) {
    return glyph >= 0x2500 && glyph <= 0x259F;
}

// The marks of a rating as numbers: so many of so many.
std::u32string Rating(std::u32string_view& rest) {
    std::size_t marks = 0, all = 0;
    while (all < rest.size() && (rest[all] == U'♦' || rest[all] == U'·')) {
        marks += rest[all++] == U'♦' ? 1 : 0;
    }
    rest.remove_prefix(all);
    return base::ToUtf32("rated " + std::to_string(marks));
}

// The role's cells of a row as one text; what stands between them as a blank.
std::string TextOf(const Frame& frame, int y, bool (*is)(Role role)) {
    std::u32string text;
    for (int x = 0; x < frame.grid.columns; ++x) {
        const Cell& cell = frame.At(x, y);
        text += is(cell.role) ? cell.glyph : U' ';
    }
    return InWords(text);
}

int CountOf(const Frame& frame, const Rect& area, bool (*is)(Role role)) {
    int count = 0;
    for (int y = area.y; y < area.Bottom(); ++y) {
        for (int x = area.x; x < area.Right(); ++x) count += is(frame.At(x, y).role) ? 1 : 0;
    }
    return count;
}

std::vector<std::string> RowsOf(const Frame& frame, const Rect& pane) {
    std::vector<std::string> rows;
    for (int y = pane.y; y < pane.Bottom(); ++y) {
        std::u32string text;
        for (int x = pane.x; x < pane.Right(); ++x) {
            const Cell& cell = frame.At(x, y);
            text += IsAround(cell.role) ? U' ' : cell.glyph;
        }
        std::string row = InWords(text);
        if (!row.empty()) rows.push_back(std::move(row));
    }
    return rows;
}

// The first row that has any of these cells.
std::string FirstOf(const Frame& frame, bool (*is)(Role role)) {
    for (int y = 0; y < frame.grid.rows; ++y) {
        std::string text = TextOf(frame, y, is);
        if (!text.empty()) return text;
    }
    return {};
}

bool IsCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

}  // namespace

std::string TitleInWords(std::string_view title) {
    std::string words(title);
    for (std::size_t at = 0; at < words.size();) {
        const std::size_t from = at;
        while (at < words.size() && IsCapital(words[at])) ++at;
        for (std::size_t k = from + 1; k < at; ++k) {
            words[k] = static_cast<char>(words[k] - 'A' + 'a');
        }
        at = std::max(at, from + 1);
    }
    return words;
}

std::string InWords(std::u32string_view cells) {
    std::u32string text;
    for (std::u32string_view rest = cells; !rest.empty();) {
        const auto* const mark = std::ranges::find_if(
            kWords, [&](const Word& word) { return rest.starts_with(word.mark); });
        if (rest.starts_with(U'♦') || rest.starts_with(U"··")) {
            text += U" " + Rating(rest);
        } else if (mark != std::end(kWords)) {
            text += U' ';
            text += mark->word;
            text += U' ';
            rest.remove_prefix(mark->mark.size());
        } else {
            text += IsPicture(rest.front()) ? U' ' : rest.front();
            rest.remove_prefix(1);
        }
    }
    std::u32string plain;
    for (const char32_t c : text) {
        if (c != U' ' || (!plain.empty() && plain.back() != U' ')) plain += c;
    }
    if (!plain.empty() && plain.back() == U' ') plain.pop_back();
    return base::ToUtf8(plain);
}

Speech ReadSpeech(const Frame& frame, std::optional<Rect> pane) {
    Speech speech;
    const Rect all = {0, 0, frame.grid.columns, frame.grid.rows};
    const Rect inside = pane ? Intersect(*pane, all) : all;
    speech.focus = FirstOf(frame, [](Role role) { return role == Role::DialogTitle; });
    if (speech.focus.empty()) {
        speech.focus = FirstOf(frame, [](Role role) { return role == Role::TitleActive; });
    }
    speech.line = FirstOf(frame, [](Role role) { return role == Role::ButtonFocus; });
    if (speech.line.empty()) speech.line = FirstOf(frame, IsChosen);
    // A bar across a list is read alone; a link is one word of the text.
    bool is_list = false;
    for (int y = inside.y; y < inside.Bottom(); ++y) {
        const Rect row = {inside.x, y, inside.width, 1};
        const int chosen = CountOf(frame, row, IsChosen);
        is_list = is_list || chosen > (pane ? inside.width / 2 : 0);
    }
    if (is_list) return speech;
    if (pane) {
        speech.rows = RowsOf(frame, inside);
        return speech;
    }
    for (int y = 0; y < frame.grid.rows; ++y) {
        std::string row = TextOf(frame, y, IsOfDialog);
        if (!row.empty()) speech.rows.push_back(std::move(row));
    }
    return speech;
}

void LetGoOfFocus(Frame& frame) {
    for (Cell& cell : frame.cells) {
        const bool had_focus =
            IsChosen(cell.role) || IsOfDialog(cell.role) ||
            IsIn(cell.role, {Role::TitleActive, Role::DialogTitle, Role::ButtonFocus});
        if (had_focus) cell.role = Role::SelOff;
    }
}

}  // namespace Kest
