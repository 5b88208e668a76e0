#include <algorithm>
#include <span>

#include "rig.h"
#include "support/random_firmware.h"

namespace {

// What a card may say to a far end: frames, blocks, answers, commands, and noise.
constexpr std::string_view kPhrases[] = {
    "C1 00 C1",
    "C1 00 C0",
    "C1 01 41 03",
    "C1",
    "01 01 FE 41 41",
    "01 01 FE 41 42",
    "01 02 FD 42 42",
    "01",
    "04",
    "05",
    "06",
    "06 06",
    "15",
    "15 15",
    "18",
    "05 01",
    "FF 00 7F",
    "41 42 43",
    "C1 02 C1 00 84",
};

// Values that settings may take, valid ones more often than not.
constexpr std::string_view kNumbers[] = {"0",  "1",   "2",  "3",   "7",     "20",
                                         "60", "150", "-1", "1e9", "\"2\"", "null"};
constexpr std::string_view kHexes[] = {"\"06\"", "\"15\"", "\"06 15\"", "\"7F 06\"",
                                       "\"\"",   "\"04\"", "6",         "\"0g\""};
constexpr std::string_view kFlags[] = {"true", "false", "1"};
constexpr std::string_view kPairs[] = {"[0, 30]", "[19, 29]", "[40, 20]", "[5, 0]",
                                       "[9, 99]", "[19, 29]", "[3]"};
constexpr std::string_view kLists[] = {"[]", "[8, 16]", "[0]", "[1, 1, 1]", "[-3, 1e9]", "8"};
constexpr std::string_view kAnswers[] = {"{}", R"({"05": "06"})", R"({"05": "06", "04": ""})",
                                         R"({"C1": "15", "55": "55"})", R"({"05": 6})"};
constexpr std::string_view kAckerWords[] = {"ack",  "ok",   "ack_late", "nak",    "garble",
                                            "busy", "drop", "lost_ack", "ignore", ""};
constexpr std::string_view kSenderWords[] = {
    "ok", "drop", "garble", "garble:1", "lose_reply", "lost_ack", "nak?", "garble+nak?", ""};
constexpr std::string_view kReceiverWords[] = {"ok",         "nak",    "drop", "lost_ack",
                                               "lose_reply", "cancel", ""};
constexpr std::string_view kXmodemWords[] = {"ok",   "garble:2", "garble", "cut:2",
                                             "drop", "lost_ack", "skip",   ""};

using Pool = std::span<const std::string_view>;

struct Key {
    std::string_view name;
    Pool values;
};

constexpr Key kKeys[] = {
    {"ack", kHexes},
    {"nak", kHexes},
    {"busy", kHexes},
    {"can", kHexes},
    {"ready", kHexes},
    {"xoff", kHexes},
    {"xon", kHexes},
    {"final", kHexes},
    {"delay", kNumbers},
    {"gap", kNumbers},
    {"pause", kNumbers},
    {"start", kNumbers},
    {"burst", kNumbers},
    {"block", kNumbers},
    {"deaf", kNumbers},
    {"frames", kNumbers},
    {"timeout", kNumbers},
    {"reply_within", kNumbers},
    {"byte_within", kNumbers},
    {"nak_retry_within", kNumbers},
    {"backoff_slack", kNumbers},
    {"backoff", kLists},
    {"retry_after", kPairs},
    {"answers", kAnswers},
    {"ack_seq", kFlags},
    {"eot_nak", kFlags},
    {"answer_after_frame", kFlags},
};

Pool WordsOf(kp::PeerType type) {
    switch (type) {
        case kp::PeerType::Sender:
            return kSenderWords;
        case kp::PeerType::XmodemRx:
            return kReceiverWords;
        case kp::PeerType::XmodemTx:
            return kXmodemWords;
        default:
            return kAckerWords;
    }
}

class Chance {
public:
    explicit Chance(std::uint64_t seed) : generator_(seed) {}

