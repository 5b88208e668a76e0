#include "cells/theme.h"

#include <doctest/doctest.h>

#include <cmath>

#include "support/contrast.h"

using zo::ui::Colours;
using zo::ui::Ink;
using zo::ui::KindOf;
using zo::ui::Look;
using zo::ui::Rgb;
using zo::ui::Role;
using zo::ui::RoleKind;
using zo::ui::RoleName;

namespace {

double Contrast(const Ink& colours) {
    return support::Contrast(support::Luminance(colours.ink), support::Luminance(colours.ground));
}

double LeastContrast(RoleKind kind) {
    switch (kind) {
        case RoleKind::Text:
            return 4.5;
        case RoleKind::Mark:
            return 3;
        case RoleKind::Unavailable:
            return 2.5;
        case RoleKind::Decoration:
            return 1;
    }
    return 0;
}

// The first role of the kind with the lowest contrast.
Role Lowest(Look look, int theme, RoleKind kind) {
    Role lowest = Role::Count;
    double least = 100;
    for (int i = 0; i < zo::ui::kRoles; ++i) {
        const Role role = static_cast<Role>(i);
        const double contrast = Contrast(Colours(look, theme, role));
        if (KindOf(role) != kind || contrast >= least) continue;
        least = contrast;
        lowest = role;
    }
    return lowest;
}

}  // namespace

TEST_CASE("every role keeps the contrast that its kind asks for, and the known lowest ratios") {
    const struct {
        Look look;
        int theme;
        std::string_view text, mark, unavailable;
        double lowest_text, body, dim, lowest_mark, lowest_unavailable;
    } cases[] = {
        {Look::Classic, 0, "sel.hot", "fault.mark", "bar.off", 4.64, 13.3, 5.7, 4.23, 3.21},
        {Look::Classic, 1, "boot.dim", "frame", "button.off", 6.44, 11.1, 6.4, 6.44, 5.33},
        {Look::Classic, 2, "boot.dim", "frame", "button.off", 6.78, 13.3, 6.8, 6.78, 5.38},
        {Look::Classic, 3, "status.hint", "frame", "button.off", 5.26, 11.1, 5.8, 3.75, 2.89},
        {Look::Modern, 0, "button.hot", "frame", "bar.off", 4.83, 13.4, 6.5, 3.33, 2.90},
        {Look::Modern, 1, "code.note", "frame", "bar.off", 5.97, 14.5, 7.1, 3.27, 2.95},
        {Look::Modern, 2, "sel.hot", "frame", "bar.off", 4.55, 11.3, 7.1, 4.19, 3.50},
    };
    for (const auto& c : cases) {
        CAPTURE(c.look);
        CAPTURE(c.theme);
        for (int i = 0; i < zo::ui::kRoles; ++i) {
            const Role role = static_cast<Role>(i);
            CAPTURE(RoleName(role));
            CHECK(Contrast(Colours(c.look, c.theme, role)) >= LeastContrast(KindOf(role)));
        }
        const auto ratio = [&](Role role) { return Contrast(Colours(c.look, c.theme, role)); };
        const auto lowest = [&](RoleKind kind) { return Lowest(c.look, c.theme, kind); };
        CHECK(RoleName(lowest(RoleKind::Text)) == c.text);
        CHECK(RoleName(lowest(RoleKind::Mark)) == c.mark);
        CHECK(RoleName(lowest(RoleKind::Unavailable)) == c.unavailable);
        CHECK(std::abs(ratio(lowest(RoleKind::Text)) - c.lowest_text) < 0.006);
        CHECK(std::abs(ratio(lowest(RoleKind::Mark)) - c.lowest_mark) < 0.006);
        CHECK(std::abs(ratio(lowest(RoleKind::Unavailable)) - c.lowest_unavailable) < 0.006);
        CHECK(std::abs(ratio(Role::Panel) - c.body) < 0.06);
        CHECK(std::abs(ratio(Role::PanelDim) - c.dim) < 0.06);
    }
}

TEST_CASE("the fourth theme of the modern look draws as the third") {
    const Ink third = Colours(Look::Modern, 2, Role::Frame);
    const Ink fourth = Colours(Look::Modern, 3, Role::Frame);
    CHECK(third.ink == Rgb{0x6F, 0x93, 0xCC});
    CHECK(fourth == third);
}
