// The program's sound on its way out, through a device that writes a file.
#include <doctest/doctest.h>

#include <SDL.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "sdl_audio.h"
#include "support/own_folder.h"

namespace {

using namespace std::chrono_literals;

class Counting final : public zo::platform::AudioSource {
public:
    void Fill(std::span<std::int16_t> samples) override {
        // Every device that is opened fills on a thread of its own.
        thread_local bool known = false;
        if (!known) ++devices;
        known = true;
        block = samples.size();
        for (std::int16_t& sample : samples) sample = static_cast<std::int16_t>(next++ % 1000);
        filled += samples.size();
    }
    bool Silent() const override { return silent; }
    std::atomic<bool> silent = false;
    std::atomic<std::size_t> filled = 0;
    std::atomic<std::size_t> block = 0;
    std::atomic<std::size_t> devices = 0;

private:
    int next = 0;
};

bool WaitFor(const std::atomic<std::size_t>& value, std::size_t least) {
    for (int tries = 0; tries < 500 && value < least; ++tries) std::this_thread::sleep_for(10ms);
    return value >= least;
}

}  // namespace

TEST_CASE("a device hears every sample in order, in blocks of 256 frames") {
    const support::OwnFolder folder;
    const std::string path = (folder.path / "out.raw").string();
    SDL_setenv("SDL_AUDIODRIVER", "disk", 1);
    SDL_setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
    Counting source;
    {
        const auto output = zo::platform::PlayThroughSdl(source);
        CHECK(WaitFor(source.filled, 4096));
    }
    CHECK(source.block == 512);
    std::ifstream file(path, std::ios::binary);
    std::int16_t sample = 0;
    const auto next = [&] { file.read(reinterpret_cast<char*>(&sample), sizeof sample); };
    // A device that has not begun yet writes blocks of silence; the source's first sample is 0 too.
    while (file && sample == 0) next();
    for (int k = 1; k < 2048; ++k, next()) REQUIRE(sample == k % 1000);
}

TEST_CASE("a device that is lost is replaced, and without a driver there is silence") {
    SDL_setenv("SDL_AUDIODRIVER", "dummy", 1);
    Counting source;
    {
        const auto output = zo::platform::PlayThroughSdl(source);
        CHECK(WaitFor(source.filled, 512));
        SDL_Event lost = {};
        lost.adevice.type = SDL_AUDIODEVICEREMOVED;
        lost.adevice.which = 2;  // SDL's number of the first device that is opened
        SDL_PushEvent(&lost);
        CHECK(WaitFor(source.devices, 2));
    }
    SDL_setenv("SDL_AUDIODRIVER", "none such", 1);
    const std::size_t before = source.filled;
    {
        const auto output = zo::platform::PlayThroughSdl(source);
        std::this_thread::sleep_for(20ms);
        CHECK(source.filled == before);
        // A device that has come meanwhile is found when the player is back.
        SDL_setenv("SDL_AUDIODRIVER", "dummy", 1);
        for (const Uint8 focus : {SDL_WINDOWEVENT_FOCUS_LOST, SDL_WINDOWEVENT_FOCUS_GAINED}) {
            SDL_Event event = {};
            event.type = SDL_WINDOWEVENT;
            event.window.event = focus;
            SDL_PushEvent(&event);
        }
        CHECK(WaitFor(source.filled, before + 512));
    }
}

TEST_CASE("a device rests after four silent seconds, and goes on when it is asked to") {
    SDL_setenv("SDL_AUDIODRIVER", "disk", 1);
    SDL_setenv("SDL_DISKAUDIOFILE", "/dev/null", 1);
    SDL_setenv("SDL_DISKAUDIODELAY", "0", 1);
    Counting source;
    source.silent = true;
    const auto output = zo::platform::PlayThroughSdl(source);
    CHECK(WaitFor(source.filled, 4 * 96000));
    std::size_t rests_at = 0;
    for (int tries = 0; tries < 500 && rests_at != source.filled; ++tries) {
        rests_at = source.filled;
        std::this_thread::sleep_for(20ms);
    }
    REQUIRE(rests_at == source.filled);
    source.silent = false;
    output->Resume();
    CHECK(WaitFor(source.filled, rests_at + 4096));
}
