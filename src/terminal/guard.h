#pragma once

#include <termios.h>

namespace zo::term {

// Keeps a terminal from being left in disorder while it lives: catches the signals that end the
// program or tell of the terminal, and when the program crashes puts the terminal back first. There
// is one at a time, since a handler of a signal can reach nothing else.
class Guard {
public:
    // The terminal, which is put back to `before` in a crash, and what was kept off it: the file in
    // which the error stream's text is and where that belongs, or -1.
    struct Charge {
        int tty = -1;
        termios before = {};
        int kept_errors = -1;
        int errors = -1;
    };

    explicit Guard(const Charge& charge);
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    // Readable when a signal has come.
    int News() const { return news_[0]; }
    // The next signal; 0 when there is none.
    int NextSignal();
    // While the terminal is put back a crash leaves it alone.
    void SetActive(bool active);

private:
    int news_[2] = {-1, -1};
};

// Copies what was kept to where it belongs, but for what the sound system says of a machine without
// a device. It may be called in a handler of a signal.
void ReplayErrors(int kept_errors, int errors);

}  // namespace zo::term
