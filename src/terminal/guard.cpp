#include "guard.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>

#include "modes.h"

namespace zo::term {
namespace {

constexpr std::array kTold = {SIGWINCH, SIGINT, SIGTERM, SIGHUP, SIGTSTP, SIGCONT};
constexpr std::array kCrashes = {SIGSEGV, SIGABRT, SIGBUS,  SIGFPE,
                                 SIGILL,  SIGQUIT, SIGTRAP, SIGSYS};

// All that handlers of signals can reach.
struct Rescue {
    Guard::Charge charge;
    volatile std::sig_atomic_t active = 0;
    int news = -1;
    std::array<struct sigaction, kTold.size()> told_before;
    std::array<struct sigaction, kCrashes.size()> crashes_before;
    alignas(std::max_align_t) std::array<char, 64 * 1024> stack;
};
Rescue rescue;

void WriteAll(int file, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = write(file, bytes, count);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return;
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
}

void Tell(int signal) {
    const int error = errno;
    const char byte = static_cast<char>(signal);
    (void)!write(rescue.news, &byte, 1);
    errno = error;
}

// What is still under way is thrown away, so that there is room for what puts the terminal back.
void PutBack() {
    if (rescue.active == 0) return;
    rescue.active = 0;
    tcflush(rescue.charge.tty, TCOFLUSH);
    WriteAll(rescue.charge.tty, kLeave.data(), kLeave.size());
    tcsetattr(rescue.charge.tty, TCSANOW, &rescue.charge.before);
    if (rescue.charge.errors < 0) return;
    dup2(rescue.charge.errors, STDERR_FILENO);
    ReplayErrors(rescue.charge.kept_errors, rescue.charge.errors);
}

// Goes on to whoever handled the crash before: a fault happens again on return, and what was sent
// is sent again.
void Crash(int signal, siginfo_t* info, void*) {
    PutBack();
    for (std::size_t k = 0; k < kCrashes.size(); ++k) {
        if (kCrashes[k] == signal) sigaction(signal, &rescue.crashes_before[k], nullptr);
    }
    if (info->si_code <= 0) raise(signal);
}

void UseOwnStack(bool on) {
    stack_t stack = {};
    stack.ss_sp = rescue.stack.data();
    stack.ss_size = rescue.stack.size();
    stack.ss_flags = on ? 0 : SS_DISABLE;
    sigaltstack(&stack, nullptr);
}

}  // namespace

Guard::Guard(const Charge& charge) {
    (void)!pipe2(news_, O_NONBLOCK | O_CLOEXEC);
    rescue.charge = charge;
    rescue.news = news_[1];
    UseOwnStack(true);
    struct sigaction action = {};
    sigemptyset(&action.sa_mask);
    action.sa_handler = Tell;
    action.sa_flags = SA_RESTART;
    for (std::size_t k = 0; k < kTold.size(); ++k) {
        sigaction(kTold[k], &action, &rescue.told_before[k]);
    }
    action.sa_sigaction = Crash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    for (std::size_t k = 0; k < kCrashes.size(); ++k) {
        sigaction(kCrashes[k], &action, &rescue.crashes_before[k]);
    }
}

Guard::~Guard() {
    rescue.active = 0;
    for (std::size_t k = 0; k < kTold.size(); ++k) {
        sigaction(kTold[k], &rescue.told_before[k], nullptr);
    }
    for (std::size_t k = 0; k < kCrashes.size(); ++k) {
        sigaction(kCrashes[k], &rescue.crashes_before[k], nullptr);
    }
    UseOwnStack(false);
    for (const int end : news_) close(end);
}

void Guard::SetActive(bool active) {
    rescue.active = active ? 1 : 0;
}

int Guard::NextSignal() {
    char byte = 0;
    return read(news_[0], &byte, 1) == 1 ? byte : 0;
}

void ReplayErrors(int kept_errors, int errors) {
    constexpr std::string_view kSoundSystem = "ALSA lib ";
    constexpr std::size_t kMost = 64 * 1024;
    if (lseek(kept_errors, 0, SEEK_SET) != 0) return;
    char bytes[1024];
    std::size_t like = 0;  // bytes of a line that are its sign, while it may be one of those
    bool leaves_out = false;
    for (std::size_t copied = 0; copied < kMost;) {
        const ssize_t count = read(kept_errors, bytes, sizeof bytes);
        if (count <= 0) break;
        copied += static_cast<std::size_t>(count);
        for (const char byte : std::string_view(bytes, static_cast<std::size_t>(count))) {
            if (like < kSoundSystem.size() && byte == kSoundSystem[like]) {
                leaves_out = ++like == kSoundSystem.size();
                continue;
            }
            if (!leaves_out && like < kSoundSystem.size()) {
                WriteAll(errors, kSoundSystem.data(), like);
            }
            if (!leaves_out) WriteAll(errors, &byte, 1);
            like = byte == '\n' ? 0 : kSoundSystem.size();
            leaves_out = leaves_out && byte != '\n';
        }
    }
}

}  // namespace zo::term
