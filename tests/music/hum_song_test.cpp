// What makes a text a song, and that the game's own are.
#include "music/hum_song.h"

#include <doctest/doctest.h>

#include <cmath>
#include <string>

#include "music/song_texts.h"
#include "music/sound_engine.h"

namespace {

using Kest::Frame;

constexpr const char* kMoodNames[] = {"brightness", "warmth", "drums", "bass", "chords", "melody"};

// A song that plays its brightness left and its melody right, without one of its moods.
std::string Text(const std::string& params, const std::string& without = {}) {
    std::string text = params;
    for (const std::string name : kMoodNames) {
        if (name != without) text += "param float " + name + " = 0.5; ";
    }
    return text + "master { sound->channel1 = brightness; sound->channel2 = melody; }";
}

base::Result<Kest::Song> Make(const std::string& text) {
    return Kest::MakeSong("a.hum", text, std::make_shared<const hum::Instruments>());
}

}  // namespace

TEST_CASE("a song's length and scale follow from its params, within their ranges") {
    const struct {
        const char* params;
        float bars, tempo;
        int key;
    } cases[] = {
        {"", 32, 76, 2},
        {"param float tempo = 200; ", 32, 160, 2},
        {"param float tempo = 1; param float bars = 8.4; ", 8, 40, 2},
        {"param float bars = 7; param float key = 11; ", 8, 76, 11},
        {"param float bars = 500; param float key = 12; ", 128, 76, 2},
        {"param float key = -1; ", 32, 76, 2},
    };
    for (const auto& c : cases) {
        CAPTURE(c.params);
        const base::Result<Kest::Song> song = Make(Text(c.params));
        REQUIRE(song);
        CHECK(song->length == Kest::SongLength(c.bars, c.tempo));
        CHECK(song->pitch_class == c.key);
    }
}

TEST_CASE("a text that is no song says why") {
    for (const std::string name : kMoodNames) {
        CHECK(Make(Text("", name)).Message() ==
              (name == "brightness" || name == "melody"
                   ? "a.hum:1:" + std::to_string(Text("", name).find(name + ";") + 1) +
                         ": unknown identifier '" + name + "'"
                   : "a.hum: the song has no param " + name));
    }
    CHECK(Make("master {").Message() == "a.hum:1:9: expected '}'");
}

TEST_CASE("a song hears the moods, starts again as new, and stops where it breaks") {
    base::Result<Kest::Song> song =
        Make(Text("int n; struct O { int n; }; module O *m { while (1) { if (n == 100) n = 1 / "
                  "*(int*)0; n++; yield(0); } } "));
    REQUIRE(song);
    for (int round = 0; round < 2; ++round) {
        REQUIRE(song->program->Restart());
        song->program->SetMoods({0.25F, 0, 0, 0, 0, 0.75F});
        std::vector<Frame> frames(256);
        CHECK(song->program->Render(frames) == 100);
        CHECK(frames[64] == Frame{0.25F, 0.75F});
    }
}

TEST_CASE("the game's songs load and sound, the same each time") {
    std::vector<Kest::Song> songs = Kest::LoadSongs();
    REQUIRE(songs.size() == Kest::SongNames().size());
    for (std::size_t k = 0; k < songs.size(); ++k) {
        CAPTURE(Kest::SongNames()[k].key);
        REQUIRE(songs[k].program);
        CHECK(songs[k].length > 130 * Kest::kSampleRate);
        std::vector<Frame> first(Kest::kSampleRate / 2), again(first.size());
        for (std::vector<Frame>* frames : {&first, &again}) {
            REQUIRE(songs[k].program->Restart());
            songs[k].program->SetMoods(Kest::MoodsOf(Kest::MusicScene::Title));
            REQUIRE(songs[k].program->Render(*frames) == frames->size());
        }
        CHECK(first == again);
        float loudest = 0;
        for (const Frame& frame : first) loudest = std::max(loudest, std::abs(frame.left));
        CHECK(loudest > 0.01F);
        CHECK(loudest < 0.9F);
    }
    CHECK(Kest::SongSource("music").empty());
    CHECK(Kest::SongSource("nothing").empty());
}
