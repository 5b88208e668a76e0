#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <deque>
#include <utility>

#include "base64.h"
#include "clicks.h"
#include "modes.h"
#include "pace.h"
#include "parser.h"
#include "prefix.h"
#include "small_screen.h"
#include "speech_rows.h"
#include "surroundings.h"
#include "terminal/terminal.h"
#include "tty.h"
#include "writer.h"

namespace zo::term {
namespace {

using ui::InputEvent;
using ui::KeyPress;
using ui::PixelSize;

// So long after an Esc nothing may come before it is taken for the key.
constexpr double kEscapeSeconds = 0.05;
// The first answers are waited for so long, so that the first picture need not be drawn twice.
constexpr double kFirstAnswerSeconds = 0.08;
constexpr std::size_t kLongestCopy = 74000;  // characters that terminals take for the clipboard

double Now() {
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(since).count();
}

std::string_view Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

Surroundings SurroundingsHere() {
    Surroundings around = {.term = Variable("TERM"), .colour = Variable("COLORTERM")};
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (around.characters.empty()) around.characters = Variable(name);
    }
    return around;
}

template <class... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

class TerminalWindow final : public platform::Window {
public:
    TerminalWindow(std::unique_ptr<Tty> tty, const Abilities& abilities, bool speaks);
    ~TerminalWindow() override;

    PixelSize Size() const override { return game_size_; }
    float DisplayScale() const override { return 1; }
    bool IsFullScreen() const override { return false; }
    void SetFullScreen(bool) override {}
    void Show(const ui::Frame& frame) override;
    std::optional<InputEvent> NextEvent(double timeout_seconds) override;
    std::string ClipboardText() override { return clipboard_; }
    void SetClipboardText(const std::string& text) override;
    std::string SelectedText() override { return selected_; }
    void SetSelectedText(const std::string& text) override { selected_ = text; }
    bool InCells() const override { return true; }
    std::string_view ControlPrefix() const override { return Prefix::kName; }
    bool Say(std::string_view line) override;

private:
    void Enter();
    void TakeSize();
    PixelSize LeastSize() const;
    bool IsTooSmall() const;
    void Present();
    const ui::Frame& Compose();
    void Flush();
    void Await(double end);
    void ReadInput();
    void HandleSignal(int signal);
    void Handle(Report& report);
    void HandleKey(KeyPress press);
    void HandleMouse(const MouseReport& mouse);
    void HandleAnswer(const CursorReport& cursor);

    std::unique_ptr<Tty> tty_;
    Writer writer_;
    Abilities abilities_;
    Parser parser_;
    Prefix prefix_;
    Clicks clicks_;
    Pace pace_;
    PixelSize size_;       // of the terminal
    PixelSize game_size_;  // of what the game has of it
    const bool shows_speech_;
    SpeechRows speech_;
    ui::Frame latest_;    // as the game showed it
    ui::Frame composed_;  // with what stands beneath it
    bool owed_ = false;   // the latest picture is not on its way yet
    std::string out_;     // on its way to the terminal
    std::size_t sent_ = 0;
    std::deque<InputEvent> events_;
    std::vector<Report> reports_;
    bool drops_text_ = false;  // the last key was changed, and makes no text
    double escape_at_ = 0;
    bool gone_ = false;  // the terminal
    std::string clipboard_;
    std::string selected_;
};

TerminalWindow::TerminalWindow(std::unique_ptr<Tty> tty, const Abilities& abilities, bool speaks)
    : tty_(std::move(tty)),
      abilities_(abilities),
      game_size_(kLeastSize),
      shows_speech_(speaks && !tty_->HasOtherErrors()) {
    parser_.SetBackspace(tty_->Erase());
    writer_.SetAbilities(abilities_);
    Enter();
    for (const double end = Now() + kFirstAnswerSeconds; !pace_.Asks() && Now() < end;) Await(end);
}

TerminalWindow::~TerminalWindow() {
    tty_->Leave(std::string_view(out_).substr(sent_));
}

void TerminalWindow::Enter() {
    out_.clear();
    sent_ = 0;
    tty_->Enter();
    out_ += kQuestions;
    Flush();
    TakeSize();
}

// Rows that the game does not need are for the speech.
void TerminalWindow::TakeSize() {
    size_ = tty_->Size();
    writer_.Resize(size_.width, size_.height);
    owed_ = true;
    if (IsTooSmall()) return;
    game_size_ = size_;
    if (shows_speech_) {
        game_size_.height -= std::min(size_.height - kLeastSize.height, SpeechRows::kMost);
    }
    events_.push_back(ui::WindowResized{game_size_, 1});
    events_.push_back(ui::WindowExposed{});
}

PixelSize TerminalWindow::LeastSize() const {
    return {kLeastSize.width, kLeastSize.height + (shows_speech_ ? 1 : 0)};
}

bool TerminalWindow::IsTooSmall() const {
    return size_.width < LeastSize().width || size_.height < LeastSize().height;
}

void TerminalWindow::Show(const ui::Frame& frame) {
    latest_ = frame;
    owed_ = true;
    Present();
}

bool TerminalWindow::Say(std::string_view line) {
    if (!shows_speech_) return false;
    speech_.Say(line);
    owed_ = true;
    Present();
    return true;
}

const ui::Frame& TerminalWindow::Compose() {
    if (IsTooSmall()) {
        composed_ = TooSmall(size_, LeastSize());
        return composed_;
    }
    if (!shows_speech_) return latest_;
    composed_.Resize({.columns = size_.width, .rows = size_.height, .cell_height = 1});
    std::ranges::fill(composed_.cells, ui::Cell{});
    composed_.caret = latest_.caret;
    const int rows = std::min(game_size_.height, latest_.grid.rows);
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < std::min(size_.width, latest_.grid.columns); ++x) {
            composed_.At(x, y) = latest_.At(x, y);
        }
    }
    speech_.Draw(composed_, game_size_.height, size_.height - game_size_.height);
    return composed_;
}

