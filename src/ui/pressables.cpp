#include "ui/pressables.h"

#include <utility>

namespace zo::ui {
namespace {

bool TakesPress(const Pressable& entry) {
    return entry.act || entry.press || entry.drag;
}

}  // namespace

void Pressables::Clear() {
    count_ = 0;
    open_ = true;
}

Pressable& Pressables::Add(const Rect& area, std::string_view hint) {
    if (open_ && count_ == entries_.size()) entries_.emplace_back();
    Pressable& entry = open_ ? entries_[count_++] : spare_;
    entry.area = area;
    entry.hint = hint;
    entry.act = nullptr;
    entry.press = nullptr;
    entry.middle = nullptr;
    entry.drag = nullptr;
    entry.released = nullptr;
    entry.wheel = nullptr;
    entry.focus = nullptr;
    return entry;
}

template <class Wanted>
const Pressable* Pressables::Topmost(Point at, Wanted wanted) const {
    for (std::size_t k = count_; k-- > 0;) {
        if (entries_[k].area.Contains(at) && wanted(entries_[k])) return &entries_[k];
    }
    return nullptr;
}

bool Pressables::Hovered(const Rect& area) const {
    return open_ && pointer_ && area.Contains(*pointer_);
}

bool Pressables::Pressed(const Rect& area) const {
    return open_ && pressed_ && area.Contains(*pressed_);
}

bool Pressables::Held(const Rect& area) const {
    return Hovered(area) && Pressed(area);
}

std::string_view Pressables::Hint() const {
    if (!pointer_) return {};
    const Pressable* under =
        Topmost(*pointer_, [](const Pressable& entry) { return !entry.hint.empty(); });
    return under ? std::string_view(under->hint) : std::string_view();
}

bool Pressables::Move(Point to) {
    const auto any = [](const Pressable&) { return true; };
    const Pressable* before = pointer_ ? Topmost(*pointer_, any) : nullptr;
    pointer_ = to;
    if (dragging_) dragging_(to);
    return pressed_ || Topmost(to, any) != before;
}

bool Pressables::Press(const PointerPress& press) {
    pointer_ = press.at;
    pressed_ = press.at;
    const Pressable* pane =
        Topmost(press.at, [](const Pressable& candidate) { return bool(candidate.focus); });
    if (pane) pane->focus();
    const Pressable* entry = Topmost(press.at, TakesPress);
    if (!entry) return pane != nullptr;
    dragging_ = entry->drag;
    released_ = entry->released;
    if (entry->press) entry->press(press);
    return true;
}

bool Pressables::PressMiddle(Point at) {
    pointer_ = at;
    const Pressable* entry =
        Topmost(at, [](const Pressable& candidate) { return bool(candidate.middle); });
    if (entry) entry->middle(at);
    return entry != nullptr;
}

bool Pressables::Release(Point at) {
    pointer_ = at;
    dragging_ = nullptr;
    if (const auto released = std::exchange(released_, nullptr)) released();
    if (!pressed_) return false;
    const Pressable* entry = Topmost(*pressed_, TakesPress);
    pressed_.reset();
    if (entry && entry->act && entry->area.Contains(at)) entry->act();
    return true;
}

void Pressables::LetGo() {
    pressed_.reset();
    dragging_ = nullptr;
    released_ = nullptr;
}

bool Pressables::Wheel(Point at, int steps, const Modifiers& with) {
    pointer_ = at;
    return Scroll(at, steps, with);
}

bool Pressables::Scroll(Point at, int steps, const Modifiers& with) {
    const Pressable* entry =
        Topmost(at, [](const Pressable& candidate) { return bool(candidate.wheel); });
    if (!entry) return false;
    entry->wheel(steps, with);
    return true;
}

}  // namespace zo::ui
