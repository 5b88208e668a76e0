// Firmware from elsewhere: share cards and files that other players, or the player, bring along.

#include "base/format.h"
#include "bench/bench.h"
#include "bench/records.h"
#include "content/share_card.h"
#include "shell/shell.h"

namespace Kest {
namespace {

constexpr const char* kTitle = "SHARE CARD";

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == text.npos;
}

}  // namespace

// The first slot in which nothing of the player's stands; 0 when there is none.
int Bench::FreeSlot() {
    for (int slot = 1; slot <= kFirmwareSlots; ++slot) {
        const std::string text = slot == slot_ ? editor_.Text() : FirmwareIn(slot);
        if (IsBlank(text) || text == OpeningText()) return slot;
    }
    return 0;
}

// Asks before it loads; `found` is what there is to say of the firmware.
void Bench::OfferFirmware(const std::string& title, const std::string& found, std::string firmware,
                          bool doubtful) {
    SaveOrWarn();
    const int slot = FreeSlot();
    if (slot == 0) {
        return shell_.Notice(title,
                             found + " All three slots hold firmware; clear one to load it.");
    }
    shell_.Ask({.title = title,
                .message = found + base::Format(" Load it into slot %d?", slot),
                .yes = "~L~oad",
                .answered =
                    [this, slot, text = std::move(firmware)](bool yes) {
                        if (yes) LoadInto(slot, text);
                    },
                .suggest_no = doubtful});
}

void Bench::LoadInto(int slot, const std::string& firmware) {
    UseSlot(slot);
    if (slot != slot_) return;
    SetFirmware(firmware);
    dirty_ = true;
    if (SaveOrWarn()) shell_.SetStatus(base::Format("Loaded into slot %d.", slot));
}

// What a card claims is verified before anything is offered.
bool Bench::TakesCard(std::string_view text) {
    const auto card = kp::ReadShareCard(text);
    if (!card) return false;
    if (card->ticket != loaded_.ticket.id) {
        const kp::LoadedTicket* other = shell_.Content().FindTicket(card->ticket);
        shell_.Notice(kTitle, other == nullptr
                                  ? "The card is of a ticket that this bench does not know."
                                  : "The card is of " + other->ticket.id.substr(0, 4) + " " +
                                        other->ticket.title +
                                        ". Open that ticket and paste it there.");
        return true;
    }
    kp::Session session;
    const kp::CardProof proof = kp::ProveCard(*card, loaded_, session);
    OfferFirmware(kTitle, context_ + ". " + proof.sentence, card->firmware, !proof.holds);
    return true;
}

bool Bench::TakesFile(std::string_view name, std::string_view text) {
    if (TakesCard(text)) return true;
    const kp::Assembly assembly = kp::Assemble(text, loaded_.ticket.machine);
    const std::string errors =
        assembly.errors.empty() ? "" : " It has errors: " + kp::FirstErrorText(assembly);
    OfferFirmware("FIRMWARE FILE", std::string(name) + "." + errors, std::string(text), false);
    return true;
}

// What the card claims is run before it is claimed.
void Bench::CopyCard(const std::string& firmware) {
    kp::Session session;
    const kp::VerifyResult result = kp::Verify(
        loaded_.ticket, loaded_.reference, kp::Assemble(firmware, loaded_.ticket.machine), session);
    if (!result.AllPassed()) return shell_.SetStatus("It does not pass. " + result.message);
    shell_.SetClipboardText(
        kp::WriteShareCard(loaded_.ticket, result.lines, result.ticks, firmware));
    shell_.SetStatus("Share card copied.");
}

// The firmware behind the records; what it comes to is found by running it.
void Bench::OpenRecords() {
    if (run_.State() == RunState::Running) RunOrPause();
    kp::Session session;
    std::vector<KeptRecord> records;
    for (const auto& [score, name] :
         {std::pair(Score::Lines, "Best lines"), std::pair(Score::Ticks, "Best ticks")}) {
        auto firmware = shell_.LoadRecord(loaded_.ticket.id, score);
        if (!firmware) continue;
        if (!records.empty() && records.back().firmware == *firmware) {
            records.back().name = "Best lines and ticks";
            continue;
        }
        const kp::VerifyResult result =
            kp::Verify(loaded_.ticket, loaded_.reference,
                       kp::Assemble(*firmware, loaded_.ticket.machine), session);
        records.push_back(
            {name, base::Format("%d lines, %u ticks", result.lines, result.ticks), *firmware});
    }
    if (records.empty()) return shell_.SetStatus("No record of this ticket is kept yet.");
    ShowRecords(std::move(records));
}

void Bench::ShowRecords(std::vector<KeptRecord> records) {
    Records::Contents contents;
    contents.records = std::move(records);
    contents.slot_name = base::Format("slot %d", slot_);
    contents.slot_text = editor_.Text();
    contents.load = [this](const KeptRecord& record) {
        OfferFirmware("RECORDS", record.name + ": " + record.comes_to + ".", record.firmware,
                      false);
    };
    contents.copy_card = [this](const KeptRecord& record) { CopyCard(record.firmware); };
    shell_.Push(std::make_unique<Records>(shell_, std::move(contents)));
}

}  // namespace Kest
