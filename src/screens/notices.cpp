#include "screens/notices.h"

#include <algorithm>

#include "base/embedded.h"
#include "base/format.h"
#include "base/utf.h"
#include "base/version.h"
#include "save/achievements.h"
#include "shell/shell.h"

extern "C" const base::EmbeddedFile kest_notices[];

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Dialog;
using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::Paragraph;
using zo::ui::Role;

struct ReadingForm {
    std::string_view name;       // the screen's
    std::string_view top_title;  // of the top bar
    std::string_view button;
    zo::ui::KeyItem close;
};

class Reading final : public Screen {
public:
    Reading(Shell& shell, const ReadingForm& form, Dialog dialog)
        : Screen(shell), form_(form), dialog_(std::move(dialog)) {
        dialog_.text.copy = [this](const std::string& text) { shell_.SetClipboardText(text); };
        dialog_.buttons.Set(
            {{.label = std::string(form_.button), .act = [this] { shell_.CloseOverlay(); }}});
    }

    std::string_view Name() const override { return form_.name; }
    void Draw(Canvas& canvas, zo::ui::Pressables& pressables) override {
        dialog_.Draw(canvas, pressables);
    }
    void DescribeFrame(FrameRecord& record) const override {
        record.title = form_.top_title;
        record.keys = {{.cap = "↑↓", .word = "Scroll"}, form_.close};
    }
    bool Key(const KeyPress& key) override {
        if (!key.Is(Key::Escape)) return dialog_.Key(key);
        shell_.CloseOverlay();
        return true;
    }

private:
    ReadingForm form_;
    Dialog dialog_;
};

constexpr ReadingForm kCredits = {
    "credits", "CREDITS", "Close", {.key = {.key = Key::Escape}, .word = "Close"}};
constexpr ReadingForm kAchievements = {
    "achievements", "ACHIEVEMENTS", "OK", {.key = {.key = Key::Enter}, .word = "OK"}};

constexpr std::size_t kRoleCells = 31;  // what somebody did
constexpr std::size_t kTitleCells = 24;
constexpr std::size_t kLongestHeading = 40;

std::string Padded(std::string_view text, std::size_t cells) {
    std::string padded(text);
    padded.resize(padded.size() + cells - std::min(cells, base::CodePoints(text)), ' ');
    return padded;
}

// A short line without a small letter, which begins a paragraph, is a heading.
bool IsHeading(std::string_view line) {
    const auto is_small = [](char c) { return c >= 'a' && c <= 'z'; };
    const auto is_capital = [](char c) { return c >= 'A' && c <= 'Z'; };
    return std::ranges::any_of(line, is_capital) && std::ranges::none_of(line, is_small);
}

void AddLines(std::vector<Paragraph>& text, std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        const std::string_view line = lines.substr(0, end);
        lines.remove_prefix(std::min(end + 1, lines.size()));
        const bool begins = text.back().text.empty() && line.size() <= kLongestHeading;
        text.push_back({.text = std::string(line),
                        .role = begins && IsHeading(line) ? Role::DialogHot : Role::Dialog});
    }
}

std::vector<Paragraph> CreditsText() {
    constexpr std::string_view kWork[][2] = {
        {"Design, tickets and binder", "The Vantor Kest team"},
        {"Code", "The Vantor Kest team"},
        {"Soundtrack", "Eight songs written in Hum"},
    };
    std::vector<Paragraph> text;
    text.push_back({.text = "Vantor Kest " + std::string(base::Version()), .role = Role::Dialog});
    text.push_back({});
    for (const auto& [work, who] : kWork) {
        text.push_back({.text = std::string(who),
                        .role = Role::Dialog,
                        .label = Padded(work, kRoleCells),
                        .label_role = Role::Dialog});
    }
    text.push_back({});
    for (const base::EmbeddedFile* file = kest_notices; file->name != nullptr; ++file) {
        AddLines(text, {file->data, file->size});
    }
    return text;
}

}  // namespace

std::unique_ptr<Screen> MakeCredits(Shell& shell) {
    const Dialog::Form form = {.width = 72, .above = 0, .below = 0, .rows_kept = 9};
    return std::make_unique<Reading>(shell, kCredits, Dialog("CREDITS", CreditsText(), form));
}

std::unique_ptr<Screen> MakeAchievements(Shell& shell) {
    const auto& earned = shell.Progress().achievements;
    std::vector<Paragraph> text;
    for (const Achievement& achievement : Achievements()) {
        const bool has = earned.contains(achievement.id);
        text.push_back(
            {.text = std::string(achievement.description),
             .role = has ? Role::Dialog : Role::DialogDim,
             .label = Padded((has ? "√ " : "  ") + std::string(achievement.title), kTitleCells),
             .label_role = has ? Role::Dialog : Role::DialogDim,
             .wrap = zo::ui::Wrap::Even});
    }
    const std::string title =
        base::Format("ACHIEVEMENTS ─ %zu of %zu", earned.size(), Achievements().size());
    const Dialog::Form form = {.width = 76, .side = 1, .above = 0, .rows_kept = 14};
    return std::make_unique<Reading>(shell, kAchievements, Dialog(title, std::move(text), form));
}

}  // namespace Kest
