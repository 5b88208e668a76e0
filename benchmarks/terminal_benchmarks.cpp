#include <algorithm>
#include <numeric>
#include <vector>

#include "base/format.h"
#include "bench/bench.h"
#include "benchmarks.h"
#include "support/game.h"
#include "writer.h"

namespace bench {
namespace {

using zo::ui::Key;
using zo::ui::PixelSize;

constexpr zo::term::Abilities kModern = {zo::term::Depth::Direct, zo::term::Charset::Unicode,
                                         zo::term::Repeats::Everything, true};
constexpr double kLineBytes = 1e6 / 8;  // a second, over 1 Mbit/s
constexpr double kFrame = 1.0 / 60;     // seconds
constexpr int kSpeed = 4;               // of a run: more than a tick a frame

Kest::Places BenchAlone() {
    Kest::Places places;
    places[static_cast<std::size_t>(Kest::Place::Bench)] = Kest::MakeBench;
    return places;
}

// The bench in a terminal of so many cells, with the reference of a ticket in the slot; counts what
// it sends.
class Remote {
public:
    explicit Remote(PixelSize cells)
        : game_(kp::LoadContent(kp::ContentStore::BuiltIn()), BenchAlone(), 40, false) {
        game_.system.screen.in_cells = true;
        game_.shell.OverrideSettings([](Kest::Settings& settings) { settings.run_speed = kSpeed; });
        game_.shell.SetWindow(cells, 1);
        writer_.SetAbilities(kModern);
        writer_.Resize(cells.width, cells.height);
        const kp::LoadedTicket& ticket = game_.content.shifts[3].tickets[4];
        game_.shell.Open(Kest::Place::Bench, ticket.ticket.id);
        game_.window.SetClipboardText(ticket.reference_text);
        whole_ = Send();
        game_.Press("<Ctrl+A><Ctrl+V><Ctrl+Home>");
        Send();
    }

    double Whole() const { return whole_; }
    double Press(std::string_view keys) {
        game_.Press(keys);
        return Send();
    }
    // What each sixtieth of a second sends.
    std::vector<double> Watch(int frames) {
        std::vector<double> sent;
        for (int k = 0; k < frames; ++k) {
            game_.Wait(kFrame);
            sent.push_back(Send());
        }
        return sent;
    }

private:
    double Send() {
        bytes_.clear();
        writer_.Draw(game_.Draw(), bytes_);
        return static_cast<double>(bytes_.size());
    }

    fake::Game game_;
    zo::term::Writer writer_;
    std::string bytes_;
    double whole_ = 0;
};

void CountKeys(Report& report, PixelSize cells, const std::string& size) {
    constexpr struct {
        const char* name;
        const char* keys;
    } kPresses[] = {{"a letter typed", "x"},
                    {"the caret a row down", "<Down>"},
                    {"a line begun", "<Enter>"},
                    {"a tick stepped", "<F6>"},
                    {"the next test", "<Ctrl+PgDn>"}};
    for (const auto& press : kPresses) {
        const std::string name = base::Format("terminal: %s, %s", press.name, size.c_str());
        if (!report.Wants(name)) continue;
        Remote remote(cells);
        std::vector<double> sent;
        for (int k = 0; k < 12; ++k) sent.push_back(remote.Press(press.keys));
        report.Print(name, "bytes", std::move(sent));
    }
}

// A run redraws the trace, the card and the streams all the time.
void CountRun(Report& report, PixelSize cells, const std::string& size) {
    const std::string frame = base::Format("terminal: a frame of a run, %s", size.c_str());
    const std::string rate = base::Format("terminal: a run over 1 Mbit/s, %s", size.c_str());
    if (!report.Wants(frame) && !report.Wants(rate)) return;
    Remote remote(cells);
    remote.Press("<F5>");
    const std::vector<double> sent = remote.Watch(60);
    const double all = std::accumulate(sent.begin(), sent.end(), 0.0);
    if (report.Wants(frame)) report.Print(frame, "bytes", sent);
    if (report.Wants(rate)) {
        report.Print(rate, "frames/s", {kLineBytes / (all / static_cast<double>(sent.size()))});
    }
}

}  // namespace

void RunTerminal(Report& report) {
    for (const PixelSize cells : {PixelSize{80, 25}, PixelSize{160, 50}}) {
        const std::string size = base::Format("%dx%d", cells.width, cells.height);
        const std::string whole = base::Format("terminal: a whole picture, %s", size.c_str());
        if (report.Wants(whole)) report.Print(whole, "bytes", {Remote(cells).Whole()});
        CountKeys(report, cells, size);
        CountRun(report, cells, size);
    }
}

}  // namespace bench
