#include <algorithm>

#include "screens/reader.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::FrameLine;
using zo::ui::Lines;
using zo::ui::Pressables;
using zo::ui::Rect;
using zo::ui::Role;

constexpr std::string_view kFind = "Find ";
constexpr int kFieldRows = 2;  // the field and the line under it

}  // namespace

void Reader::Draw(Canvas& canvas, Pressables& pressables) {
    const int columns = canvas.Columns();
    const int height = canvas.Rows() - 3;
    const int width = std::clamp(columns * 26 / 100, 26, 40);
    pages_area_ = {0, 1, width, height};
    page_area_ = {width, 1, columns - width, height};
    DrawPages(canvas, pressables);
    DrawPage(canvas, pressables);
}

void Reader::DrawPages(Canvas& canvas, Pressables& pressables) {
    const Rect& box = pages_area_;
    const bool focused = focus_.Has(kPages);
    zo::ui::DrawPane(canvas, box, "PAGES", focused);
    pressables.Add(box).focus = [this] {
        focus_.Focus(kPages);
        finding_ = false;
    };
    const Rect inner = box.Inner();
    const int field = canvas.Text(inner.x + 1, inner.y, kFind, Role::PanelDim);
    const Rect row = {field, inner.y, inner.Right() - 1 - field, 1};
    words_.Draw(canvas, pressables, row, focused && finding_);
    pressables.Add(row, "Finds words in the binder.").focus = [this] { StartFinding(); };
    canvas.Separator(box, inner.y + 1, focused ? Lines::Double : Lines::Single,
                     focused ? Role::FrameActive : Role::Frame);
    const Rect rows = {inner.x, inner.y + kFieldRows, inner.width, inner.height - kFieldRows};
    list_.Draw(canvas, pressables, rows, {box.x, rows.y - 1, box.width, rows.height + 2},
               focused && !finding_);
}

void Reader::DrawPage(Canvas& canvas, Pressables& pressables) {
    const Rect& box = page_area_;
    const bool focused = focus_.Has(kPage);
    const kp::BinderPage* page = PageHere();
    FrameLine top = zo::ui::DrawPane(canvas, box, page ? page->title : "", focused);
    if (page != nullptr && !page->section.empty()) {
        top.Right(" " + page->section + " ", focused ? Role::TitleActive : Role::Title);
    }
    pressables.Add(box).focus = [this] {
        focus_.Focus(kPage);
        finding_ = false;
    };
    if (unroll_to_) {
        page_.View().Measure(page_.RowsIn(box.width - 4), box.height - 2);
        page_.View().To(*unroll_to_);
        unroll_to_.reset();
    }
    if (show_found_) FindAgain(1);
    show_found_ = false;
    if (show_link_) (void)page_.Key({.key = zo::ui::Key::Down});
    show_link_ = false;
    page_.Draw(canvas, pressables, box, focused);
    FrameLine bottom(canvas, box, zo::ui::Edge::Bottom);
    DrawTurn(bottom, pressables, -1);
    DrawTurn(bottom, pressables, 1);
}

// The page before or after this one, as a button in the frame.
void Reader::DrawTurn(FrameLine& line, Pressables& pressables, int step) {
    const kp::BinderPage* page = Neighbour(step);
    if (page == nullptr) return;
    const auto area = step < 0 ? line.Left(" ◄ " + page->title + " ", Role::Button)
                               : line.Right(" " + page->title + " ► ", Role::Button);
    if (!area) return;
    pressables.Add(*area, step < 0 ? "The page before." : "The next page.").act = [this, step] {
        TurnPage(step);
    };
}

}  // namespace Kest
