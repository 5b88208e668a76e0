#include "widget_page.h"

#include <array>
#include <functional>

#include "support/keys.h"
#include "support/picture.h"
#include "ui/code_editor.h"
#include "ui/widgets.h"

namespace gallery {
namespace {

using namespace zo::ui;
using fake::KeyNamed;

constexpr int kColumns = Canvas::kLeastColumns;
constexpr int kRows = Canvas::kLeastRows;

enum class Pointer : std::uint8_t { Away, Over, Down };

// Widgets know the pointer from the list that they register in, so each specimen has its own.
Pressables With(Pointer pointer, Point at) {
    Pressables pressables;
    if (pointer != Pointer::Away) pressables.Move(at);
    if (pointer == Pointer::Down) pressables.Press({.at = at});
    return pressables;
}

void Bars(Canvas& canvas, const TopBar& top, std::span<const KeyItem> keys,
          const StatusLine& status) {
    Pressables pressables;
    DrawTopBar(canvas, pressables, top);
    DrawKeyBar(canvas, pressables, keys, {});
    DrawStatusLine(canvas, status);
}

struct ButtonState {
    std::string_view name;
    Pointer pointer;
    bool focused, enabled;
};
constexpr ButtonState kButtonStates[] = {{"at rest", Pointer::Away, false, true},
                                         {"under the pointer", Pointer::Over, false, true},
                                         {"focused", Pointer::Away, true, true},
                                         {"pressed", Pointer::Down, true, true},
                                         {"unavailable", Pointer::Away, false, false}};

void ButtonsOf(Canvas& canvas, Point at, ButtonForm form, std::string_view label, int step) {
    for (const ButtonState& state : kButtonStates) {
        Pressables pressables = With(state.pointer, {at.x + 1, at.y});
        DrawButton(
            canvas, pressables, at,
            {.label = label, .form = form, .enabled = state.enabled, .focused = state.focused}, {});
        at.y += step;
    }
}

void Checks(Canvas& canvas, Point at, const Surface& surface) {
    const struct {
        Check check;
        Pointer pointer;
    } states[] = {{Check::On, Pointer::Away},
                  {Check::Off, Pointer::Away},
                  {Check::On, Pointer::Over},
                  {Check::Unavailable, Pointer::Away}};
    for (const auto& state : states) {
        Pressables pressables = With(state.pointer, at);
        at.x = 2 +
               DrawCheckBox(canvas, pressables, at, {.check = state.check, .surface = surface}, {});
    }
}

constexpr std::string_view kMonitors[] = {"~V~GA", "~A~mber", "~G~reen", "LC~D~"};
constexpr std::string_view kLooks[] = {"Classic", "Modern"};
constexpr std::string_view kSpeeds[] = {"Slow", "Steady", "Brisk"};

void Values(Canvas& canvas, Point at, const Surface& on, std::size_t monitors) {
    Pressables pressables;
    DrawRadioRow(canvas, pressables, at,
                 {.labels = std::span(kMonitors).first(monitors), .surface = on}, {});
    Pressables over = With(Pointer::Over, {at.x, at.y + 1});
    DrawRadioRow(canvas, over, {at.x, at.y + 1},
                 {.labels = kLooks, .chosen = 1, .least_cells = 14, .surface = on}, {});
    for (int chosen = 0; chosen < 3; ++chosen) {
        Pressables arrows = With(Pointer::Over, {at.x + 12 * chosen, at.y + 2});
        DrawChooser(canvas, arrows, {at.x + 12 * chosen, at.y + 2},
                    {.names = kSpeeds, .chosen = chosen, .surface = on}, {});
    }
}

// Buttons, switches and values: in a dialog at the left, on a pane at the right.
void ControlsPage(Canvas& canvas) {
    const Rect dialog = {0, 1, 46, 21};
    DrawOverlay(canvas, dialog, "In a dialog");
    ButtonsOf(canvas, {3, 3}, ButtonForm::Wide, "~C~ancel", 2);
    int y = 3;
    for (const ButtonState& state : kButtonStates) {
        canvas.Text(16, y, state.name, state.enabled ? Role::DialogDim : Role::DialogOff);
        y += 2;
    }
    Checks(canvas, {3, 13}, kOnDialog);
    Values(canvas, {3, 15}, kOnDialog, 4);
    Pressables pressables;
    const Rect chosen = {1, 18, dialog.width - 2, 1};
    canvas.Fill(chosen, U' ', Role::Sel);
    canvas.Put(1, 18, U'►', Role::Sel);
    canvas.Text(3, 18, Label("~M~usic"), Role::Sel, Role::SelHot);
    DrawCheckBox(canvas, pressables, {11, 18}, {.check = Check::On, .surface = kOnChosen}, {});
    DrawSlider(canvas, pressables, {16, 18}, {.percent = 47, .surface = kOnChosen}, {});
    DrawSlider(canvas, pressables, {16, 19}, {.percent = 70, .muted = true}, {});
    DrawSlider(canvas, pressables, {16, 20}, {.percent = 100}, {});

    const Rect pane = {46, 1, 34, 22};
    FrameLine top = DrawPane(canvas, pane, "On a pane", true);
    top.Right(" ! 1 error ", Role::Fault);
    ButtonsOf(canvas, {48, 3}, ButtonForm::Flat, "Show hint", 1);
    ButtonsOf(canvas, {64, 3}, ButtonForm::Compact, "Reset", 1);
    Checks(canvas, {48, 9}, kOnPanel);
    Values(canvas, {47, 11}, kOnPanel, 3);
    TextField fields[4];
    fields[1].SetText("crc");
    fields[2].SetText("a text that is longer than its field");
    fields[3].SetText("a text that is longer than its field");
    for (int k = 0; k < 12; ++k) fields[3].Key(KeyNamed("Left"));
    for (int k = 0; k < 4; ++k) {
        fields[k].Draw(canvas, pressables, {48, 15 + k, 24, 1}, k == 3);
    }
    FindBox found, none;
    found.field.SetText("crc");
    found.SetCount(5, 2);
    none.field.SetText("xyz");
    found.Draw(canvas, pressables, {47, 20, 32, 1}, false);
    none.Draw(canvas, pressables, {47, 21, 32, 1}, false);
    FrameLine bottom(canvas, pane, Edge::Bottom, 1);
    const Tab tabs[] = {{"TICKET"}, {"HINTS"}, {"SPEC", "", true}, {"NOTES"}};
    DrawTabs(bottom, canvas, pressables, tabs, 1, {});

    const KeyItem keys[] = {{.key = KeyNamed("F5"), .word = "Run"},
                            {.key = KeyNamed("F6"), .word = "Step", .marked = true},
                            {.key = KeyNamed("F8"), .word = "Verify", .enabled = false},
                            {.cap = "↑↓", .word = "Choose"}};
    Bars(canvas, {"WIDGETS", "Controls", ", values", "1 of 4"}, keys,
         {.message = "Paused at tick 64.", .right = "F5 F8"});
}

std::vector<ListRow> Shifts() {
    return {{.cells = {{"1 Basics"}, {"6 of 6"}}, .mark = {"√", Role::Ok}},
            {.cells = {{"2 Framing"}, {"2 of 6"}}},
            {.cells = {{"3 Integrity"}, {"0 of 5"}}, .kind = RowKind::Locked},
            {.cells = {{"4 Delivery of messages"}, {"0 of 6"}}, .kind = RowKind::Locked}};
}

std::vector<ListRow> Pages() {
    std::vector<ListRow> rows;
    for (const char* section : {"The LC-1", "Protocols"}) {
        rows.push_back({.cells = {{section}}, .kind = RowKind::Heading});
        for (int k = 1; k <= 6; ++k) {
            const bool unread = k == 2;
            rows.push_back({.cells = {{"3." + std::to_string(k) + " A page",
                                       unread ? std::optional(Role::PanelBright) : std::nullopt}}});
        }
    }
    return rows;
}

// Lists, tables and scrollbars.
void ListsPage(Canvas& canvas) {
    Pressables pressables;
    const auto pane = [&](const Rect& box, std::string_view title, bool focused, List& list) {
        DrawPane(canvas, box, title, focused);
        list.Draw(canvas, pressables, box, focused);
    };
    const ListForm shifts = {.columns = {{}, {.cells = 6, .align = Align::Right}}, .marks = true};
    List left(shifts), middle, right(shifts),
        table({.columns = {{"No.", 4},
                           {"Title", 14},
                           {"Device"},
                           {"Lines", 5, Align::Right},
                           {"Ticks", 5, Align::Right, 3},
                           {"Status", 7}},
               .marks = true});
    left.Set(Shifts());
    right.Set(Shifts());
    right.Choose(3);
    pane({0, 1, 27, 7}, "SHIFTS", false, left);
    pane({27, 1, 27, 7}, "LOCKED", false, right);
    pane({54, 1, 26, 7}, "EMPTY", false, middle);
    table.Set(
        {{.cells = {{"4-01"},
                    {"Stop and Wait"},
                    {"Order terminal"},
                    {"9"},
                    {"182"},
                    {"At par", Role::Ok}},
          .mark = {"√", Role::Ok}},
         {.cells = {{"4-03"}, {"A Title That Is Long"}, {"Instrument logger"}, {}, {}, {"Open"}}},
         {.cells = {{"4-05"}, {"Duplicates"}, {"Weather station"}, {}, {}, {"Locked"}},
          .kind = RowKind::Locked}});
    table.Choose(1);
    pane({0, 8, 80, 6}, "TICKETS", true, table);

    List pages, end;
    pages.Set(Pages());
    end.Set(Pages());
    end.Choose(12);
    pane({0, 14, 22, 9}, "PAGES", false, pages);
    pane({22, 14, 22, 9}, "PAGES", false, end);

    Scroll rest, dragged;
    const auto bar = [&](Scroll& scroll, int x) {
        const Rect box = {x, 14, 8, 9};
        DrawPane(canvas, box, "", false);
        scroll.Measure(40, 7);
        scroll.Draw(canvas, pressables, box);
    };
    bar(rest, 44);
    bar(dragged, 52);
    pressables.Press({.at = {59, 16}});
    bar(dragged, 52);

    List popup(
        {.columns = {{}, {.cells = 8, .align = Align::Right}}, .indent = 1, .surface = kOnDialog});
    popup.Set({{.cells = {{"c"}, {"register", Role::DialogDim}}},
               {.cells = {{"crc"}, {"register", Role::DialogDim}}},
               {.cells = {{"clear"}, {"label", Role::DialogDim}}}});
    DrawPopup(canvas, {60, 14, 20, 5});
    popup.Draw(canvas, pressables, {60, 14, 20, 5}, true);
    for (int k = 0; k < 3; ++k) {
        DrawMeter(canvas, {62, 20 + k, 16, 1}, {.share = 0.35 * k, .muted = k == 2});
    }

    const KeyItem keys[] = {{.key = KeyNamed("Enter"), .word = "Open"},
                            {.key = KeyNamed("F1"), .word = "Binder"},
                            {.key = KeyNamed("F10"), .word = "Menu"}};
    Bars(canvas, {"WIDGETS", "Lists, tables, scrollbars", "", "2 of 4"}, keys,
         {.message = "A message that gives way to the hint as soon as the two do not fit beside "
                     "each other.",
          .hint = table.ChosenHint()});
}

// Text to read and text to write.
void TextPage(Canvas& canvas) {
    Pressables pressables;
    const Rect left = {0, 1, 40, 22};
    DrawPane(canvas, left, "3.5 House frame", true);
    TextPane page;
    const auto linked = [](std::string text, std::initializer_list<std::string_view> links) {
        Paragraph paragraph = {.text = std::move(text)};
        for (const std::string_view link : links) {
            const std::size_t from = paragraph.text.find(link);
            paragraph.links.push_back({from, from + link.size(), "", [] {}});
        }
        return paragraph;
    };
    Paragraph binder = linked("►3.6 ACK and NAK", {"►3.6 ACK and NAK"});
    binder.label = "Binder     ";
    page.Set({{.text = "Retry Budget", .role = Role::PanelBright, .right = "♦♦♦··"},
              {.text = "4 Delivery", .label = "Shift      "},
              binder,
              {},
              linked("A frame is checked by two bytes: see page 3.4. The check starts from $FFFF, "
                     "as page 1.8 says.",
                     {"page 3.4", "page 1.8"}),
              {},
              {.text = "  SYNC     $C1 $67      two bytes, always the same",
               .role = Role::Code,
               .wrap = Wrap::Kept},
              {},
              {.text = "Words that were looked for are marked where they stand, and a part of the "
                       "text is selected.",
               .spans = {{0, 5, Role::PanelDim}}},
              {},
              {.text = "There is more of it than the pane shows, so there is a scrollbar at its "
                       "side: a thumb, a track and two arrows, and the text goes on below."},
              {},
              {.text = "And here are more rows."},
              {.text = "And more."},
              {.text = "The end."}});
    page.Find("marked");
    page.Draw(canvas, pressables, left, true);
    page.Key(KeyNamed("Down"));
    page.Key(KeyNamed("Down"));
    pressables.Press({.at = {20, 14}});
    pressables.Move({12, 16});
    page.Draw(canvas, pressables, left, true);

    const Rect right = {40, 1, 40, 11};
    FrameLine top = DrawPane(canvas, right, "FIRMWARE", false);
    top.Left(" EDIT ", Role::Chip);
    CodeEditor editor;
    editor.SetText("; Echo\nmov a, 1\nloop: rx a\n  jmp loop\n  shr\n");
    editor.Marks().errors.push_back({4, 2, 3});
    editor.Breakpoints().push_back(2);
    editor.Marks().next_line = 3;
    editor.Draw(canvas, pressables, right, false);

    const Rect below = {40, 12, 40, 11};
    DrawPane(canvas, below, "NOTES", false);
    const struct {
        std::string_view text;
        Role role;
    } signs[] = {
        {"√ passed", Role::Ok},        {"! failed", Role::Fault},  {"alert text", Role::Warn},
        {" PASS ", Role::ChipOk},      {" EDIT ", Role::Chip},     {" ! ", Role::ChipWarn},
        {" coach ◄", Role::CoachMark}, {"locked", Role::PanelOff}, {"dim", Role::PanelDim}};
    int y = below.y + 1;
    for (const auto& sign : signs) canvas.Text(below.x + 2, y++, sign.text, sign.role);

    const KeyItem keys[] = {{.key = KeyNamed("Tab"), .word = "Panel"},
                            {.key = KeyNamed("Alt+Left"), .word = "Back"},
                            {.key = KeyNamed("Esc"), .word = "Close"}};
    Bars(canvas, {"WIDGETS", "Text", "", "3 of 4"}, keys,
         {.mode = "NORMAL 2d",
          .message = "Test 2 of 6: FAIL. Tick 105: transmitted $D4 as frame 2, check byte 1; "
                     "the specification calls for $5D (']').",
          .alert = true});
}

// What stands over a screen.
void OverlaysPage(Canvas& canvas) {
    Pressables pressables;
    DrawPane(canvas, {0, 1, 40, 22}, "UNDER IT", true);
    DrawPane(canvas, {40, 1, 40, 22}, "AND BESIDE", false);
    for (int y = 2; y < 22; ++y) {
        canvas.Text(2, y, "The picture under an overlay", Role::Panel);
        canvas.Text(42, y, "is dimmed or lies in shadow", Role::PanelDim);
    }
    Menu menu;
    menu.Set({{.label = "~R~esume", .shortcut = "Esc"},
              {.label = "~O~ptions"},
              {.label = "E~x~it to DOS", .shortcut = "Alt+X"}});
    menu.Key(KeyNamed("Down"));
    const Rect box = {2, 3, Menu::kWidth, menu.Height()};
    DrawOverlay(canvas, box, "MENU");
    menu.Draw(canvas, pressables, box);

    std::string words;
    for (int k = 0; k < 90; ++k) words += "A notice whose text is too long scrolls. ";
    Dialog dialog("Shift 4 Delivery", {{.text = words, .role = Role::Dialog, .wrap = Wrap::Even}},
                  {.width = 38, .rows_kept = 18});
    dialog.buttons.Set({{.label = "OK"}, {.label = "~K~eep editing"}});
    dialog.Draw(canvas, pressables);

    const KeyItem keys[] = {{.cap = "←→", .word = "Choose"},
                            {.key = KeyNamed("Enter"), .word = "Press"},
                            {.key = KeyNamed("Esc"), .word = "Cancel"}};
    Bars(canvas,
         {"WIDGETS", "A context so long that there is no room for it and all the rest", "",
          "4 of 4, with a place"},
         keys,
         {.message = "Progress could not be saved: No space left.", .alert = true, .right = "F5"});
}

constexpr std::array<void (*)(Canvas&), kWidgetPages> kPages = {ControlsPage, ListsPage, TextPage,
                                                                OverlaysPage};

}  // namespace

Frame WidgetPage(int page, Look look, int theme) {
    Frame frame = fake::BlankFrame(kColumns, kRows, look);
    Canvas canvas(frame, theme);
    canvas.Fill(canvas.Area(), U'░', Role::Desktop);
    kPages[static_cast<std::size_t>(page)](canvas);
    return frame;
}

Frame WidgetSheet(const Grid& grid, int theme) {
    Frame sheet;
    sheet.Resize(grid);
    for (int page = 0; page < kWidgetPages; ++page) {
        const Frame part = WidgetPage(page, grid.look, theme);
        for (int y = 0; y < kRows; ++y) {
            for (int x = 0; x < kColumns; ++x) {
                sheet.At(page % 2 * kColumns + x, page / 2 * kRows + y) = part.At(x, y);
            }
        }
    }
    return sheet;
}

}  // namespace gallery
