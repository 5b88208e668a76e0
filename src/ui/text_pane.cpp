#include "ui/text_pane.h"

#include "base/utf.h"
#include "base/wrap.h"

namespace zo::ui {

void TextPane::Set(std::vector<Paragraph> paragraphs, Place place) {
    paragraphs_ = std::move(paragraphs);
    width_ = -1;
    if (place == Place::FromTop) scroll_.To(0);
}

void TextPane::Layout(int width) {
    if (width == width_) return;
    width_ = width;
    rows_.clear();
    for (std::size_t k = 0; k < paragraphs_.size(); ++k) {
        const Paragraph& paragraph = paragraphs_[k];
        const int label = static_cast<int>(base::CodePoints(paragraph.label));
        bool first = true;
        for (std::string& text : base::WrapPlain(paragraph.text, std::max(width - label, 1))) {
            rows_.push_back({k, first, std::move(text)});
            first = false;
        }
    }
}

void TextPane::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane) {
    const Rect inner = pane.Inner();
    const int width = std::min(inner.width - 2, kMeasure);
    if (width < 1 || inner.height < 1) return;
    Layout(width);
    scroll_.Measure(static_cast<int>(rows_.size()), inner.height);
    const int end = std::min(scroll_.Top() + inner.height, static_cast<int>(rows_.size()));
    for (int row = scroll_.Top(); row < end; ++row) {
        const int y = inner.y + row - scroll_.Top();
        DrawRow(canvas, pressables, {inner.x + 1, y, inner.width - 2, 1},
                rows_[static_cast<std::size_t>(row)]);
    }
    scroll_.Draw(canvas, pressables, pane);
}

void TextPane::DrawRow(Canvas& canvas, Pressables& pressables, const Rect& at, const Row& row) {
    const Paragraph& paragraph = paragraphs_[row.paragraph];
    const Style style = paragraph.act ? Style::Underline : Style::Plain;
    const int x = at.x + static_cast<int>(base::CodePoints(paragraph.label));
    if (row.first) {
        canvas.Text(at.x, at.y, paragraph.label, paragraph.label_role);
        canvas.TextRight(at.Right(), at.y, paragraph.right, paragraph.label_role);
    }
    const int end = canvas.Text(x, at.y, row.text, paragraph.role, style);
    if (paragraph.act) {
        pressables.Add({at.x, at.y, end - at.x, 1}, paragraph.hint).act =
            [this, which = row.paragraph] { paragraphs_[which].act(); };
    }
}

}  // namespace zo::ui
