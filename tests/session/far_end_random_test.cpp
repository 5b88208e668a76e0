#include <map>

#include "rig.h"
#include "support/rounds.h"
#include "ticket/generator.h"

namespace {

using Pool = std::vector<std::string>;

Pool Parted(std::string_view values) {
    Pool pool;
    // A pool may end in an empty value.
    for (bool more = true; more;) {
        more = values.find(" |") != std::string_view::npos;
        pool.emplace_back(support::Cut(values, " |"));
        if (values.starts_with(' ')) values.remove_prefix(1);
    }
    return pool;
}

// What a card may say to a far end: frames, blocks, answers, commands, and noise; and what far ends
// may be told, valid more often than not.
struct Pools {
    std::map<std::string, Pool> pools;
    std::vector<std::pair<std::string, Pool>> settings;

    Pools() {
        const auto cases = support::Cases("session/random_far_ends.txt");
        for (const support::Step& step : cases.at(0)) pools[step.key] = Parted(step.value);
        for (const support::Step& step : cases.at(1)) {
            for (std::string_view keys = step.key; !keys.empty();) {
                settings.emplace_back(support::Cut(keys, ","), Parted(step.value));
            }
        }
    }
};

class Chance {
public:
    Chance(const Pools& pools, std::uint64_t seed) : pools_(pools), generator_(seed) {}

    int Draw(int low, int high) { return static_cast<int>(generator_.Draw(low, high)); }
    bool OneIn(int n) { return Draw(1, n) == 1; }
    std::string Pick(const Pool& pool) {
        return pool[static_cast<std::size_t>(Draw(0, static_cast<int>(pool.size()) - 1))];
    }
    std::string Pick(const std::string& pool) { return Pick(pools_.pools.at(pool)); }
    const Pools& All() const { return pools_; }

private:
    const Pools& pools_;
    kp::Generator generator_;
};

std::string RandomSettings(Chance& chance, const std::string& type) {
    std::string block = "{\"type\": \"" + type + "\"";
    for (const auto& [key, values] : chance.All().settings) {
        if (!chance.OneIn(6)) continue;
        block += ", \"" + key + "\": " + chance.Pick(values);
    }
    if (!chance.OneIn(4)) {
        const bool has_words = chance.All().pools.contains(type + "-plan");
        block += ", \"plan\": [";
        for (int words = chance.Draw(1, 8); words > 0; --words) {
            block += "\"" + chance.Pick((has_words ? type : "acker") + "-plan") +
                     (words > 1 ? "\", " : "\"");
        }
        block += chance.OneIn(40) ? ", \"hum\"]" : "]";
    }
    return block + "}";
}

std::string RandomTicket(Chance& chance, const std::string& type) {
    return R"("max_ticks": 900, "settle": 40,
              "machine": {"rom": 256, "timer": true, "rx_buffer": 64}, )" +
           chance.Pick("formats") + "\"peer\": " + RandomSettings(chance, type) +
           R"(, "tests": [{"host": ["", "A"], "frames": ["A", {"random": {"len": [0, 9]}}, "BC"],
               "rx": [{"random": {"len": [0, 9]}, "at": 9, "gap": 4, "reply_within": 50}],
               "replies": [{"after": {"hex": "05"}, "send": "AB"}, {"after": "A", "delay": 70},
                           {"after": {"hex": "06"}, "send": "", "label": "end"}],
               "peer": )" +
           (chance.OneIn(2) ? RandomSettings(chance, type) : "null") + "}]";
}

// A card that says phrases, waits, reads, and in the end starts again, listens, or halts.
std::string RandomTalk(Chance& chance) {
    std::string firmware = "start:\n";
    for (int acts = chance.Draw(0, 14); acts > 0; --acts) {
        const int act = chance.Draw(0, 5);
        if (act == 0) {
            firmware += base::Format("wait %d\n",
                                     chance.OneIn(3) ? chance.Draw(1, 150) : chance.Draw(1, 12));
        } else if (act <= 2) {
            firmware += "rx a\n";
        } else {
            const std::string phrase = chance.Pick("phrases");
            for (std::size_t at = 0; at < phrase.size(); at += 3) {
                firmware += "tx $" + phrase.substr(at, 2) + "\n";
            }
        }
    }
    return firmware + support::LinesOf(chance.Pick("ends")) + "\n";
}

}  // namespace

TEST_CASE("no card and no settings can make a far end crash, run on, or change its mind") {
    const Pools pools;
    int built = 0;
    int noted = 0;
    const int rounds = support::Rounds(1000);
    for (int seed = 0; seed < rounds; ++seed) {
        Chance chance(pools, static_cast<std::uint64_t>(seed));
        const auto type = static_cast<kp::PeerType>(seed % 8);
        const std::string text = RandomTicket(chance, std::string(kp::PeerTypeName(type)));
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
        const support::Record first(rig.session);
        CHECK(first.ticks <= rig.ticket.max_ticks);
        noted += first.notes.empty() ? 0 : 1;
        REQUIRE(begin());
        while (rig.session.StepTick()) {
        }
        CHECK((support::Record(rig.session) == first));
    }
    // Most settings must be good and most runs must get into a conversation, or nothing was tried.
    CHECK(built > rounds / 2);
    CHECK(noted > rounds / 4);
}
