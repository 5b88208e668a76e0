#pragma once

#include <functional>
#include <string>
#include <vector>

#include "shell/screen.h"
#include "ui/dialog.h"

namespace Kest {

// Firmware that holds a ticket's record.
struct KeptRecord {
    std::string name;      // "Best lines"
    std::string comes_to;  // "33 lines, 2894 ticks"
    std::string firmware;
};

// The overlay in which the player looks at the firmware behind the records, beside the slot's.
class Records final : public Screen {
public:
    struct Contents {
        std::vector<KeptRecord> records;  // at least one
        std::string slot_name;            // "slot 1"
        std::string slot_text;
        std::function<void(const KeptRecord& record)> load = {};
        std::function<void(const KeptRecord& record)> copy_card = {};
    };
    Records(Shell& shell, Contents contents);

    std::string_view Name() const override { return "records"; }
    std::optional<MusicScene> Music() const override { return MusicScene::Reading; }
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    int Highlight() const override { return dialog_.buttons.Focused(); }

private:
    const KeptRecord& Shown() const { return contents_.records[shown_]; }
    void Fill();
    void ShowOther();
    bool ShowNextChange();

    Contents contents_;
    std::size_t shown_ = 0;
    std::vector<int> changes_;  // the rows of the text at which lines differ, a run of them once
    std::size_t change_ = 0;    // the one that is shown next
    zo::ui::Dialog dialog_;
};

}  // namespace Kest
