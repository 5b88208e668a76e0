#include "builtin_samples.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "hum/arithmetic.h"
#include "hum/builtins.h"

namespace hum::formula {
namespace {

enum ClipWord : std::uint32_t { kFrames, kChannels, kWrap, kFilter, kSource, kClipHead };
enum ClipWrap : std::uint32_t { kOnce, kClamp, kLoop };
enum ClipFilter : std::uint32_t { kNearest, kLinear, kCubic };

float At(std::span<const float> frames, std::int64_t index) {
    const bool inside = index >= 0 && index < static_cast<std::int64_t>(frames.size());
    return inside ? frames[static_cast<std::size_t>(index)] : 0.0f;
}

float At(const Instruments::Layer& layer, std::int64_t index) {
    const bool inside = index >= 0 && index < static_cast<std::int64_t>(layer.frames.size());
    return inside ? layer.gain * static_cast<float>(layer.frames[static_cast<std::size_t>(index)])
                  : 0.0f;
}

// Between two frames; far outside of all of them for what is no position.
template <class Frames>
float LinearAt(const Frames& frames, double position) {
    if (!(std::fabs(position) < 1e9)) return 0.0f;
    const double floor = std::floor(position);
    const auto index = static_cast<std::int64_t>(floor);
    return Lerp(At(frames, index), At(frames, index + 1), static_cast<float>(position - floor));
}

const Instruments::Anchor& AnchorOf(const Instruments& instruments, double note, double& rate) {
    const double step = std::floor((note - kFirstAnchor) / kAnchorStep + 0.5);
    const auto number = static_cast<std::int32_t>(std::clamp(step, 0.0, kPianoAnchorCount - 1.0));
    rate = std::exp2((note - (kFirstAnchor + kAnchorStep * number)) / 12.0);
    return instruments.piano[static_cast<std::size_t>(number)];
}

struct Stereo {
    float left = 0, right = 0;
};

// Low notes lean left and high ones right; the far side hears them a little later.
Stereo PianoAt(const Runtime& runtime, float note, double position, float velocity) {
    if (runtime.instruments == nullptr || !(std::fabs(note) < 1000.0f)) return {};
    double rate = 1;
    const Instruments::Anchor& anchor = AnchorOf(*runtime.instruments, note, rate);
    const float hard = Clamp((velocity - 0.30f) / 0.45f, 0.0f, 1.0f);
    const auto play = [&](double at) {
        const float soft = hard < 1.0f ? LinearAt(anchor.soft, at * rate) : 0.0f;
        return Lerp(soft, hard > 0.0f ? LinearAt(anchor.hard, at * rate) : 0.0f, hard);
    };
    const float off_middle = note - 60.0f;
    const float pan = Clamp(off_middle / 48.0f, -0.7f, 0.7f);
    const double late = std::min(0.22 * std::fabs(static_cast<double>(off_middle)), 8.0);
    const float near = play(position);
    const float far = late > 0 ? play(position - late) : near;
    return {0.9f * (1.0f - pan / 2) * (pan > 0 ? far : near),
            0.9f * (1.0f + pan / 2) * (pan > 0 ? near : far)};
}

std::int32_t PianoLength(const Runtime& runtime, float note) {
    if (runtime.instruments == nullptr || !(std::fabs(note) < 1000.0f)) return 0;
    double rate = 1;
    const Instruments::Anchor& anchor = AnchorOf(*runtime.instruments, note, rate);
    const double frames = static_cast<double>(anchor.soft.frames.size()) / rate;
    return static_cast<std::int32_t>(std::clamp(std::ceil(frames), 0.0, 2e9));
}

std::span<const float> KitFrames(const Runtime& runtime, std::int32_t sound) {
    if (runtime.instruments == nullptr || sound < 0 || sound >= kKitSoundCount) return {};
    return runtime.instruments->kit[static_cast<std::size_t>(sound)];
}

// A clip's head, and where its frames come from.
struct Clip {
    std::int64_t frames = 0;
    std::uint32_t wrap = kOnce;
    std::uint32_t filter = kLinear;
    std::int32_t source = 0;
};

bool ReadClip(Runtime& runtime, Address handle, Clip& clip) {
    const auto address = static_cast<std::uint32_t>(handle.word);
    if (!runtime.InMemory(address, kClipHead)) {
        return runtime.Fail(Trouble::BuiltinPointer, address);
    }
    const std::uint32_t* head = runtime.memory + address;
    clip.wrap = head[kWrap];
    clip.filter = head[kFilter];
    clip.source = static_cast<std::int32_t>(head[kSource]);
    clip.frames = std::max(static_cast<std::int32_t>(head[kFrames]), 0);
    if (clip.source == 0) clip.frames = 0;
    if (clip.source <= kFirstPianoClip) {
        clip.frames = PianoLength(runtime, static_cast<float>(kFirstPianoClip - clip.source));
    } else if (clip.source < 0) {
        clip.frames =
            static_cast<std::int64_t>(KitFrames(runtime, kFirstKitClip - clip.source).size());
    }
    const auto source = static_cast<std::uint32_t>(clip.source);
    if (clip.source > 0 && clip.frames > 0 &&
        !runtime.InMemory(source, static_cast<std::uint32_t>(clip.frames))) {
        return runtime.Fail(Trouble::BuiltinPointer, source);
    }
    return true;
}

float FrameAt(const Runtime& runtime, const Clip& clip, std::int64_t index) {
    if (index < 0 || index >= clip.frames) {
        if (clip.wrap == kOnce) return 0.0f;
        if (clip.wrap == kLoop) {
            index %= clip.frames;
            if (index < 0) index += clip.frames;
        } else {
            index = std::clamp<std::int64_t>(index, 0, clip.frames - 1);
        }
    }
    if (clip.source > 0) {
        return runtime.Float(static_cast<std::uint32_t>(clip.source) +
                             static_cast<std::uint32_t>(index));
    }
    if (clip.source <= kFirstPianoClip) {
        const Stereo both = PianoAt(runtime, static_cast<float>(kFirstPianoClip - clip.source),
                                    static_cast<double>(index), 0.8f);
        return (both.left + both.right) / 2;
    }
    return At(KitFrames(runtime, kFirstKitClip - clip.source), index);
}

float ReadAt(const Runtime& runtime, const Clip& clip, float position) {
    if (clip.frames == 0 || !std::isfinite(position)) return 0.0f;
    const double held = std::clamp(static_cast<double>(position), -1e15, 1e15);
    const double floor = std::floor(held);
    const auto index = static_cast<std::int64_t>(floor);
    const auto t = static_cast<float>(held - floor);
    const auto frame = [&](std::int64_t at) { return FrameAt(runtime, clip, at); };
    if (clip.filter == kNearest) return frame(index);
    if (clip.filter == kLinear) return Lerp(frame(index), frame(index + 1), t);
    const float a = frame(index - 1);
    const float b = frame(index);
    const float c = frame(index + 1);
    const float d = frame(index + 2);
    const float c1 = 0.5f * (c - a);
    const float c2 = a - 2.5f * b + 2.0f * c - 0.5f * d;
    const float c3 = 0.5f * (d - a) + 1.5f * (b - c);
    return ((c3 * t + c2) * t + c1) * t + b;
}

}  // namespace

float ClipAt(Runtime& runtime, Address handle, float position) {
    Clip clip;
    return ReadClip(runtime, handle, clip) ? ReadAt(runtime, clip, position) : 0.0f;
}

float ClipAtPart(Runtime& runtime, Address handle, float part) {
    Clip clip;
    if (!ReadClip(runtime, handle, clip)) return 0.0f;
    return ReadAt(runtime, clip, part * static_cast<float>(clip.frames));
}

float ClipChannel(Runtime& runtime, Address clip, float position, std::int32_t) {
    return ClipAt(runtime, clip, position);
}

std::int32_t ClipLength(Runtime& runtime, Address handle) {
    Clip clip;
    return ReadClip(runtime, handle, clip) ? static_cast<std::int32_t>(clip.frames) : 0;
}

float KitAt(Runtime& runtime, std::int32_t sound, float position) {
    return LinearAt(KitFrames(runtime, sound), static_cast<double>(position));
}

std::int32_t KitLength(Runtime& runtime, std::int32_t sound) {
    return static_cast<std::int32_t>(KitFrames(runtime, sound).size());
}

float InstrumentAt(Runtime& runtime, std::int32_t instrument, float note, float position,
                   Address pair) {
    const auto address = static_cast<std::uint32_t>(pair.word);
    if (address != 0 && !runtime.InMemory(address, 2)) {
        runtime.Fail(Trouble::BuiltinPointer, address);
        return 0.0f;
    }
    const float velocity = address != 0 ? runtime.Float(address) : 0.8f;
    const Stereo both = instrument == 0 ? PianoAt(runtime, note, position, velocity) : Stereo();
    if (address == 0) return (both.left + both.right) / 2;
    runtime.SetFloat(address + 1, both.right);
    return both.left;
}

std::int32_t InstrumentLength(Runtime& runtime, std::int32_t instrument, std::int32_t note) {
    return instrument == 0 ? PianoLength(runtime, static_cast<float>(note)) : 0;
}

}  // namespace hum::formula
