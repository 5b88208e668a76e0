// The widgets as the player meets them, as cases of widgets.txt. Their steps:
//
//     a check on            a new widget: its name here below, and what it holds
//     keys ab<Enter>        named keys and typed characters
//     point 3,0             the pointer; press, drag, release, click, double, triple alike
//     wheel 3,0 -1          so many steps up; sideways with Shift
//     show                  the picture, without empty rows at its end; `show 0,1 9x2` a part of it
//     role 3,0 sel          of a cell
//     caret 4               its column, or none
//     hint Runs.            at the right end of the status line
//     log on, off           what the widget has told its owner since the step before that asked

#include <doctest/doctest.h>

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "stage.h"
#include "support/cases.h"
#include "support/keys.h"
#include "ui/widgets.h"

using namespace zo::ui;

namespace {

using Log = std::function<void(std::string)>;

// A widget and what its owner does for it.
struct Specimen {
    std::function<void(Canvas&, Pressables&)> draw;
    std::function<bool(const KeyPress&)> key = [](const KeyPress&) { return false; };
    std::function<bool(std::string_view)> type = [](std::string_view) { return false; };
    std::function<std::string_view()> hint = [] { return std::string_view(); };
};

// Owners that keep one number for the widget.
std::shared_ptr<int> Number(const std::string& words) {
    return std::make_shared<int>(std::stoi(words));
}

Specimen MakeCheck(const std::string& words, const Log& log) {
    const CheckBox box = {.check = words == "on"    ? Check::On
                                   : words == "off" ? Check::Off
                                                    : Check::Unavailable,
                          .hint = "Switches."};
    return {.draw = [=](Canvas& canvas, Pressables& pressables) {
        DrawCheckBox(canvas, pressables, {0, 0}, box, [log] { log("toggled"); });
    }};
}

constexpr std::string_view kMonitors[] = {"~V~GA", "~A~mber", "LC~D~"};

Specimen MakeRadio(const std::string& words, const Log& log) {
    const auto chosen = Number(words);
    const auto choose = [=](int to) {
        *chosen = to;
        log("chose " + std::to_string(to));
    };
    const auto row = [=] { return RadioRow{.labels = kMonitors, .chosen = *chosen}; };
    return {.draw =
                [=](Canvas& canvas, Pressables& pressables) {
                    DrawRadioRow(canvas, pressables, {0, 0}, row(), choose);
                },
            .key =
                [=](const KeyPress& key) {
                    const std::optional<int> to = RadioKey(row(), key);
                    if (to) choose(*to);
                    return to.has_value();
                }};
}

Specimen MakeChooser(const std::string& words, const Log& log) {
    static constexpr std::string_view kSpeeds[] = {"Slow", "Steady", "Brisk"};
    const auto chosen = Number(words);
    return {.draw = [=](Canvas& canvas, Pressables& pressables) {
        DrawChooser(canvas, pressables, {0, 0}, {.names = kSpeeds, .chosen = *chosen}, [=](int to) {
            *chosen = to;
            log("chose " + std::to_string(to));
        });
    }};
}

Specimen MakeSlider(const std::string& words, const Log& log) {
    const auto percent = Number(words);
    const bool muted = words.ends_with("muted");
    return {.draw = [=](Canvas& canvas, Pressables& pressables) {
        DrawSlider(canvas, pressables, {2, 0}, {.percent = *percent, .muted = muted}, [=](int to) {
            *percent = to;
            log(std::to_string(to));
        });
    }};
}

Specimen MakeField(const std::string& words, const Log& log) {
    const auto field = std::make_shared<TextField>();
    field->SetText(words);
    field->changed = [=, raw = field.get()] { log(raw->Text()); };
    return {.draw =
                [=](Canvas& canvas, Pressables& pressables) {
                    field->Draw(canvas, pressables, {1, 0, 10, 1}, true);
                },
            .key = [=](const KeyPress& key) { return field->Key(key); },
            .type = [=](std::string_view text) { return field->Type(text); }};
}

Specimen MakeFind(const std::string& words, const Log& log) {
    const auto find = std::make_shared<FindBox>();
    find->field.SetText("crc");
    find->move = [=](int step) { log(step > 0 ? "next" : "previous"); };
    find->close = [=] { log("closed"); };
    find->SetCount(std::stoi(words), 2);
    return {.draw =
                [=](Canvas& canvas, Pressables& pressables) {
                    find->Draw(canvas, pressables, {0, 0, 44, 1}, true);
                },
            .key = [=](const KeyPress& key) { return find->Key(key); },
            .type = [=](std::string_view text) { return find->Type(text); }};
}

Specimen MakeTabs(const std::string& words, const Log& log) {
    const auto chosen = Number(words);
    return {.draw = [=](Canvas& canvas, Pressables& pressables) {
        static const Tab kTabs[] = {{"TICKET", "What it asks."}, {"~H~INTS"}, {"SPEC"}};
        const Rect box = {0, 0, 24, 3};
        DrawPane(canvas, box, "", false);
        FrameLine line(canvas, box, Edge::Top, 1);
        DrawTabs(line, canvas, pressables, kTabs, *chosen, [=](int to) {
            *chosen = to;
            log("chose " + std::to_string(to));
        });
    }};
}

// "list 4" holds the rows "Row 0" to "Row 3".
Specimen Listed(std::shared_ptr<List> list, const Rect& pane, const Log& log) {
    list->chosen = [=, raw = list.get()] { log("chose " + std::to_string(raw->Chosen())); };
    list->open = [=, raw = list.get()] { log("opened " + std::to_string(raw->Chosen())); };
    return {.draw =
                [=](Canvas& canvas, Pressables& pressables) {
                    DrawPane(canvas, pane, "", true);
                    list->Draw(canvas, pressables, pane, true);
                },
            .key = [=](const KeyPress& key) { return list->Key(key); },
            .hint = [=] { return list->ChosenHint(); }};
}

Specimen MakeList(const std::string& words, const Log& log) {
    const auto list = std::make_shared<List>();
    std::vector<ListRow> rows;
    for (int k = 0; k < std::stoi(words); ++k) {
        rows.push_back({.cells = {{"Row " + std::to_string(k)}}});
    }
    list->Set(std::move(rows));
    return Listed(list, {0, 0, 14, 6}, log);
}

Specimen MakeSections(const std::string&, const Log& log) {
    const auto list = std::make_shared<List>();
    list->Set({{.cells = {{"The LC-1"}}, .kind = RowKind::Heading},
               {.cells = {{"Lines"}}},
               {.cells = {{"Ticks"}}},
               {.cells = {{"Protocols"}}, .kind = RowKind::Heading},
               {.cells = {{"Lost bytes"}}},
               {.cells = {{"Retries and how many"}}}});
    return Listed(list, {0, 0, 18, 8}, log);
}

Specimen MakeTable(const std::string&, const Log& log) {
    const auto list = std::make_shared<List>(
        ListForm{.columns = {{"No.", 4}, {"Title"}, {"Ticks", 5, Align::Right}}, .marks = true});
    list->Set({{.cells = {{"4-01"}, {"Resend"}, {"182"}}, .mark = {"√", Role::Ok}},
               {.cells = {{"4-02"}, {"Duplicate frames"}, {}}, .kind = RowKind::Locked}});
    return Listed(list, {0, 0, 29, 5}, log);
}

Specimen Read(std::shared_ptr<TextPane> text, const Rect& pane, const Log& log) {
    text->copy = [=](const std::string& copied) { log("copied " + copied); };
    return {.draw =
                [=](Canvas& canvas, Pressables& pressables) {
                    DrawPane(canvas, pane, "", true);
                    text->Draw(canvas, pressables, pane, true);
                },
            .key = [=](const KeyPress& key) { return text->Key(key); },
            .hint = [=] { return text->ChosenHint(); }};
}

Specimen MakeText(const std::string&, const Log& log) {
    const auto text = std::make_shared<TextPane>();
    text->Set({{.text = "Retry Budget", .right = "♦♦♦··"},
               {},
               {.text = "Keep the message while it is on its way.", .label = "1  "},
               {.text = "Last line"}});
    return Read(text, {0, 0, 26, 8}, log);
}

Specimen MakeLinks(const std::string&, const Log& log) {
    const auto text = std::make_shared<TextPane>();
    std::vector<Paragraph> rows;
    for (int k = 0; k < 6; ++k) {
        const std::string number = std::to_string(k);
        rows.push_back({.text = "see page " + number});
        if (k % 2 == 1) continue;
        rows.back().links.push_back(
            {4, 10, "Link: page " + number + ".", [=] { log("opened " + number); }});
    }
    text->Set(std::move(rows));
    return Read(text, {0, 0, 16, 5}, log);
}

Specimen MakeKept(const std::string&, const Log& log) {
    const auto text = std::make_shared<TextPane>();
    text->Set({{.text = "  0123456789ABCDEF", .wrap = Wrap::Kept}, {.text = "wraps as ever does"}});
    return Read(text, {0, 0, 16, 5}, log);
}

// Finds "ro", and shows the next place at every key.
Specimen MakeFound(const std::string&, const Log& log) {
    const auto text = std::make_shared<TextPane>();
    text->Set({{.text = "A row"}, {.text = "Rows"}, {}, {}, {}, {.text = "the last ROW"}});
    log(std::to_string(text->Find("ro")) + " found");
    Specimen found = Read(text, {0, 0, 18, 5}, log);
    found.key = [=](const KeyPress& key) {
        log(std::to_string(text->ShowFound(key.with.shift ? -1 : 1)));
        return true;
    };
    return found;
}

Specimen MakeDialog(const std::string& words, const Log& log) {
    const auto dialog = std::make_shared<Dialog>(
        "Exit", std::vector<Paragraph>{{.text = words, .role = Role::Dialog, .wrap = Wrap::Even}},
        Dialog::Form{.width = 40, .rows_kept = 23});
    dialog->buttons.Set({{.label = "~N~ext", .hint = "On.", .act = [=] { log("next"); }},
                         {.label = "~K~eep", .act = [=] { log("keep"); }},
                         {.label = "Cancel", .act = [=] { log("cancel"); }}});
    return {
        .draw = [=](Canvas& canvas, Pressables& pressables) { dialog->Draw(canvas, pressables); },
        .key = [=](const KeyPress& key) { return dialog->Key(key); },
        .hint = [=] { return dialog->buttons.FocusedHint(); }};
}

Specimen MakeMenu(const std::string&, const Log& log) {
    const auto menu = std::make_shared<Menu>();
    menu->Set({{.label = "~R~esume", .shortcut = "Esc", .act = [=] { log("resume"); }},
               {.label = "~O~ptions", .hint = "Sound.", .act = [=] { log("options"); }},
               {.label = "E~x~it", .shortcut = "Alt+X", .act = [=] { log("exit"); }}});
    return {.draw =
                [=](Canvas& canvas, Pressables& pressables) {
                    menu->Draw(canvas, pressables, {0, 0}, "MENU");
                },
            .key = [=](const KeyPress& key) { return menu->Key(key); },
            .hint = [=] { return menu->ChosenHint(); }};
}

const std::map<std::string_view, Specimen (*)(const std::string&, const Log&)> kWidgets = {
    {"check", MakeCheck},   {"radio", MakeRadio}, {"chooser", MakeChooser},
    {"slider", MakeSlider}, {"field", MakeField}, {"find", MakeFind},
    {"tabs", MakeTabs},     {"list", MakeList},   {"sections", MakeSections},
    {"table", MakeTable},   {"text", MakeText},   {"links", MakeLinks},
    {"kept", MakeKept},     {"found", MakeFound}, {"dialog", MakeDialog},
    {"menu", MakeMenu}};

class Play {
public:
    void Step(const support::Step& step) {
        std::string_view words = step.value;
        if (step.key == "a") {
            const std::string_view name = support::Cut(words, " ");
            log_.clear();
            specimen_ = kWidgets.at(name)(std::string(words), [this](std::string what) {
                log_ += (log_.empty() ? "" : ", ") + what;
            });
            stage_ = fake::Stage();
        } else if (step.key == "keys") {
            for (const InputEvent& event : fake::Keys(step.value)) Send(event);
        } else if (step.key == "show") {
            CHECK(Picture(step.value) == step.text);
        } else if (step.key == "role") {
            const Point at = PointOf(words);
            support::Cut(words, " ");
            CHECK(RoleName(stage_.frame.At(at.x, at.y).role) == words);
        } else if (step.key == "caret") {
            const Caret& caret = stage_.frame.caret;
            CHECK((caret == Caret{} ? "none" : std::to_string(caret.x)) == words);
        } else if (step.key == "hint") {
            const std::string_view hovered = stage_.pressables.Hint();
            CHECK((hovered.empty() ? specimen_.hint() : hovered) == words);
        } else if (step.key == "log") {
            if (!step.text.empty()) log_ += '\n';
            CHECK(std::exchange(log_, {}) == step.All());
        } else {
            Use(step.key, words);
        }
        Draw();
    }

private:
    static Point PointOf(std::string_view words) {
        Point at;
        REQUIRE(std::sscanf(std::string(words).c_str(), "%d,%d", &at.x, &at.y) == 2);
        return at;
    }

