#include "tty.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>

#include "modes.h"

namespace zo::term {
namespace {

constexpr ui::PixelSize kUsualSize = {80, 25};  // of one that does not tell

int Milliseconds(double seconds) {
    constexpr double kLongest = 3600;
    return seconds < 0 ? -1 : static_cast<int>(std::ceil(std::min(seconds, kLongest) * 1000));
}

}  // namespace

// A file of our own, so that what holds for it does not hold for the shell's.
Tty::Tty() : file_(open("/dev/tty", O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {
    if (file_ < 0) return;
    if (tcgetattr(file_, &before_) != 0) {
        close(file_);
        file_ = -1;
        return;
    }
    KeepErrors();
    guard_.emplace(Guard::Charge{file_, before_, kept_errors_, errors_});
}

Tty::~Tty() {
    if (file_ < 0) return;
    if (entered_) Leave({});
    guard_.reset();
    if (errors_ >= 0) {
        std::fflush(stderr);
        dup2(errors_, STDERR_FILENO);
        ReplayErrors(kept_errors_, errors_);
        close(kept_errors_);
        close(errors_);
    }
    close(file_);
}

// What would be written across the pictures waits in a file without a name.
void Tty::KeepErrors() {
    if (tcgetpgrp(STDERR_FILENO) < 0) return;  // not this terminal
    std::FILE* const file = std::tmpfile();
    if (file == nullptr) return;
    kept_errors_ = fcntl(fileno(file), F_DUPFD_CLOEXEC, 3);
    std::fclose(file);
    errors_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
    dup2(kept_errors_, STDERR_FILENO);
}

ui::PixelSize Tty::Size() const {
    winsize size = {};
    if (ioctl(file_, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
        return kUsualSize;
    }
    return {size.ws_col, size.ws_row};
}

void Tty::Enter() {
    termios raw = before_;
    cfmakeraw(&raw);
    raw.c_cc[VMIN] = 1;
    raw.c_cc[VTIME] = 0;
    guard_->SetActive(true);
    tcsetattr(file_, TCSANOW, &raw);
    entered_ = true;
    WriteAll(kEnter, 1);
}

// What the terminal will not take is thrown away, so that it takes what puts it back.
void Tty::Leave(std::string_view rest) {
    entered_ = false;
    if (!WriteAll(rest, 0.5) || !WriteAll(kLeave, 0.5)) {
        tcflush(file_, TCOFLUSH);
        WriteAll(kLeave, 0.5);
    }
    tcflush(file_, TCIFLUSH);  // answers, which nobody waits for any more
    tcsetattr(file_, TCSANOW, &before_);
    guard_->SetActive(false);
}

std::optional<std::size_t> Tty::Read(char* buffer, std::size_t size) {
    const ssize_t count = read(file_, buffer, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno == EAGAIN || errno == EINTR) return std::nullopt;
    return 0;
}

std::optional<std::size_t> Tty::Write(std::string_view bytes) {
    const ssize_t count = write(file_, bytes.data(), bytes.size());
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno == EAGAIN || errno == EINTR) return 0;
    return std::nullopt;
}

bool Tty::WriteAll(std::string_view bytes, double seconds) {
    while (!bytes.empty()) {
        const auto written = Write(bytes);
        if (!written) return false;
        bytes.remove_prefix(*written);
        pollfd file = {file_, POLLOUT, 0};
        if (*written == 0 && poll(&file, 1, Milliseconds(seconds)) <= 0) return false;
    }
    return true;
}

Tty::Awaited Tty::Wait(Wants wants, double seconds) {
    const short output = wants == Wants::Both ? POLLOUT : 0;
    pollfd files[] = {{file_, static_cast<short>(POLLIN | output), 0}, {guard_->News(), POLLIN, 0}};
    if (poll(files, 2, Milliseconds(seconds)) <= 0) return {};
    return {.input = (files[0].revents & (POLLIN | POLLHUP | POLLERR)) != 0,
            .output = (files[0].revents & POLLOUT) != 0,
            .signal = files[1].revents != 0};
}

}  // namespace zo::term
