#include "shell/shell.h"

#include <algorithm>
#include <cmath>

#include "save/records.h"
#include "shell/confirm.h"

namespace Kest {
namespace {

constexpr std::string_view kViKeysOn =
    "Vi keys are on: i types, Esc ends that, :q leaves the bench. F10 and Options turn them off.";
constexpr double kStatusSeconds = 3.2;
constexpr const char* kFirmwareFailed = "Firmware could not be saved: ";

constexpr bool IsOverlay(Place place) {
    switch (place) {
        case Place::Splash:
        case Place::Title:
        case Place::Board:
        case Place::Bench:
            return false;
        default:
            return true;
    }
}

void TakeEarlier(std::optional<double>& next, std::optional<double> at) {
    if (at && (!next || *at < *next)) next = at;
}

}  // namespace

Shell::Shell(ShellParts parts) : parts_(std::move(parts)) {
    progress_ = LoadProgress(parts_.disk, parts_.data_folder);
    if (parts_.persistent) {
        kept_settings_ = LoadSettings(parts_.disk, parts_.data_folder);
        // Written back at once, so that a file of an older version is brought up to date once.
        (void)SaveSettings(parts_.disk, parts_.data_folder, kept_settings_);
        settings_ = kept_settings_;
    }
    if (parts_.closed_override >= 0) TreatAsClosed(parts_.closed_override);
    now_ = played_until_ = parts_.clock.Seconds();
    press_key_ = [this](const zo::ui::KeyPress& key) {
        HandleKey(key);
        drop_text_ = false;  // a press of the pointer makes no text
    };
    ApplySettings();
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
    if (request_.window == size && request_.display_scale == display_scale) return;
    request_.window = size;
    request_.display_scale = display_scale;
    RebuildGrid();
}

void Shell::OverrideSettings(const SettingsChange& change) {
    change(settings_);
    ApplySettings();
}

void Shell::SpeakTo(Speaker::Say say) {
    speaker_.emplace(std::move(say));
    redraw_ = true;
}

// The file keeps the player's choices alone, without what holds for this run.
void Shell::ChangeSettings(const SettingsChange& change) {
    const bool full_screen = settings_.full_screen;
    const bool vi_keys = settings_.vi_keys;
    change(settings_);
    change(kept_settings_);
    if (parts_.persistent) (void)SaveSettings(parts_.disk, parts_.data_folder, kept_settings_);
    ApplySettings();
    if (settings_.full_screen != full_screen && parts_.window) {
        parts_.window->SetFullScreen(settings_.full_screen);
    }
    if (settings_.vi_keys && !vi_keys) SetStatus(std::string(kViKeysOn));
}

void Shell::ApplySettings() {
    request_.look = settings_.modern_look ? zo::ui::Look::Modern : zo::ui::Look::Classic;
    request_.want_large = settings_.large_text;
    request_.nine_wide_face = parts_.nine_wide_face;
    request_.in_cells = InCells();
    RebuildGrid();
    ChooseSounds();
}

void Shell::ChooseSounds() {
    Sound().SetChoices({.effects_on = settings_.effects_on,
                        .effects_volume = settings_.effects_volume,
                        .music_on = settings_.music_on,
                        .music_volume = settings_.music_volume,
                        .line_on = settings_.line_on,
                        .line_volume = settings_.line_volume,
                        .key_clicks = settings_.key_clicks,
                        .mute_unfocused = settings_.mute_unfocused});
}

// The topmost screen that has an opinion.
void Shell::ChooseMusic() {
    const auto chosen_by = [&](const Screen* screen) {
        const auto scene = screen ? screen->Music() : std::nullopt;
        if (scene.has_value()) Sound().SetScene(scene.value());
        return scene.has_value();
    };
    for (auto overlay = overlays_.rbegin(); overlay != overlays_.rend(); ++overlay) {
        if (chosen_by(overlay->get())) return;
    }
    (void)chosen_by(current_.get());
}

void Shell::RebuildGrid() {
    frame_.Resize(zo::ui::SizeGrid(request_));
    pressables_stale_ = true;
    redraw_ = true;
}

void Shell::UpdateScreens() {
    if (current_) current_->Update(now_);
    for (const auto& overlay : overlays_) overlay->Update(now_);
}

void Shell::Advance() {
    now_ = parts_.clock.Seconds();
    closed_.clear();
    if (pending_) CommitSwitch();
    UpdateScreens();
    ChooseMusic();
    if (!message_.text.empty() && message_.until <= now_) {
        message_.text.clear();
        redraw_ = true;
    }
    if (const std::optional<double> due = NextScreenFrameAt()) redraw_ |= *due <= now_;
    if (speaker_ && speaker_->DueAt()) redraw_ |= *speaker_->DueAt() <= now_;
    caret_due_ = next_blink_ && *next_blink_ <= now_;
}

void Shell::CommitSwitch() {
    for (const auto& overlay : overlays_) overlay->Left();
    overlays_.clear();
    if (current_) current_->Left();
    current_ = std::move(pending_);
    current_->Entered();
    StackChanged();
}

std::optional<double> Shell::NextScreenFrameAt() const {
    std::optional<double> next;
    if (current_) TakeEarlier(next, current_->NextFrameAt());
    for (const auto& overlay : overlays_) TakeEarlier(next, overlay->NextFrameAt());
    return next;
}

double Shell::SecondsToNextFrame() const {
    if (pending_ || NeedsDraw()) return 0;
    std::optional<double> next = NextScreenFrameAt();
    if (!message_.text.empty()) TakeEarlier(next, message_.until);
    if (!minimised_) TakeEarlier(next, next_blink_);
    if (speaker_ && !minimised_) TakeEarlier(next, speaker_->DueAt());
    return next ? std::max(*next - now_, 0.0) : -1;
}

void Shell::Quit() {
    if (done_) return;
    std::string lost = SaveEverything();
    if (lost.empty() || quitting_) {
        done_ = true;
        return;
    }
    quitting_ = true;
    Ask({.title = "Exit",
         .message = std::move(lost),
         .yes = "Exit",
         .answered = [this](bool yes) { done_ = quitting_ = yes; },
         .suggest_no = true});
}

// What would go with the screens, as a sentence; empty when all is saved.
std::string Shell::SaveWork() {
    std::string lost;
    const auto save = [&](Screen& screen) {
        const base::Status saved = screen.SaveWork();
        if (!saved) lost = saved.Message();
    };
    if (current_) save(*current_);
    for (const auto& overlay : overlays_) save(*overlay);
    return lost;
}

// What would go with the program. Play time alone is not worth a question.
std::string Shell::SaveEverything() {
    const bool owed = !save_failure_.empty();
    WriteProgress();
    std::string lost = SaveWork();
    return lost.empty() && owed ? save_failure_ : lost;
}

bool Shell::Offers(Place place) const {
    return parts_.places[static_cast<std::size_t>(place)] != nullptr;
}

void Shell::Open(Place place, std::string_view about) {
    if (!Offers(place)) return;
    std::unique_ptr<Screen> screen = parts_.places[static_cast<std::size_t>(place)](*this, about);
    const Effect sound = SoundOfGoing(place);
    if (sound != Effect::None) Sound().Play(sound);
    if (IsOverlay(place)) {
        Push(std::move(screen));
    } else {
        SwitchTo(std::move(screen));
    }
}

// The way back from the bench is heard, not where it leads.
Effect Shell::SoundOfGoing(Place to) const {
    if (to == Place::Binder) return Effect::Page;
    if (IsOverlay(to)) return Effect::Menu;
    if (to == Place::Bench) return Effect::Open;
    if (current_ && current_->Name() == "bench") return Effect::Leave;
    if (to == Place::Board) return Effect::Open;
    return overlays_.empty() ? Effect::None : Effect::Back;
}

void Shell::SwitchTo(std::unique_ptr<Screen> screen) {
    std::string lost = SaveWork();
    if (lost.empty()) {
        pending_ = std::move(screen);
        return;
    }
    waiting_ = std::move(screen);
    Ask({.title = "Leave",
         .message = std::move(lost),
         .yes = "Leave",
         .no = "Stay",
         .answered =
             [this](bool yes) {
                 if (yes) pending_ = std::move(waiting_);
                 waiting_.reset();
             },
         .suggest_no = true});
}

void Shell::Push(std::unique_ptr<Screen> overlay) {
    if (Screen* top = Top()) top->Covered();
    overlays_.push_back(std::move(overlay));
    overlays_.back()->Entered();
    StackChanged();
}

void Shell::CloseOverlay() {
    if (overlays_.empty()) return;
    // What a question was answered with has a sound of its own.
    if (overlays_.back()->Name() != "confirm") Sound().Play(Effect::Back);
    overlays_.back()->Left();
    closed_.push_back(std::move(overlays_.back()));
    overlays_.pop_back();
    if (Screen* top = Top()) top->Uncovered();
    StackChanged();
}

void Shell::StackChanged() {
    pressables_.LetGo();
    pressables_stale_ = true;
    blink_.Restart(now_);
    redraw_ = true;
}

bool Screen::IsOnTop() const {
    return shell_.Top() == this;
}

Screen* Shell::Top() const {
    return overlays_.empty() ? current_.get() : overlays_.back().get();
}

void Shell::SetStatus(std::string message, Alert alert) {
    message_ = {std::move(message), alert == Alert::Yes, now_ + kStatusSeconds};
    redraw_ = true;
}

void Shell::Ask(Question question) {
    Sound().Play(Effect::Menu);
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
    Sound().Play(Effect::Menu);
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
    Earn(nullptr);
    WriteProgress();
}

std::vector<const Achievement*> Shell::Earn(const Close* close) {
    if (!parts_.persistent || settings_.open_all) return {};
    std::vector<const Achievement*> earned = Award(parts_.content, progress_, close);
    for (const Achievement* achievement : earned) {
        SetStatus("Achievement: " + std::string(achievement->title));
        Sound().Play(Effect::Achievement);
    }
    return earned;
}

void Shell::WriteProgress() {
    CountPlayTime();
    if (!KeepsProgress()) return;
    const base::Status saved = Kest::SaveProgress(parts_.disk, parts_.data_folder, progress_);
    save_failure_.clear();
    if (saved) return;
    save_failure_ = "Progress could not be saved: " + saved.Message();
    Alarm(save_failure_);
}

void Shell::CountPlayTime() {
    const double seconds = std::floor(std::max(now_ - played_until_, 0.0));
    progress_.play_seconds += static_cast<std::uint64_t>(seconds);
    played_until_ += seconds;
}

void Shell::Alarm(std::string sentence) {
    if (parts_.complain) parts_.complain(sentence);
    Sound().Play(Effect::Alert);
    SetStatus(std::move(sentence), Alert::Yes);
}

ClosedTicket Shell::CloseTicket(const Close& close, std::string_view firmware) {
    const Improvement better = Kest::CloseTicket(progress_, close);
    ClosedTicket closed = {.first = better.first, .earned = Earn(&close)};
    if (KeepsProgress()) {
        const base::Status kept =
            KeepRecords(parts_.disk, parts_.data_folder, close, better, firmware);
        if (!kept) Alarm(kFirmwareFailed + kept.Message());
        // Nothing depends on the history, so its loss is no news.
        (void)AddToHistory(parts_.disk, parts_.data_folder, close);
    }
    WriteProgress();
    return closed;
}

void Shell::ResetProgress() {
    if (!parts_.persistent) return;
    Kest::ResetProgress(progress_);
    SetStatus("Progress reset.");
    WriteProgress();
}

std::optional<std::string> Shell::LoadFirmware(std::string_view ticket_id, int slot) {
    return Kest::LoadFirmware(parts_.disk, FirmwarePath(parts_.data_folder, ticket_id, slot));
}

std::optional<std::string> Shell::LoadRecord(std::string_view ticket_id, Score score) {
    return Kest::LoadFirmware(parts_.disk, RecordPath(parts_.data_folder, ticket_id, score));
}

std::vector<Scores> Shell::LoadHistory(std::string_view ticket_id) {
    if (!KeepsProgress()) return {};
    return Kest::LoadHistory(parts_.disk, parts_.data_folder, ticket_id);
}

base::Status Shell::SaveFirmware(std::string_view ticket_id, int slot, std::string_view text) {
    const base::Status saved =
        Kest::SaveFirmware(parts_.disk, FirmwarePath(parts_.data_folder, ticket_id, slot), text);
    if (saved) return saved;
    return base::Failure{kFirmwareFailed + saved.Message()};
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

std::string Shell::SelectedText() {
    return parts_.window ? parts_.window->SelectedText() : std::string();
}

void Shell::SetSelectedText(const std::string& text) {
    if (parts_.window) parts_.window->SetSelectedText(text);
}

void Shell::ToggleFullScreen() {
    if (parts_.window) parts_.window->SetFullScreen(!parts_.window->IsFullScreen());
}

}  // namespace Kest
