#include "screens/splash.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "base/format.h"
#include "base/utf.h"
#include "logo.h"
#include "music/sound_engine.h"
#include "shell/shell.h"
#include "ticket_facts.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Role;

constexpr double kStartSeconds = 3.05;
constexpr double kPrintedPerSecond = 260;
constexpr double kTypedPerSecond = 20;
constexpr int kLeft = 2;
constexpr int kTop = 1;
constexpr std::string_view kAnyKey = "Press any key";

// A line of the start: what stands before the fact, the fact, and whether somebody types it.
struct StartLine {
    std::string before = {};
    std::string fact = {};
    bool typed = false;
    bool warns = false;
};

std::string_view ThemeName(const Settings& settings) {
    constexpr std::string_view kMonitors[] = {"VGA", "Amber", "Green", "LCD"};
    constexpr std::string_view kThemes[] = {"Dark", "Amber", "Blueprints", "Blueprints"};
    return (settings.modern_look ? kThemes : kMonitors)[settings.theme];
}

StartLine TicketsLine(const kp::Content& content) {
    const std::string loaded = base::Format("%zu loaded, ", content.Tickets().size());
    const std::size_t left_out = content.left_out.size();
    if (left_out == 0 && content.problems.empty()) {
        return {.before = "Loading tickets ... ", .fact = loaded + "references proven"};
    }
    return {.before = "Loading tickets ... ",
            .fact = loaded + base::Format("%zu left out", left_out),
            .warns = true};
}

std::vector<StartLine> StartLines(Shell& shell, int columns, int rows) {
    const Settings& settings = shell.Settings();
    const TicketCount count = CountTickets(shell);
    const auto songs = static_cast<int>(SongNames().size());
    return {
        {.before = {}, .fact = "Kest Workstation BIOS 3.02"},
        {.before = {}, .fact = "Copyright (C) 1989-1996 Kest Instruments"},
        {},
        {.before = "Memory ............ ", .fact = "640 KB base, 3328 KB extended"},
        {.before = "Display ........... ",
         .fact = base::Format("text mode, %d x %d, %s", columns, rows,
                              std::string(ThemeName(settings)).c_str())},
        {.before = "Serial port ....... ", .fact = "COM1 03F8, COM2 02F8"},
        {.before = "Sound ............. ",
         .fact = base::Format("%d %s, effects %s", songs, songs == 1 ? "song" : "songs",
                              settings.effects_on ? "on" : "off")},
        {.before = "Firmware .......... ", .fact = "C:\\KEST\\FIRMWARE"},
        {},
        {.before = "C:\\>", .fact = "cd kest", .typed = true},
        {.before = "C:\\KEST>", .fact = "kest", .typed = true},
        {},
        {.before = {}, .fact = "Vantor Kest, LC-1 service bench"},
        TicketsLine(shell.Content()),
        {.before = "Loading binder .... ",
         .fact = base::Format("%zu pages", shell.Content().pages.size())},
        {.before = "Loading progress .. ",
         .fact = base::Format("%d of %d closed", count.closed, count.all)},
        {.before = {}, .fact = "Bench ready."},
    };
}

// As many characters of the text as are there after these seconds, which go on by what they took.
std::string_view Typed(std::string_view text, double per_second, double& seconds) {
    const auto whole = static_cast<double>(text.size());
    const double shown = std::clamp(seconds * per_second, 0.0, whole);
    seconds -= whole / per_second;
    return text.substr(0, static_cast<std::size_t>(shown));
}

void Centred(Canvas& canvas, int y, std::string_view text) {
    canvas.Text((canvas.Columns() - static_cast<int>(text.size())) / 2, y, text, Role::Boot);
}

}  // namespace

void Splash::Entered() {
    entered_at_ = shell_.Now();
}

double Splash::Seconds() const {
    return shell_.Now() - entered_at_;
}

void Splash::Describe(Speech& speech) const {
    speech = {};
    speech.focus = "Vantor Kest. " + std::string(kAnyKey) + ".";
}

std::optional<double> Splash::NextFrameAt() const {
    if (stays_ || named_) return std::nullopt;
    return shell_.Settings().motion ? shell_.Now() : entered_at_ + kStartSeconds;
}

void Splash::Draw(Canvas& canvas, zo::ui::Pressables& /*pressables*/) {
    canvas.Fill(canvas.Area(), U' ', Role::Boot);
    Centred(canvas, canvas.Rows() - 2, kAnyKey);
    named_ = !stays_ && Seconds() >= kStartSeconds;
    if (named_) {
        DrawName(canvas);
    } else {
        DrawStart(canvas);
    }
}

// The caret goes with what is being typed.
void Splash::DrawStart(Canvas& canvas) const {
    const bool at_once = stays_ || !shell_.Settings().motion;
    double seconds = at_once ? std::numeric_limits<double>::max() : Seconds();
    int y = kTop;
    for (const StartLine& line : StartLines(shell_, shell_.Grid().columns, shell_.Grid().rows)) {
        const Role before = line.typed ? Role::Boot : Role::BootDim;
        int x = canvas.Text(kLeft, y, Typed(line.before, kPrintedPerSecond, seconds), before);
        const double per_second = line.typed ? kTypedPerSecond : kPrintedPerSecond;
        x = canvas.Text(x, y, Typed(line.fact, per_second, seconds),
                        line.warns ? Role::Warn : Role::Boot);
        if (seconds < 0) return canvas.SetCaret(x, y, zo::ui::CaretShape::Block);
        ++y;
    }
    canvas.SetCaret(kLeft, y, zo::ui::CaretShape::Block);
}

bool Splash::Key(const zo::ui::KeyPress&) {
    return AnyButton();
}

bool Splash::AnyButton() {
    shell_.Open(Place::Title);
    return true;
}

bool Splash::CaptureRequest(std::string_view request) {
    stays_ = request == "start";
    return stays_;
}

}  // namespace Kest
