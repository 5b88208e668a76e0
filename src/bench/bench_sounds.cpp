#include <algorithm>
#include <iterator>
#include <span>

#include "bench/bench.h"
#include "shell/shell.h"

namespace Kest {
namespace {

struct CommandSound {
    Command command;
    Effect effect;
};

// Of commands that sound the same whatever comes of them; the others sound where they are done.
constexpr CommandSound kCommandSounds[] = {
    {Command::Reset, Effect::Reset},        {Command::ToggleBreakpoint, Effect::Breakpoint},
    {Command::PreviousTest, Effect::Click}, {Command::NextTest, Effect::Click},
    {Command::ZoomIn, Effect::Click},       {Command::ZoomOut, Effect::Click},
    {Command::WholeTest, Effect::Click},    {Command::SlowerSpeed, Effect::Toggle},
    {Command::FasterSpeed, Effect::Toggle}, {Command::CycleSpeed, Effect::Toggle},
    {Command::ShowTicket, Effect::Click},   {Command::ShowHints, Effect::Click},
    {Command::ShowSpec, Effect::Click},     {Command::ShowHost, Effect::Click},
    {Command::ShowNotes, Effect::Click},    {Command::ShowCard, Effect::Click},
    {Command::ToggleCard, Effect::Click},
};

bool CrossesTheLine(const kp::TraceEvent& event) {
    return event.kind == kp::Happening::Transmitted || event.kind == kp::Happening::Received;
}

}  // namespace

void Bench::SoundCommand(Command command) {
    const auto* const row = std::ranges::find(kCommandSounds, command, &CommandSound::command);
    if (row != std::end(kCommandSounds)) shell_.Sound().Play(row->effect);
}

void Bench::SoundKey(const zo::ui::KeyPress& key) {
    using zo::ui::Key;
    if (key.Is(Key::Enter)) {
        shell_.Sound().Play(Effect::NewLine);
    } else if (key.Is(Key::Backspace) || key.Is(Key::Delete) || key.Is(Key::Tab)) {
        shell_.Sound().Play(Effect::Key);
    }
}

// How a test that has come to a halt ended, if it did.
void Bench::SoundOutcome() {
    if (run_.State() == RunState::Passed) shell_.Sound().Play(Effect::Pass);
    if (run_.State() == RunState::Failed) shell_.Sound().Play(Effect::Fail);
}

// What crossed the line since the last time, while a run can be followed by ear.
void Bench::SoundLine() {
    const kp::Session* const session = run_.Session();
    const std::span<const kp::TraceEvent> trace =
        session ? session->Trace() : std::span<const kp::TraceEvent>();
    for (const kp::TraceEvent& event : trace.subspan(std::min(line_heard_, trace.size()))) {
        if (!CrossesTheLine(event)) continue;
        shell_.Sound().PlayByte(static_cast<std::uint8_t>(event.value),
                                event.kind == kp::Happening::Received);
    }
    line_heard_ = trace.size();
}

// What happened unheard, at once or before a reset, is not heard later.
void Bench::SkipLine() {
    line_heard_ = run_.Session() ? run_.Session()->Trace().size() : 0;
}

std::optional<MusicScene> Bench::Music() const {
    return run_.State() == RunState::Running ? MusicScene::Running : MusicScene::Editing;
}

}  // namespace Kest
