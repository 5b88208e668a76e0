#pragma once

#include <termios.h>

#include <optional>
#include <string_view>

#include "base/result.h"
#include "cells/grid_size.h"
#include "guard.h"

namespace zo::term {

// The terminal that the program was started from, in raw mode while it is entered. Reading and
// writing never wait.
class Tty {
public:
    Tty();
    ~Tty();
    Tty(const Tty&) = delete;
    Tty& operator=(const Tty&) = delete;

    bool IsOpen() const { return file_ >= 0; }
    ui::PixelSize Size() const;  // columns and rows
    // What the backspace key sends.
    std::uint8_t Erase() const { return before_.c_cc[VERASE]; }

    void Enter();
    // Sends what is left for as long as the terminal takes some of it, then puts it back.
    void Leave(std::string_view rest);

    // Bytes read into the buffer; nothing when there are none. 0 when the terminal is gone.
    std::optional<std::size_t> Read(char* buffer, std::size_t size);
    // Bytes that the terminal took; nothing when it is gone.
    std::optional<std::size_t> Write(std::string_view bytes);

    enum class Wants : std::uint8_t { Input, Both };
    struct Awaited {
        bool input = false, output = false, signal = false;
    };
    // Waits for so long at most; for ever with a negative number.
    Awaited Wait(Wants wants, double seconds);
    int NextSignal() { return guard_->NextSignal(); }

    // Whether the error stream has another place than this terminal.
    bool HasOtherErrors() const { return kept_errors_ < 0; }

private:
    void KeepErrors();
    bool WriteAll(std::string_view bytes, double seconds);

    int file_ = -1;
    termios before_ = {};
    bool entered_ = false;
    int kept_errors_ = -1;  // the file that they go to meanwhile
    int errors_ = -1;       // where they belong
    std::optional<Guard> guard_;
};

}  // namespace zo::term
