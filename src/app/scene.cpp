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

struct PlaceName {
    std::string_view name;
    Place place;
};
constexpr PlaceName kScreens[] = {
    {"title", Place::Title}, {"board", Place::Board}, {"bench", Place::Bench}};
constexpr PlaceName kOverlays[] = {{"overlay-pause", Place::Pause},
                                   {"overlay-options", Place::Options},
                                   {"overlay-credits", Place::Credits}};
constexpr std::string_view kBinder = "overlay-binder";
constexpr std::string_view kBinderPage = "crc";

std::optional<Place> FindPlace(std::span<const PlaceName> names, std::string_view word) {
    const auto found = std::find_if(names.begin(), names.end(),
                                    [&](const PlaceName& row) { return row.name == word; });
    if (found == names.end()) return std::nullopt;
    return found->place;
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

Scene::Scene(std::string_view words) : text_(words) {
    while (!words.empty()) {
        const std::size_t end = std::min(words.find(':'), words.size());
        const std::string_view word = words.substr(0, end);
        words.remove_prefix(std::min(end + 1, words.size()));
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
    for (const std::string& word : words_) Request(shell, word);
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
        const std::optional<Place> named = FindPlace(kScreens, word);
        if (!named || !shell.Offers(*named)) return false;
        place = named;
        return true;
    });
    if (place) return *place;
    return names_ticket_ || !words_.empty() ? Place::Bench : Place::Title;
}

void Scene::Request(Shell& shell, const std::string& word) const {
    Screen* top = shell.Top();
    if (!top || !top->CaptureRequest(word)) ReportUnknown(word);
}

void Scene::OpenOverlays(Shell& shell) const {
    for (const std::string& word : overlays_) {
        const std::optional<Place> place = FindPlace(kOverlays, word);
        const bool binder = word.starts_with(kBinder);
        if (place && shell.Offers(*place)) {
            shell.Open(*place);
        } else if (binder && shell.Offers(Place::Binder)) {
            const bool page = word.size() > kBinder.size() + 1;  // behind one separator
            shell.Open(Place::Binder,
                       page ? std::string_view(word).substr(kBinder.size() + 1) : kBinderPage);
        } else {
            Request(shell, word);
        }
    }
}

}  // namespace Kest
