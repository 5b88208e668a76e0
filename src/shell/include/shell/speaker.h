#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "shell/speech.h"

namespace Kest {

// Says in plain lines what has changed, each thing once.
class Speaker {
public:
    using Say = std::function<void(std::string_view line)>;

    explicit Speaker(Say say) : say_(std::move(say)) {}

    void Tell(const Speech& speech, double now);
    // When a line that is being typed in has rested for long enough to be said.
    std::optional<double> DueAt() const { return due_; }

private:
    bool IsBeingTyped(const Speech& speech, double now);
    void SayIfNew(std::string& said, const std::string& text);
    void SayPlace(const Speech& speech);
    void SayLine(const Speech& speech);

    Say say_;
    Speech said_;
    std::string typed_;          // the line as it was last
    std::optional<double> due_;  // when it is said
};

}  // namespace Kest
