#include "content/share_card.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "base/format.h"
#include "support/rounds.h"

namespace {

const kp::Content& BuiltIn() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

std::string CardOf(const kp::LoadedTicket& loaded, std::string_view firmware) {
    return kp::WriteShareCard(loaded.ticket, loaded.reference.lines, loaded.reference.ticks,
                              firmware);
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// Breaks a line at the first blank behind so many characters.
std::string Wrapped(const std::string& text, std::size_t columns) {
    std::string wrapped;
    std::size_t column = 0;
    for (const char c : text) {
        const bool breaks = c == ' ' && column >= columns;
        wrapped += breaks ? '\n' : c;
        column = breaks || c == '\n' ? 0 : column + 1;
    }
    return wrapped;
}

struct Damage {
    std::string name;
    std::function<std::string(const std::string&)> act;
};
const Damage kDamages[] = {
    {"none", [](const std::string& text) { return text; }},
    {"line ends of another system",
     [](const std::string& text) { return Replaced(text, "\n", "\r\n"); }},
    {"old line ends", [](const std::string& text) { return Replaced(text, "\n", "\r"); }},
    {"line ends lost", [](const std::string& text) { return Replaced(text, "\n", " "); }},
    {"twice the line ends", [](const std::string& text) { return Replaced(text, "\n", "\n\n"); }},
    {"blanks that do not break",
     [](const std::string& text) { return Replaced(text, " ", "\u00A0"); }},
    {"runs of blanks as one",
     [](std::string text) {
         while (text.find("  ") != text.npos) text = Replaced(text, "  ", " ");
         return text;
     }},
    {"tabs", [](const std::string& text) { return Replaced(text, "  ", "\t"); }},
    {"blanks behind the rows",
     [](const std::string& text) { return Replaced(text, "\n", "  \n"); }},
    {"blanks before the rows",
     [](const std::string& text) { return "    " + Replaced(text, "\n", "\n    "); }},
    {"signs without width", [](const std::string& text) { return Replaced(text, " ", " \u200B"); }},
    {"quoted", [](const std::string& text) { return "> " + Replaced(text, "\n", "\n> "); }},
    {"quoted twice", [](const std::string& text) { return ">> " + Replaced(text, "\n", "\n>> "); }},
    {"wrapped", [](const std::string& text) { return Wrapped(text, 24); }},
    {"inside other text",
     [](const std::string& text) {
         return "Vantor, look |= what\nCheck: | it\n```\n" + text + "```\n-- \nme | you\n";
     }},
    {"quotation marks of a book",
     [](const std::string& text) { return Replaced(text, "'", "\u2019"); }},
};

}  // namespace

TEST_CASE("a card of every ticket comes back from every kind of damage to its blanks") {
    kp::Session session;
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        CAPTURE(loaded->ticket.id);
        const std::string text = CardOf(*loaded, loaded->reference_text);
        for (const Damage& first : kDamages) {
            for (const Damage& second : kDamages) {
                CAPTURE(first.name);
                CAPTURE(second.name);
                const auto card = kp::ReadShareCard(second.act(first.act(text)));
                REQUIRE(card);
                CHECK(card->ticket == loaded->ticket.id);
                const kp::CardProof proof = kp::ProveCard(*card, *loaded, session);
                CHECK_MESSAGE(proof.holds, proof.sentence);
            }
        }
    }
}

TEST_CASE("an undamaged card gives the firmware as it was, bars and empty rows too") {
    const kp::LoadedTicket& loaded = *BuiltIn().FindTicket("1-01-carrier-check");
    const std::string firmware =
        "; a | bar, || two\n\nloop:  tx '|'\n   tx '-' ; |-\n|\njmp loop\n";
    const auto card = kp::ReadShareCard(CardOf(loaded, firmware));
    REQUIRE(card);
    CHECK(card->firmware == firmware);
    CHECK(card->check == kp::FirmwareCheck(firmware));
}

TEST_CASE("a text that is no card, or lost a part, is none") {
    const kp::LoadedTicket& loaded = *BuiltIn().FindTicket("1-01-carrier-check");
    const std::string whole = CardOf(loaded, loaded.reference_text);
    REQUIRE(kp::ReadShareCard(whole));
    for (const char* part :
         {"Vantor Kest share card", "Ticket:", "Lines:", "Ticks:", "Check:", "|= end"}) {
        CAPTURE(std::string(part));
        CHECK_FALSE(kp::ReadShareCard(Replaced(whole, part, "")));
    }
    CHECK_FALSE(kp::ReadShareCard(""));
    CHECK_FALSE(kp::ReadShareCard(loaded.reference_text));
}

TEST_CASE("a false claim is told apart from damage, and from firmware that does not pass") {
    const kp::LoadedTicket& loaded = *BuiltIn().FindTicket("2-04-checksum");
    kp::Session session;
    const auto sentence = [&](const std::string& text) {
        const auto card = kp::ReadShareCard(text);
        REQUIRE(card);
        const kp::CardProof proof = kp::ProveCard(*card, loaded, session);
        return (proof.holds ? "holds: " : "") + proof.sentence;
    };
    const std::string whole = CardOf(loaded, loaded.reference_text);
    const kp::Reference& par = loaded.reference;
    CHECK(sentence(whole) ==
          base::Format("holds: Verified: %d lines, %u ticks.", par.lines, par.ticks));
    CHECK(sentence(Replaced(whole, base::Format("Lines: %d", par.lines), "Lines: 3")) ==
          base::Format("It claims 3 lines and %u ticks, and takes %d lines and %u ticks.",
                       par.ticks, par.lines, par.ticks));
    CHECK(sentence(Replaced(whole, "tx", "rx")) ==
          "Its check does not match: something was changed on its way.");
    const std::string wrong = sentence(CardOf(loaded, "tx 1\nhalt\n"));
    CHECK(wrong.starts_with("Its firmware does not pass. Test 1 of "));
    CHECK(sentence(CardOf(loaded, "hlat\n")) ==
          "Its firmware does not pass. Line 1: Unknown instruction \"hlat\".");
}

TEST_CASE("no text can harm the reader") {
    const kp::LoadedTicket& loaded = *BuiltIn().FindTicket("2-04-checksum");
    const std::string whole = CardOf(loaded, loaded.reference_text);
    std::mt19937 random(7);
    for (int round = support::Rounds(1000); round > 0; --round) {
        std::string text = whole;
        for (int k = 0; k < 6; ++k) {
            const std::size_t at = random() % text.size();
            if (random() % 2 == 0) {
                text[at] = static_cast<char>(random());
            } else {
                text.erase(at, random() % 40);
            }
            if (text.empty()) break;
        }
        const auto card = kp::ReadShareCard(text);
        CHECK((!card || card->firmware.size() <= text.size() + 1));
    }
}
