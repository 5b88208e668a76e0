#pragma once

#include <functional>
#include <string>
#include <vector>

#include "content/content.h"
#include "session/burn_in.h"
#include "session/verify.h"
#include "shell/shell.h"
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
    struct Remark {
        std::string text;
        zo::ui::Role role = zo::ui::Role::Dialog;
    };
    std::vector<Remark> remarks;             // a line each
    const kp::LoadedTicket* next = nullptr;  // the next ticket that is open
    bool offers_board = false;
    std::vector<Scores> history;          // with this verify at its end
    const kp::BurnIn* burn_in = nullptr;  // which may be under way; null without a seeded test
    std::function<void()> open_miss = {};
    std::function<void()> copy_card = {};
};

// A deck passed on a ticket, and what closing the ticket changed.
struct PassedDeck {
    const kp::LoadedTicket& loaded;
    const kp::VerifyResult& verify;
    const ClosedTicket& closed;
    int stage_before = 0;  // of the unlocking
    int columns = 80;      // of the bench, on which the new keys are named
};
ResultsSummary SumUp(Shell& shell, const PassedDeck& deck);

// The overlay that a closed ticket raises.
class Results final : public Screen {
public:
    Results(Shell& shell, ResultsSummary summary);

    std::string_view Name() const override { return "results"; }
    std::optional<MusicScene> Music() const override { return MusicScene::Results; }
    void Entered() override;
    void Update(double now) override;
    std::optional<double> NextFrameAt() const override;
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    int Highlight() const override { return buttons_.Focused(); }

private:
    void DrawScores(zo::ui::Canvas& canvas, const zo::ui::Rect& box) const;
    void DrawScore(zo::ui::Canvas& canvas, zo::ui::Point at, std::string_view name,
                   const ResultsSummary::Score& score) const;
    void DrawBurnIn(zo::ui::Canvas& canvas, zo::ui::Point at) const;
    int ChartRows(int rows) const;
    Scores Par() const;
    void SetButtons();
    bool HasMiss() const;
    bool IsUnderReference() const;

    ResultsSummary summary_;
    zo::ui::ButtonRow buttons_;
    double opened_at_ = 0;  // on the frame clock
    int rows_shown_ = 0;    // of the table
    bool offers_miss_ = false;
};

}  // namespace Kest