    void Draw() {
        stage_.frame = fake::BlankFrame(80, 25);
        Canvas canvas = stage_.Pen();
        stage_.pressables.Clear();
        specimen_.draw(canvas, stage_.pressables);
    }

    void Send(const InputEvent& event) {
        if (const auto* key = std::get_if<KeyPress>(&event)) {
            used_ = specimen_.key(*key) && key->key == Key::Character;
        } else if (const auto* text = std::get_if<TextInput>(&event); text && !used_) {
            specimen_.type(text->text);
        }
        Draw();
    }

    void Use(std::string_view how, std::string_view words) {
        Pressables& pressables = stage_.pressables;
        const Point at = PointOf(words);
        if (how == "point" || how == "drag") {
            pressables.Move(at);
        } else if (how == "press") {
            pressables.Press({.at = at});
        } else if (how == "release") {
            pressables.Release(at);
        } else if (how == "wheel" || how == "sideways") {
            support::Cut(words, " ");
            pressables.Wheel(at, std::stoi(std::string(words)), {.shift = how == "sideways"});
        } else {
            const int clicks = how == "click" ? 1 : how == "double" ? 2 : how == "triple" ? 3 : 0;
            REQUIRE_MESSAGE(clicks > 0, std::string(how));
            pressables.Press({.at = at, .clicks = clicks});
            pressables.Release(at);
        }
    }

    std::string Picture(const std::string& part) {
        Rect rect = {0, 0, 80, 25};
        std::sscanf(part.c_str(), "%d,%d %dx%d", &rect.x, &rect.y, &rect.width, &rect.height);
        std::string text = fake::Text(stage_.frame, rect);
        while (part.empty() && text.ends_with("\n\n")) text.pop_back();
        return text;
    }

    fake::Stage stage_;
    Specimen specimen_;
    std::string log_;
    bool used_ = false;
};

}  // namespace

TEST_CASE("widgets look and answer as their cases say") {
    for (const support::Case& widget : support::Cases("ui/widgets.txt")) {
        Play play;
        for (const support::Step& step : widget) {
            INFO(step.where);
            play.Step(step);
        }
    }
}
