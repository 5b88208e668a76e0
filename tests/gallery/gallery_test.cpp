// Draws every scene in both looks at every usual window in both text sizes, and looks at the cells:
// no frame broken, no foreign glyph, the recorded text, the same cells in a terminal. Pictures of
// every colouring go into build/gallery; with KEST_LONG set, those of every window too.

#include <doctest/doctest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>

#include "base/format.h"
#include "capture.h"
#include "game_places.h"
#include "gpu/picture.h"
#include "native/system_disk.h"
#include "picture_faults.h"
#include "recording.h"
#include "scene.h"
#include "support/cases.h"
#include "support/fake_disk.h"
#include "support/picture.h"
#include "terminal_model.h"
#include "ui/pane.h"
#include "widget_page.h"
#include "writer.h"

using zo::ui::Frame;
using zo::ui::Look;
using zo::ui::PixelSize;

namespace {

constexpr PixelSize kWindows[] = {{640, 400}, {1280, 800}, {1440, 900}, {1920, 1080}, {3840, 2160}};
constexpr PixelSize kUsual = {1280, 800};
constexpr std::string_view kColourings[][4] = {{"vga", "amber", "green", "lcd"},
                                               {"dark", "amber", "blueprints", ""}};

struct View {
    Look look = Look::Classic;
    PixelSize window = kUsual;
    bool large = false;

    zo::ui::Grid Grid() const {
        return zo::ui::SizeGrid({.window = window, .look = look, .want_large = large});
    }
};

std::vector<View> AllViews() {
    std::vector<View> views;
    for (const Look look : {Look::Classic, Look::Modern}) {
        for (const PixelSize window : kWindows) {
            for (const bool large : {false, true}) views.push_back({look, window, large});
        }
    }
    return views;
}

// Of the views of a look that show the same grid of cells the first.
std::vector<View> DistinctViews() {
    std::vector<View> views = AllViews();
    std::set<std::tuple<Look, int, int>> seen;
    std::erase_if(views, [&](const View& view) {
        const zo::ui::Grid grid = view.Grid();
        return !seen.insert({view.look, grid.columns, grid.rows}).second;
    });
    return views;
}

void WritePicture(const Frame& frame, PixelSize size, std::string_view name, int theme,
                  std::string_view detail = {}) {
    const auto look = static_cast<std::size_t>(frame.grid.look);
    const std::string_view colouring = kColourings[look][theme];
    const std::string file = base::Format(
        "%s %s-%s%s%s.png", gallery::FileName(name).c_str(), look == 0 ? "classic" : "modern",
        std::string(colouring).c_str(), detail.empty() ? "" : " ", std::string(detail).c_str());
    zo::platform::SystemDisk disk;
    std::filesystem::create_directories(KEST_GALLERY);
    const base::Status written =
        zo::gpu::WritePicture(frame, size, disk, std::filesystem::path(KEST_GALLERY) / file);
    INFO(written.Message());
    CHECK(written);
}

template <class Act>
void ForEachColouring(Look look, Act act) {
    const auto& names = kColourings[static_cast<std::size_t>(look)];
    for (int theme = 0; theme < 4; ++theme) {
        if (!names[theme].empty()) act(theme);
    }
}

const kp::Content& BuiltInContent() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

kp::Content ContentWith(std::string name, std::string text) {
    kp::ContentStore store = kp::ContentStore::BuiltIn();
    store.Add(std::move(name), std::move(text));
    return kp::LoadContent(store);
}

const kp::Content& WithoutATicket() {
    static const kp::Content content = ContentWith("missions/4-03-retry-budget.json",
                                                   "{\"id\": \"4-03-retry-budget\", \"rom\": }");
    return content;
}

const kp::Content& WithoutACampaign() {
    static const kp::Content content = ContentWith("missions/campaign.json", "");
    return content;
}

struct Sight {
    std::string scene;
    int closed;  // tickets
    std::string name;
    const kp::Content& (*content)() = BuiltInContent;
};

// Every scene when every stage of the game is open, the screens of a player's first minutes, and
// those that tell of the player's way at its end; and what is left of a damaged content.
std::vector<Sight> Sights() {
    constexpr int kLate = 20;
    constexpr int kEnd = 42;
    std::vector<Sight> sights;
    for (const std::string& scene : Kest::EveryScene(Kest::GamePlaces())) {
        sights.push_back({scene, kLate, scene});
        if (scene.find(':') == std::string::npos) sights.push_back({scene, 0, scene + ":first"});
        if (scene == "title" || scene == "board") sights.push_back({scene, kEnd, scene + ":last"});
    }
    for (const char* const scene : {"splash:start", "board:locked"}) {
        sights.push_back({scene, kLate, std::string(scene) + ":damaged", WithoutATicket});
    }
    sights.push_back({"board", 0, "board:nothing", WithoutACampaign});
    return sights;
}

// A game that shows a scene.
class Show {
public:
    Show(const Sight& sight, const View& view)
        : shell_({.content = sight.content(),
                  .clock = clock_,
                  .disk = disk_,
                  .persistent = false,
                  .closed_override = sight.closed,
                  .places = Kest::GamePlaces()}) {
        shell_.OverrideSettings([&](Kest::Settings& settings) {
            settings.modern_look = view.look == Look::Modern;
            settings.large_text = view.large;
            settings.theme = 0;
        });
        shell_.SetWindow(view.window, 1);
        Kest::ShowScene(sight.scene, 0, clock_, shell_);
    }
    const Frame& Draw(int theme) {
        shell_.OverrideSettings([&](Kest::Settings& settings) { settings.theme = theme; });
        return shell_.Draw();
    }

private:
    fake::Disk disk_;
    Kest::VirtualClock clock_;
    Kest::Shell shell_;
};

// A terminal that is shown one picture after another, as the game writes them there.
class InTerminal {
public:
    explicit InTerminal(const zo::ui::Grid& grid) : model_(grid.columns, grid.rows, kAbilities) {
        writer_.SetAbilities(kAbilities);
        writer_.Resize(grid.columns, grid.rows);
    }
    // What it shows otherwise, a line a cell.
    std::string Differences(const Frame& frame) {
        bytes_.clear();
        writer_.Draw(frame, bytes_);
        model_.Read(bytes_);
        return model_.Differences(frame) + model_.Faults();
    }

private:
    static constexpr zo::term::Abilities kAbilities = {
        zo::term::Depth::Direct, zo::term::Charset::Unicode, zo::term::Repeats::Everything, true};
    zo::term::Writer writer_;
    fake::TerminalModel model_;
    std::string bytes_;
};

}  // namespace