// One picture is on its way at a time: what changes meanwhile is in the next.
void TerminalWindow::Present() {
    if (!owed_ || sent_ < out_.size() || !pace_.MaySend(Now())) return;
    if (latest_.cells.empty() && !IsTooSmall()) return;
    owed_ = false;
    out_.clear();
    sent_ = 0;
    writer_.Draw(Compose(), out_);
    if (out_.empty()) return;
    if (pace_.Asks()) out_ += kAskStatus;
    pace_.Sent(out_.size(), Now());
    Flush();
}

void TerminalWindow::Flush() {
    while (sent_ < out_.size() && !gone_) {
        const auto written = tty_->Write(std::string_view(out_).substr(sent_));
        gone_ = !written.has_value();
        if (!written || *written == 0) return;
        sent_ += *written;
    }
}

std::optional<InputEvent> TerminalWindow::NextEvent(double timeout_seconds) {
    const double end = timeout_seconds < 0 ? -1 : Now() + timeout_seconds;
    for (bool looked = false;; looked = true) {
        if (gone_) return ui::CloseRequested{};
        if (!events_.empty()) {
            InputEvent event = std::move(events_.front());
            events_.pop_front();
            return event;
        }
        if (looked && end >= 0 && Now() >= end) return std::nullopt;
        Await(end);
    }
}

// Waits for something to happen, until a time or with a negative one for ever.
void TerminalWindow::Await(double end) {
    Present();
    double wait = end < 0 ? -1 : std::max(end - Now(), 0.0);
    const auto at_most = [&wait](double seconds) {
        if (seconds >= 0 && (wait < 0 || seconds < wait)) wait = seconds;
    };
    if (parser_.WaitsAfterEscape()) at_most(std::max(escape_at_ + kEscapeSeconds - Now(), 0.0));
    if (owed_) at_most(pace_.SecondsToSend(Now()));
    const bool writes = sent_ < out_.size();
    const Tty::Awaited come = tty_->Wait(writes ? Tty::Wants::Both : Tty::Wants::Input, wait);
    if (come.output) Flush();
    if (come.signal) {
        while (const int signal = tty_->NextSignal()) HandleSignal(signal);
    }
    if (come.input) {
        ReadInput();
    } else if (parser_.WaitsAfterEscape() && Now() >= escape_at_ + kEscapeSeconds) {
        parser_.TimeOut(reports_);
    }
    for (Report& report : reports_) Handle(report);
    reports_.clear();
    Present();
}

void TerminalWindow::ReadInput() {
    char bytes[4096];
    const auto count = tty_->Read(bytes, sizeof bytes);
    if (!count) return;
    if (*count == 0) {
        gone_ = true;
        return;
    }
    parser_.Read({bytes, *count}, reports_);
    if (parser_.WaitsAfterEscape()) escape_at_ = Now();
}

