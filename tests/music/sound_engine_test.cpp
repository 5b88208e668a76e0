// The engine with its threads: songs render ahead while a device is fed.
#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <new>
#include <thread>

#include "music/sound_engine.h"

namespace {

using namespace std::chrono_literals;

std::atomic<bool> counting = false;
std::atomic<int> allocations = 0;

void* Allocate(std::size_t size) {
    if (counting.load(std::memory_order_relaxed)) ++allocations;
    return std::malloc(size != 0 ? size : 1);
}

class Level final : public Kest::SongProgram {
public:
    explicit Level(float level) : level_(level) {}
    bool Restart() override { return true; }
    void SetMoods(const Kest::Moods&) override {}
    std::size_t Render(std::span<Kest::Frame> frames) override {
        std::ranges::fill(frames, Kest::Frame{level_, level_});
        return frames.size();
    }

private:
    float level_;
};

std::vector<Kest::Song> Levels() {
    std::vector<Kest::Song> songs;
    for (std::size_t k = 0; k < Kest::SongNames().size(); ++k) {
        const float level = 0.05F + 0.05F * static_cast<float>(k);
        songs.push_back({4800000, static_cast<int>(k), std::make_unique<Level>(level)});
    }
    return songs;
}

// What a device would do; the last sample that it heard.
std::int16_t Feed(Kest::SoundEngine& engine, int blocks) {
    std::array<std::int16_t, 512> samples{};
    for (int k = 0; k < blocks; ++k) {
        engine.Fill(samples);
        std::this_thread::sleep_for(1ms);
    }
    return samples.back();
}

bool WaitFor(Kest::SoundEngine& engine, std::string_view title) {
    for (int tries = 0; tries < 2000 && engine.PlayingTitle() != title; ++tries) Feed(engine, 8);
    return engine.PlayingTitle() == title;
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

TEST_CASE("songs play, change on request, and neither thread allocates meanwhile") {
    Kest::SoundEngine engine(1);
    engine.SetChoices({.effects_volume = 1, .music_volume = 1, .line_volume = 1});
    CHECK(engine.PlayingTitle().empty());
    engine.Start(Levels);
    REQUIRE(WaitFor(engine, "Main Loop"));
    counting = true;
    Feed(engine, 300);
    engine.Play(Kest::Effect::Key, 'x');
    engine.PlayByte(0x41, true);
    engine.PlaySong("finale");
    engine.PlaySong("no such song");
    CHECK(WaitFor(engine, "Finale"));
    const std::int16_t heard = Feed(engine, 900);
    counting = false;
    CHECK(allocations == 0);
    CHECK(heard == doctest::Approx(0.2 * 32767).epsilon(0.01));
    engine.PlayNextSong();
    for (int tries = 0; tries < 2000 && engine.PlayingTitle() == "Finale"; ++tries) Feed(engine, 8);
    CHECK(engine.PlayingTitle() != "Finale");
}

TEST_CASE("music that is off waits, and so does all of it behind another window") {
    Kest::SoundEngine engine(1);
    engine.SetChoices({.effects_on = false, .music_volume = 1, .line_on = false});
    engine.Start(Levels);
    REQUIRE(WaitFor(engine, "Main Loop"));
    engine.Play(Kest::Effect::Closed, 0);
    engine.PlayByte(0x41, false);
    CHECK(Feed(engine, 400) == doctest::Approx(0.05 * 32767).epsilon(0.01));
    engine.SetFocused(false);
    CHECK(std::abs(Feed(engine, 100)) <= 1);
    engine.SetChoices({.music_volume = 1, .mute_unfocused = false});
    CHECK(Feed(engine, 100) == doctest::Approx(0.05 * 32767).epsilon(0.01));
    engine.SetChoices({.music_on = false, .music_volume = 1});
    CHECK(std::abs(Feed(engine, 100)) <= 1);
    engine.Stop();
    CHECK(std::abs(Feed(engine, 4)) <= 1);
}

TEST_CASE("without songs there are still sounds") {
    Kest::SoundEngine engine(1);
    engine.SetChoices({.effects_volume = 1, .music_volume = 1});
    engine.Start([] { return std::vector<Kest::Song>(); });
    int loudest = 0;
    for (int k = 0; k < 20000 && loudest <= 1000; ++k) {
        if (k % 100 == 50) engine.Play(Kest::Effect::TestTone, 0);
        loudest = std::max(loudest, std::abs(static_cast<int>(Feed(engine, 1))));
    }
    CHECK(loudest > 1000);
    CHECK(engine.PlayingTitle().empty());
}
