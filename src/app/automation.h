#pragma once

#include <filesystem>

#include "outside/outside.h"

namespace Kest {

inline constexpr double kFrameSeconds = 1.0 / 60;

// The clock of an automatic run: it moves by a frame when it is told to, so that a picture is the
// same on every machine.
class VirtualClock final : public zo::platform::Clock {
public:
    void NextFrame() { Pass(kFrameSeconds); }
    void Pass(double seconds) { seconds_ += seconds; }
    double Seconds() override { return seconds_; }
    std::uint64_t CalendarSeconds() override { return 0; }

private:
    double seconds_ = 0;
};

// A fresh data folder of an automatic run, gone with it, so that the player's files are never
// touched.
class TemporaryFolder {
public:
    explicit TemporaryFolder(zo::platform::System& system);
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    base::Disk& disk_;
    std::filesystem::path path_;
};

}  // namespace Kest