void TerminalWindow::HandleSignal(int signal) {
    switch (signal) {
        case SIGWINCH:
            TakeSize();
            break;
        case SIGTSTP:
            tty_->Leave({});
            raise(SIGSTOP);
            break;
        case SIGCONT:
            // Whoever stopped the program may have changed the terminal.
            pace_ = {};
            Enter();
            break;
        case SIGHUP:
            gone_ = true;
            break;
        default:
            events_.push_back(ui::CloseRequested{});
            break;
    }
}

void TerminalWindow::Handle(Report& report) {
    std::visit(
        Overloaded{
            [&](const KeyPress& press) { HandleKey(press); },
            [&](ui::TextInput& input) {
                if (!std::exchange(drops_text_, false)) events_.push_back(std::move(input));
            },
            [&](const MouseReport& mouse) { HandleMouse(mouse); },
            [&](Paste& paste) {
                // Where a text is typed this is the key that takes it from the clipboard.
                clipboard_ = std::move(paste.text);
                if (IsTooSmall()) return;
                events_.push_back(KeyPress{
                    .key = ui::Key::Character, .character = U'v', .with = {.control = true}});
            },
            [&](const FocusReport& focus) { events_.push_back(ui::FocusChanged{focus.active}); },
            [&](const CursorReport& cursor) { HandleAnswer(cursor); },
            [&](const ModeReport& mode) {
                if (mode.mode != kSynchronisedMode) return;
                abilities_.synchronises = mode.known;
                writer_.SetAbilities(abilities_);
            },
            [&](const StatusReport&) { pace_.Answered(Now()); },
        },
        report);
}

void TerminalWindow::HandleKey(KeyPress press) {
    drops_text_ = true;
    if (IsTooSmall()) {
        if (press.Is(ui::Key::Escape)) events_.push_back(ui::CloseRequested{});
        return;
    }
    const std::optional<KeyPress> meant = prefix_.Apply(press);
    if (!meant) return;
    drops_text_ = meant->with != press.with || meant->key != press.key;
    events_.push_back(*meant);
}

// A pointer that is on its way is only where it came to last.
void TerminalWindow::HandleMouse(const MouseReport& mouse) {
    if (IsTooSmall()) return;
    ui::PointerInput pointer = {.action = mouse.action,
                                .x = mouse.x,
                                .y = mouse.y,
                                .button = mouse.button,
                                .wheel = mouse.wheel,
                                .with = mouse.with};
    if (mouse.action == ui::PointerAction::Press) {
        pointer.clicks = clicks_.Press(mouse.button, mouse.x, mouse.y, Now());
    }
    if (mouse.action == ui::PointerAction::Move && !events_.empty()) {
        auto* const last = std::get_if<ui::PointerInput>(&events_.back());
        if (last != nullptr && last->action == ui::PointerAction::Move) {
            *last = pointer;
            return;
        }
    }
    events_.push_back(pointer);
}

void TerminalWindow::HandleAnswer(const CursorReport& cursor) {
    if (cursor.y == kGlyphRow) {
        abilities_.charset = cursor.x == 1 ? Charset::Unicode : Charset::Ascii;
    } else if (cursor.x == kRepeatedColumns && cursor.y == kRepeatedLetterRow) {
        abilities_.repeats = Repeats::Letters;
    } else if (cursor.x == kRepeatedColumns && cursor.y == kRepeatedGlyphRow) {
        abilities_.repeats = Repeats::Everything;
    }
    writer_.SetAbilities(abilities_);
    owed_ = true;
}

void TerminalWindow::SetClipboardText(const std::string& text) {
    clipboard_ = text;
    if (text.size() > kLongestCopy / 4 * 3) return;
    out_ += "\x1b]52;c;";
    AppendBase64(out_, text);
    out_ += '\a';
    Flush();
}

}  // namespace

base::Result<std::unique_ptr<platform::Window>> OpenTerminal(
    const platform::WindowOptions& options) {
    const Surroundings around = SurroundingsHere();
    if (IsUnusable(around)) {
        return base::Failure{
            "The game cannot draw on this terminal: TERM names none that it knows."};
    }
    auto tty = std::make_unique<Tty>();
    if (!tty->IsOpen()) return base::Failure{"There is no terminal to play in."};
    return std::unique_ptr<platform::Window>(
        std::make_unique<TerminalWindow>(std::move(tty), AbilitiesIn(around), options.speaks));
}

}  // namespace zo::term
