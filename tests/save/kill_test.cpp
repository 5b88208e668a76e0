// A process that is killed while it saves, on the machine's own disk.

#include <doctest/doctest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "native/system_disk.h"
#include "save/progress.h"
#include "support/fake_disk.h"
#include "support/own_folder.h"
#include "support/rounds.h"

namespace fs = std::filesystem;

namespace {

// A whole campaign closed, so that a file takes several blocks.
Kest::Progress State(std::uint64_t number) {
    Kest::Progress progress;
    for (int ticket = 0; ticket < 42; ++ticket) {
        progress.tickets["ticket-" + std::to_string(ticket)] = {.closed = true,
                                                                .closed_at = number};
    }
    progress.play_seconds = number;
    return progress;
}

std::string TextOf(std::uint64_t number) {
    fake::Disk disk;
    REQUIRE(Kest::SaveProgress(disk, "data", State(number)));
    return disk.files[Kest::ProgressPath("data")];
}

// Saves one state after the other, each told before it is begun, until it is killed.
[[noreturn]] void SaveForEver(const fs::path& folder, std::uint64_t number, int tell) {
    zo::platform::SystemDisk disk;
    for (;; ++number) {
        const bool told = write(tell, &number, sizeof number) == sizeof number;
        if (!told || !Kest::SaveProgress(disk, folder, State(number))) _exit(1);
    }
}

// Kills a process during about its n-th save, and returns the state whose saving it began last.
std::uint64_t LastBegun(const fs::path& folder, std::uint64_t from, unsigned saves,
                        useconds_t microseconds) {
    int ends[2];
    REQUIRE(pipe(ends) == 0);
    const pid_t child = fork();
    REQUIRE(child >= 0);
    if (child == 0) SaveForEver(folder, from, ends[1]);
    close(ends[1]);
    std::uint64_t last = 0;
    const auto next = [&] { return read(ends[0], &last, sizeof last) == sizeof last; };
    for (unsigned save = 0; save < saves; ++save) REQUIRE(next());
    usleep(microseconds);
    kill(child, SIGKILL);
    int status = 0;
    REQUIRE(waitpid(child, &status, 0) == child);
    CHECK(WIFSIGNALED(status));
    while (next()) {
    }
    close(ends[0]);
    return last;
}

}  // namespace

TEST_CASE("a process killed at any moment leaves the old progress or the new one whole") {
    constexpr useconds_t kLongestMicroseconds = 2000;  // more than a save takes
    const support::OwnFolder folder;
    zo::platform::SystemDisk disk;
    std::mt19937 random(1996);
    std::uint64_t state = 1;
    REQUIRE(Kest::SaveProgress(disk, folder.path, State(state)));
    for (int round = support::Rounds(10); round > 0; --round) {
        const unsigned saves = 1 + static_cast<unsigned>(round) % 3;
        const auto wait = static_cast<useconds_t>(random() % kLongestMicroseconds);
        const std::uint64_t begun = LastBegun(folder.path, state + 1, saves, wait);
        const auto text = disk.Read(Kest::ProgressPath(folder.path));
        REQUIRE(text);
        state = Kest::LoadProgress(disk, folder.path).play_seconds;
        CAPTURE(begun);
        CHECK((state == begun || state + 1 == begun));
        CHECK(*text == TextOf(state));
    }
    CHECK(state > 1);
}
