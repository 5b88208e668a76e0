#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "music/frame.h"
#include "music/noise.h"

namespace Kest {

// What the player plays on in every song, each 0 to 1.
enum class Mood : std::uint8_t { Brightness, Warmth, Drums, Bass, Chords, Melody };
inline constexpr std::size_t kMoods = 6;
using Moods = std::array<float, kMoods>;

// What the game is showing, for which the music is set.
enum class MusicScene : std::uint8_t { Title, Board, Editing, Running, Reading, Results };
const Moods& MoodsOf(MusicScene scene);

// A song that can be played: allocates nothing once it is made.
class SongProgram {
public:
    virtual ~SongProgram() = default;
    // Back to the first sample; false when the song stopped on the way there.
    virtual bool Restart() = 0;
    virtual void SetMoods(const Moods& moods) = 0;
    // The next frames; returns how many there are, fewer when the song has stopped.
    virtual std::size_t Render(std::span<Frame> frames) = 0;
};

struct Song {
    std::int64_t length = 0;               // samples
    int pitch_class = 2;                   // the line voice's scale
    std::unique_ptr<SongProgram> program;  // null when it did not load
};

// Samples of a song of this many bars of four quarter notes.
std::int64_t SongLength(float bars, float tempo);

enum class SongOrder : bool { Chance, Listed };

// What other threads ask of the player and see of it. Songs count as in the player's list.
struct SongControls {
    static constexpr int kNone = -1;
    static constexpr int kNext = -2;  // as a wish: any other song
    std::atomic<int> wish = kNone;
    std::atomic<MusicScene> scene = MusicScene::Title;
    std::atomic<int> playing = kNone;  // the song that is heard
    std::atomic<int> pitch_class = 2;  // of that song
};

// Plays one song after another, with fades. It belongs to one thread and allocates nothing.
class SongPlayer {
public:
    // By chance the first song is played first, then others as the seed has it; as listed, each is
    // played once. The controls outlive the player.
    SongPlayer(std::vector<Song> songs, SongOrder order, std::uint32_t seed,
               SongControls& controls);

    // The next frames, silent where nothing plays.
    void Render(std::span<Frame> frames);
    // Every song has been played, or none can be.
    bool Finished() const { return finished_; }
    int Played() const { return played_; }  // songs that have begun

private:
    static constexpr int kNone = SongControls::kNone;
    static constexpr int kAny = SongControls::kNext;
    enum class Fade : std::uint8_t { In, Held, Out };

    void RenderBlock(std::span<Frame> block);
    std::size_t RenderCurrent(std::span<Frame> block);
    void TakeWish();
    void PrepareFor(int wish);
    int Choose();
    int ChooseByChance();
    int Count() const { return static_cast<int>(songs_.size()); }
    Song& At(int song) { return songs_[static_cast<std::size_t>(song)]; }
    bool CanPlay(int song) const;
    void Fail(int song) { failed_[static_cast<std::size_t>(song)] = true; }
    void BeginPrepared();
    void End();
    void FadeOut(float step);
    float NextGain();
    void MoveMoods();

    std::vector<Song> songs_;
    std::vector<bool> failed_;  // in this session
    SongOrder order_;
    Xorshift random_;
    SongControls& controls_;

    int current_ = kNone;
    int prepared_ = kNone;
    int listed_ = kNone;  // the last that was prepared in the order of the list
    bool finished_ = false;
    int played_ = 0;
    std::int64_t position_ = 0;
    bool stopped_ = false;  // the current song: its last frame is repeated while it fades
    Frame last_;
    Fade fade_ = Fade::In;
    float gain_ = 0;
    float fall_ = 0;  // a sample, while fading out
    Moods moods_;
};

}  // namespace Kest
