#include "cells/theme.h"

#include <algorithm>
#include <array>

namespace zo::ui {
namespace {

using enum Role;
using enum RoleKind;

struct RoleRow {
    Role role;
    std::string_view name;
    RoleKind kind;
    std::string_view modern;  // ink/ground of the dark, the amber and the blueprints theme
};

struct ClassicRow {
    Role role;
    std::string_view colours;  // ink/ground of the VGA, the amber, the green and the LCD monitor
};

// clang-format off
constexpr RoleRow kRoleTable[] = {
    // role        name             kind         dark          amber         blueprints
    {Desktop,      "desktop",       Decoration,  "161D27/0D1117 1B150C/100C07 0E3063/08244D"},
    {Logo,         "logo",          Text,        "FFFFFF/0D1117 FFB454/100C07 FFFFFF/08244D"},
    {Boot,         "boot",          Text,        "DCE3EC/0D1117 F2E2C4/100C07 E6EFFC/08244D"},
    {BootDim,      "boot.dim",      Text,        "93A0B0/0D1117 B59E78/100C07 A9C0E4/08244D"},
    {Bar,          "bar",           Text,        "DCE3EC/1F2732 F2E2C4/251D12 E6EFFC/123B78"},
    {BarKey,       "bar.key",       Text,        "6CB6FF/232C38 FFB454/2B2215 FFFFFF/2A63B8"},
    {BarOff,       "bar.off",       Unavailable, "5E6E84/1F2732 7A6440/251D12 6F93CC/123B78"},
    {Panel,        "panel",         Text,        "DCE3EC/151B23 F2E2C4/18130C E6EFFC/0C2F63"},
    {PanelDim,     "panel.dim",     Text,        "93A0B0/151B23 B59E78/18130C A9C0E4/0C2F63"},
    {PanelBright,  "panel.bright",  Text,        "FFFFFF/151B23 FFF6E0/18130C FFFFFF/0C2F63"},
    {PanelHot,     "panel.hot",     Text,        "6CB6FF/151B23 FFB454/18130C FFD97A/0C2F63"},
    {PanelOff,     "panel.off",     Unavailable, "5E6E84/151B23 7A6440/18130C 6F93CC/0C2F63"},
    {Link,         "link",          Text,        "6CB6FF/151B23 FFB454/18130C 9FD0FF/0C2F63"},
    {Frame,        "frame",         Mark,        "5E6E84/151B23 7A6440/18130C 6F93CC/0C2F63"},
    {FrameActive,  "frame.active",  Mark,        "6CB6FF/151B23 FFB454/18130C FFFFFF/0C2F63"},
    {Title,        "title",         Text,        "93A0B0/151B23 B59E78/18130C A9C0E4/0C2F63"},
    {TitleActive,  "title.active",  Text,        "0D1117/6CB6FF 100C07/FFB454 08244D/FFFFFF"},
    {Tab,          "tab",           Text,        "93A0B0/151B23 B59E78/18130C A9C0E4/0C2F63"},
    {TabOn,        "tab.on",        Text,        "FFFFFF/1F4E80 FFF6E0/6B4410 FFFFFF/2A63B8"},
    {ScrollTrack,  "scroll.track",  Decoration,  "5E6E84/151B23 7A6440/18130C 6F93CC/0C2F63"},
    {ScrollThumb,  "scroll.thumb",  Mark,        "93A0B0/151B23 B59E78/18130C A9C0E4/0C2F63"},
    {Shadow,       "shadow",        Decoration,  "3A4452/07090D 4A3B22/080603 3A5C94/051732"},
    {Dialog,       "dialog",        Text,        "DCE3EC/232C38 F2E2C4/2B2215 E6EFFC/174383"},
    {DialogDim,    "dialog.dim",    Text,        "93A0B0/232C38 B59E78/2B2215 A9C0E4/174383"},
    {DialogHot,    "dialog.hot",    Text,        "6CB6FF/232C38 FFB454/2B2215 FFD97A/174383"},
    {DialogOff,    "dialog.off",    Unavailable, "6C7A8C/232C38 8A7450/2B2215 7FA0D4/174383"},
    {DialogFrame,  "dialog.frame",  Mark,        "6CB6FF/232C38 FFB454/2B2215 FFFFFF/174383"},
    {DialogTitle,  "dialog.title",  Text,        "0D1117/6CB6FF 100C07/FFB454 08244D/FFFFFF"},
    {Field,        "field",         Text,        "DCE3EC/0D1117 F2E2C4/100C07 E6EFFC/08244D"},
    {FieldFill,    "field.fill",    Mark,        "6CB6FF/0D1117 FFB454/100C07 9FD0FF/08244D"},
    {Sel,          "sel",           Text,        "FFFFFF/1F4E80 FFF6E0/6B4410 FFFFFF/2A63B8"},
    {SelHot,       "sel.hot",       Text,        "FFE08A/1F4E80 FFE08A/6B4410 FFE08A/2A63B8"},
    {SelOff,       "sel.off",       Text,        "DCE3EC/2C3744 F2E2C4/3A2D1A E6EFFC/1D4A8C"},
    {Button,       "button",        Text,        "DCE3EC/344152 F2E2C4/43351F E6EFFC/24579F"},
    {ButtonHot,    "button.hot",    Text,        "6CB6FF/344152 FFB454/43351F FFE08A/24579F"},
    {ButtonFocus,  "button.focus",  Text,        "0D1117/6CB6FF 100C07/FFB454 08244D/FFFFFF"},
    {ButtonPress,  "button.press",  Text,        "FFFFFF/0D1117 FFF6E0/100C07 FFFFFF/08244D"},
    {ButtonOff,    "button.off",    Unavailable, "6C7A8C/1C232D 8A7450/221A10 7FA0D4/123B78"},
    {Ok,           "ok",            Text,        "5FD38D/151B23 9BD67A/18130C 7EE0B0/0C2F63"},
    {Warn,         "warn",          Text,        "F0C05A/151B23 FFD27A/18130C FFD97A/0C2F63"},
    {Fault,        "fault",         Text,        "FFFFFF/B3261E FFFFFF/A8321A FFFFFF/B3261E"},
    {FaultMark,    "fault.mark",    Mark,        "FF7B72/151B23 FF8A66/18130C FF9C94/0C2F63"},
    {Chip,         "chip",          Text,        "0D1117/6CB6FF 100C07/FFB454 08244D/FFFFFF"},
    {ChipOk,       "chip.ok",       Text,        "0D1117/5FD38D 100C07/9BD67A 08244D/7EE0B0"},
    {ChipWarn,     "chip.warn",     Text,        "0D1117/F0C05A 100C07/FFD27A 08244D/FFD97A"},
    {Status,       "status",        Text,        "DCE3EC/0D1117 F2E2C4/100C07 E6EFFC/08244D"},
    {StatusHint,   "status.hint",   Text,        "93A0B0/0D1117 B59E78/100C07 A9C0E4/08244D"},
    {StatusAlert,  "status.alert",  Text,        "FFFFFF/B3261E FFFFFF/A8321A FFFFFF/B3261E"},
    {Coach,        "coach",         Text,        "0D1117/8BE0C8 100C07/FFE9B8 08244D/FFE08A"},
    {CoachMark,    "coach.mark",    Text,        "0D1117/8BE0C8 100C07/FFE9B8 08244D/FFE08A"},
    {Code,         "code",          Text,        "DCE3EC/151B23 F2E2C4/18130C E6EFFC/0C2F63"},
    {CodeOp,       "code.op",       Text,        "FFFFFF/151B23 FFFFFF/18130C FFFFFF/0C2F63"},
    {CodeReg,      "code.reg",      Text,        "7FD1FF/151B23 FFCB7D/18130C 9FD0FF/0C2F63"},
    {CodeNum,      "code.num",      Text,        "8FD6A0/151B23 C9D98A/18130C 9FE8C8/0C2F63"},
    {CodeStr,      "code.str",      Text,        "B5D68F/151B23 DDD08A/18130C BFE8A8/0C2F63"},
    {CodeLabel,    "code.label",    Text,        "F0C05A/151B23 FFB454/18130C FFD97A/0C2F63"},
    {CodeDef,      "code.def",      Text,        "D2A8FF/151B23 F0B0A0/18130C E0C4FF/0C2F63"},
    {CodePunct,    "code.punct",    Text,        "93A0B0/151B23 B59E78/18130C A9C0E4/0C2F63"},
    {CodeNote,     "code.note",     Text,        "8494A6/151B23 A88F66/18130C 9DB6DC/0C2F63"},
    {CodeError,    "code.error",    Text,        "FFFFFF/8E1D18 FFFFFF/8A2A16 FFFFFF/9E2A24"},
    {Ghost,        "ghost",         Text,        "8494A6/151B23 A88F66/18130C 9DB6DC/0C2F63"},
    {Gutter,       "gutter",        Text,        "8494A6/151B23 A88F66/18130C 9DB6DC/0C2F63"},
    {GutterHere,   "gutter.here",   Text,        "FFFFFF/151B23 FFF6E0/18130C FFFFFF/0C2F63"},
    {MarkBreak,    "mark.break",    Mark,        "FF7B72/151B23 FF8A66/18130C FF9C94/0C2F63"},
    {LineNext,     "line.next",     Text,        "FFFFFF/1F5C3A FFFFFF/4E5A1C FFFFFF/1F6B6B"},
    {EditSel,      "edit.sel",      Text,        "FFFFFF/2F5F96 FFFFFF/7A5220 FFFFFF/3A74C8"},
    {Find,         "find",          Text,        "0D1117/F0C05A 100C07/FFD27A 08244D/FFD97A"},
    {Caret,        "caret",         Mark,        "0D1117/FFFFFF 100C07/FFFFFF 08244D/FFFFFF"},
    {Lane,         "lane",          Text,        "93A0B0/151B23 B59E78/18130C A9C0E4/0C2F63"},
    {LaneSpec,     "lane.spec",     Text,        "7FD1FF/151B23 FFCB7D/18130C 9FD0FF/0C2F63"},
    {LaneTx,       "lane.tx",       Text,        "FFFFFF/151B23 FFFFFF/18130C FFFFFF/0C2F63"},
    {LaneRx,       "lane.rx",       Text,        "8FD6A0/151B23 C9D98A/18130C 9FE8C8/0C2F63"},
    {LaneHost,     "lane.host",     Text,        "D2A8FF/151B23 F0B0A0/18130C E0C4FF/0C2F63"},
    {LaneTime,     "lane.time",     Text,        "F0C05A/151B23 FFD27A/18130C FFD97A/0C2F63"},
    {LaneRun,      "lane.run",      Mark,        "5FD38D/151B23 9BD67A/18130C 7EE0B0/0C2F63"},
    {LaneWait,     "lane.wait",     Mark,        "7A8899/151B23 8A7450/18130C 7FA0D4/0C2F63"},
    {LaneAlt,      "lane.alt",      Text,        "FFFFFF/232C38 FFFFFF/2B2215 FFFFFF/174383"},
    {Cursor,       "cursor",        Text,        "FFFFFF/1F4E80 FFF6E0/6B4410 FFFFFF/2A63B8"},
};

constexpr ClassicRow kClassicTable[] = {
    // role        VGA           amber         green         LCD
    {Desktop,      "555555/000000 2B1A00/0A0500 06280E/000A02 AEBAA8/C9D2C0"},
    {Logo,         "FFFF55/000000 FFE0A0/0A0500 C8FFD4/000A02 0B1644/C9D2C0"},
    {Boot,         "FFFFFF/000000 FFB000/0A0500 3CF070/000A02 0B1644/C9D2C0"},
    {BootDim,      "AAAAAA/000000 C4841A/0A0500 22AC50/000A02 3C4770/C9D2C0"},
    {Bar,          "000000/AAAAAA 0A0500/FFB000 000A02/3CF070 E9EFDF/16235E"},
    {BarKey,       "FFFFFF/000000 FFB000/0A0500 3CF070/000A02 0B1644/E9EFDF"},
    {BarOff,       "555555/AAAAAA 2B1A00/FFB000 06280E/3CF070 9AA5C8/16235E"},
    {Panel,        "FFFFFF/0000AA FFB000/0A0500 3CF070/000A02 0B1644/C9D2C0"},
    {PanelDim,     "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 3C4770/C9D2C0"},
    {PanelBright,  "FFFF55/0000AA FFE0A0/0A0500 C8FFD4/000A02 0B1644/E9EFDF"},
    {PanelHot,     "FFFF55/0000AA FFE0A0/0A0500 C8FFD4/000A02 16235E/C9D2C0"},
    {PanelOff,     "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 5A6484/C9D2C0"},
    {Link,         "55FFFF/0000AA FFE0A0/0A0500 C8FFD4/000A02 0A3C8C/C9D2C0"},
    {Frame,        "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 5A6484/C9D2C0"},
    {FrameActive,  "FFFFFF/0000AA FFE0A0/0A0500 C8FFD4/000A02 0B1644/C9D2C0"},
    {Title,        "AAAAAA/0000AA FFB000/0A0500 3CF070/000A02 3C4770/C9D2C0"},
    {TitleActive,  "0000AA/AAAAAA 0A0500/FFB000 000A02/3CF070 E9EFDF/16235E"},
    {Tab,          "AAAAAA/0000AA FFB000/0A0500 3CF070/000A02 3C4770/C9D2C0"},
    {TabOn,        "000000/AAAAAA 0A0500/FFB000 000A02/3CF070 E9EFDF/16235E"},
    {ScrollTrack,  "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 5A6484/C9D2C0"},
    {ScrollThumb,  "FFFFFF/0000AA FFB000/0A0500 3CF070/000A02 0B1644/C9D2C0"},
    {Shadow,       "555555/000000 2B1A00/0A0500 06280E/000A02 7E8A8E/AEBAA8"},
    {Dialog,       "000000/AAAAAA FFB000/0A0500 3CF070/000A02 0B1644/E9EFDF"},
    {DialogDim,    "0000AA/AAAAAA C4841A/0A0500 22AC50/000A02 3C4770/E9EFDF"},
    {DialogHot,    "0000AA/AAAAAA FFE0A0/0A0500 C8FFD4/000A02 16235E/E9EFDF"},
    {DialogOff,    "555555/AAAAAA C4841A/0A0500 22AC50/000A02 5A6484/E9EFDF"},
    {DialogFrame,  "000000/AAAAAA FFE0A0/0A0500 C8FFD4/000A02 0B1644/E9EFDF"},
    {DialogTitle,  "FFFF55/0000AA 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/16235E"},
    {Field,        "FFFFFF/0000AA FFE0A0/2B1A00 C8FFD4/06280E 0B1644/C9D2C0"},
    {FieldFill,    "55FFFF/0000AA FFB000/2B1A00 3CF070/06280E 16235E/C9D2C0"},
    {Sel,          "000000/00AAAA 0A0500/FFB000 000A02/3CF070 E9EFDF/16235E"},
    {SelHot,       "0000AA/00AAAA 0A0500/FFB000 000A02/3CF070 FFE9A8/16235E"},
    {SelOff,       "FFFFFF/555555 FFE0A0/2B1A00 C8FFD4/06280E 0B1644/AEBAA8"},
    {Button,       "FFFFFF/000000 0A0500/C4841A 000A02/22AC50 E9EFDF/3C4770"},
    {ButtonHot,    "FFFF55/000000 0A0500/C4841A 000A02/22AC50 FFE9A8/3C4770"},
    {ButtonFocus,  "000000/55FFFF 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/0B1644"},
    {ButtonPress,  "000000/AAAAAA 0A0500/FFB000 000A02/3CF070 0B1644/AEBAA8"},
    {ButtonOff,    "555555/AAAAAA C4841A/2B1A00 22AC50/06280E 5A6484/AEBAA8"},
    {Ok,           "55FF55/0000AA FFE0A0/0A0500 C8FFD4/000A02 0B4A24/C9D2C0"},
    {Warn,         "FFFF55/0000AA FFE0A0/0A0500 C8FFD4/000A02 6A3D00/C9D2C0"},
    {Fault,        "FFFFFF/AA0000 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/7A1420"},
    {FaultMark,    "FF5555/0000AA FFE0A0/0A0500 C8FFD4/000A02 8A1824/C9D2C0"},
    {Chip,         "000000/55FFFF 0A0500/FFB000 000A02/3CF070 E9EFDF/16235E"},
    {ChipOk,       "000000/55FF55 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/0B4A24"},
    {ChipWarn,     "000000/FFFF55 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/6A3D00"},
    {Status,       "FFFFFF/000000 FFB000/2B1A00 3CF070/06280E 0B1644/AEBAA8"},
    {StatusHint,   "AAAAAA/000000 FFB000/2B1A00 3CF070/06280E 323C66/AEBAA8"},
    {StatusAlert,  "FFFFFF/AA0000 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/7A1420"},
    {Coach,        "000000/FFFF55 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/0A3C8C"},
    {CoachMark,    "000000/FFFF55 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/0A3C8C"},
    {Code,         "FFFFFF/0000AA FFB000/0A0500 3CF070/000A02 0B1644/C9D2C0"},
    {CodeOp,       "FFFFFF/0000AA FFE0A0/0A0500 C8FFD4/000A02 0B1644/C9D2C0"},
    {CodeReg,      "55FFFF/0000AA FFB000/0A0500 3CF070/000A02 0A3C8C/C9D2C0"},
    {CodeNum,      "55FF55/0000AA FFB000/0A0500 3CF070/000A02 0B4A24/C9D2C0"},
    {CodeStr,      "55FF55/0000AA FFB000/0A0500 3CF070/000A02 0B4A24/C9D2C0"},
    {CodeLabel,    "FFFF55/0000AA FFE0A0/0A0500 C8FFD4/000A02 5A2A6E/C9D2C0"},
    {CodeDef,      "FF55FF/0000AA FFE0A0/0A0500 C8FFD4/000A02 5A2A6E/C9D2C0"},
    {CodePunct,    "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 3C4770/C9D2C0"},
    {CodeNote,     "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 3C4770/C9D2C0"},
    {CodeError,    "FFFFFF/AA0000 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/7A1420"},
    {Ghost,        "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 3C4770/C9D2C0"},
    {Gutter,       "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 3C4770/C9D2C0"},
    {GutterHere,   "FFFFFF/0000AA FFE0A0/0A0500 C8FFD4/000A02 0B1644/C9D2C0"},
    {MarkBreak,    "FF5555/0000AA FFE0A0/0A0500 C8FFD4/000A02 8A1824/C9D2C0"},
    {LineNext,     "000000/00AA00 0A0500/FFB000 000A02/3CF070 E9EFDF/0B4A24"},
    {EditSel,      "000000/AAAAAA 0A0500/FFB000 000A02/3CF070 E9EFDF/3C4770"},
    {Find,         "000000/FFFF55 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/6A3D00"},
    {Caret,        "000000/FFFFFF 0A0500/FFE0A0 000A02/C8FFD4 E9EFDF/0B1644"},
    {Lane,         "AAAAAA/0000AA FFB000/0A0500 3CF070/000A02 3C4770/C9D2C0"},
    {LaneSpec,     "55FFFF/0000AA C4841A/0A0500 22AC50/000A02 0A3C8C/C9D2C0"},
    {LaneTx,       "FFFFFF/0000AA FFE0A0/0A0500 C8FFD4/000A02 0B1644/C9D2C0"},
    {LaneRx,       "55FF55/0000AA FFB000/0A0500 3CF070/000A02 0B4A24/C9D2C0"},
    {LaneHost,     "FF55FF/0000AA FFB000/0A0500 3CF070/000A02 5A2A6E/C9D2C0"},
    {LaneTime,     "FFFF55/0000AA FFE0A0/0A0500 C8FFD4/000A02 6A3D00/C9D2C0"},
    {LaneRun,      "55FF55/0000AA FFB000/0A0500 3CF070/000A02 0B4A24/C9D2C0"},
    {LaneWait,     "AAAAAA/0000AA C4841A/0A0500 22AC50/000A02 5A6484/C9D2C0"},
    {LaneAlt,      "FFFFFF/000000 FFE0A0/2B1A00 C8FFD4/06280E 0B1644/AEBAA8"},
    {Cursor,       "000000/00AAAA 0A0500/FFB000 000A02/3CF070 E9EFDF/16235E"},
};
// clang-format on

template <class Row, std::size_t kRows>
constexpr bool InRoleOrder(const Row (&table)[kRows]) {
    for (std::size_t row = 0; row < kRows; ++row) {
        if (table[row].role != static_cast<Role>(row)) return false;
    }
    return kRows == kRoles;
}
static_assert(InRoleOrder(kRoleTable));
static_assert(InRoleOrder(kClassicTable));

// A character that is no hexadecimal digit leaves the function without a value, which does not
// compile.
consteval std::uint8_t Digit(char c) {
    if (c >= '0' && c <= '9') return static_cast<std::uint8_t>(c - '0');
    if (c >= 'A' && c <= 'F') return static_cast<std::uint8_t>(c - 'A' + 10);
    throw "not a hexadecimal digit";
}

consteval std::uint8_t Channel(std::string_view text, std::size_t at) {
    return static_cast<std::uint8_t>(Digit(text[at]) * 16 + Digit(text[at + 1]));
}

consteval Rgb Colour(std::string_view text, std::size_t at) {
    return {Channel(text, at), Channel(text, at + 2), Channel(text, at + 4)};
}

// The colours of one theme: the `index`th pair of each row.
template <class Row, std::size_t kRows>
consteval std::array<Ink, kRows> Theme(const Row (&table)[kRows], std::string_view Row::*colours,
                                       std::size_t index) {
    constexpr std::size_t kPair = 14;  // "FFFFFF/0000AA "
    constexpr std::size_t kGround = 7;
    std::array<Ink, kRows> theme;
    for (std::size_t row = 0; row < kRows; ++row) {
        const std::string_view text = table[row].*colours;
        theme[row] = {Colour(text, index * kPair), Colour(text, index * kPair + kGround)};
    }
    return theme;
}

constexpr std::array kClassicThemes = {
    Theme(kClassicTable, &ClassicRow::colours, 0), Theme(kClassicTable, &ClassicRow::colours, 1),
    Theme(kClassicTable, &ClassicRow::colours, 2), Theme(kClassicTable, &ClassicRow::colours, 3)};
constexpr std::array kModernThemes = {Theme(kRoleTable, &RoleRow::modern, 0),
                                      Theme(kRoleTable, &RoleRow::modern, 1),
                                      Theme(kRoleTable, &RoleRow::modern, 2)};

constexpr std::size_t Index(Role role) {
    return static_cast<std::size_t>(role);
}

template <std::size_t kThemes>
Ink Pick(const std::array<std::array<Ink, kRoles>, kThemes>& themes, int theme, Role role) {
    const int last = static_cast<int>(kThemes) - 1;
    return themes[static_cast<std::size_t>(std::clamp(theme, 0, last))][Index(role)];
}

}  // namespace

std::string_view RoleName(Role role) {
    return kRoleTable[Index(role)].name;
}
RoleKind KindOf(Role role) {
    return kRoleTable[Index(role)].kind;
}

Ink Colours(Look look, int theme, Role role) {
    if (look == Look::Classic) return Pick(kClassicThemes, theme, role);
    return Pick(kModernThemes, theme, role);
}

}  // namespace zo::ui
