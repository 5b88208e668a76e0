#include "music/sound_engine.h"

#include <algorithm>
#include <array>

namespace Kest {
namespace {

constexpr SongName kSongs[] = {
    {"mainloop", "Main Loop"}, {"pipeline", "Pipeline"},  {"autoexec", "Autoexec"},
    {"finale", "Finale"},      {"bluenote", "Blue Note"}, {"holdtune", "Hold Tune"},
    {"warmboot", "Warm Boot"}, {"idletime", "Idle Time"},
};

constexpr std::size_t kAhead = 16384 * 3 / 4;  // frames that are kept ready
constexpr std::size_t kChunk = 512;
constexpr std::uint16_t kTowardCard = 256;

bool IsClick(Effect effect) {
    return effect == Effect::Key || effect == Effect::NewLine;
}

}  // namespace

std::span<const SongName> SongNames() {
    return kSongs;
}

void SoundEngine::Start(SongLoader load) {
    if (started_.exchange(true)) return;
    songs_ = std::thread([this, load = std::move(load)] { RunSongs(load); });
}

void SoundEngine::Stop() {
    stopping_.store(true);
    drained_.fetch_add(1);
    drained_.notify_one();
    if (songs_.joinable()) songs_.join();
}

void SoundEngine::RunSongs(const SongLoader& load) {
    tables_ = std::make_unique<const EffectTables>();
    input_.effects.store(tables_.get(), std::memory_order_release);
    SongPlayer player(load(), SongOrder::Chance, seed_, controls_);
    RenderAhead(player);
}

void SoundEngine::RenderAhead(SongPlayer& player) {
    std::array<Frame, kChunk> frames;
    while (!stopping_.load()) {
        const std::uint32_t drained = drained_.load();
        if (player.Finished()) return;
        while (input_.music.Filled() < kAhead && !stopping_.load(std::memory_order_relaxed)) {
            player.Render(frames);
            input_.music.Write(frames);
        }
        input_.key.store(controls_.pitch_class.load(std::memory_order_relaxed),
                         std::memory_order_relaxed);
        drained_.wait(drained);
    }
}

void SoundEngine::Fill(std::span<std::int16_t> samples) {
    mixer_.MixTo16Bits(samples, Dither::Yes);
    if (input_.music.Filled() >= kAhead) return;
    drained_.fetch_add(1);
    drained_.notify_one();
}

void SoundEngine::SetChoices(const SoundChoices& choices) {
    choices_ = choices;
    const auto set = [](std::atomic<float>& gain, bool on, float volume) {
        gain.store(on ? volume : 0, std::memory_order_relaxed);
    };
    set(input_.music_volume, choices.music_on, choices.music_volume);
    set(input_.effects_volume, choices.effects_on, choices.effects_volume);
    set(input_.line_volume, choices.line_on, choices.line_volume);
    SetFocused(focused_);
}

void SoundEngine::SetFocused(bool focused) {
    focused_ = focused;
    input_.heard.store(focused || !choices_.mute_unfocused, std::memory_order_relaxed);
    Want();
}

void SoundEngine::PlaySong(std::string_view key) {
    const auto* const song = std::ranges::find(kSongs, key, &SongName::key);
    if (song == std::end(kSongs)) return;
    controls_.wish.store(static_cast<int>(song - kSongs), std::memory_order_relaxed);
}

std::string_view SoundEngine::PlayingTitle() const {
    const int song = controls_.playing.load(std::memory_order_relaxed);
    return song == SongControls::kNone ? std::string_view()
                                       : kSongs[static_cast<std::size_t>(song)].title;
}

void SoundEngine::Play(Effect effect, std::uint16_t parameter) {
    if (!choices_.effects_on || (IsClick(effect) && !choices_.key_clicks)) return;
    Post({effect, EffectVolume(effect), parameter, 1});
}

void SoundEngine::PlayByte(std::uint8_t byte, bool toward_card) {
    if (!choices_.line_on) return;
    const auto parameter = static_cast<std::uint16_t>(byte + (toward_card ? kTowardCard : 0));
    Post({Effect::LineByte, 1, parameter, 1});
}

void SoundEngine::Post(const Kest::Post& post) {
    input_.posts.Write({&post, 1});
    Want();
}

void SoundEngine::Want() {
    if (wanted_) wanted_();
}

bool SoundEngine::Silent() const {
    const bool music = input_.music_volume.load() > 0 && input_.heard.load();
    return mixer_.Silent() && input_.posts.Filled() == 0 && !music;
}

}  // namespace Kest
