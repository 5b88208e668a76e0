#pragma once

#include <vector>

#include "content/content.h"
#include "screens/board_layout.h"
#include "shell/screen.h"

namespace Kest {

// Where the player chooses a shift and a ticket.
class Board final : public Screen {
public:
    explicit Board(Shell& shell);

    std::string_view Name() const override { return "board"; }
    void Entered() override;
    void Uncovered() override;
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    int Highlight() const override;
    std::optional<zo::ui::Rect> FocusedPane() const override;
    std::optional<MusicScene> Music() const override { return MusicScene::Board; }
    // "locked", "shifts", "ticket", "intro", "help".
    bool CaptureRequest(std::string_view request) override;

private:
    enum Pane : int { kShifts, kTickets, kTicket, kPanes };

    // A row of the tickets: one that was loaded, or one that was not.
    struct Entry {
        const kp::LoadedTicket* loaded = nullptr;
        const kp::LeftOut* left_out = nullptr;
        std::string_view Id() const;
    };

    const kp::Shift* ShiftChosen() const;
    const Entry* EntryChosen() const;
    bool IsOpen(const Entry& entry) const;
    std::vector<Entry> EntriesOf(const kp::Shift& shift) const;  // in the order of their numbers

    void FillShifts();
    void FillShiftText(const kp::Shift& shift);
    void FillTickets();
    void FillTicket();
    zo::ui::ListRow RowOf(const Entry& entry) const;
    void ChooseCurrent();
    void ShiftWasChosen();
    void MeetShift();
    void ChooseFirstOpen();
    void OpenTicket();
    void OpenPage(const std::string& page);
    void OpenBinder();
    bool OffersBinder() const;
    bool KeyInPane(const zo::ui::KeyPress& key);
    std::string StandingText() const;
    std::string_view ChosenHint() const;

    void LayOut(int columns, int rows);
    void DrawPaneFrame(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, Pane pane,
                       const zo::ui::Rect& box, std::string_view title);
    void DrawShifts(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables);
    void DrawTotals(zo::ui::Canvas& canvas) const;
    void DrawTicket(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables);

    BoardLayout layout_;
    zo::ui::FocusRing focus_{kPanes, kTickets};
    zo::ui::List shifts_;
    zo::ui::List tickets_;
    zo::ui::TextPane shift_text_;
    zo::ui::TextPane facts_;
    zo::ui::TextPane text_;       // beside the facts
    std::vector<Entry> entries_;  // of the chosen shift
};

}  // namespace Kest
