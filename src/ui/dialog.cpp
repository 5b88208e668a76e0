#include "ui/dialog.h"

#include <algorithm>

#include "ui/pane.h"

namespace zo::ui {

Dialog::Dialog(std::string title, std::vector<Paragraph> paragraphs, const Form& form)
    : title_(std::move(title)), form_(form) {
    text.Set(std::move(paragraphs));
}

void Dialog::Draw(Canvas& canvas, Pressables& pressables) {
    const int sides = 2 * (form_.side + 1);
    const int rows = text.RowsIn(form_.width - sides);
    const int shown = std::min(rows, canvas.Rows() - form_.rows_kept);
    const int around = form_.above + form_.below + 4;  // with frames, a blank row and the buttons
    const Rect box = OverlayRect(canvas.Columns(), canvas.Rows(), form_.width, shown + around);
    DrawOverlay(canvas, box, title_);
    const Rect area = {box.x + sides / 2, box.y + 1 + form_.above, box.width - sides, shown};
    text.Draw(canvas, pressables, area, box, false);
    buttons.Draw(canvas, pressables, {box.x + 1, box.Bottom() - 2 - form_.below, box.width - 2, 1},
                 form_.below > 0 ? ButtonForm::Wide : ButtonForm::Flat);
}

}  // namespace zo::ui
