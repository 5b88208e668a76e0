#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "content/content.h"
#include "music/sounds.h"
#include "outside/outside.h"
#include "save/achievements.h"
#include "save/firmware_files.h"
#include "save/progress.h"
#include "save/records.h"
#include "save/settings.h"
#include "save/unlocking.h"
#include "shell/caret_blink.h"
#include "shell/places.h"
#include "shell/screen.h"
#include "shell/speaker.h"

namespace Kest {

// What the shell stands on. Everything outlives it.
struct ShellParts {
    const kp::Content& content;
    zo::platform::Clock& clock;
    base::Disk& disk;
    zo::platform::Window* window = nullptr;  // null when a picture is all that is wanted
    std::filesystem::path data_folder = {};
    bool nine_wide_face = true;
    // False in automation: settings and progress are never written.
    bool persistent = true;
    // The number of tickets to treat as closed in this run, -1 to keep the player's progress. With
    // it progress is never written either: the player's own must not be lost over it.
    int closed_override = -1;
    Places places = {};
    Sounds* sounds = nullptr;  // null for a run in silence
    // Hears what could not be saved, beside the player.
    std::function<void(std::string_view sentence)> complain = {};
};

// Sets some of the settings to what was chosen; it may be called more than once.
using SettingsChange = std::function<void(Settings& settings)>;

// What came of closing a ticket.
struct ClosedTicket {
    bool first = false;
    std::vector<const Achievement*> earned;
};

enum class Alert : bool { No, Yes };

struct Question {
    std::string title = {};
    std::string message = {};
    std::string yes = {};
    std::string no = "Cancel";
    std::function<void(bool yes)> answered = {};
    bool suggest_no = false;  // something would be lost: focus starts on the second button
};

// Owns everything that lives as long as the window: the screens, settings and progress, the status
// message.
// The frame loop tells it what happened and asks it for frames; screens ask it for everything that
// lies outside them.
class Shell {
public:
    explicit Shell(ShellParts parts);
    ~Shell();
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    // The frame loop's side.

    void SetWindow(zo::ui::PixelSize size, float display_scale);
    // Changes the settings for this run alone.
    void OverrideSettings(const SettingsChange& change);
    void Handle(const zo::ui::InputEvent& event);
    // Commits a pending switch and lets the screens move on. Before each frame.
    void Advance();
    // Whether the picture may differ from the one drawn last, and can be seen.
    bool NeedsDraw() const { return (redraw_ || caret_due_) && !minimised_; }
    const zo::ui::Frame& Draw();
    // Seconds until the next frame that is due by itself; negative when none is.
    double SecondsToNextFrame() const;
    // Whether an event would reach what is on the screen. If not, a frame must come first, if any.
    bool TakesInput() const { return !done_ && !pending_ && !pressables_stale_; }
    bool Done() const { return done_; }
    // The window is going away. Everything is saved; when that fails the player is asked first,
    // unless this comes a second time.
    void Quit();
    // Says in plain lines what changes on the screen from now on.
    void SpeakTo(Speaker::Say say);
    // Keeps the caret from blinking, so that every picture shows it.
    void HoldCaret() { hold_caret_ = true; }

    // What screens may ask for.

    // Goes to a place: a switch, or an overlay. Nothing happens when the place does not exist.
    void Open(Place place, std::string_view about = {});
    bool Offers(Place place) const;
    // Takes effect before the next frame. The overlays go too. Work is saved first; when that fails
    // the player is asked.
    void SwitchTo(std::unique_ptr<Screen> screen);
    void Push(std::unique_ptr<Screen> overlay);
    // Takes the topmost overlay away. It may be the caller: it lives until the next frame.
    void CloseOverlay();
    Screen* Top() const;
    Screen* Current() const { return current_.get(); }

    // Shows for 3.2 seconds and replaces the message before it.
    void SetStatus(std::string message, Alert alert = Alert::No);
    // Shows that something could not be saved, and says so on the error stream too.
    void Alarm(std::string sentence);
    void Ask(Question question);
    // One button, "OK"; the action runs however the notice is closed.
    void Notice(std::string title, std::string message, std::function<void()> action = {});
    void RequestRedraw() { redraw_ = true; }

    const kp::Content& Content() const { return parts_.content; }
    // What is in force: the player's choices, and over them what the command line asked for.
    const Kest::Settings& Settings() const { return settings_; }
    // A choice of the player: takes effect and is kept.
    void ChangeSettings(const SettingsChange& change);

    Kest::Progress& Progress() { return progress_; }
    const Kest::Progress& Progress() const { return progress_; }
    Kest::Unlocking Unlocking() const { return {parts_.content, progress_, settings_.open_all}; }
    bool IsPersistent() const { return parts_.persistent; }
    bool HasWindow() const { return parts_.window != nullptr; }
    // A picture of cells is all that is seen, as in a terminal.
    bool InCells() const { return parts_.window != nullptr && parts_.window->InCells(); }
    // Progress begins empty: neither the player's own nor a number of closed tickets is shown.
    bool IsFreshProfile() const { return !parts_.persistent && parts_.closed_override < 0; }