    int Draw(int low, int high) { return static_cast<int>(generator_.Draw(low, high)); }
    bool OneIn(int n) { return Draw(1, n) == 1; }
    std::string Pick(Pool pool) {
        return std::string(
            pool[static_cast<std::size_t>(Draw(0, static_cast<int>(pool.size()) - 1))]);
    }

private:
    kp::Generator generator_;
};

std::string RandomSettings(Chance& chance, kp::PeerType type) {
    std::string block = "{\"type\": \"" + std::string(kp::PeerTypeName(type)) + "\"";
    for (const Key& key : kKeys) {
        if (!chance.OneIn(6)) continue;
        block += ", \"" + std::string(key.name) + "\": " + chance.Pick(key.values);
    }
    if (!chance.OneIn(4)) {
        block += ", \"plan\": [";
        for (int words = chance.Draw(1, 8); words > 0; --words) {
            block += "\"" + chance.Pick(WordsOf(type)) + (words > 1 ? "\", " : "\"");
        }
        block += chance.OneIn(40) ? ", \"hum\"]" : "]";
    }
    return block + "}";
}

std::string RandomTicket(Chance& chance, kp::PeerType type) {
    constexpr std::string_view kFormats[] = {R"("frame": {"sync": "C1", "check": "sum8"}, )",
                                             R"("frame": {"sync": "C1", "flags": true}, )",
                                             R"("frame": {"length": false, "fixed_length": 2}, )",
                                             ""};
    return R"({"id": "random", "max_ticks": 900, "settle": 40,
               "machine": {"rom": 256, "timer": true, "rx_buffer": 64}, )" +
           chance.Pick(kFormats) + "\"peer\": " + RandomSettings(chance, type) +
           R"(, "tests": [{"host": ["", "A"], "frames": ["A", {"random": {"len": [0, 9]}}, "BC"],
               "rx": [{"random": {"len": [0, 9]}, "at": 9, "gap": 4, "reply_within": 50}],
               "replies": [{"after": {"hex": "05"}, "send": "AB"}, {"after": "A", "delay": 70},
                           {"after": {"hex": "06"}, "send": "", "label": "end"}],
               "peer": )" +
           (chance.OneIn(2) ? RandomSettings(chance, type) : "null") + "}]}";
}

// A card that says phrases, waits, reads, and in the end starts again, listens, or halts.
std::string RandomTalk(Chance& chance) {
    constexpr std::string_view kEnds[] = {"halt", "rest: rx a\n jmp rest", "jmp start",
                                          "jmp start"};
    std::string firmware = "start:\n";
    for (int acts = chance.Draw(0, 14); acts > 0; --acts) {
        const int act = chance.Draw(0, 5);
        if (act == 0) {
            firmware += "wait " +
                        std::to_string(chance.OneIn(3) ? chance.Draw(1, 150) : chance.Draw(1, 12)) +
                        "\n";
        } else if (act <= 2) {
            firmware += "rx a\n";
        } else {
            const std::string phrase = chance.Pick(kPhrases);
            for (std::size_t at = 0; at < phrase.size(); at += 3) {
                firmware += "tx $" + phrase.substr(at, 2) + "\n";
            }
        }
    }
    return firmware + chance.Pick(kEnds) + "\n";
}

struct Record {
    std::vector<kp::TraceEvent> trace;
    std::string notes;
    std::string windows;
    std::string verdict;
    kp::Tick ticks;

    bool operator==(const Record&) const = default;
};

Record RecordOf(const kp::Session& session) {
    Record record{{session.Trace().begin(), session.Trace().end()},
                  "",
                  "",
                  session.Verdict().message,
                  session.CurrentTick()};
    for (const auto& note : session.Notes()) {
        record.notes += std::to_string(note.tick) + " " + note.text + "\n";
    }
    for (const auto& window : session.Windows()) {
        record.windows += std::to_string(window.from) + " " + std::to_string(window.until) + " " +
                          window.what + (window.done ? " done\n" : "\n");
    }
    return record;
}

}  // namespace

TEST_CASE("no card and no settings can make a far end crash, run on, or change its mind") {
    int built = 0;
    int noted = 0;
    const int rounds = support::Rounds(1000);
    for (int seed = 0; seed < rounds; ++seed) {
        Chance chance(static_cast<std::uint64_t>(seed));
        const auto type = static_cast<kp::PeerType>(seed % 8);
        const std::string text = RandomTicket(chance, type);
        const std::string firmware = RandomTalk(chance);
        CAPTURE(text);
        CAPTURE(firmware);
        support::Rig rig(text, firmware);
        const auto begin = [&] {
            return kp::BeginTest(rig.session, rig.ticket, 0, rig.program, nullptr);
        };
        if (const base::Status begun = begin(); !begun) {
            CHECK(begin().Message() == begun.Message());
            continue;
        }
        ++built;
        rig.session.RunToEnd();
        const Record first = RecordOf(rig.session);
        CHECK(first.ticks <= rig.ticket.max_ticks);
        noted += first.notes.empty() ? 0 : 1;
        REQUIRE(begin());
        while (rig.session.StepTick()) {
        }
        CHECK((RecordOf(rig.session) == first));
    }
    // Most settings must be good and most runs must get into a conversation, or nothing was tried.
    CHECK(built > rounds / 2);
    CHECK(noted > rounds / 4);
}
