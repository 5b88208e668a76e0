#include "content/share_card.h"

#include <charconv>

#include "base/format.h"
#include "base/utf.h"

namespace kp {
namespace {

constexpr std::string_view kHead = "Vantor Kest share card";
constexpr std::size_t kMostBytes = 1 << 16;  // of a text that may be one
constexpr char kRow = '|';
constexpr std::string_view kBar = "|-";  // a bar of the firmware's own
constexpr std::string_view kEnd = "|=";

struct Replacement {
    char32_t found;
    std::string_view becomes;
};
// What programs make of blanks and quotation marks.
constexpr Replacement kReplacements[] = {
    {0x00A0, " "},  {0x2007, " "},  {0x202F, " "}, {0x3000, " "},  {0x200B, ""},  {0x200C, ""},
    {0x200D, ""},   {0x2060, ""},   {0xFEFF, ""},  {0x2028, "\n"}, {0x2018, "'"}, {0x2019, "'"},
    {0x201C, "\""}, {0x201D, "\""}, {U'\t', " "},  {U'\r', "\n"},  {U'\v', "\n"}, {U'\f', "\n"},
};

// Plain blanks, plain quotation marks, line feeds alone.
std::string Plain(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t from = at;
        const char32_t c = base::NextCodePoint(text, at);
        const Replacement* replaced = nullptr;
        for (const Replacement& row : kReplacements) {
            if (row.found == c) replaced = &row;
        }
        plain += replaced ? replaced->becomes : text.substr(from, at - from);
    }
    return plain;
}

// Every run of blanks and line ends as one blank.
std::string Flat(std::string_view text) {
    std::string flat;
    for (const char c : text) {
        const bool blank = c == ' ' || c == '\n';
        if (!blank) {
            flat += c;
        } else if (!flat.empty() && flat.back() != ' ') {
            flat += ' ';
        }
    }
    return flat;
}

// Marks of a quotation go too, which stand behind a row whose line end was lost.
void TrimEnd(std::string& text) {
    text.erase(text.find_last_not_of(" >") + 1);
}

std::uint32_t Crc32(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char c : bytes) {
        crc ^= static_cast<std::uint8_t>(c);
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

// Where a card begins, with any blanks between the words of its head.
std::size_t FindHead(std::string_view rows) {
    constexpr std::string_view kFirst = kHead.substr(0, kHead.find(' '));
    constexpr std::size_t kMostBlanks = 64;
    std::size_t at = rows.find(kFirst);
    while (at != rows.npos &&
           !Flat(rows.substr(at, kHead.size() + kMostBlanks)).starts_with(kHead)) {
        at = rows.find(kFirst, at + 1);
    }
    return at;
}

// What stands behind a word up to the next blank; empty without the word.
std::string_view WordAfter(std::string_view flat, std::string_view word) {
    const std::size_t found = flat.find(word);
    if (found == flat.npos) return {};
    const std::size_t from =
        std::min(flat.find_first_not_of(' ', found + word.size()), flat.size());
    return flat.substr(from, std::min(flat.find(' ', from), flat.size()) - from);
}

std::optional<std::uint32_t> NumberAfter(std::string_view flat, std::string_view word, int radix) {
    const std::string_view text = WordAfter(flat, word);
    std::uint32_t number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, radix);
    const bool is_number = error == std::errc() && end == text.data() + text.size();
    return is_number ? std::optional(number) : std::nullopt;
}

// Without what a mail puts before a row that it quotes.
std::string Unquoted(std::string_view text) {
    std::string rows;
    bool at_start = true;
    for (const char c : text) {
        if (!at_start || (c != '>' && c != ' ')) rows += c;
        at_start = c == '\n' || (at_start && (c == '>' || c == ' '));
    }
    return rows;
}

// The rows of the firmware: each begins at a bar; line ends are no more than blanks.
std::string ReadRows(std::string_view text) {
    std::string firmware;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.substr(at).starts_with(kBar)) {
            firmware += kRow;
            ++at;
        } else if (text[at] == kRow) {
            TrimEnd(firmware);
            if (at > 0) firmware += '\n';
            if (text.substr(at + 1).starts_with(' ')) ++at;
        } else {
            firmware += text[at] == '\n' ? ' ' : text[at];
        }
    }
    TrimEnd(firmware);
    return firmware + "\n";
}

}  // namespace

