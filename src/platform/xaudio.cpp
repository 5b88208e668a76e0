#include <windows.h>

#include <mmsystem.h>
#include <xaudio2.h>

#include <array>
#include <atomic>
#include <thread>
#include <utility>

#include "platform/audio.h"
#include "sdl_audio.h"
#include "silence_count.h"

// The system's own mixer: one mastering voice, and one source voice that is fed in blocks.
namespace zo::platform {
namespace {

constexpr WORD kChannels = 2;
constexpr int kBlocks = 4;  // queued at once; with fewer a busy machine is heard
constexpr std::size_t kBlockSamples = SilenceCount::kBlockFrames * kChannels;
constexpr DWORD kLookEvery = 2000;  // milliseconds, for a device where there is none

using CreateWithVersion = HRESULT(WINAPI*)(IXAudio2**, UINT32, XAUDIO2_PROCESSOR, DWORD);
using Create = HRESULT(WINAPI*)(IXAudio2**, UINT32, XAUDIO2_PROCESSOR);

// Kept for the program's life: a library of the system's that has threads is not taken away.
HMODULE Library() {
    return LoadLibraryExW(L"xaudio2_9.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

template <class Function>
Function Find(HMODULE library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

IXAudio2* MakeEngine(HMODULE library) {
    IXAudio2* engine = nullptr;
    if (const auto create = Find<CreateWithVersion>(library, "XAudio2CreateWithVersionInfo")) {
        create(&engine, 0, XAUDIO2_DEFAULT_PROCESSOR, NTDDI_WIN10);
    } else if (const auto plain = Find<Create>(library, "XAudio2Create")) {
        plain(&engine, 0, XAUDIO2_DEFAULT_PROCESSOR);
    }
    return engine;
}

// An engine with its voices, taken down in the order that the system asks for.
class Voices {
public:
    Voices(HMODULE library, IXAudio2VoiceCallback& on_voice, IXAudio2EngineCallback& on_engine) {
        engine_ = MakeEngine(library);
        if (engine_ == nullptr || FAILED(engine_->RegisterForCallbacks(&on_engine))) return;
        if (FAILED(engine_->CreateMasteringVoice(&master_, kChannels, SilenceCount::kSampleRate, 0,
                                                 nullptr, nullptr, AudioCategory_GameMedia))) {
            return;
        }
        WAVEFORMATEX format = {};
        format.wFormatTag = WAVE_FORMAT_PCM;
        format.nChannels = kChannels;
        format.nSamplesPerSec = SilenceCount::kSampleRate;
        format.wBitsPerSample = 16;
        format.nBlockAlign = kChannels * sizeof(std::int16_t);
        format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
        engine_->CreateSourceVoice(&source_, &format, 0, XAUDIO2_DEFAULT_FREQ_RATIO, &on_voice,
                                   nullptr, nullptr);
    }

    ~Voices() {
        if (source_ != nullptr) {
            source_->Stop(0, XAUDIO2_COMMIT_NOW);
            source_->DestroyVoice();
        }
        if (master_ != nullptr) master_->DestroyVoice();
        if (engine_ != nullptr) engine_->Release();
    }

    Voices(const Voices&) = delete;
    Voices& operator=(const Voices&) = delete;

    IXAudio2SourceVoice* Source() const { return source_; }

private:
    IXAudio2* engine_ = nullptr;
    IXAudio2MasteringVoice* master_ = nullptr;
    IXAudio2SourceVoice* source_ = nullptr;
};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // of the system's interfaces
// Tells the keeper that a block has been played, or that the device is gone.
class Callbacks final : public IXAudio2VoiceCallback, public IXAudio2EngineCallback {
public:
    Callbacks() : wake_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}
    ~Callbacks() { CloseHandle(wake_); }
    Callbacks(const Callbacks&) = delete;
    Callbacks& operator=(const Callbacks&) = delete;

    void Wake() { SetEvent(wake_); }
    void Wait(DWORD milliseconds) { WaitForSingleObject(wake_, milliseconds); }
    void Lose() {
        lost_.store(true);
        Wake();
    }
    bool TakeLoss() { return lost_.exchange(false); }

    void STDMETHODCALLTYPE OnVoiceProcessingPassStart(UINT32) override {}
    void STDMETHODCALLTYPE OnVoiceProcessingPassEnd() override {}
    void STDMETHODCALLTYPE OnStreamEnd() override {}
    void STDMETHODCALLTYPE OnBufferStart(void*) override {}
    void STDMETHODCALLTYPE OnBufferEnd(void*) override { Wake(); }
    void STDMETHODCALLTYPE OnLoopEnd(void*) override {}
    void STDMETHODCALLTYPE OnVoiceError(void*, HRESULT) override { Lose(); }
    void STDMETHODCALLTYPE OnProcessingPassStart() override {}
    void STDMETHODCALLTYPE OnProcessingPassEnd() override {}
    void STDMETHODCALLTYPE OnCriticalError(HRESULT) override { Lose(); }

private:
    HANDLE wake_;
    std::atomic<bool> lost_ = false;
};

#pragma GCC diagnostic pop

// One thread of its own opens the device, fills its blocks and waits for the next.
class XAudioOutput final : public AudioOutput {
public:
    XAudioOutput(AudioSource& source, HMODULE library) : source_(source), library_(library) {
        keeper_ = std::thread([this] { Keep(); });
    }

    ~XAudioOutput() override {
        stopping_.store(true);
        callbacks_.Wake();
        keeper_.join();
    }

    XAudioOutput(const XAudioOutput&) = delete;
    XAudioOutput& operator=(const XAudioOutput&) = delete;

    void Resume() override {
        if (resting_.exchange(false)) callbacks_.Wake();
    }

private:
    void Keep() {
        const HRESULT started = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_HIGHEST);
        while (!stopping_.load()) {
            if (callbacks_.TakeLoss()) voices_.reset();
            if (!voices_) Open();
            if (voices_) Play();
            callbacks_.Wait(voices_ ? INFINITE : kLookEvery);
        }
        voices_.reset();
        if (SUCCEEDED(started)) CoUninitialize();
    }

    // A mastering voice must not be asked for where there is no device at all.
    void Open() {
        if (waveOutGetNumDevs() == 0) return;
        voices_ = std::make_unique<Voices>(library_, callbacks_, callbacks_);
        if (voices_->Source() == nullptr) voices_.reset();
        is_running_ = false;
    }

    void Play() {
        // Whoever breaks the silence sees that it rests, or is seen here.
        if (resting_.load() && !source_.Silent()) resting_.store(false);
        while (!resting_.load() && Queued() < kBlocks) {
            if (!FillNext()) return callbacks_.Lose();
        }
        SetRunning(!resting_.load());
    }

    UINT32 Queued() const {
        XAUDIO2_VOICE_STATE state = {};
        voices_->Source()->GetState(&state, XAUDIO2_VOICE_NOSAMPLESPLAYED);
        return state.BuffersQueued;
    }

    bool FillNext() {
        std::array<std::int16_t, kBlockSamples>& block = blocks_[next_];
        next_ = (next_ + 1) % blocks_.size();
        source_.Fill(block);
        XAUDIO2_BUFFER buffer = {};
        buffer.AudioBytes = sizeof block;
        buffer.pAudioData = reinterpret_cast<const BYTE*>(block.data());
        if (silence_.Add(source_.Silent())) resting_.store(true);
        return SUCCEEDED(voices_->Source()->SubmitSourceBuffer(&buffer, nullptr));
    }

    void SetRunning(bool on) {
        if (std::exchange(is_running_, on) == on) return;
        if (on) voices_->Source()->Start(0, XAUDIO2_COMMIT_NOW);
        if (!on) voices_->Source()->Stop(0, XAUDIO2_COMMIT_NOW);
    }

    AudioSource& source_;
    HMODULE library_;
    Callbacks callbacks_;
    std::atomic<bool> resting_ = false;
    std::atomic<bool> stopping_ = false;
    // The rest is the keeper's.
    std::unique_ptr<Voices> voices_;
    std::array<std::array<std::int16_t, kBlockSamples>, kBlocks + 1> blocks_ = {};
    std::size_t next_ = 0;
    SilenceCount silence_;
    bool is_running_ = false;
    std::thread keeper_;
};

}  // namespace

std::unique_ptr<AudioOutput> PlayOnDevice(AudioSource& source) {
    if (HMODULE library = Library()) return std::make_unique<XAudioOutput>(source, library);
    return PlayThroughSdl(source);
}

}  // namespace zo::platform