TEST_CASE("a broken frame, a foreign glyph and a second focus are found") {
    using zo::ui::Canvas;
    using zo::ui::Role;
    const struct {
        std::function<void(Canvas&)> draw;
        std::string_view faults;
    } cases[] = {
        {[](Canvas&) {}, ""},
        {[](Canvas& canvas) { canvas.Text(6, 3, "too long a text", Role::Panel); },
         "a text in the right side of a frame at 19,3\n"},
        {[](Canvas& canvas) { canvas.Text(9, 3, "a text", Role::Panel, zo::ui::Style::Plain); },
         ""},
        {[](Canvas& canvas) { canvas.Put(5, 4, U'x', Role::Panel); },
         "a text in the left side of a frame at 5,4\n"},
        {[](Canvas& canvas) { canvas.Put(19, 6, U'─', Role::Frame); }, "a frame is open at 19,6\n"},
        {[](Canvas& canvas) { canvas.Put(7, 3, U'…', Role::Panel); },
         "a glyph outside the code page at 7,3\n"},
        {[](Canvas& canvas) {
             zo::ui::DrawPane(canvas, {30, 2, 9, 4}, "", true);
         },
         "2 panes have focus\n"},
        {[](Canvas& canvas) {
             zo::ui::DrawOverlay(canvas, {12, 1, 30, 9}, "Over it");
         },
         ""},
    };
    for (const auto& c : cases) {
        Frame frame = fake::BlankFrame(80, 25);
        Canvas canvas(frame, 0);
        zo::ui::DrawPane(canvas, {5, 2, 15, 5}, "PANE", false);
        zo::ui::DrawPane(canvas, {50, 2, 9, 5}, "", true);
        c.draw(canvas);
        CHECK(gallery::Faults(frame) == c.faults);
    }
}

