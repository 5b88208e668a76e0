#include "music/song_player.h"

#include <algorithm>
#include <cmath>

namespace Kest {
namespace {

constexpr std::size_t kBlock = 64;  // frames between two changes of the moods
constexpr std::int64_t kPrepareBefore = 384000;
constexpr std::int64_t kFadeFrames = 36000;
constexpr float kFadeStep = 1.0F / kFadeFrames;
constexpr float kHastyStep = 1.0F / 5760;  // for what was asked for, and for a song that stopped
constexpr float kMoodStep = 0.25F * kBlock / kSampleRate;

constexpr Moods kScenes[] = {
    {0.50F, 0.60F, 0.50F, 0.60F, 0.60F, 0.65F},  // Title
    {0.50F, 0.50F, 0.50F, 0.60F, 0.60F, 0.55F},  // Board
    {0.45F, 0.55F, 0.50F, 0.60F, 0.60F, 0.50F},  // Editing
    {0.55F, 0.50F, 0.65F, 0.65F, 0.60F, 0.40F},  // Running
    {0.35F, 0.65F, 0.30F, 0.55F, 0.55F, 0.45F},  // Reading
    {0.60F, 0.50F, 0.60F, 0.60F, 0.65F, 0.70F},  // Results
};

}  // namespace

const Moods& MoodsOf(MusicScene scene) {
    return kScenes[static_cast<std::size_t>(scene)];
}

std::int64_t SongLength(float bars, float tempo) {
    const double samples = static_cast<double>(bars) * 4 * 60 * kSampleRate / tempo;
    return static_cast<std::int64_t>(std::floor(samples + 0.5));
}

SongPlayer::SongPlayer(std::vector<Song> songs, SongOrder order, std::uint32_t seed,
                       SongControls& controls)
    : songs_(std::move(songs)),
      failed_(songs_.size()),
      order_(order),
      random_(seed),
      controls_(controls),
      moods_(MoodsOf(controls.scene.load(std::memory_order_relaxed))) {}

void SongPlayer::Render(std::span<Frame> frames) {
    while (!frames.empty()) {
        const std::size_t count = std::min(frames.size(), kBlock);
        RenderBlock(frames.first(count));
        frames = frames.subspan(count);
    }
}

void SongPlayer::RenderBlock(std::span<Frame> block) {
    TakeWish();
    MoveMoods();
    while (!block.empty()) {
        if (current_ == kNone && !finished_) {
            if (prepared_ == kNone) PrepareFor(kAny);
            BeginPrepared();
        }
        if (current_ == kNone) {
            std::ranges::fill(block, Frame{});
            return;
        }
        block = block.subspan(RenderCurrent(block));
    }
}

// Plays the current song to the end of the block, or to its own end; the frames that it took.
std::size_t SongPlayer::RenderCurrent(std::span<Frame> block) {
    const std::int64_t left = At(current_).length - position_;
    if (left <= kPrepareBefore && prepared_ == kNone) PrepareFor(kAny);
    if (left <= kFadeFrames && fade_ != Fade::Out) FadeOut(kFadeStep);
    // A block never runs over the place where the fade begins, so that this is exact.
    const std::int64_t until = left > kFadeFrames ? left - kFadeFrames : left;
    block = block.first(
        std::min(block.size(), static_cast<std::size_t>(std::max<std::int64_t>(until, 1))));

    std::size_t good = 0;
    if (!stopped_) {
        At(current_).program->SetMoods(moods_);
        good = At(current_).program->Render(block);
        if (good > 0) last_ = block[good - 1];
    }
    if (good < block.size() && !stopped_) {
        stopped_ = true;
        Fail(current_);
        FadeOut(kHastyStep);
        if (prepared_ == kNone) PrepareFor(kAny);
    }
    std::fill(block.begin() + static_cast<std::ptrdiff_t>(good), block.end(), last_);
    for (std::size_t k = 0; k < block.size(); ++k) {
        const float gain = NextGain();
        block[k] = block[k] * gain;
        const bool over = ++position_ >= At(current_).length;
        if (over || (fade_ == Fade::Out && gain == 0)) {
            End();
            return k + 1;
        }
    }
    return block.size();
}

void SongPlayer::End() {
    // The same song again could not be readied while it played.
    if (prepared_ == current_ && !At(current_).program->Restart()) {
        Fail(current_);
        prepared_ = kNone;
    }
    current_ = kNone;
}

float SongPlayer::NextGain() {
    const float gain = gain_;
    if (fade_ == Fade::In) {
        gain_ = std::min(gain_ + kFadeStep, 1.0F);
        if (gain_ == 1) fade_ = Fade::Held;
    } else if (fade_ == Fade::Out) {
        gain_ = std::max(gain_ - fall_, 0.0F);
    }
    return gain;
}

void SongPlayer::FadeOut(float step) {
    fade_ = Fade::Out;
    fall_ = step;
}

// What was asked for since the last block.
void SongPlayer::TakeWish() {
    const int wish = controls_.wish.exchange(kNone, std::memory_order_relaxed);
    if (wish == kNone || wish == current_ || wish >= Count() || finished_) return;
    PrepareFor(wish);
    if (prepared_ != kNone && current_ != kNone) FadeOut(kHastyStep);
}

// Readies a song to begin; one that stops before its first sample has failed, and another is taken.
void SongPlayer::PrepareFor(int wish) {
    for (std::size_t tries = 0; tries <= songs_.size(); ++tries) {
        const int song = wish != kAny && CanPlay(wish) ? wish : Choose();
        if (song == kNone) return;
        if (order_ == SongOrder::Listed) listed_ = song;
        if (song == current_ || At(song).program->Restart()) {
            prepared_ = song;
            return;
        }
        Fail(song);
    }
}

bool SongPlayer::CanPlay(int song) const {
    const auto index = static_cast<std::size_t>(song);
    return songs_[index].program && !failed_[index];
}

int SongPlayer::Choose() {
    if (order_ == SongOrder::Chance) return ChooseByChance();
    for (int song = listed_ + 1; song < Count(); ++song) {
        if (CanPlay(song)) return song;
    }
    return kNone;
}

int SongPlayer::ChooseByChance() {
    if (songs_.empty()) return kNone;
    if (played_ == 0 && CanPlay(0)) return 0;
    for (int tries = 0; tries < 2 * Count(); ++tries) {
        const int song = static_cast<int>(random_.Next() % songs_.size());
        if (song != current_ && CanPlay(song)) return song;
    }
    if (current_ != kNone && CanPlay(current_)) return current_;
    for (int song = 0; song < Count(); ++song) {
        if (CanPlay(song)) return song;
    }
    return kNone;
}

// Where nothing is prepared, nothing plays any more.
void SongPlayer::BeginPrepared() {
    current_ = prepared_;
    prepared_ = kNone;
    controls_.playing.store(current_, std::memory_order_relaxed);
    finished_ = current_ == kNone;
    if (finished_) return;
    ++played_;
    position_ = 0;
    stopped_ = false;
    last_ = {};
    fade_ = Fade::In;
    gain_ = 0;
    controls_.pitch_class.store(At(current_).pitch_class, std::memory_order_relaxed);
}

void SongPlayer::MoveMoods() {
    const Moods& target = MoodsOf(controls_.scene.load(std::memory_order_relaxed));
    for (std::size_t k = 0; k < kMoods; ++k) {
        moods_[k] += std::clamp(target[k] - moods_[k], -kMoodStep, kMoodStep);
    }
}

}  // namespace Kest
