#include "parser.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <random>

#include "base/format.h"
#include "prefix.h"
#include "support/rounds.h"

using namespace zo::term;
using zo::ui::KeyName;
using zo::ui::PointerAction;

namespace {

struct Told {
    std::string operator()(const zo::ui::KeyPress& key) const { return KeyName(key); }
    std::string operator()(const zo::ui::TextInput& input) const { return "'" + input.text + "'"; }
    std::string operator()(const MouseReport& mouse) const {
        constexpr const char* kActions[] = {"move", "press", "release", "wheel"};
        const zo::ui::KeyPress with = {.with = mouse.with};
        return base::Format("%s%s%d@%d,%d", KeyName(with).c_str(),
                            kActions[static_cast<int>(mouse.action)], mouse.button + mouse.wheel,
                            mouse.x, mouse.y);
    }
    std::string operator()(const Paste& paste) const { return "paste(" + paste.text + ")"; }
    std::string operator()(const FocusReport& focus) const { return focus.active ? "in" : "out"; }
    std::string operator()(const CursorReport& cursor) const {
        return base::Format("at %d,%d", cursor.x, cursor.y);
    }
    std::string operator()(const ModeReport& mode) const {
        return base::Format("mode %d %s", mode.mode, mode.known ? "known" : "unknown");
    }
    std::string operator()(const StatusReport&) const { return "shown"; }
};

std::string Text(const std::vector<Report>& reports) {
    std::string text;
    for (const Report& report : reports) {
        if (!text.empty()) text += " ";
        text += std::visit(Told{}, report);
    }
    return text;
}

// What the bytes say, with ^ for Esc; read whole or byte by byte, and at last nothing comes.
std::string Parsed(std::string bytes, bool one_by_one = false) {
    std::ranges::replace(bytes, '^', '\x1b');
    Parser parser;
    std::vector<Report> reports;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t count = one_by_one ? 1 : bytes.size();
        parser.Read(std::string_view(bytes).substr(at, count), reports);
        at += count;
    }
    parser.TimeOut(reports);
    return Text(reports);
}

}  // namespace

TEST_CASE("what a terminal sends is read") {
    const struct {
        std::string sent;
        std::string_view told;
    } cases[] = {
        // Text and the plain codes.
        {"aZ$", "A 'a' Shift+Z 'Z' $ '$'"},
        {"é漢", "é 'é' 漢 '漢'"},
        {"\r\t\x7f", "Enter Tab Backspace"},
        {"\b", "Ctrl+Backspace"},
        {"\x03\x13\x1a", "Ctrl+C Ctrl+S Ctrl+Z"},
        {std::string("\0\x1f\x1d", 3), "Ctrl+Space Ctrl+/ Ctrl+]"},
        {"^", "Esc"},
        {"^^", "Esc Esc"},
        {"^b^\r", "Alt+B Alt+Enter"},
        {"^B", "Alt+Shift+B"},
        // Keys with names, in the ways of several terminals.
        {"^[A^[B^[C^[D^[H^[F", "Up Down Right Left Home End"},
        {"^OA^OP^OS", "Up F1 F4"},
        {"^[[A^[[E", "F1 F5"},
        {"^[1;5C^[1;6A^[1;3D", "Ctrl+Right Ctrl+Shift+Up Alt+Left"},
        {"^^[A", "Alt+Up"},
        {"^[Z^[1;6Z", "Shift+Tab Ctrl+Shift+Tab"},
        {"^[1;2P^[1;3S^[1;2R", "Shift+F1 Alt+F4 Shift+F3"},
        {"^[a", "Shift+Up"},
        // The extended codes of both kinds.
        {"^[49;5u", "Ctrl+1"},
        {"^[13;5u^[9;5u^[9;6u^[27u", "Ctrl+Enter Ctrl+Tab Ctrl+Shift+Tab Esc"},
        {"^[122;6u^[90;6u", "Ctrl+Shift+Z Ctrl+Shift+Z"},
        {"^[97u^[57400u^[57414u", "A 'a' 1 '1' Enter"},
        {"^[97:65;2:1u", "Shift+A 'A'"},
        {"^[97;9u^[57441u", ""},  // with the desktop's key; a modifier alone
        // The mouse.
        {"^[<0;5;3M^[<0;5;3m", "press1@4,2 release1@4,2"},
        {"^[<2;1;1M^[<35;9;9M^[<32;9;9M", "press3@0,0 move0@8,8 move0@8,8"},
        {"^[<64;2;2M^[<65;2;2M^[<80;2;2M", "wheel1@1,1 wheel-1@1,1 Ctrl+wheel1@1,1"},
        {"^[<66;2;2M", "Shift+wheel1@1,1"},
        {"^[<128;2;2M", ""},
        {"^[M !!^[M#!!", "press1@0,0 release1@0,0"},
        // Pastes.
        {"^[200~one\r\ntwo\rthree\nfour^[201~x", "paste(one\ntwo\nthree\nfour) X 'x'"},
        {"^[200~^[20^^[201~", "paste(\x1b[20\x1b)"},
        // News and answers.
        {"^[I^[O", "in out"},
        {"^[2;5R", "at 4,1"},
        {"^[?2026;2$y^[?2026;0$y", "mode 2026 known mode 2026 unknown"},
        {"^[0n", "shown"},
        {"^[?62;c^[?1u^[>1;2c", ""},
        {"^]11;rgb:0/0/0\ax^P1$r^\\y", "X 'x' Y 'y'"},
        {"^^[0n^^[<0;1;1M^^[I", "Esc shown Esc press1@0,0 Esc in"},
        {"^^[200~x^[201~^^[?62;c", "Esc paste(x) Esc"},
        // What is broken is left out, and what follows it is read.
        {"\xff\xc3(x", "( '(' X 'x'"},
        {"^[1;2\x18x", "X 'x'"},
        {"^[1;^[A", "Up"},
        {"^[999999999999;999999999999u^[99;99;99~x", "X 'x'"},
        {"^[1;2;3;4;5;6;7;8;9;10;11Ax", "Shift+Up X 'x'"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.sent);
        CHECK(Parsed(c.sent) == c.told);
        CHECK(Parsed(c.sent, true) == c.told);
    }
}

