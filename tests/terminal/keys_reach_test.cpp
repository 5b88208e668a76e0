// Every key that the binder gives the bench and its editor can be had in a terminal: in one that
// names keys with their modifiers, and by the prefix in one that says nothing of Ctrl and Alt.

#include <doctest/doctest.h>

#include <optional>

#include "base/format.h"
#include "base/utf.h"
#include "content/content.h"
#include "parser.h"
#include "prefix.h"
#include "support/binder_rows.h"
#include "support/keys.h"

using zo::ui::Key;
using zo::ui::KeyPress;

namespace {

struct Sent {
    Key key;
    std::string_view alone;
    std::string_view shifted;  // with Shift, where a listed key needs it
};
constexpr Sent kSent[] = {
    {Key::Escape, "\x1b", ""},          {Key::Enter, "\r", ""},
    {Key::Tab, "\t", "\x1b[Z"},         {Key::Backspace, "\x7f", ""},
    {Key::Delete, "\x1b[3~", ""},       {Key::Home, "\x1b[1~", ""},
    {Key::End, "\x1b[4~", ""},          {Key::PageUp, "\x1b[5~", ""},
    {Key::PageDown, "\x1b[6~", ""},     {Key::Up, "\x1b[A", "\x1b[1;2A"},
    {Key::Down, "\x1b[B", "\x1b[1;2B"}, {Key::Right, "\x1b[C", ""},
    {Key::Left, "\x1b[D", ""},          {Key::F1, "\x1b[[A", "\x1b[25~"},
    {Key::F2, "\x1b[[B", "\x1b[26~"},   {Key::F3, "\x1b[[C", "\x1b[28~"},
    {Key::F4, "\x1b[[D", "\x1b[29~"},   {Key::F5, "\x1b[[E", "\x1b[31~"},
    {Key::F6, "\x1b[17~", "\x1b[32~"},  {Key::F7, "\x1b[18~", "\x1b[33~"},
    {Key::F8, "\x1b[19~", "\x1b[34~"},  {Key::F9, "\x1b[20~", ""},
    {Key::F10, "\x1b[21~", ""},
};

std::string ByPrefix(const KeyPress& press) {
    // Twice stands for Alt, once for Ctrl.
    std::string bytes = press.with.alt ? "\x0f\x0f" : press.with.control ? "\x0f" : "";
    if (press.key == Key::Character) {
        const bool upper = press.with.shift;
        base::AppendUtf8(bytes, upper ? press.character - U'a' + U'A' : press.character);
        return bytes;
    }
    const auto* const sent = std::ranges::find(kSent, press.key, &Sent::key);
    REQUIRE(sent != std::end(kSent));
    return bytes.append(press.with.shift ? sent->shifted : sent->alone);
}

// CSI code ; modifiers u, or the older sequences with modifiers of keys that have one.
std::string ByName(const KeyPress& press) {
    const int modifiers =
        1 + (press.with.shift ? 1 : 0) + (press.with.alt ? 2 : 0) + (press.with.control ? 4 : 0);
    if (press.key == Key::Character) {
        return base::Format("\x1b[%d;%du", static_cast<int>(press.character), modifiers);
    }
    constexpr std::pair<Key, std::string_view> kNames[] = {
        {Key::Escape, "27u"},  {Key::Enter, "13u"}, {Key::Tab, "9u"},  {Key::Backspace, "127u"},
        {Key::Delete, "3~"},   {Key::Home, "1H"},   {Key::End, "1F"},  {Key::PageUp, "5~"},
        {Key::PageDown, "6~"}, {Key::Up, "1A"},     {Key::Down, "1B"}, {Key::Right, "1C"},
        {Key::Left, "1D"},     {Key::F1, "1P"},     {Key::F2, "1Q"},   {Key::F3, "13~"},
        {Key::F4, "1S"},       {Key::F5, "15~"},    {Key::F6, "17~"},  {Key::F7, "18~"},
        {Key::F8, "19~"},      {Key::F9, "20~"},    {Key::F10, "21~"},
    };
    const auto* const name =
        std::ranges::find(kNames, press.key, &std::pair<Key, std::string_view>::first);
    REQUIRE(name != std::end(kNames));
    const std::string_view code = name->second;
    return base::Format("\x1b[%s;%d%c", std::string(code.substr(0, code.size() - 1)).c_str(),
                        modifiers, code.back());
}

std::optional<KeyPress> Arrives(std::string_view bytes) {
    zo::term::Parser parser;
    zo::term::Prefix prefix;
    std::vector<zo::term::Report> reports;
    parser.Read(bytes, reports);
    if (parser.WaitsAfterEscape()) parser.TimeOut(reports);
    for (const zo::term::Report& report : reports) {
        const auto* const press = std::get_if<KeyPress>(&report);
        if (!press) continue;
        if (const auto key = prefix.Apply(*press)) return key;
    }
    return std::nullopt;
}

}  // namespace

TEST_CASE("every key that the binder lists can be had in a terminal") {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    std::vector<std::string> names =
        support::NamesUnder(content, "the-lab", "Keys:", support::kKeyColumns);
    const std::vector<std::string> editor =
        support::NamesUnder(content, "vi-keys", "Keys without vi keys:", support::kKeyColumns);
    names.insert(names.end(), editor.begin(), editor.end());
    CHECK(names.size() > 40);
    for (const std::string& name : names) {
        CAPTURE(name);
        const KeyPress wanted = fake::KeyNamed(name);
        CHECK(Arrives(ByName(wanted)) == wanted);
        CHECK(Arrives(ByPrefix(wanted)) == wanted);
    }
}

TEST_CASE("the F keys can be had on a keyboard that has none") {
    constexpr std::string_view kRow = "1234567890-=";
    for (std::size_t at = 0; at < kRow.size(); ++at) {
        const std::string bytes = std::string("\x0f\x0f\x0f") + kRow[at];
        CHECK(Arrives(bytes) ==
              KeyPress{.key = static_cast<Key>(static_cast<std::size_t>(Key::F1) + at)});
    }
}
