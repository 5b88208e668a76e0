// Which song plays when, and how one gives way to the next.
#include <doctest/doctest.h>

#include <algorithm>

#include "music/song_player.h"

namespace {

using Kest::Frame;
using Kest::Song;
using Kest::SongOrder;
using Kest::SongPlayer;

// Plays a steady level and stops where it is told to.
class Steady : public Kest::SongProgram {
public:
    explicit Steady(float level, std::int64_t stops_at) : level_(level), stops_at_(stops_at) {}
    bool Restart() override {
        at_ = 0;
        return stops_at_ != 0;
    }
    void SetMoods(const Kest::Moods& moods) override { heard = moods; }
    std::size_t Render(std::span<Frame> frames) override {
        std::size_t good = 0;
        for (; good < frames.size() && (stops_at_ < 0 || at_ < stops_at_); ++good, ++at_) {
            frames[good] = {level_, level_};
        }
        return good;
    }
    Kest::Moods heard{};

private:
    float level_;
    std::int64_t stops_at_;
    std::int64_t at_ = 0;
};

constexpr std::int64_t kLength = 400000;

Song MakeSong(int number, std::int64_t stops_at = -1) {
    return {kLength, number,
            std::make_unique<Steady>(0.1F * static_cast<float>(number + 1), stops_at)};
}

std::vector<Song> Songs(int count) {
    std::vector<Song> songs;
    for (int k = 0; k < count; ++k) songs.push_back(MakeSong(k));
    return songs;
}

struct Listener {
    Listener(std::vector<Song> songs, SongOrder order = SongOrder::Chance, std::uint32_t seed = 1)
        : player(std::move(songs), order, seed, controls) {}

    void Hear(std::int64_t count) {
        std::vector<Frame> frames(512);
        while (count > 0) {
            const auto now = static_cast<std::size_t>(std::min<std::int64_t>(count, 512));
            player.Render(std::span(frames).first(now));
            for (std::size_t k = 0; k < now; ++k) heard.push_back(frames[k].left);
            count -= static_cast<std::int64_t>(now);
        }
    }
    float At(std::int64_t sample) const { return heard[static_cast<std::size_t>(sample)]; }

    Kest::SongControls controls;
    SongPlayer player;
    std::vector<float> heard;
};

}  // namespace

TEST_CASE("a song's length follows from its bars and its tempo") {
    CHECK(Kest::SongLength(64, 84) == 8777143);
    CHECK(Kest::SongLength(32, 76) == 4850526);
}

TEST_CASE("songs fade in, play their length and fade out to the sample") {
    Listener listener(Songs(1));
    listener.Hear(kLength + 40000);
    CHECK(listener.At(0) == 0);
    CHECK(listener.At(18000) == doctest::Approx(0.05).epsilon(0.001));
    CHECK(listener.At(36001) == doctest::Approx(0.1));
    CHECK(listener.At(kLength - 36000) == doctest::Approx(0.1));
    CHECK(listener.At(kLength - 18000) == doctest::Approx(0.05).epsilon(0.001));
    CHECK(listener.At(kLength - 1) < 0.0001F);
    CHECK(listener.At(kLength + 18000) == doctest::Approx(0.05).epsilon(0.001));
    CHECK(listener.player.Played() == 2);
}

TEST_CASE("as listed, every song is played once; by chance, none follows itself") {
    Listener listed(Songs(3), SongOrder::Listed);
    listed.Hear(3 * kLength + 1000);
    for (const int song : {0, 1, 2}) {
        CHECK(listed.At(song * kLength + 100000) == doctest::Approx(0.1 * (song + 1)));
    }
    CHECK(listed.player.Finished());
    CHECK(listed.heard.back() == 0);
    CHECK(listed.controls.playing == Kest::SongControls::kNone);

    Listener chance(Songs(4), SongOrder::Chance, 20);
    chance.Hear(12 * kLength);
    CHECK(chance.At(100000) == doctest::Approx(0.1));
    for (int k = 1; k < 12; ++k) {
        CHECK(chance.At(k * kLength + 100000) != chance.At((k - 1) * kLength + 100000));
    }
}

TEST_CASE("a request comes at once, from the gain that there is, and the last one holds") {
    Listener listener(Songs(4));
    listener.Hear(18000);
    CHECK(listener.controls.playing == 0);
    listener.controls.wish = 1;
    listener.Hear(1000);
    listener.controls.wish = 3;
    listener.Hear(1000);
    CHECK(listener.heard.back() < listener.At(17999));
    CHECK(listener.controls.playing == 0);
    listener.Hear(2880 - 2000 + 128 + 36000);
    CHECK(listener.controls.playing == 3);
    CHECK(listener.controls.pitch_class == 3);
    CHECK(listener.heard.back() == doctest::Approx(0.4).epsilon(0.01));
    listener.controls.wish = Kest::SongControls::kNext;
    listener.Hear(5760 + 128);
    CHECK(listener.controls.playing != 3);
}

TEST_CASE("a song that stops fades on its last frame, and is not played again") {
    std::vector<Song> songs;
    songs.push_back(MakeSong(0, 50000));
    songs.push_back(MakeSong(1, 0));
    songs.push_back({kLength, 2, nullptr});
    songs.push_back(MakeSong(3));
    Listener listener(std::move(songs));
    listener.Hear(50000 + 5760 + 64);
    CHECK(listener.At(50000 + 2880) == doctest::Approx(0.05).epsilon(0.01));
    CHECK(listener.controls.playing == 3);
    listener.Hear(3 * kLength);
    CHECK(listener.controls.playing == 3);

    std::vector<Song> all_stop;
    all_stop.push_back(MakeSong(0, 100));
    Listener silent(std::move(all_stop));
    silent.Hear(20000);
    CHECK(silent.player.Finished());
    CHECK(silent.heard.back() == 0);
    Listener nothing({});
    nothing.Hear(100);
    CHECK(nothing.player.Finished());
}

TEST_CASE("the moods begin at the scene's and move by a quarter a second") {
    std::vector<Song> songs = Songs(1);
    auto& program = static_cast<Steady&>(*songs[0].program);
    Listener listener(std::move(songs));
    listener.Hear(64);
    CHECK(program.heard == Kest::MoodsOf(Kest::MusicScene::Title));
    listener.controls.scene = Kest::MusicScene::Running;
    listener.Hear(24000);
    const auto melody = static_cast<std::size_t>(Kest::Mood::Melody);
    CHECK(program.heard[melody] == doctest::Approx(0.65 - 0.125).epsilon(0.01));
    listener.Hear(48000);
    CHECK(program.heard == Kest::MoodsOf(Kest::MusicScene::Running));
}
