#include "glyphs.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace zo::term {
namespace {

constexpr char32_t kStandIn = U'?';

struct Range {
    char32_t first, last;
};

// In order. Left out are wide, combining, invisible and right-to-left characters, and those that
// some terminals draw as pictures two columns wide.
constexpr Range kNarrow[] = {
    {0x00A1, 0x00AC}, {0x00AE, 0x02FF}, {0x0370, 0x0377}, {0x037A, 0x037F}, {0x0384, 0x0482},
    {0x048A, 0x052F}, {0x0531, 0x0556}, {0x0561, 0x0587}, {0x1E00, 0x1F15}, {0x2010, 0x2027},
    {0x2030, 0x205E}, {0x2070, 0x2071}, {0x2074, 0x208E}, {0x20A0, 0x20BF}, {0x2100, 0x2138},
    {0x2150, 0x218B}, {0x2190, 0x2195}, {0x219A, 0x21A8}, {0x21AB, 0x22FF}, {0x2302, 0x2302},
    {0x2310, 0x2310}, {0x2320, 0x2321}, {0x2500, 0x25A9}, {0x25AC, 0x25B5}, {0x25B8, 0x25BF},
    {0x25C1, 0x25FA}, {0x263A, 0x263C}, {0x2640, 0x2640}, {0x2642, 0x2642}, {0x2660, 0x2667},
    {0x266A, 0x266B}, {0xFB01, 0xFB02},
};

// What stands for the game's own glyphs where only ASCII is to be had: each one's glyphs, then it.
constexpr std::u32string_view kAscii[] = {
    U"─╌-",  U"═=",     U"│║|", U"┌┐└┘├┤┬┴┼╔╗╚╝╠╣╦╩╬╟╢╞╡╤╧╥╨╪╫╒╕╘╛╓╖╙╜+",
    U"░▒:",  U"█▓■▌▐#", U"▄_",  U"▀\"",
    U"►→»>", U"◄←«<",   U"▲↑^", U"▼↓v",
    U"√V",   U"•♦☼*",   U"·.",  U"≡≈=",
    U"↔-",   U"¶P",     U"°o",  U"‘’'",
    U"“”\"", U"–—-",
};

char32_t InAscii(char32_t glyph) {
    const auto* const row = std::ranges::find_if(kAscii, [&](std::u32string_view glyphs) {
        return glyphs.substr(0, glyphs.size() - 1).find(glyph) != glyphs.npos;
    });
    return row == std::end(kAscii) ? kStandIn : row->back();
}

}  // namespace

char32_t OneColumn(char32_t glyph, Charset charset) {
    if (glyph >= U' ' && glyph <= U'~') return glyph;
    if (glyph == 0 || glyph == 0xA0) return U' ';
    if (charset == Charset::Ascii) return InAscii(glyph);
    const auto* const range = std::ranges::lower_bound(kNarrow, glyph, {}, &Range::last);
    return range != std::end(kNarrow) && range->first <= glyph ? glyph : kStandIn;
}

}  // namespace zo::term
