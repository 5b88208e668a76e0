#pragma once

#include <string>
#include <vector>

#include "content/content.h"
#include "save/progress.h"
#include "session/verify.h"
#include "shell/screen.h"
#include "ui/widgets.h"

namespace Kest {

// What a closing verify came to.
struct ResultsSummary {
    struct Score {
        int this_run = 0;
        int best = 0;
        int reference = 0;
    };
    std::string ticket;  // its number and title
    int passed = 0;
    int total = 0;
    bool first_close = false;
    Score ticks;
    Score lines;
    std::vector<std::string> remarks;        // at most three
    const kp::LoadedTicket* next = nullptr;  // the next ticket that is open
    bool offers_board = false;
};

// A deck passed on a ticket: what to record, and how the bench names the keys that this opens.
struct PassedDeck {
    const kp::LoadedTicket& loaded;
    const kp::VerifyResult& verify;
    int slot = 1;
    std::uint64_t now = 0;  // seconds since 1 January 1970
    int columns = 80;
    bool has_binder = false;
};

// Closes the ticket in the progress and sums up what changed.
ResultsSummary CloseWith(const kp::Content& content, Progress& progress, const PassedDeck& deck);

// The overlay that a closed ticket raises.
class Results final : public Screen {
public:
    Results(Shell& shell, ResultsSummary summary);

    std::string_view Name() const override { return "results"; }
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;

private:
    void DrawScores(zo::ui::Canvas& canvas, const zo::ui::Rect& box) const;
    void DrawScore(zo::ui::Canvas& canvas, zo::ui::Point at, std::string_view name,
                   const ResultsSummary::Score& score) const;
    bool IsUnderReference() const;

    ResultsSummary summary_;
    zo::ui::ButtonRow buttons_;
};

}  // namespace Kest
