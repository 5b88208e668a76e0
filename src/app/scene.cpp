#include "scene.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace Kest {
namespace {

constexpr std::string_view kDefaultTicket = "4-03-retry-budget";
constexpr std::string_view kShift = "shift-";
constexpr std::string_view kOverlay = "overlay-";
constexpr double kDelaySeconds = 1.7;
constexpr double kLongDelaySeconds = 3.2;  // for scenes that must first run their course

// A row for each screen that a scene can name; a word of a screen that the program does not have is
// unknown like any other. An overlay's word may go on with a separator and what to show there.
struct SceneWord {
    std::string_view word;
    Place place;
    std::string_view about = {};
    std::string_view states = {};  // that the screen can be asked to show, between blanks
};
constexpr SceneWord kSceneWords[] = {
    {"splash", Place::Splash, "", "start"},
    {"title", Place::Title},
    {"board", Place::Board, "", "locked shifts ticket intro help"},
    {"bench", Place::Bench, "",
     "empty errors completing finding selected running paused failed passed whole results "
     "records history compare"},
    {"overlay-pause", Place::Pause},
    {"overlay-options", Place::Options},
    {"overlay-credits", Place::Credits},
    {"overlay-binder", Place::Binder, "crc", "find pages links vi-keys"},
    {"overlay-textmode", Place::TextMode},
    {"overlay-achievements", Place::Achievements},
};

// Takes the first word off the text.
std::string_view TakeWord(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

bool Offers(const Places& places, Place place) {
    return places[static_cast<std::size_t>(place)] != nullptr;
}

const SceneWord* FindScene(const Shell& shell, std::string_view word) {
    const auto* const found = std::ranges::find_if(kSceneWords, [&](const SceneWord& row) {
        const bool overlay = row.word.starts_with(kOverlay);
        const bool goes_on = overlay && word.size() > row.word.size() + 1;
        return word == row.word || (goes_on && word.starts_with(row.word));
    });
    return found != std::end(kSceneWords) && shell.Offers(found->place) ? found : nullptr;
}

void ReportUnknown(std::string_view word) {
    std::fprintf(stderr, "capture: unknown request %.*s\n", static_cast<int>(word.size()),
                 word.data());
}

// The ticket that a word names: its own, or the first of a shift.
const kp::LoadedTicket* TicketNamed(const kp::Content& content, const std::string& word) {
    if (!word.starts_with(kShift)) return content.FindTicket(word);
    const int number = std::atoi(word.c_str() + kShift.size());
    for (const kp::Shift& shift : content.shifts) {
        if (shift.number == number && !shift.tickets.empty()) return &shift.tickets.front();
    }
    return nullptr;
}

}  // namespace

std::vector<std::string> EveryScene(const Places& places) {
    std::vector<std::string> scenes;
    for (const SceneWord& row : kSceneWords) {
        if (!Offers(places, row.place)) continue;
        const bool overlay = row.word.starts_with(kOverlay);
        const std::string scene = (overlay ? "bench:" : "") + std::string(row.word);
        scenes.push_back(scene);
        for (std::string_view rest = row.states; !rest.empty();) {
            scenes.push_back(scene + ":" + std::string(TakeWord(rest, ' ')));
        }
    }
    return scenes;
}

Scene::Scene(std::string_view words) : text_(words) {
    while (!words.empty()) {
        const std::string_view word = TakeWord(words, ':');
        if (word.empty()) continue;
        (word.starts_with(kOverlay) ? overlays_ : words_).emplace_back(word);
    }
}

double Scene::DelaySeconds() const {
    const bool slow =
        text_.find("verify") != std::string::npos || text_.find("splash") != std::string::npos;
    return slow ? kLongDelaySeconds : kDelaySeconds;
}

void Scene::Build(Shell& shell) {
    ChooseTicket(shell);
    const Place place = ChooseScreen(shell);
    // A ticket that is named is shown, open or not.
    const kp::LoadedTicket* next = shell.Unlocking().ContinueTicket();
    const std::string id = names_ticket_ ? shell.Progress().current
                           : next        ? next->ticket.id
                                         : std::string();
    shell.Open(place, id);
    shell.Advance();
    std::erase_if(words_, [&](const std::string& word) {
        Screen* top = shell.Top();
        return top != nullptr && top->CaptureRequest(word);
    });
}

// Takes the words that name a ticket. A run with its own number of closed tickets goes on from
// those.
void Scene::ChooseTicket(Shell& shell) {
    const kp::Content& content = shell.Content();
    const kp::LoadedTicket* ticket = nullptr;
    std::erase_if(words_, [&](const std::string& word) {
        const kp::LoadedTicket* named = TicketNamed(content, word);
        if (named) ticket = named;
        return named != nullptr;
    });
    names_ticket_ = ticket != nullptr;
    if (!ticket && shell.IsFreshProfile()) ticket = content.FindTicket(kDefaultTicket);
    if (ticket) shell.Progress().current = ticket->ticket.id;
}

// Takes the words that name a screen. Without one, whatever else is named is on the bench.
Place Scene::ChooseScreen(Shell& shell) {
    std::optional<Place> place;
    std::erase_if(words_, [&](const std::string& word) {
        const SceneWord* named = FindScene(shell, word);
        if (named) place = named->place;
        return named != nullptr;
    });
    if (place) return *place;
    return names_ticket_ || !words_.empty() ? Place::Bench : Place::Title;
}

void Scene::Request(Shell& shell, const std::string& word) {
    Screen* top = shell.Top();
    if (!top || !top->CaptureRequest(word)) ReportUnknown(word);
}

void Scene::OpenOverlays(Shell& shell) const {
    for (const std::string& word : overlays_) {
        if (const SceneWord* named = FindScene(shell, word)) {
            const bool goes_on = word.size() > named->word.size();
            shell.Open(named->place, goes_on ? std::string_view(word).substr(named->word.size() + 1)
                                             : named->about);
        } else {
            Request(shell, word);
        }
    }
    for (const std::string& word : words_) Request(shell, word);
}

}  // namespace Kest
