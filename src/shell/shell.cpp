#include "shell/shell.h"

#include <algorithm>

#include "save/firmware_files.h"
#include "shell/confirm.h"

namespace Kest {
namespace {

constexpr double kStatusSeconds = 3.2;

constexpr bool IsOverlay(Place place) {
    switch (place) {
        case Place::Title:
        case Place::Board:
        case Place::Bench:
            return false;
        default:
            return true;
    }
}

}  // namespace

Shell::Shell(ShellParts parts) : parts_(std::move(parts)) {
    progress_ = LoadProgress(parts_.disk, parts_.data_folder);
    if (parts_.closed_override >= 0) TreatAsClosed(parts_.closed_override);
    now_ = parts_.clock.Seconds();
    press_key_ = [this](const zo::ui::KeyPress& key) { HandleKey(key); };
}

Shell::~Shell() = default;

void Shell::TreatAsClosed(int count) {
    progress_.tickets.clear();
    progress_.current.clear();
    for (const kp::LoadedTicket* loaded : parts_.content.Tickets()) {
        if (count-- <= 0) return;
        progress_.tickets[loaded->ticket.id] = {
            .closed = true,
            .best_ticks = static_cast<std::int32_t>(loaded->reference.ticks),
            .best_lines = static_cast<std::int32_t>(loaded->reference.lines)};
    }
}

void Shell::SetWindow(zo::ui::PixelSize size, float display_scale) {
    request_.window = size;
    request_.display_scale = display_scale;
    RebuildGrid();
}

void Shell::SetAppearance(const Appearance& appearance) {
    appearance_ = appearance;
    request_.look = appearance.look;
    request_.want_large = appearance.large;
    request_.nine_wide_face = appearance.nine_wide_face;
    RebuildGrid();
}

void Shell::RebuildGrid() {
    frame_.Resize(zo::ui::SizeGrid(request_));
    redraw_ = true;
}

void Shell::Advance() {
    now_ = parts_.clock.Seconds();
    closed_.clear();
    if (pending_) CommitSwitch();
    if (!message_.text.empty() && message_.until <= now_) {
        message_.text.clear();
        redraw_ = true;
    }
    if (current_) current_->Update(now_);
    for (const auto& overlay : overlays_) overlay->Update(now_);
    if (const std::optional<double> due = NextFrameAt(); due && *due <= now_) redraw_ = true;
}

void Shell::CommitSwitch() {
    for (const auto& overlay : overlays_) overlay->Left();
    overlays_.clear();
    if (current_) current_->Left();
    current_ = std::move(pending_);
    current_->Entered();
    StackChanged();
}

std::optional<double> Shell::NextFrameAt() const {
    std::optional<double> next;
    const auto consider = [&](std::optional<double> at) {
        if (at && (!next || *at < *next)) next = at;
    };
    if (!message_.text.empty()) consider(message_.until);
    if (caret_blinks_) consider(next_blink_);
    if (current_) consider(current_->NextFrameAt());
    for (const auto& overlay : overlays_) consider(overlay->NextFrameAt());
    return next;
}

double Shell::SecondsToNextFrame() const {
    if (pending_ || redraw_) return 0;
    const std::optional<double> next = NextFrameAt();
    return next ? std::max(*next - now_, 0.0) : -1;
}

void Shell::Quit() {
    if (done_) return;
    const base::Status saved = SaveWork();
    if (saved || quitting_) {
        done_ = true;
        return;
    }
    quitting_ = true;
    Ask({.title = "Exit",
         .message = "Firmware could not be saved: " + saved.Message(),
         .yes = "Exit",
         .answered = [this](bool yes) { done_ = quitting_ = yes; },
         .suggest_no = true});
}

base::Status Shell::SaveWork() {
    base::Status worst = current_ ? current_->SaveWork() : base::Status();
    for (const auto& overlay : overlays_) {
        base::Status status = overlay->SaveWork();
        if (!status) worst = std::move(status);
    }
    return worst;
}

bool Shell::Offers(Place place) const {
    return parts_.places[static_cast<std::size_t>(place)] != nullptr;
}

void Shell::Open(Place place, std::string_view about) {
    if (!Offers(place)) return;
    std::unique_ptr<Screen> screen = parts_.places[static_cast<std::size_t>(place)](*this, about);
    if (IsOverlay(place)) {
        Push(std::move(screen));
    } else {
        SwitchTo(std::move(screen));
    }
}

void Shell::SwitchTo(std::unique_ptr<Screen> screen) {
    pending_ = std::move(screen);
}

void Shell::Push(std::unique_ptr<Screen> overlay) {
    if (Screen* top = Top()) top->Covered();
    overlays_.push_back(std::move(overlay));
    overlays_.back()->Entered();
    StackChanged();
}

void Shell::CloseOverlay() {
    if (overlays_.empty()) return;
    overlays_.back()->Left();
    closed_.push_back(std::move(overlays_.back()));
    overlays_.pop_back();
    if (Screen* top = Top()) top->Uncovered();
    StackChanged();
}

void Shell::StackChanged() {
    pressables_stale_ = true;
    caret_since_ = now_;
    redraw_ = true;
}

Screen* Shell::Top() const {
    return overlays_.empty() ? current_.get() : overlays_.back().get();
}

void Shell::SetStatus(std::string message, Alert alert) {
    message_ = {std::move(message), alert == Alert::Yes, now_ + kStatusSeconds};
    redraw_ = true;
}

void Shell::Ask(Question question) {
    const auto answered = [act = std::move(question.answered)](int button) {
        if (act) act(button == 0);
    };
    Push(std::make_unique<ConfirmDialog>(
        *this, ConfirmDialog::Contents{.title = std::move(question.title),
                                       .message = std::move(question.message),
                                       .buttons = {std::move(question.yes), std::move(question.no)},
                                       .focused = question.suggest_no ? 1 : 0,
                                       .answered = answered}));
}

void Shell::Notice(std::string title, std::string message, std::function<void()> action) {
    const auto answered = [act = std::move(action)](int) {
        if (act) act();
    };
    Push(std::make_unique<ConfirmDialog>(*this,
                                         ConfirmDialog::Contents{.title = std::move(title),
                                                                 .message = std::move(message),
                                                                 .buttons = {"OK"},
                                                                 .answered = answered}));
}

void Shell::SaveProgress() {
    if (!parts_.persistent || parts_.closed_override >= 0) return;
    const base::Status saved = Kest::SaveProgress(parts_.disk, parts_.data_folder, progress_);
    save_failure_.clear();
    if (saved) return;
    save_failure_ = "Progress could not be saved: " + saved.Message();
    SetStatus(save_failure_, Alert::Yes);
}

std::optional<std::string> Shell::LoadFirmware(std::string_view ticket_id, int slot) {
    return Kest::LoadFirmware(parts_.disk, FirmwarePath(parts_.data_folder, ticket_id, slot));
}

base::Status Shell::SaveFirmware(std::string_view ticket_id, int slot, std::string_view text) {
    return Kest::SaveFirmware(parts_.disk, FirmwarePath(parts_.data_folder, ticket_id, slot), text);
}

std::string Shell::ClipboardText() {
    return parts_.window ? parts_.window->ClipboardText() : clipboard_;
}

void Shell::SetClipboardText(const std::string& text) {
    if (parts_.window) {
        parts_.window->SetClipboardText(text);
    } else {
        clipboard_ = text;
    }
}

void Shell::ToggleFullScreen() {
    if (parts_.window) parts_.window->SetFullScreen(!parts_.window->IsFullScreen());
}

}  // namespace Kest
