#include "music/line_voice.h"

#include <cmath>
#include <numbers>
#include <span>

namespace Kest {
namespace {

constexpr float kPeak = 0.10F;
constexpr float kPan = 0.25F;
constexpr std::array kScale = {0, 2, 4, 7, 9};  // the major pentatonic
constexpr int kAttack = SamplesOf(3);
constexpr int kRelease = SamplesOf(5);
constexpr float kFallDb = -30;  // over one tone

// One period of a sine with overtones, as loud as it may be.
void MakeWave(std::span<float> wave, float octave, float twelfth) {
    const auto length = static_cast<float>(wave.size() - 1);
    float peak = 0;
    for (std::size_t k = 0; k < wave.size(); ++k) {
        const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(k) / length;
        wave[k] = std::sin(angle) + octave * std::sin(2 * angle) + twelfth * std::sin(3 * angle);
        peak = std::max(peak, std::abs(wave[k]));
    }
    for (float& sample : wave) sample *= kPeak / peak;
}

// A straight attack, an exponential fall, and the last of it faded out.
void MakeEnvelope(std::span<float> envelope) {
    const auto length = static_cast<float>(envelope.size());
    for (std::size_t k = 0; k < envelope.size(); ++k) {
        const auto at = static_cast<float>(k);
        const float attack = std::min(at / kAttack, 1.0F);
        const float release = std::min((length - at) / kRelease, 1.0F);
        envelope[k] = attack * release * std::pow(10.0F, kFallDb / 20 * at / length);
    }
}

float PeriodsPerSample(int note) {
    return 440 * std::exp2(static_cast<float>(note - 69) / 12) / kSampleRate;
}

}  // namespace

int LineNote(int digit, int key) {
    const int lowest = 48 + (key > 6 ? key - 12 : key);
    return lowest + 12 * (digit / 5) + kScale[static_cast<std::size_t>(digit % 5)];
}

LineVoice::LineVoice() : sent_pan_(Panned(-kPan)), received_pan_(Panned(kPan)) {
    MakeWave(sent_wave_, 0.25F, 0.06F);
    MakeWave(received_wave_, 0, 0);
    MakeEnvelope(envelope_);
}

bool LineVoice::Play(std::uint8_t byte, bool toward_card, int key) {
    Direction& direction = toward_card ? received_ : sent_;
    if (direction.since < kApart) return false;
    direction.since = 0;
    direction.before = direction.now;
    direction.cut = kCut;
    direction.now = {
        {PeriodsPerSample(LineNote(byte / 16, key)), PeriodsPerSample(LineNote(byte % 16, key))},
        0,
        0};
    return true;
}

Frame LineVoice::Next() {
    Frame frame = sent_pan_ * Sound(sent_, sent_wave_);
    frame += received_pan_ * Sound(received_, received_wave_);
    return frame;
}

float LineVoice::Sound(Direction& direction, const Wave& wave) const {
    direction.since = std::min(direction.since + 1, kApart);
    float sum = Sound(direction.now, wave);
    if (direction.cut > 0) {
        const float gain = static_cast<float>(direction.cut) / kCut;
        sum += Sound(direction.before, wave) * gain;
        --direction.cut;
    }
    return sum;
}

float LineVoice::Sound(Byte& byte, const Wave& wave) const {
    if (byte.at >= 2 * kTone) return 0;
    const auto tone = static_cast<std::size_t>(byte.at / kTone);
    const auto into = static_cast<std::size_t>(byte.at % kTone);
    if (into == 0) byte.phase = 0;
    const float place = byte.phase * kTable;
    const auto index = static_cast<std::size_t>(place);
    const float between = place - static_cast<float>(index);
    const float sample = wave[index] + (wave[index + 1] - wave[index]) * between;
    byte.phase += byte.step[tone];
    if (byte.phase >= 1) byte.phase -= 1;
    ++byte.at;
    return sample * envelope_[into];
}

}  // namespace Kest
