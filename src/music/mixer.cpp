#include "music/mixer.h"

#include <algorithm>
#include <cmath>

namespace Kest {
namespace {

constexpr float kUnderLine = 0.71F;    // -3 dB
constexpr float kUnderEffect = 0.63F;  // -4 dB
constexpr float kKeyPan = 0.1F;
constexpr float kKeyCents = 40;
constexpr std::uint16_t kTowardCard = 256;

bool IsKey(Effect effect) {
    return effect == Effect::Key || effect == Effect::NewLine;
}

bool HoldsMusicDown(Effect effect) {
    return effect >= Effect::Pass && effect <= Effect::NotClosed;
}

}  // namespace

// A one-pole moves this much of the way a sample.
Ducker::Ducker()
    : fall_(1 - std::exp(-1.0F / SamplesOf(15))), rise_(1 - std::exp(-1.0F / SamplesOf(600))) {}

float Ducker::Next() {
    const float target = effect_left_ > 0 ? kUnderEffect : line_left_ > 0 ? kUnderLine : 1.0F;
    effect_left_ = std::max(effect_left_ - 1, 0);
    line_left_ = std::max(line_left_ - 1, 0);
    gain_ += (target - gain_) * (target < gain_ ? fall_ : rise_);
    return gain_;
}

float Ceiling(float sample) {
    constexpr float kKnee = 0.8F;
    constexpr float kRoom = 1 - kKnee;
    const float size = std::abs(sample);
    if (size <= kKnee) return sample;
    return std::copysign(kKnee + kRoom * std::tanh((size - kKnee) / kRoom), sample);
}

void Mixer::Mix(std::span<Frame> frames) {
    while (!frames.empty()) {
        const std::size_t count = std::min(frames.size(), kChunk);
        MixChunk(frames.first(count));
        frames = frames.subspan(count);
    }
}

void Mixer::MixChunk(std::span<Frame> frames) {
    Post post;
    while (input_.posts.Read({&post, 1}) == 1) Start(post);
    const float music = input_.music_volume.load(std::memory_order_relaxed);
    const float effects = input_.effects_volume.load(std::memory_order_relaxed);
    const float line = input_.line_volume.load(std::memory_order_relaxed);
    const float focus = input_.heard.load(std::memory_order_relaxed) ? 1.0F : 0.0F;
    // Music that nobody can hear waits where it is, and costs nothing.
    const bool heard =
        (music > 0 || music_gain_.Value() > 0) && (focus > 0 || focus_gain_.Value() > 0);
    const std::size_t played = heard ? input_.music.Read(frames) : 0;
    has_music_ |= played > 0;
    if (heard && has_music_) missed_.fetch_add(frames.size() - played, std::memory_order_relaxed);
    std::fill(frames.begin() + static_cast<std::ptrdiff_t>(played), frames.end(), Frame{});
    for (Frame& frame : frames) {
        frame = frame * (music_gain_.Next(music) * ducker_.Next());
        frame += line_.Next() * line_gain_.Next(line);
        frame += NextOfEffects() * effects_gain_.Next(effects);
        frame = frame * focus_gain_.Next(focus);
        frame = {Ceiling(frame.left), Ceiling(frame.right)};
        ++now_;
    }
    const bool plays =
        std::ranges::any_of(voices_, [](const Voice& voice) { return !voice.samples.empty(); });
    silent_.store(!heard && !plays && line_.Silent());
}

void Mixer::Start(const Post& post) {
    if (post.effect == Effect::LineByte) {
        const auto byte = static_cast<std::uint8_t>(post.parameter);
        const int key = input_.key.load(std::memory_order_relaxed);
        if (line_.Play(byte, post.parameter >= kTowardCard, key)) ducker_.AskForLine();
        return;
    }
    StartEffect(post);
}

// The oldest gives way when all play; the same once more at once is passed over.
void Mixer::StartEffect(const Post& post) {
    const EffectTables* const tables = input_.effects.load(std::memory_order_acquire);
    if (!tables) return;
    const std::span<const float> samples = tables->Samples(post.effect);
    std::uint64_t& last = last_[static_cast<std::size_t>(post.effect)];
    const auto apart = static_cast<std::uint64_t>(SamplesOf(IsKey(post.effect) ? 12 : 30));
    if (samples.empty() || (last != 0 && now_ - last < apart)) return;
    last = now_;
    if (HoldsMusicDown(post.effect)) ducker_.AskForEffect();

    const auto taken = std::ranges::min_element(
        voices_, {}, [](const Voice& voice) { return voice.samples.empty() ? 0 : voice.started; });
    Voice& voice = *taken;
    voice = {samples, 0, 1, Frame{1, 1} * (post.volume * post.gain), now_};
    if (!IsKey(post.effect)) return;
    const Frame pan = Panned(kKeyPan * variation_.Next());
    voice.gain = {voice.gain.left * pan.left, voice.gain.right * pan.right};
    voice.step = std::exp2(kKeyCents * variation_.Next() / 1200);
}

Frame Mixer::NextOfEffects() {
    Frame sum;
    for (Voice& voice : voices_) {
        if (voice.samples.empty()) continue;
        const auto index = static_cast<std::size_t>(voice.at);
        if (index + 1 >= voice.samples.size()) {
            voice.samples = {};
            continue;
        }
        const auto between = static_cast<float>(voice.at - static_cast<double>(index));
        const float here = voice.samples[index];
        sum += voice.gain * (here + (voice.samples[index + 1] - here) * between);
        voice.at += voice.step;
    }
    return sum;
}

void Mixer::MixTo16Bits(std::span<std::int16_t> samples, Dither dither) {
    std::array<Frame, kChunk> frames;
    const auto rounded = [&](float sample) {
        const float noise =
            dither == Dither::Yes ? (dither_.Next() + dither_.Next()) / (2 * 32767) : 0;
        const float value = std::round(32767 * (sample + noise));
        return static_cast<std::int16_t>(std::clamp(value, -32768.0F, 32767.0F));
    };
    while (samples.size() >= 2) {
        const std::size_t count = std::min(samples.size() / 2, kChunk);
        MixChunk(std::span(frames).first(count));
        for (std::size_t k = 0; k < count; ++k) {
            samples[2 * k] = rounded(frames[k].left);
            samples[2 * k + 1] = rounded(frames[k].right);
        }
        samples = samples.subspan(2 * count);
    }
}

}  // namespace Kest
