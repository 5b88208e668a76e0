#include <algorithm>

#include "base/utf.h"
#include "bench/bench.h"
#include "bench/firmware_colours.h"
#include "bench/firmware_help.h"
#include "shell/shell.h"

namespace Kest {
namespace {

constexpr std::string_view kReadOnly = "This text is read-only";

std::string_view Trimmed(std::string_view text) {
    const std::size_t from = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t last = text.find_last_not_of(" \t");
    return last == std::string_view::npos ? std::string_view() : text.substr(from, last + 1 - from);
}

// The assembler counts bytes, the editor characters.
int CharactersIn(std::u16string_view line, int from, int bytes) {
    const std::string utf8 = base::ToUtf8(line);
    const auto size = static_cast<int>(utf8.size());
    from = std::clamp(from, 0, size);
    const auto part = utf8.substr(static_cast<std::size_t>(from),
                                  static_cast<std::size_t>(std::clamp(bytes, 0, size - from)));
    return static_cast<int>(base::ToUtf16(part).size());
}

}  // namespace

void Bench::LinkEditor() {
    zo::ui::EditorLinks& links = editor_.links;
    links.colour = ColourFirmware;
    links.complete = [this](std::u16string_view before) {
        return CompleteFirmware(before, loaded_.ticket.machine, run_.Firmware());
    };
    links.describe = DescribeInstruction;
    links.changed = [this] { Edited(); };
    links.gutter_pressed = [this](int line) {
        if (stage_ >= StageOf(Command::ToggleBreakpoint)) ToggleBreakpoint(line);
    };
    links.refused = [this] { shell_.SetStatus(std::string(kReadOnly)); };
    links.say = [this](std::string_view sentence) { shell_.SetStatus(std::string(sentence)); };
    links.command = [this](std::string_view line) { RunCommandLine(line); };
    links.clipboard = [this] {
        std::string text = shell_.ClipboardText();
        return TakesCard(text) ? std::string() : text;
    };
    links.set_clipboard = [this](std::string_view utf8) {
        shell_.SetClipboardText(std::string(utf8));
    };
    links.selection = [this] { return shell_.SelectedText(); };
    links.set_selection = [this](std::string_view utf8) {
        shell_.SetSelectedText(std::string(utf8));
    };
}

void Bench::RunCommandLine(std::string_view line) {
    line = Trimmed(line);
    if (line.empty()) return;
    const auto commands = LineCommands();
    const auto found = std::ranges::find(commands, line, &LineCommand::name);
    if (found == commands.end()) {
        shell_.Sound().Play(Effect::Alert);
        shell_.SetStatus("Not a bench command: :" + std::string(line), Alert::Yes);
        return;
    }
    switch (found->act) {
        case LineAct::Save:
            return Save();
        case LineAct::SaveAndLeave:
            Save();
            return Leave();
        case LineAct::Leave:
            return Leave();
        case LineAct::RunOrPause:
            return Do(Command::RunOrPause);
        case LineAct::Verify:
            return Do(Command::Verify);
        case LineAct::Help:
            return OpenPage("vi-keys");
    }
}

void Bench::MarkErrors() {
    std::vector<zo::ui::EditorMarks::Error>& errors = editor_.Marks().errors;
    errors.clear();
    for (const kp::AssemblyError& error : run_.Firmware().errors) {
        const std::u16string_view line = editor_.Buffer().Line(error.line - 1);
        errors.push_back({error.line - 1, CharactersIn(line, 0, error.column - 1),
                          CharactersIn(line, error.column - 1, error.length), error.message});
    }
    std::ranges::stable_sort(errors, {}, [](const zo::ui::EditorMarks::Error& error) {
        return zo::ui::TextPosition{error.line, error.column};
    });
}

std::string Bench::FirmwareIn(int slot) {
    const auto kept = shell_.LoadFirmware(loaded_.ticket.id, slot);
    return kept ? *kept : OpeningText();
}

}  // namespace Kest
