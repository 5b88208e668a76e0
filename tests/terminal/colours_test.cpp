#include "colours.h"

#include <doctest/doctest.h>

#include <random>

#include "glyphs.h"
#include "support/contrast.h"
#include "surroundings.h"

using namespace zo::term;
using zo::ui::Look;
using zo::ui::Rgb;
using zo::ui::Role;

namespace {

Rgb PaletteColour(Colour index) {
    if (index >= 232) {
        const auto level = static_cast<std::uint8_t>(8 + 10 * (index - 232));
        return {level, level, level};
    }
    constexpr std::uint8_t kLevels[] = {0, 95, 135, 175, 215, 255};
    const Colour cube = index - 16;
    return {kLevels[cube / 36], kLevels[cube / 6 % 6], kLevels[cube % 6]};
}

}  // namespace

TEST_CASE("a colour becomes the nearest that the palette has") {
    std::minstd_rand random;
    for (int k = 0; k < 2000; ++k) {
        const auto seed = random();
        const Rgb wanted = {static_cast<std::uint8_t>(seed), static_cast<std::uint8_t>(seed >> 8),
                            static_cast<std::uint8_t>(seed >> 16)};
        const auto distance = [&](Colour index) {
            const Rgb c = PaletteColour(index);
            return (c.r - wanted.r) * (c.r - wanted.r) + (c.g - wanted.g) * (c.g - wanted.g) +
                   (c.b - wanted.b) * (c.b - wanted.b);
        };
        int best = distance(16);
        for (Colour index = 17; index < 256; ++index) best = std::min(best, distance(index));
        CAPTURE(wanted.r);
        CAPTURE(wanted.g);
        CAPTURE(wanted.b);
        CHECK(distance(NearestOfPalette(wanted)) == best);
    }
}

TEST_CASE("texts can be read in fewer colours") {
    for (int k = 0; k < zo::ui::kRoles; ++k) {
        const auto role = static_cast<Role>(k);
        CAPTURE(zo::ui::RoleName(role));
        const bool text = zo::ui::KindOf(role) == zo::ui::RoleKind::Text;
        for (const Look look : {Look::Classic, Look::Modern}) {
            for (int theme = 0; theme < 4; ++theme) {
                const zo::ui::Ink colours = zo::ui::Colours(look, theme, role);
                const zo::ui::Cell cell{U'x', colours.ink, colours.ground, role,
                                        zo::ui::Style::Plain};
                const Pen pen = PenOf(cell, Depth::Palette);
                const double contrast =
                    support::Contrast(support::Luminance(PaletteColour(pen.ink)),
                                      support::Luminance(PaletteColour(pen.ground)));
                if (text) CHECK(contrast >= 3);
                const Pen sixteen = PenOf(cell, Depth::Sixteen);
                CHECK(sixteen.ink != sixteen.ground);
            }
        }
    }
}

TEST_CASE("what is known of the terminal decides colours and characters") {
    const struct {
        Surroundings around;
        bool unusable;
        Depth depth;
        Charset charset;
    } cases[] = {
        {{"xterm-256color", "truecolor", "C.UTF-8"}, false, Depth::Direct, Charset::Unicode},
        {{"xterm-256color", "", "de_DE.utf8"}, false, Depth::Palette, Charset::Unicode},
        {{"linux", "", "en_GB.ISO-8859-1"}, false, Depth::Sixteen, Charset::Ascii},
        {{"xterm-direct", "", ""}, false, Depth::Direct, Charset::Ascii},
        {{"dumb", "truecolor", "C.UTF-8"}, true, Depth::Direct, Charset::Unicode},
        {{"", "", "C.UTF-8"}, true, Depth::Sixteen, Charset::Unicode},
    };
    for (const auto& c : cases) {
        CAPTURE(c.around.term);
        CHECK(IsUnusable(c.around) == c.unusable);
        CHECK(AbilitiesIn(c.around).depth == c.depth);
        CHECK(AbilitiesIn(c.around).charset == c.charset);
    }
}

TEST_CASE("every glyph takes one column") {
    constexpr std::u32string_view kOwn =
        U"☺☻♥♦♣♠•◘○◙♂♀♪♫☼►◄↕‼¶§▬↨↑↓→←∟↔▲▼⌂ÇüéâñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪"
        U"┘┌"
        U"█▄▌▐▀αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■ЖЁǅ";
    for (const char32_t glyph : kOwn) {
        CAPTURE(static_cast<unsigned>(glyph));
        CHECK(OneColumn(glyph, Charset::Unicode) == glyph);
        const char32_t ascii = OneColumn(glyph, Charset::Ascii);
        CHECK((ascii >= U' ' && ascii <= U'~'));
    }
    for (const char32_t glyph :
         std::u32string_view(U"\x1b\x7f\x9b\u0301漢\u200b\u202e\ufe0f⌚▶שع")) {
        CAPTURE(static_cast<unsigned>(glyph));
        CHECK(OneColumn(glyph, Charset::Unicode) == U'?');
    }
    CHECK(OneColumn(U'╬', Charset::Ascii) == U'+');
    CHECK(OneColumn(U'►', Charset::Ascii) == U'>');
}
