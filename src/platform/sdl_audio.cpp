#include "sdl_audio.h"

#include <SDL.h>

#include <atomic>
#include <cstdint>
#include <thread>
#include <utility>

#include "silence_count.h"

namespace zo::platform {
namespace {

constexpr Uint8 kChannels = 2;

// Reaching the sound system and opening a device can take their time: they happen on a thread of
// their own, which then sleeps until devices come or go.
class SdlAudio final : public AudioOutput {
public:
    explicit SdlAudio(AudioSource& source) : source_(source) {
        keeper_ = std::thread([this] {
            Keep();
            SDL_TLSCleanup();  // what SDL keeps of a thread that is not its own
        });
    }

    ~SdlAudio() override {
        stopping_.store(true);
        Wake();
        keeper_.join();
    }

    SdlAudio(const SdlAudio&) = delete;
    SdlAudio& operator=(const SdlAudio&) = delete;

    void Resume() override {
        if (resting_.exchange(false)) Wake();
    }

private:
    void Keep() {
        // Without the events a watch is forgotten.
        if (SDL_InitSubSystem(SDL_INIT_EVENTS) != 0) return;
        SDL_AddEventWatch(&SdlAudio::Watch, this);
        SDL_AudioDeviceID device = 0;
        while (!stopping_.load()) {
            const std::uint32_t seen = changes_.load();
            if (device != 0 && lost_.load() == device) {
                SDL_CloseAudioDevice(device);
                device = 0;
            }
            if (device == 0) device = Look();
            // Whoever breaks the silence sees that it rests, or is seen here.
            if (resting_.load() && !source_.Silent()) resting_.store(false);
            if (device != 0) SDL_PauseAudioDevice(device, resting_.load() ? 1 : 0);
            changes_.wait(seen);
        }
        if (device != 0) SDL_CloseAudioDevice(device);
        SDL_DelEventWatch(&SdlAudio::Watch, this);
        if (started_) SDL_QuitSubSystem(SDL_INIT_AUDIO);
        SDL_QuitSubSystem(SDL_INIT_EVENTS);
    }

    // While it runs, a sound system may look for devices ten times a second. Where there has not
    // been one yet it is stopped again, and the next look comes when the player comes back.
    SDL_AudioDeviceID Look() {
        if (!started_) started_ = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
        const SDL_AudioDeviceID device = started_ ? Open() : 0;
        had_one_ = had_one_ || device != 0;
        if (started_ && !had_one_) {
            SDL_QuitSubSystem(SDL_INIT_AUDIO);
            started_ = false;
        }
        return device;
    }

    // 0 when there is no device that opens.
    SDL_AudioDeviceID Open() {
        SDL_AudioSpec wanted = {};
        wanted.freq = SilenceCount::kSampleRate;
        wanted.format = AUDIO_S16SYS;
        wanted.channels = kChannels;
        wanted.samples = SilenceCount::kBlockFrames;
        wanted.callback = &SdlAudio::Fill;
        wanted.userdata = this;
        return SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    }

    void Wake() {
        changes_.fetch_add(1);
        changes_.notify_one();
    }

    static void Fill(void* self, Uint8* bytes, int count) {
        auto* const audio = static_cast<SdlAudio*>(self);
        auto* const samples = reinterpret_cast<std::int16_t*>(bytes);
        audio->source_.Fill({samples, static_cast<std::size_t>(count) / sizeof *samples});
        audio->CountSilence();
    }

    // On the device's thread, which cannot rest its own device.
    void CountSilence() {
        if (!silence_.Add(source_.Silent())) return;
        resting_.store(true);
        Wake();
    }

    static int Watch(void* self, SDL_Event* event) {
        if (event->type == SDL_WINDOWEVENT) static_cast<SdlAudio*>(self)->WatchFocus(*event);
        const bool comes = event->type == SDL_AUDIODEVICEADDED;
        const bool goes = event->type == SDL_AUDIODEVICEREMOVED;
        if ((!comes && !goes) || event->adevice.iscapture != 0) return 0;
        auto* const audio = static_cast<SdlAudio*>(self);
        if (goes) audio->lost_.store(event->adevice.which);
        audio->Wake();
        return 0;
    }

    void WatchFocus(const SDL_Event& event) {
        if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) away_ = true;
        if (event.window.event == SDL_WINDOWEVENT_FOCUS_GAINED && std::exchange(away_, false)) {
            Wake();
        }
    }

    AudioSource& source_;
    bool started_ = false;  // of the keeper
    bool had_one_ = false;  // likewise
    bool away_ = false;     // of the thread that has the events
    std::atomic<SDL_AudioDeviceID> lost_ = 0;
    std::atomic<std::uint32_t> changes_ = 0;
    SilenceCount silence_;  // of the device's thread
    std::atomic<bool> resting_ = false;
    std::atomic<bool> stopping_ = false;
    std::thread keeper_;
};

}  // namespace

std::unique_ptr<AudioOutput> PlayThroughSdl(AudioSource& source) {
    return std::make_unique<SdlAudio>(source);
}

}  // namespace zo::platform
