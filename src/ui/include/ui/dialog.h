#pragma once

#include <string>
#include <vector>

#include "ui/button.h"
#include "ui/text_pane.h"

namespace zo::ui {

// A box over the screen: a text that scrolls when it is longer than the box, and buttons that stay.
class Dialog {
public:
    struct Form {
        int width = 46;
        int side = 2;        // blanks between the frame and the text
        int above = 1;       // empty rows over the text
        int below = 1;       // and under the buttons; none leave no room for their shadows
        int rows_kept = 11;  // rows of the screen that the text leaves
    };
    Dialog() = default;
    Dialog(std::string title, std::vector<Paragraph> text, const Form& form);

    TextPane text;
    ButtonRow buttons;

    // The buttons' keys; all others go to the text.
    bool Key(const KeyPress& key) { return buttons.Key(key) || text.Key(key); }
    void Draw(Canvas& canvas, Pressables& pressables);
    const std::string& Title() const { return title_; }

private:
    std::string title_;
    Form form_;
};

}  // namespace zo::ui
