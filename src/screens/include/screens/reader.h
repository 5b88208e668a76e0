#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "content/binder.h"
#include "screens/page_trail.h"
#include "shell/places.h"
#include "ui/widgets.h"

namespace Kest {

// Makes the readers of one game. Each goes on where the one before it was left.
MakeScreen Readers();

// The binder: its pages in a list, one of them open beside it.
class Reader final : public Screen {
public:
    // Opens at a page; without one where the trail ends.
    Reader(Shell& shell, std::shared_ptr<PageTrail> trail, std::string_view page);

    std::string_view Name() const override { return "reader"; }
    std::optional<MusicScene> Music() const override { return MusicScene::Reading; }
    void Entered() override;
    void Left() override;
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    int Highlight() const override;
    bool Text(std::string_view utf8) override;
    std::span<const PadKey> PadKeys() const override;
    std::optional<zo::ui::Rect> FocusedPane() const override;
    // "find", "pages", "links", or a page's id, number or instruction.
    bool CaptureRequest(std::string_view request) override;

private:
    enum Pane : int { kPages, kPage, kPanes };

    const kp::BinderPage* PageHere() const;
    const kp::BinderPage* PageChosen() const;
    const kp::BinderPage* Neighbour(int step) const;  // null at the ends of the binder

    void GoTo(std::string_view page, int top = 0);
    void GoBack(int step);
    void TurnPage(int step, int top = 0);
    void OpenChosen();
    void RememberPlace();
    void ShowPage();
    void CountAsRead(const kp::BinderPage& page);

    void FillList();
    void AddRow(std::vector<zo::ui::ListRow>& rows, const kp::BinderPage& page);
    void AddHeading(std::vector<zo::ui::ListRow>& rows, std::string text);
    void ChooseHere();
    void StartFinding();
    void StopFinding();
    void FindAgain(int step);

    bool KeyEverywhere(const zo::ui::KeyPress& key);
    bool KeyInField(const zo::ui::KeyPress& key);
    bool KeyInPage(const zo::ui::KeyPress& key);
    std::string StandingText() const;

    void DrawPages(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables);
    void DrawPage(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables);
    void DrawTurn(zo::ui::FrameLine& line, zo::ui::Pressables& pressables, int step);

    std::shared_ptr<PageTrail> trail_;
    zo::ui::FocusRing focus_{kPanes, kPage};
    bool finding_ = false;  // the keys go into the field
    zo::ui::TextField words_;
    zo::ui::List list_;
    std::vector<const kp::BinderPage*> listed_;  // of each row; null for a heading
    zo::ui::TextPane page_;
    std::optional<int> unroll_to_;  // the first row in sight, once the page is broken into rows
    bool show_found_ = false;       // the first found word must come into sight
    bool show_link_ = false;        // a picture is to show the first link in sight as chosen
    int found_ = 0;                 // words on the page
    int found_at_ = 0;
    zo::ui::Rect pages_area_, page_area_;  // as drawn last
};

}  // namespace Kest