TEST_CASE("numbered keys") {
    constexpr std::pair<int, std::string_view> kNumbered[] = {
        {1, "Home"}, {2, "Ins"}, {3, "Del"}, {4, "End"}, {5, "PgUp"}, {6, "PgDn"},
        {11, "F1"},  {15, "F5"}, {17, "F6"}, {20, "F9"}, {21, "F10"}, {24, "F12"}};
    for (const auto& [number, name] : kNumbered) {
        CHECK(Parsed(base::Format("\x1b[%d~", number)) == name);
        CHECK(Parsed(base::Format("\x1b[%d;5~", number)) == "Ctrl+" + std::string(name));
    }
}

TEST_CASE("an Esc waits for what may follow it") {
    Parser parser;
    std::vector<Report> reports;
    parser.Read("\x1b", reports);
    CHECK(reports.empty());
    CHECK(parser.WaitsAfterEscape());
    parser.Read("[", reports);
    CHECK_FALSE(parser.WaitsAfterEscape());  // no key does that alone
    parser.Read("A\x1b]", reports);
    CHECK(Text(reports) == "Up");
    CHECK(parser.WaitsAfterEscape());
    parser.TimeOut(reports);
    CHECK(Text(reports) == "Up Alt+]");
}

TEST_CASE("the other erase key comes with Ctrl") {
    Parser parser;
    parser.SetBackspace(0x08);
    std::vector<Report> reports;
    parser.Read("\x08\x7f", reports);
    CHECK(Text(reports) == "Backspace Ctrl+Backspace");
}

TEST_CASE("a paste of any size comes whole") {
    std::string text;
    for (int k = 0; k < 100000; ++k) text += base::Format("tx $%02X\n", k & 0xFF);
    CHECK(Parsed("^[200~" + text + "^[201~") == "paste(" + text + ")");
    const std::string endless(Parser::kLongestPaste + 1000, 'x');
    CHECK(Parsed("^[200~" + endless + "^[201~").size() == Parser::kLongestPaste + 7);
}

// Bytes at random, pieces of sequences among them.
TEST_CASE("no input harms the parser, and keys go on to be read") {
    constexpr std::string_view kPieces[] = {"\x1b", "[", "\x1b[",  "\x1b[<", "\x1bO", "\x1b]",
                                            ";",    ":", "200~",   "201~",   "M",     "u",
                                            "~",    "?", "999999", "\x1bP",  "\xe2",  "\x94\x80",
                                            "27;",  "$", "R",      "n",      "\x18",  "-1"};
    const int rounds = support::Rounds(300);
    for (int round = 0; round < rounds; ++round) {
        CAPTURE(round);
        std::mt19937 random(static_cast<unsigned>(round));
        Parser parser;
        std::vector<Report> reports;
        for (int k = 0; k < 400; ++k) {
            if (random() % 3 == 0) {
                const char byte = static_cast<char>(random());
                parser.Read({&byte, 1}, reports);
            } else {
                parser.Read(kPieces[random() % std::size(kPieces)], reports);
            }
            if (random() % 20 == 0) parser.TimeOut(reports);
        }
        for (const Report& report : reports) {
            if (const auto* mouse = std::get_if<MouseReport>(&report)) CHECK(mouse->x >= -33);
            if (const auto* input = std::get_if<zo::ui::TextInput>(&report)) {
                CHECK_FALSE(input->text.empty());
            }
        }
        reports.clear();
        parser.Read("\x1b[201~\x18\x18\a", reports);
        parser.TimeOut(reports);
        reports.clear();
        parser.Read("\x1b[A", reports);
        CHECK(Text(reports) == "Up");
    }
}

TEST_CASE("the prefix gives a key what the keyboard cannot") {
    const struct {
        std::string_view typed;
        std::string_view meant;
    } cases[] = {
        {"1", "1"},
        {"\x0f"
         "1",
         "Ctrl+1"},
        {"\x0f\r", "Ctrl+Enter"},
        {"\x0f\t\x0f\x1b[Z", "Ctrl+Tab Ctrl+Shift+Tab"},
        {"\x0fK", "Ctrl+Shift+K"},
        {"\x0f\x0f\x1b[D", "Alt+Left"},
        {"\x0f\x0f\x0f"
         "1\x0f\x0f\x0f"
         "0\x0f\x0f\x0f=",
         "F1 F10 F12"},
        {"\x0f\x0f\x0f\x1b[17;2~", ""},
        {"\x0f\x0f\x0f\x0f"
         "1",
         "1"},
        {"\x0f\x1b[27u1", "1"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.typed);
        Parser parser;
        std::vector<Report> reports;
        parser.Read(c.typed, reports);
        Prefix prefix;
        std::string meant;
        for (const Report& report : reports) {
            const auto* press = std::get_if<zo::ui::KeyPress>(&report);
            const auto key = press ? prefix.Apply(*press) : std::nullopt;
            if (key) meant += (meant.empty() ? "" : " ") + KeyName(*key);
        }
        CHECK(meant == c.meant);
    }
}