    double Now() const { return now_; }  // the frame clock, in seconds
    std::uint64_t CalendarSeconds() { return parts_.clock.CalendarSeconds(); }
    const zo::ui::Grid& Grid() const { return frame_.grid; }

    // To be called after every change of the progress. Awards and announces the achievements that
    // it has earned, and writes progress.json, both where that is allowed. A failure is shown, and
    // kept until a save works.
    void SaveProgress();
    // Records a verify that has passed with this firmware, and saves the progress.
    ClosedTicket CloseTicket(const Close& close, std::string_view firmware);
    // Takes back what the player has achieved; never in automation.
    void ResetProgress();
    // What the last save of the progress said when it failed; else empty.
    const std::string& SaveFailure() const { return save_failure_; }
    std::optional<std::string> LoadFirmware(std::string_view ticket_id, int slot);
    // The firmware that holds a ticket's record.
    std::optional<std::string> LoadRecord(std::string_view ticket_id, Score score);
    // The ticket's passing verifies.
    std::vector<Scores> LoadHistory(std::string_view ticket_id);
    // The failure is a sentence to show.
    base::Status SaveFirmware(std::string_view ticket_id, int slot, std::string_view text);

    std::string ClipboardText();
    void SetClipboardText(const std::string& text);
    // What is selected here or in another program, where the system knows such a thing.
    std::string SelectedText();
    void SetSelectedText(const std::string& text);
    void ToggleFullScreen();
    Sounds& Sound() { return parts_.sounds ? *parts_.sounds : silence_; }

private:
    struct Message {
        std::string text;
        bool alert = false;
        double until = 0;  // on the frame clock
    };

    bool KeepsProgress() const { return parts_.persistent && parts_.closed_override < 0; }
    void TreatAsClosed(int count);
    std::vector<const Achievement*> Earn(const Close* close);
    void WriteProgress();
    void CountPlayTime();
    void ApplySettings();
    void ChooseSounds();
    void ChooseMusic();
    Effect SoundOfGoing(Place to) const;
    void UpdateScreens();
    void CommitSwitch();
    std::optional<double> NextScreenFrameAt() const;
    void HandleFocus(bool active);
    void HandleKey(const zo::ui::KeyPress& key);
    void CopyPicture();
    void HandleText(const std::string& utf8);
    void HandleFile(const std::string& path);
    void HandlePointer(const zo::ui::PointerInput& pointer);
    void HandlePad(const zo::ui::PadPress& press);
    void ScrollByPad(zo::ui::PadButton button);
    zo::ui::Point CellAt(int x, int y) const;
    void RebuildGrid();
    void StackChanged();
    void DrawPicture();
    void DrawScreens(zo::ui::Canvas& canvas);
    void DescribeFrame();
    void NameControlPrefix();
    void DrawBars(zo::ui::Canvas& canvas);
    void Speak();
    bool CaretBlinks() const;
    void BlinkCaret();
    std::string SaveWork();
    std::string SaveEverything();

    ShellParts parts_;
    Sounds silence_;
    Kest::Settings settings_;       // in force
    Kest::Settings kept_settings_;  // as the file has them
    Kest::Progress progress_;
    double played_until_ = 0;  // the play time up to here is in the progress
    std::string save_failure_;
    std::string clipboard_;  // where there is no window

    std::unique_ptr<Screen> current_;
    std::unique_ptr<Screen> pending_;
    std::unique_ptr<Screen> waiting_;  // for the player's word on work that could not be saved
    std::vector<std::unique_ptr<Screen>> overlays_;  // bottom first
    std::vector<std::unique_ptr<Screen>> closed_;    // until the next frame
    bool done_ = false;
    bool quitting_ = false;  // the player was asked about work that could not be saved

    Message message_;
    FrameRecord record_;
    std::optional<Speaker> speaker_;
    zo::ui::Pressables pressables_;
    std::function<void(const zo::ui::KeyPress&)> press_key_;  // what the key bar calls
    bool pressables_stale_ = true;  // the screens changed since the list was filled
    bool drop_text_ = false;        // the last key was used, so its text is not for anyone

    zo::ui::GridRequest request_;
    zo::ui::Frame frame_;
    double now_ = 0;
    zo::ui::Caret caret_;  // as the screen drew it last, on or off
    CaretBlink blink_;
    std::optional<double> next_blink_;
    bool caret_due_ = false;  // nothing else has changed
    bool hold_caret_ = false;
    bool focused_ = true;
    bool minimised_ = false;
    bool redraw_ = true;
};

}  // namespace Kest
