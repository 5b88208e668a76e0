#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace zo::ui {

struct Rgb {
    std::uint8_t r = 0, g = 0, b = 0;
    bool operator==(const Rgb&) const = default;
};

enum class Look : std::uint8_t { Classic, Modern };

// What a cell is, which decides its colours. In the order of the theme tables.
enum class Role : std::uint8_t {
    Desktop,
    Logo,
    Boot,
    BootDim,
    Bar,
    BarKey,
    BarOff,
    Panel,
    PanelDim,
    PanelBright,
    PanelHot,
    PanelOff,
    Link,
    Frame,
    FrameActive,
    Title,
    TitleActive,
    Tab,
    TabOn,
    ScrollTrack,
    ScrollThumb,
    Shadow,
    Dialog,
    DialogDim,
    DialogHot,
    DialogOff,
    DialogFrame,
    DialogTitle,
    Field,
    FieldFill,
    Sel,
    SelHot,
    SelOff,
    Button,
    ButtonHot,
    ButtonFocus,
    ButtonPress,
    ButtonOff,
    Ok,
    Warn,
    Fault,
    FaultMark,
    Chip,
    ChipOk,
    ChipWarn,
    Status,
    StatusHint,
    StatusAlert,
    Coach,
    CoachMark,
    Code,
    CodeOp,
    CodeReg,
    CodeNum,
    CodeStr,
    CodeLabel,
    CodeDef,
    CodePunct,
    CodeNote,
    CodeError,
    Ghost,
    Gutter,
    GutterHere,
    MarkBreak,
    LineNext,
    EditSel,
    Find,
    Caret,
    Lane,
    LaneSpec,
    LaneTx,
    LaneRx,
    LaneHost,
    LaneTime,
    LaneRun,
    LaneWait,
    LaneAlt,
    Cursor,
    Count,
};
inline constexpr int kRoles = static_cast<int>(Role::Count);

// What a role is for, which sets the least contrast of its ink on its ground.
enum class RoleKind : std::uint8_t {
    Text,         // 4.5 : 1
    Mark,         // 3 : 1
    Unavailable,  // 2.5 : 1, and always marked by a glyph too
    Decoration,
};

struct Ink {
    Rgb ink;
    Rgb ground;
    bool operator==(const Ink&) const = default;
};

// The role's name in dumps, such as "panel.dim".
std::string_view RoleName(Role role);
RoleKind KindOf(Role role);

// The monitor colourings: classic 0 VGA, 1 amber, 2 green, 3 LCD; modern 0 dark, 1 amber,
// 2 blueprints, and 3 draws as 2.
Ink Colours(Look look, int theme, Role role);

}  // namespace zo::ui
