#include "music/audio_diagnostic.h"

#include <memory>
#include <string>

#include "base/format.h"
#include "music/hum_song.h"
#include "music/mixer.h"
#include "music/wav_file.h"

namespace Kest {
namespace {

constexpr std::string_view kSaid = "HELLO, LAB!";
constexpr std::int64_t kFirstByte = 729600;  // both in samples
constexpr std::int64_t kByteEvery = 5760;
constexpr float kLineVolume = 0.45F;
constexpr std::size_t kChunk = 64;  // so that every byte begins a chunk

// The byte said at this sample, or -1.
int ByteAt(std::int64_t sample) {
    const std::int64_t since = sample - kFirstByte;
    if (since < 0 || since % kByteEvery != 0) return -1;
    const auto at = static_cast<std::size_t>(since / kByteEvery);
    return at < kSaid.size() ? static_cast<unsigned char>(kSaid[at]) : -1;
}

base::Failure CannotWrite(const std::filesystem::path& path, const std::string& reason) {
    return {base::Format("cannot write %s: %s", base::PathText(path).c_str(), reason.c_str())};
}

// Everything that is heard until the songs are over, as 16-bit samples behind a WAV header.
std::string Render(SongPlayer& player, const SongControls& controls, std::int64_t frames) {
    const auto input = std::make_unique<MixerInput>();
    input->music_volume = 1;
    input->line_volume = kLineVolume;
    Mixer mixer(*input);
    std::string wav = WavHeader(static_cast<std::uint32_t>(frames));
    wav.reserve(wav.size() + static_cast<std::size_t>(frames) * 4);
    std::array<Frame, kChunk> music;
    std::array<std::int16_t, 2 * kChunk> samples;
    for (std::int64_t at = 0; at < frames; at += kChunk) {
        player.Render(music);
        input->music.Write(music);
        input->key = controls.pitch_class.load();
        if (const int byte = ByteAt(at); byte >= 0) {
            input->posts.Write(
                std::array{Post{Effect::LineByte, 1, static_cast<std::uint16_t>(byte), 1}});
        }
        mixer.MixTo16Bits(samples, Dither::No);
        const auto count = static_cast<std::size_t>(std::min<std::int64_t>(kChunk, frames - at));
        AppendSamples(wav, std::span(samples).first(2 * count));
    }
    return wav;
}

}  // namespace

base::Result<int> RenderAudioDiagnostic(base::Disk& disk, const std::filesystem::path& path) {
    // Rendering takes minutes: a file that cannot be written is better known before.
    if (const base::Status status = disk.Write(path, {}); !status) {
        return CannotWrite(path, status.Message());
    }
    std::vector<Song> songs = LoadSongs();
    std::int64_t frames = 0;
    for (const Song& song : songs) frames += song.program ? song.length : 0;
    if (frames == 0) return base::Failure{"the soundtrack did not load"};
    SongControls controls;
    controls.scene = MusicScene::Editing;
    SongPlayer player(std::move(songs), SongOrder::Listed, 1, controls);
    const std::string wav = Render(player, controls, frames);
    if (const base::Status status = disk.Write(path, wav); !status) {
        return CannotWrite(path, status.Message());
    }
    return player.Played();
}

}  // namespace Kest
