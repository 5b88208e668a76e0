// Joins the program to the system it runs on.
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/application.h"
#include "base/version.h"
#include "gpu/animation.h"
#include "gpu/fonts.h"
#include "gpu/picture.h"
#include "gpu/renderer.h"
#include "native/program.h"
#include "native/system_disk.h"
#include "platform/audio.h"
#include "platform/clock.h"
#include "platform/folders.h"
#include "platform/sdl_window.h"
#include "terminal/terminal.h"

namespace {

class DesktopSystem final : public zo::platform::System {
public:
    base::Result<std::unique_ptr<zo::platform::Window>> OpenWindow(
        const zo::platform::WindowOptions& options) override {
        if (options.in_terminal) return zo::term::OpenTerminal(options);
        auto window = zo::platform::OpenSdlWindow(options, zo::gpu::MakeRenderer());
        if (window) return window;
        // Without a display the game still plays where it was started, if that is a terminal.
        auto terminal = zo::term::OpenTerminal(options);
        return terminal ? std::move(terminal) : std::move(window);
    }
    std::unique_ptr<zo::platform::AudioOutput> PlayAudio(
        zo::platform::AudioSource& source) override {
        return zo::platform::PlayOnDevice(source);
    }
    zo::platform::Clock& SystemClock() override { return clock_; }
    base::Disk& SystemDisk() override { return disk_; }
    std::filesystem::path DataFolder() override { return zo::platform::UserDataFolder(); }
    std::filesystem::path TemporaryFolder() override {
        return zo::platform::SystemTemporaryFolder();
    }
    std::optional<std::string> Environment(const char* name) override {
        return zo::platform::EnvironmentVariable(name);
    }
    void ReportCrashes(const std::filesystem::path& folder) override {
        zo::platform::ReportCrashes(folder, base::Version());
    }
    bool HasNineWideFace() override { return zo::gpu::HasNineWideFace(); }
    std::vector<std::string> FontFamilies() override { return zo::gpu::FontFamilies(); }
    base::Status WritePicture(const zo::ui::Frame& frame, zo::ui::PixelSize size,
                              const std::filesystem::path& path) override {
        return zo::gpu::WritePicture(frame, size, disk_, path);
    }
    base::Status WriteAnimation(std::span<const zo::ui::Frame> frames, int hundredths,
                                zo::ui::PixelSize size,
                                const std::filesystem::path& path) override {
        return zo::gpu::WriteAnimation(frames, hundredths, size, disk_, path);
    }

private:
    zo::platform::SteadyClock clock_;
    zo::platform::SystemDisk disk_;
};

}  // namespace

int main(int argc, char** argv) {
    zo::platform::JoinConsole();
    const std::vector<std::string> given = zo::platform::ProgramArguments(argc, argv);
    const std::vector<std::string_view> arguments(given.begin(), given.end());
    DesktopSystem system;
    return Kest::RunApplication(arguments, system);
}
