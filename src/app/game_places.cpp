#include "game_places.h"

#include "bench/bench.h"
#include "screens/board.h"
#include "screens/notices.h"
#include "screens/options.h"
#include "screens/pause.h"
#include "screens/reader.h"
#include "screens/splash.h"
#include "screens/text_mode_card.h"
#include "screens/title.h"

namespace Kest {
namespace {

template <class AnyScreen>
std::unique_ptr<Screen> Make(Shell& shell, std::string_view) {
    return std::make_unique<AnyScreen>(shell);
}

}  // namespace

Places GamePlaces() {
    Places places;
    const auto at = [&](Place place) -> MakeScreen& {
        return places[static_cast<std::size_t>(place)];
    };
    at(Place::Splash) = Make<Splash>;
    at(Place::Title) = Make<Title>;
    at(Place::Board) = Make<Board>;
    at(Place::Bench) = MakeBench;
    at(Place::Pause) = Make<Pause>;
    at(Place::Options) = [](Shell& shell, std::string_view row) {
        return std::make_unique<Options>(shell, row);
    };
    at(Place::Binder) = Readers();
    at(Place::TextMode) = Make<TextModeCard>;
    at(Place::Credits) = [](Shell& shell, auto) { return MakeCredits(shell); };
    at(Place::Achievements) = [](Shell& shell, auto) { return MakeAchievements(shell); };
    return places;
}

}  // namespace Kest
