// Firmware from elsewhere: share cards and files that other players, or the player, bring along.

#include "base/format.h"
#include "bench/bench.h"
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

// The card of the verify that closed the ticket.
void Bench::CopyCard() {
    const kp::VerifyResult* verify = run_.LastVerify();
    if (verify == nullptr || !verify->AllPassed()) return;
    shell_.SetClipboardText(
        kp::WriteShareCard(loaded_.ticket, verify->lines, verify->ticks, editor_.Text()));
    shell_.SetStatus("Share card copied.");
}

}  // namespace Kest