TEST_CASE("every widget stands in its pane in every state") {
    for (int page = 0; page < gallery::kWidgetPages; ++page) {
        const std::string name = base::Format("widgets-%d", page + 1);
        CAPTURE(name);
        gallery::Recording recording(name);
        const Frame frame = gallery::WidgetPage(page, Look::Classic, 0);
        CHECK(gallery::Faults(frame) == "");
        recording.Add(frame);
        CHECK(recording.Finish() == "");
    }
    // Windows that hold the sheet's 160 by 50 cells exactly.
    for (const View& view : {View{Look::Classic, kUsual}, View{Look::Modern, {1120, 770}}}) {
        ForEachColouring(view.look, [&](int theme) {
            const Frame sheet = gallery::WidgetSheet(view.Grid(), theme);
            WritePicture(sheet, view.window, "widgets", theme);
        });
    }
}

TEST_CASE(
    "every scene is whole at every size, shows the recorded text, and a terminal shows it too") {
    const std::vector<Sight> sights = Sights();
    const std::vector<View> views = DistinctViews();
    std::vector<InTerminal> terminals;
    for (const View& view : views) terminals.emplace_back(view.Grid());
    for (const Sight& sight : sights) {
        CAPTURE(sight.name);
        gallery::Recording recording(sight.name);
        for (std::size_t k = 0; k < views.size(); ++k) {
            const View& view = views[k];
            const zo::ui::Grid grid = view.Grid();
            CAPTURE(grid.columns);
            CAPTURE(grid.rows);
            Show show(sight, view);
            const Frame& frame = show.Draw(0);
            CHECK(gallery::Faults(frame) == "");
            CHECK(terminals[k].Differences(frame) == "");
            recording.Add(frame);
        }
        CHECK(recording.Finish() == "");
    }
    const std::size_t recorded = support::NamesIn("gallery/texts").size();
    CHECK(recorded == sights.size() + gallery::kWidgetPages);  // none is left of what is gone
}

TEST_CASE("every option is focused once") {
    constexpr int kOptions = 18;
    for (int row = 1; row <= kOptions; ++row) {
        const std::string scene = base::Format("bench:overlay-options-%d", row);
        CAPTURE(scene);
        for (const View& view : AllViews()) {
            if (view.window != kUsual) continue;
            Show show({scene, 0, scene}, view);
            CHECK(gallery::Faults(show.Draw(0)) == "");
            WritePicture(show.Draw(0), view.window, scene, 0, view.large ? "large" : "normal");
        }
    }
}

TEST_CASE("a window without a larger size says so") {
    for (const Look look : {Look::Classic, Look::Modern}) {
        const View view = {look, {320, 240}, true};
        const std::string scene = "bench:overlay-options-9";
        Show show({scene, 0, scene}, view);
        const Frame& frame = show.Draw(0);
        const bool told = fake::Text(frame).find("Large draws as Normal.") != std::string::npos;
        CHECK(told == !view.Grid().large_available);
        WritePicture(frame, view.window, scene, 0, "no larger");
    }
}

TEST_CASE("pictures of every scene in every colouring") {
    const bool all_windows = std::getenv("KEST_LONG") != nullptr;
    for (const Sight& sight : Sights()) {
        for (const View& view : AllViews()) {
            if (!all_windows && view.window != kUsual) continue;
            Show show(sight, view);
            const std::string detail = base::Format("%dx%d%s", view.window.width,
                                                    view.window.height, view.large ? " large" : "");
            ForEachColouring(view.look, [&](int theme) {
                WritePicture(show.Draw(theme), view.window, sight.name, theme, detail);
            });
        }
    }
}
