#include <doctest/doctest.h>

#include <random>

#include "base/utf.h"
#include "stage.h"
#include "support/rounds.h"
#include "ui/code_editor.h"

using namespace zo::ui;

namespace {

using Random = std::mt19937;

constexpr int kOperationsARound = 100;

// Every key with any modifiers, texts of any kind, the pointer, the clipboard, and two texts that
// take turns; vi keys come and go.
class Hand {
public:
    explicit Hand(unsigned seed) : random_(seed) {
        EditorLinks& links = editor.links;
        links.clipboard = [this] { return clipboard_; };
        links.set_clipboard = [this](std::string_view utf8) { clipboard_ = utf8; };
        links.gutter_pressed = [this](int line) { editor.Breakpoints().push_back(line); };
        links.selection = [this] { return clipboard_; };
        links.set_selection = [](std::string_view) {};
        links.complete = [](std::u16string_view) {
            return std::vector<CompletionItem>{{"loop"}, {"lookup"}, {"a"}};
        };
        links.describe = [](std::u16string_view line, int column) {
            return TypingHint{base::ToUtf8(line), std::min(column, 3), 1};
        };
        editor.SetText("loop: rx a\n    tx a\n\tjmp loop ; \xF0\x9F\x98\x80");
        Draw();
    }

    void Act() {
        switch (Below(16)) {
            case 0:
                return editor.Paste(OneOf(kTexts));
            case 1:
            case 2:
                return Point();
            case 3:
                return editor.SetViKeys(Below(3) == 0);
            case 4:
                if (Below(4) == 0) other_ = editor.Exchange(std::move(other_));
                return;
            case 5:
                editor.Marks().errors = {{Below(4), Below(20), Below(20), "It is no number."}};
                return;
            case 6:
            case 7:
            case 8:
            case 9:
                editor.Type(OneOf(kTexts));
                return;
            default:
                PressKey();
        }
    }

    void Draw() {
        stage_.pressables.Clear();
        Canvas canvas = stage_.Pen();
        editor.Draw(canvas, stage_.pressables, {0, 0, 30, 9}, true);
    }

    void CheckInside() {
        const TextBuffer& text = editor.Buffer();
        const Selection& selected = editor.Selected();
        CHECK(text.Clamped(selected.caret) == selected.caret);
        CHECK(text.Clamped(selected.anchor) == selected.anchor);
        for (const int line : editor.Breakpoints()) CHECK((line >= 0 && line < text.LineCount()));
    }

    // Both texts lead back to what they began with, and on again to what they had become.
    void CheckHistory() {
        for (int text = 0; text < 2; ++text) {
            EditorSheet sheet = editor.Exchange({});
            Document& document = sheet.state.document;
            while (document.Redo()) {
            }
            const std::u16string end = document.Text().Text();
            while (document.Undo()) {
            }
            const std::u16string start = document.Text().Text();
            CHECK((start.empty() || start == kStart));
            while (document.Redo()) {
            }
            CHECK((document.Text().Text() == end));
            editor.Exchange(std::move(sheet));
            other_ = editor.Exchange(std::move(other_));
        }
    }

    CodeEditor editor;

private:
    static constexpr std::u16string_view kStart =
        u"loop: rx a\n    tx a\n        jmp loop ; \U0001F600";
    static constexpr std::string_view kTexts[] = {
        "a",
        "lo",
        " ",
        "\xF0\x9F\x98\x80",
        "\xC3\xA9",
        "mov a, 1",
        ";",
        "\t",
        "x\r\ny\r\n\tz\n",
        "d",
        "2",
        "w",
        "v",
        "c",
        "u",
        ".",
        "p",
        "$",
        "g",
        "\x01\x7F\xFF",
        "i",
        ":",
        "/",
    };

    int Below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    std::string_view OneOf(const auto& of) {
        return of[static_cast<std::size_t>(Below(static_cast<int>(std::size(of))))];
    }

    void PressKey() {
        KeyPress key = {.key = static_cast<Key>(1 + Below(static_cast<int>(Key::Character)))};
        constexpr std::string_view kCharacters = "abcdfghiknopruvwxyz0123456789/[] ";
        if (key.key == Key::Character || Below(3) == 0) {
            key.key = Key::Character;
            key.character = static_cast<unsigned char>(
                kCharacters[static_cast<std::size_t>(Below(static_cast<int>(kCharacters.size())))]);
            key.with.control = true;
        } else {
            key.with.control = Below(4) == 0;
        }
        key.with.shift = Below(3) == 0;
        editor.Key(key);
    }

    void Point() {
        const zo::ui::Point at = {Below(32) - 1, Below(11) - 1};
        switch (Below(6)) {
            case 0:
                stage_.pressables.Wheel(at, Below(3) - 1, {.shift = Below(2) == 0});
                break;
            case 1:
                stage_.pressables.PressMiddle(at);
                break;
            case 2:
                stage_.pressables.Release(at);
                break;
            case 3:
                stage_.pressables.Move(at);
                break;
            default:
                stage_.pressables.Press(
                    {.at = at, .clicks = 1 + Below(3), .with = {.shift = Below(2) == 0}});
        }
    }

    Random random_;
    fake::Stage stage_{32, 11};
    std::string clipboard_;
    EditorSheet other_;
};

}  // namespace

TEST_CASE("whatever is done, the caret stays in the text and every step can be taken back") {
    const int rounds = support::Rounds(100);
    for (int round = 0; round < rounds; ++round) {
        CAPTURE(round);
        Hand hand(static_cast<unsigned>(round));
        for (int k = 0; k < kOperationsARound; ++k) {
            CAPTURE(k);
            hand.Act();
            hand.CheckInside();
            if (k % 3 == 0) hand.Draw();
        }
        hand.CheckHistory();
    }
}
