#include "specimens.h"

#include <doctest/doctest.h>

#include <map>
#include <memory>

#include "support/cases.h"
#include "support/keys.h"
#include "ui/editor_case.h"
#include "ui/pane.h"
#include "ui/widgets.h"

namespace fake {
namespace {

using namespace zo::ui;
using Log = std::function<void(std::string)>;

std::vector<std::string> Parts(std::string_view words, std::string_view mark) {
    std::vector<std::string> parts;
    while (!words.empty()) parts.emplace_back(support::Cut(words, mark));
    return parts;
}

// A widget that keeps its own state, with the calls that it has.
template <class Widget, class Draw>
Specimen Around(std::shared_ptr<Widget> widget, Draw draw) {
    Specimen specimen = {
        .draw = [=](Canvas& canvas, Pressables& pressables) { draw(*widget, canvas, pressables); }};
    if constexpr (requires { widget->Key(KeyPress()); }) {
        specimen.key = [=](const KeyPress& key) { return widget->Key(key); };
    }
    if constexpr (requires { widget->Type(""); }) {
        specimen.type = [=](std::string_view text) { return widget->Type(text); };
    }
    if constexpr (requires { widget->ChosenHint(); }) {
        specimen.hint = [=] { return widget->ChosenHint(); };
    }
    return specimen;
}

// The owner of a widget that stands for a number.
struct Number {
    Number(const std::string& words, const Log& to)
        : value(std::make_shared<int>(std::stoi(words))), log(to) {}
    void operator()(int to) const {
        *value = to;
        log("chose " + std::to_string(to));
    }
    std::shared_ptr<int> value;
    Log log;
};

Specimen Check(const std::string& words, const Log& log) {
    using enum zo::ui::Check;
    const CheckBox box = {.check = words == "on"    ? On
                                   : words == "off" ? Off
                                                    : Unavailable,
                          .hint = "Switches."};
    return {.draw = [=](Canvas& canvas, Pressables& pressables) {
        DrawCheckBox(canvas, pressables, {0, 0}, box, [=] { log("toggled"); });
    }};
}

Specimen Radio(const std::string& words, const Log& log) {
    static constexpr std::string_view kMonitors[] = {"~V~GA", "~A~mber", "LC~D~"};
    const Number choose(words, log);
    const auto row = [=] { return RadioRow{.labels = kMonitors, .chosen = *choose.value}; };
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

Specimen Values(const std::string& words, const Log& log) {
    static constexpr std::string_view kSpeeds[] = {"Slow", "Steady", "Brisk"};
    const Number choose(words, log);
    return {.draw = [=](Canvas& canvas, Pressables& pressables) {
        DrawChooser(canvas, pressables, {0, 0}, {.names = kSpeeds, .chosen = *choose.value},
                    choose);
    }};
}

Specimen Percent(const std::string& words, const Log& log) {
    const Number choose(words, log);
    const bool muted = words.ends_with("muted");
    return {.draw = [=](Canvas& canvas, Pressables& pressables) {
        DrawSlider(canvas, pressables, {2, 0}, {.percent = *choose.value, .muted = muted}, choose);
    }};
}

Specimen Field(const std::string& words, const Log& log) {
    const auto field = std::make_shared<TextField>();
    field->SetText(words);
    field->changed = [=, raw = field.get()] { log(raw->Text()); };
    return Around(field, [](TextField& f, Canvas& canvas, Pressables& pressables) {
        f.Draw(canvas, pressables, {1, 0, 10, 1}, true);
    });
}

Specimen Find(const std::string& words, const Log& log) {
    const auto find = std::make_shared<FindBox>();
    find->field.SetText("crc");
    find->move = [=](int step) { log(step > 0 ? "next" : "previous"); };
    find->close = [=] { log("closed"); };
    find->SetCount(std::stoi(words), 2);
    return Around(find, [](FindBox& f, Canvas& canvas, Pressables& pressables) {
        f.Draw(canvas, pressables, {0, 0, 44, 1}, true);
    });
}

Specimen Tabs(const std::string& words, const Log& log) {
    static constexpr Tab kTabs[] = {{"TICKET", "What it asks."}, {"~H~INTS"}, {"SPEC"}};
    const Number choose(words, log);
    return {.draw = [=](Canvas& canvas, Pressables& pressables) {
        const Rect box = {0, 0, 24, 3};
        DrawPane(canvas, box, "", false);
        FrameLine line(canvas, box, Edge::Top, 1);
        DrawTabs(line, canvas, pressables, kTabs, *choose.value, choose);
    }};
}

Specimen Listed(const ListForm& form, std::vector<ListRow> rows, const Rect& pane, const Log& log) {
    const auto list = std::make_shared<List>(form);
    list->Set(std::move(rows));
    const auto tell = [=, raw = list.get()](const char* what) {
        return [=] { log(what + std::to_string(raw->Chosen())); };
    };
    list->chosen = tell("chose ");
    list->open = tell("opened ");
    return Around(list, [=](List& l, Canvas& canvas, Pressables& pressables) {
        DrawPane(canvas, pane, "", true);
        l.Draw(canvas, pressables, pane, true);
    });
}

// So many rows.
Specimen Rows(const std::string& words, const Log& log) {
    std::vector<ListRow> rows;
    for (int k = 0; k < std::stoi(words); ++k) {
        rows.push_back({.cells = {{"Row " + std::to_string(k)}}});
    }
    return Listed({}, std::move(rows), {0, 0, 14, 6}, log);
}

Specimen Sections(const std::string&, const Log& log) {
    return Listed({},
                  {{.cells = {{"The LC-1"}}, .kind = RowKind::Heading},
                   {.cells = {{"Lines"}}},
                   {.cells = {{"Ticks"}}},
                   {.cells = {{"Protocols"}}, .kind = RowKind::Heading},
                   {.cells = {{"Lost bytes"}}},
                   {.cells = {{"Retries and how many"}}}},
                  {0, 0, 18, 8}, log);
}

Specimen Table(const std::string&, const Log& log) {
    return Listed({.columns = {{"No.", 4}, {"Title"}, {"Ticks", 5, Align::Right}}, .marks = true},
                  {{.cells = {{"4-01"}, {"Resend"}, {"182"}}, .mark = {"√", Role::Ok}},
                   {.cells = {{"4-02"}, {"Duplicate frames"}, {}}, .kind = RowKind::Locked}},
                  {0, 0, 29, 5}, log);
}

Specimen Read(std::vector<Paragraph> paragraphs, const Rect& pane, const Log& log) {
    const auto text = std::make_shared<TextPane>();
    text->Set(std::move(paragraphs));
    text->copy = [=](const std::string& copied) { log("copied " + copied); };
    return Around(text, [=](TextPane& t, Canvas& canvas, Pressables& pressables) {
        DrawPane(canvas, pane, "", true);
        t.Draw(canvas, pressables, pane, true);
    });
}

Specimen Text(const std::string&, const Log& log) {
    return Read({{.text = "Retry Budget", .right = "♦♦♦··"},
                 {},
                 {.text = "Keep the message while it is on its way.", .label = "1  "},
                 {.text = "Last line"}},
                {0, 0, 26, 8}, log);
}

// Six rows; those of even number hold a link each.
Specimen Links(const std::string&, const Log& log) {
    std::vector<Paragraph> rows;
    for (int k = 0; k < 6; ++k) {
        const std::string number = std::to_string(k);
        rows.push_back({.text = "see page " + number});
        if (k % 2 == 1) continue;
        rows.back().links.push_back(
            {4, 10, "Link: page " + number + ".", [=] { log("opened " + number); }});
    }
    return Read(std::move(rows), {0, 0, 16, 5}, log);
}

Specimen Kept(const std::string&, const Log& log) {
    return Read(
        {{.text = "  0123456789ABCDEF", .wrap = Wrap::Kept}, {.text = "wraps as ever does"}},
        {0, 0, 16, 5}, log);
}

// Finds "ro", and shows the next place at every key.
Specimen Found(const std::string&, const Log& log) {
    const auto text = std::make_shared<TextPane>();
    text->Set({{.text = "A row"}, {.text = "Rows"}, {}, {}, {}, {.text = "the last ROW"}});
    log(std::to_string(text->Find("ro")) + " found");
    return {.draw =
                [=](Canvas& canvas, Pressables& pressables) {
                    text->Draw(canvas, pressables, {0, 0, 18, 5});
                },
            .key =
                [=](const KeyPress& key) {
                    log(std::to_string(text->ShowFound(key.with.shift ? -1 : 1)));
                    return true;
                }};
}

Specimen Asked(const std::string& words, const Log& log) {
    const auto dialog = std::make_shared<Dialog>(
        "Exit", std::vector<Paragraph>{{.text = words, .role = Role::Dialog, .wrap = Wrap::Even}},
        Dialog::Form{.width = 40, .rows_kept = 23});
    dialog->buttons.Set({{.label = "~N~ext", .hint = "On.", .act = [=] { log("next"); }},
                         {.label = "~K~eep", .act = [=] { log("keep"); }},
                         {.label = "Cancel", .act = [=] { log("cancel"); }}});
    Specimen asked = Around(dialog, [](Dialog& d, Canvas& canvas, Pressables& pressables) {
        d.Draw(canvas, pressables);
    });
    asked.hint = [=] { return dialog->buttons.FocusedHint(); };
    return asked;
}

Specimen Commands(const std::string&, const Log& log) {
    const auto menu = std::make_shared<Menu>();
    menu->Set({{.label = "~R~esume", .shortcut = "Esc", .act = [=] { log("resume"); }},
               {.label = "~O~ptions", .hint = "Sound.", .act = [=] { log("options"); }},
               {.label = "E~x~it", .shortcut = "Alt+X", .act = [=] { log("exit"); }}});
    return Around(menu, [](Menu& m, Canvas& canvas, Pressables& pressables) {
        const Rect box = {0, 0, Menu::kWidth, m.Height()};
        DrawOverlay(canvas, box, "MENU");
        m.Draw(canvas, pressables, box);
    });
}

// "F1 Binder, F8 Verify off": keys or other caps, their words, and how they are.
Specimen Keys(const std::string& words, const Log& log) {
    const auto parts = std::make_shared<std::vector<std::string>>(Parts(words, ", "));
    std::vector<KeyItem> items;
    for (const std::string& part : *parts) {
        std::string_view rest = part;
        const std::string_view cap = support::Cut(rest, " ");
        const std::string_view word = support::Cut(rest, " ");
        const KeyPress key = KeyNamed(cap);
        const bool named = key.key != Key::Character;
        items.push_back({.key = named ? key : KeyPress(),
                         .cap = named ? std::string_view() : cap,
                         .word = word,
                         .enabled = rest != "off",
                         .marked = rest == "marked"});
    }
    const std::function<void(const KeyPress&)> press = [=](const KeyPress& key) {
        log(KeyName(key));
    };
    return {.draw = [=, keep = parts](Canvas& canvas, Pressables& pressables) {
        DrawKeyBar(canvas, pressables, items, press);
    }};
}

// "106|title|context|detail|place", from its columns.
Specimen Top(const std::string& words, const Log&) {
    const std::vector<std::string> part = Parts(words, "|");
    return {.draw =
                [=](Canvas& canvas, Pressables& pressables) {
                    DrawTopBar(canvas, pressables, {part[1], part[2], part[3], part[4]});
                },
            .columns = std::stoi(part[0])};
}

// "mode|message|hint|right"; an alert's message begins with its sign.
Specimen Status(const std::string& words, const Log&) {
    std::vector<std::string> part = Parts(words, "|");
    part.resize(4);
    const bool alert = part[1].starts_with("! ");
    if (alert) part[1].erase(0, 2);
    return {.draw = [=](Canvas& canvas, Pressables&) {
        DrawStatusLine(canvas, {part[0], part[1], alert, part[2], part[3]});
    }};
}

// "24x6 nop / halt", cells of its pane and its text. What could be typed, what is wrong with a line
// and how one is described are as simple as can be.
Specimen Editor(const std::string& words, const Log& log) {
    int columns = 0, rows = 0;
    std::sscanf(words.c_str(), "%dx%d", &columns, &rows);
    const auto editor = std::make_shared<CodeEditor>();
    EditorLinks& links = editor->links;
    links.complete = [](std::u16string_view before) {
        std::vector<CompletionItem> items = {{"loop", "label"}, {"lookup", "label"}};
        for (int k = 0; before.ends_with(u", ") && k < 9; ++k) {
            items.push_back({"long" + std::to_string(k), "label"});
        }
        return items;
    };
    links.describe = [](std::u16string_view line, int column) {
        return line.starts_with(u"tx") ? TypingHint{"tx v: sends v", column > 2 ? 3 : 0, 2}
                                       : TypingHint();
    };
    links.changed = [&marks = editor->Marks(), &text = editor->Buffer()] {
        marks.errors.clear();
        for (int line = 0; line < text.LineCount(); ++line) {
            const std::size_t at = text.Line(line).find(u'?');
            if (at == std::u16string::npos) continue;
            marks.errors.push_back({line, static_cast<int>(at), 1, "Questions are not answered."});
        }
    };
    links.gutter_pressed = [log](int line) { log("gutter " + std::to_string(line)); };
    links.refused = [log] { log("refused"); };
    links.selection = [] { return std::string("there"); };
    links.set_selection = [log](std::string_view utf8) { log(std::string(utf8)); };
    editor_case::Load(*editor, words.substr(words.find(' ') + 1));
    links.changed();
    Specimen specimen = Around(editor, [=](CodeEditor& widget, Canvas& canvas, Pressables& list) {
        const Rect pane = {0, 0, columns, rows};
        DrawPane(canvas, pane, "", true);
        widget.Draw(canvas, list, pane, true);
    });
    specimen.state = [=] { return editor_case::Marked(*editor); };
    specimen.columns = columns;
    return specimen;
}

const std::map<std::string_view, Specimen (*)(const std::string&, const Log&)> kKinds = {
    {"editor", Editor},  {"check", Check},       {"radio", Radio}, {"chooser", Values},
    {"slider", Percent}, {"field", Field},       {"find", Find},   {"tabs", Tabs},
    {"list", Rows},      {"sections", Sections}, {"table", Table}, {"text", Text},
    {"links", Links},    {"kept", Kept},         {"found", Found}, {"dialog", Asked},
    {"menu", Commands},  {"keybar", Keys},       {"topbar", Top},  {"status", Status}};

}  // namespace

Specimen MakeSpecimen(std::string_view kind, const std::string& words, const Log& log) {
    REQUIRE_MESSAGE(kKinds.contains(kind), std::string(kind));
    return kKinds.at(kind)(words, log);
}

}  // namespace fake
