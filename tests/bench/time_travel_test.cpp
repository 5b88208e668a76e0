#include <algorithm>

#include "game.h"
#include "support/random_firmware.h"

using namespace Kest;

namespace {

// All that the card panel can show.
struct Card {
    std::vector<std::uint16_t> words;
    std::vector<int> state;

    bool operator==(const Card&) const = default;
};

Card Copy(const kp::Processor& card) {
    Card copy;
    for (int i = 0; i < kp::kRegisterWords; ++i) copy.words.push_back(card.RegisterValue(i));
    std::ranges::copy(card.Ram(), std::back_inserter(copy.words));
    std::ranges::copy(card.Stack(), std::back_inserter(copy.words));
    copy.state = {static_cast<int>(card.State()),
                  card.ProgramCounter(),
                  static_cast<int>(card.TransmitterFreeAt()),
                  card.TimerRuns() ? static_cast<int>(card.TimerDeadline()) : -1,
                  card.TimerHasRunOut(),
                  card.BytesWaiting()};
    for (int i = 0; i < card.BytesWaiting(); ++i) copy.state.push_back(card.WaitingByte(i));
    return copy;
}

// The card of a run that was stopped behind so many ticks.
Card Stopped(const kp::LoadedTicket& loaded, std::size_t test, const std::string& firmware,
             kp::Tick ticks) {
    const auto assembly = kp::Assemble(firmware, loaded.ticket.machine);
    const kp::Program program = kp::Load(assembly, loaded.ticket.machine);
    kp::Session session;
    REQUIRE(kp::BeginTest(session, loaded.ticket, test, program, &loaded.reference.outputs[test]));
    while (session.CurrentTick() < ticks && session.StepTick()) {
    }
    return Copy(session.Card());
}

// Random firmware beside the references, which go further.
std::string FirmwareFor(const kp::LoadedTicket& loaded, kp::Generator& generator) {
    return generator.Draw(0, 3) == 0 ? loaded.reference_text : support::RandomFirmware(generator);
}

}  // namespace

TEST_CASE("any past tick shows the card as a run that stops there leaves it") {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    const auto tickets = content.Tickets();
    kp::Generator generator(8);
    int looked = 0;
    for (int round = support::Rounds(40); round > 0; --round) {
        const auto which = generator.Draw(0, static_cast<int>(tickets.size()) - 1);
        const kp::LoadedTicket& loaded = *tickets[static_cast<std::size_t>(which)];
        const std::string firmware = FirmwareFor(loaded, generator);
        CAPTURE(loaded.ticket.id);
        CAPTURE(firmware);
        BenchRun run(loaded);
        run.SetFirmware(firmware);
        const auto last = static_cast<int>(run.TestCount()) - 1;
        run.SelectTest(static_cast<std::size_t>(generator.Draw(0, last)));
        if (!run.RunToEnd()) continue;
        const kp::Tick end = run.CardTick();
        for (int look = 0; look < 4; ++look) {
            const auto tick = static_cast<kp::Tick>(generator.Draw(0, static_cast<int>(end) - 1));
            CAPTURE(tick);
            run.Look(tick);
            CHECK(run.CardTick() == tick + 1);
            CHECK((Copy(run.Card()) == Stopped(loaded, run.TestIndex(), firmware, tick + 1)));
            ++looked;
        }
        run.Look(std::nullopt);
        CHECK(run.CardTick() == end);
    }
    CHECK(looked > 0);
}

TEST_CASE("a step back undoes a step, as far as the start of the test") {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    for (const kp::LoadedTicket* loaded : content.Tickets()) {
        CAPTURE(loaded->ticket.id);
        BenchRun run(*loaded);
        run.SetFirmware(loaded->reference_text);
        REQUIRE(run.Step());
        REQUIRE(run.StepBack());
        std::vector<Card> cards;
        std::vector<kp::Tick> ticks;
        for (int step = 0; step < 20; ++step) {
            cards.push_back(Copy(run.Card()));
            ticks.push_back(run.CardTick());
            REQUIRE(run.Step());
            if (run.State() != RunState::Paused) break;
        }
        for (; !cards.empty(); cards.pop_back(), ticks.pop_back()) {
            REQUIRE(run.StepBack());
            CHECK(run.CardTick() == ticks.back());
            CHECK((Copy(run.Card()) == cards.back()));
            CHECK(run.Trace().card.size() == ticks.back());
        }
        CHECK_FALSE(run.StepBack());
    }
}