std::uint32_t FirmwareCheck(std::string_view firmware) {
    std::string rows;
    std::string row;
    const auto end_row = [&] {
        row = Flat(row);
        TrimEnd(row);
        if (!row.empty()) rows += row + '\n';
        row.clear();
    };
    for (const char c : Plain(firmware)) {
        if (c == '\n') {
            end_row();
        } else {
            row += c;
        }
    }
    end_row();
    return Crc32(rows);
}

std::string WriteShareCard(const Ticket& ticket, int lines, std::uint32_t ticks,
                           std::string_view firmware) {
    std::string text = std::string(kHead) + "\n";
    text += "Ticket: " + ticket.id + ", " + ticket.title + "\n";
    text +=
        base::Format("Lines: %d\nTicks: %u\nCheck: %08X\n", lines, ticks, FirmwareCheck(firmware));
    const std::string plain = Plain(firmware);
    for (std::size_t from = 0; from < plain.size();) {
        const std::size_t end = std::min(plain.find('\n', from), plain.size());
        std::string row = "| ";
        for (const char c : plain.substr(from, end - from)) {
            if (c == kRow) {
                row += kBar;
            } else {
                row += c;
            }
        }
        TrimEnd(row);
        text += row + "\n";
        from = end + 1;
    }
    return text + std::string(kEnd) + " end of card\n";
}

std::optional<ShareCard> ReadShareCard(std::string_view text) {
    if (text.size() < kHead.size() || text.size() > kMostBytes) return std::nullopt;
    std::string rows = Unquoted(Plain(text));
    const std::size_t head = FindHead(rows);
    if (head == rows.npos) return std::nullopt;
    rows.erase(0, head);
    const std::string flat = Flat(rows);
    const std::string_view claims = std::string_view(flat).substr(kHead.size());
    std::string_view ticket = WordAfter(claims, "Ticket: ");
    if (ticket.ends_with(',')) ticket.remove_suffix(1);
    const auto lines = NumberAfter(claims, "Lines: ", 10);
    const auto ticks = NumberAfter(claims, "Ticks: ", 10);
    const auto check = NumberAfter(claims, "Check: ", 16);
    const std::size_t first = rows.find(kRow, rows.find("Check:"));
    const std::size_t end = rows.find(kEnd, first);
    const bool complete = !ticket.empty() && lines && ticks && check;
    if (!complete || end == rows.npos) return std::nullopt;
    return ShareCard{.ticket = std::string(ticket),
                     .lines = static_cast<int>(*lines),
                     .ticks = *ticks,
                     .check = *check,
                     .firmware = ReadRows(std::string_view(rows).substr(first, end - first))};
}

CardProof ProveCard(const ShareCard& card, const LoadedTicket& loaded, Session& session) {
    if (FirmwareCheck(card.firmware) != card.check) {
        return {false, "Its check does not match: something was changed on its way."};
    }
    const VerifyResult result = Verify(loaded.ticket, loaded.reference,
                                       Assemble(card.firmware, loaded.ticket.machine), session);
    if (!result.AllPassed()) return {false, "Its firmware does not pass. " + result.message};
    if (result.lines != card.lines || result.ticks != card.ticks) {
        return {false,
                base::Format("It claims %d lines and %u ticks, and takes %d lines and %u ticks.",
                             card.lines, card.ticks, result.lines, result.ticks)};
    }
    return {true, base::Format("Verified: %d lines, %u ticks.", result.lines, result.ticks)};
}

}  // namespace kp
