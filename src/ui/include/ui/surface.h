#pragma once

#include "cells/theme.h"

namespace zo::ui {

// The roles of what stands on one ground, so that a widget need not know where it stands.
struct Surface {
    Role text;
    Role dim;
    Role hot;  // the marked letter of a label
    Role off;  // what cannot be used
};
inline constexpr Surface kOnPanel = {Role::Panel, Role::PanelDim, Role::PanelHot, Role::PanelOff};
inline constexpr Surface kOnDialog = {Role::Dialog, Role::DialogDim, Role::DialogHot,
                                      Role::DialogOff};
inline constexpr Surface kOnChosen = {Role::Sel, Role::Sel, Role::SelHot, Role::Sel};
inline constexpr Surface kOnChosenOff = {Role::SelOff, Role::SelOff, Role::SelOff, Role::SelOff};

// A row of a list that stands on `surface`.
enum class RowState : std::uint8_t { Plain, Chosen, ChosenWithoutFocus };
constexpr const Surface& RowSurface(RowState state, const Surface& surface) {
    switch (state) {
        case RowState::Chosen:
            return kOnChosen;
        case RowState::ChosenWithoutFocus:
            return kOnChosenOff;
        default:
            return surface;
    }
}

}  // namespace zo::ui
