#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/places.h"
#include "shell/shell.h"

namespace Kest {

// What a picture shows, as words separated by colons: a ticket's id, a shift ("shift-2"), a
// screen's name, an overlay ("overlay-pause"), or a request that the screen itself understands.
class Scene {
public:
    explicit Scene(std::string_view words);

    // Opens the screen on its ticket and hands it its requests. What it does not know is left for
    // the overlays.
    void Build(Shell& shell);
    // Opens the overlays, which come after the delay.
    void OpenOverlays(Shell& shell) const;
    double DelaySeconds() const;

private:
    void ChooseTicket(Shell& shell);
    Place ChooseScreen(Shell& shell);
    static void Request(Shell& shell, const std::string& word);

    std::string text_;
    std::vector<std::string> words_;
    std::vector<std::string> overlays_;
    bool names_ticket_ = false;
};

// A scene for each screen that these places have, overlays over the bench, and for each state that
// it can be asked to show.
std::vector<std::string> EveryScene(const Places& places);

}  // namespace Kest
