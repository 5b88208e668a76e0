#include "screens/reader.h"

#include <algorithm>
#include <limits>

#include "base/format.h"
#include "binder_text.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::ListRow;
using zo::ui::Modifiers;
using zo::ui::PadButton;
using zo::ui::Role;

constexpr std::string_view kFirstPage = "lc1";
constexpr int kEnd = std::numeric_limits<int>::max();  // of a page, as its first row in sight
constexpr Modifiers kAlt{.alt = true};
constexpr Modifiers kControl{.control = true};

constexpr PadKey kPadKeys[] = {
    {PadButton::LeftTrigger, {.key = Key::PageUp, .with = kControl}},
    {PadButton::RightTrigger, {.key = Key::PageDown, .with = kControl}},
};

bool IsLetter(const KeyPress& key, char32_t letter) {
    return key.Is(Key::Character) && key.character == letter;
}

}  // namespace

MakeScreen Readers() {
    return [trail = std::make_shared<PageTrail>()](Shell& shell, std::string_view page) {
        return std::make_unique<Reader>(shell, trail, page);
    };
}

Reader::Reader(Shell& shell, std::shared_ptr<PageTrail> trail, std::string_view page)
    : Screen(shell), trail_(std::move(trail)) {
    if (trail_->Empty() && page.empty()) page = kFirstPage;
    if (!page.empty()) trail_->GoTo({.page = std::string(page)});
    words_.changed = [this] {
        FillList();
        found_ = page_.Find(words_.Text());
        found_at_ = 0;
        show_found_ = found_ > 0;
    };
    list_.open = [this] { OpenChosen(); };
    page_.copy = [this](const std::string& utf8) { shell_.SetClipboardText(utf8); };
}

void Reader::Entered() {
    ShowPage();
}

void Reader::Left() {
    RememberPlace();
}

const kp::BinderPage* Reader::PageHere() const {
    return shell_.Content().FindPage(trail_->Here().page);
}

const kp::BinderPage* Reader::PageChosen() const {
    const auto row = static_cast<std::size_t>(list_.Chosen());
    return row < listed_.size() ? listed_[row] : nullptr;
}

const kp::BinderPage* Reader::Neighbour(int step) const {
    const std::vector<kp::BinderPage>& pages = shell_.Content().pages;
    const kp::BinderPage* here = PageHere();
    if (here == nullptr) return nullptr;
    const std::ptrdiff_t at = here - pages.data() + step;
    const bool is_there = at >= 0 && at < std::ssize(pages);
    return is_there ? &pages[static_cast<std::size_t>(at)] : nullptr;
}

void Reader::GoTo(std::string_view page, int top) {
    RememberPlace();
    if (page != trail_->Here().page) shell_.Sound().Play(Effect::Page);
    trail_->GoTo({.page = std::string(page), .top = top});
    ShowPage();
}

void Reader::GoBack(int step) {
    RememberPlace();
    if (trail_->CanGo(step)) shell_.Sound().Play(Effect::Page);
    trail_->Go(step);
    ShowPage();
}

void Reader::TurnPage(int step, int top) {
    if (const kp::BinderPage* page = Neighbour(step)) GoTo(page->id, top);
}

void Reader::OpenChosen() {
    const kp::BinderPage* page = PageChosen();
    if (page == nullptr) return;
    GoTo(page->id);
    show_found_ = found_ > 0;
    finding_ = false;
    focus_.Focus(kPage);
}

// A page that was not drawn yet stands where it was to be shown.
void Reader::RememberPlace() {
    if (!unroll_to_) trail_->Here().top = page_.View().Top();
}

void Reader::ShowPage() {
    const kp::BinderPage* page = PageHere();
    if (page != nullptr) {
        page_.Set(PageText(shell_.Content(), *page, [this](const std::string& id) { GoTo(id); }));
        CountAsRead(*page);
    } else {
        page_.Set({{.text = "No such page."}});
    }
    unroll_to_ = trail_->Here().top;
    found_ = page_.Find(words_.Text());
    found_at_ = 0;
    FillList();
    shell_.RequestRedraw();
}

void Reader::CountAsRead(const kp::BinderPage& page) {
    if (shell_.Progress().binder_seen.insert(page.id).second) shell_.SaveProgress();
}

void Reader::AddRow(std::vector<ListRow>& rows, const kp::BinderPage& page) {
    const bool is_read = shell_.Progress().binder_seen.contains(page.id);
    rows.push_back({.cells = {{page.title, is_read ? Role::Panel : Role::PanelBright}}});
    listed_.push_back(&page);
}

void Reader::AddHeading(std::vector<ListRow>& rows, std::string text) {
    rows.push_back({.cells = {{std::move(text)}}, .kind = zo::ui::RowKind::Heading});
    listed_.push_back(nullptr);
}

// All pages under their sections, or those that hold the words under their number.
void Reader::FillList() {
    const std::string words = words_.Text();
    std::vector<ListRow> rows;
    listed_.clear();
    if (!words.empty()) AddHeading(rows, {});
    std::string_view section;
    for (const kp::BinderPage& page : shell_.Content().pages) {
        if (words.empty() && page.section != section) {
            section = page.section;
            AddHeading(rows, page.section);
        }
        if (words.empty() || Holds(page, words)) AddRow(rows, page);
    }
    if (!words.empty()) {
        const std::size_t count = listed_.size() - 1;
        rows.front().cells.front().text = base::Format("%zu page%s", count, count == 1 ? "" : "s");
    }
    list_.Set(std::move(rows));
    ChooseHere();
}

void Reader::ChooseHere() {
    const auto row = std::ranges::find(listed_, PageHere());
    list_.Choose(row == listed_.end() ? 0 : static_cast<int>(row - listed_.begin()));
}

void Reader::StartFinding() {
    focus_.Focus(kPages);
    finding_ = true;
}

void Reader::StopFinding() {
    finding_ = false;
    if (words_.Empty()) return;
    words_.SetText("");
    words_.changed();
}

void Reader::FindAgain(int step) {
    found_at_ = page_.ShowFound(step);
}

bool Reader::Key(const KeyPress& key) {
    if (KeyEverywhere(key)) return true;
    if (focus_.Key(key)) {
        finding_ = false;
        return true;
    }
    if (finding_) return KeyInField(key);
    if (IsLetter(key, U'/')) {
        StartFinding();
        return true;
    }
    if (found_ > 0 && IsLetter(key, U'n')) {
        FindAgain(1);
        return true;
    }
    if (key.Is(Key::Backspace)) {
        GoBack(-1);
        return true;
    }
    return focus_.Has(kPages) ? list_.Key(key) : KeyInPage(key);
}

// What a key does whatever has focus.
bool Reader::KeyEverywhere(const KeyPress& key) {
    if (key.Is(Key::Escape)) {
        if (finding_ || !words_.Empty()) {
            StopFinding();
        } else {
            shell_.CloseOverlay();
        }
    } else if (key.IsControl(U'f')) {
        StartFinding();
    } else if (key.key == Key::F3 && !key.with.control && !key.with.alt) {
        FindAgain(key.with.shift ? -1 : 1);
    } else if (key.key == Key::Left && key.with == kAlt) {
        GoBack(-1);
    } else if (key.key == Key::Right && key.with == kAlt) {
        GoBack(1);
    } else if (key.key == Key::PageUp && key.with == kControl) {
        TurnPage(-1);
    } else if (key.key == Key::PageDown && key.with == kControl) {
        TurnPage(1);
    } else {
        return false;
    }
    return true;
}

// The list beneath the field answers the keys that move in it.
bool Reader::KeyInField(const KeyPress& key) {
    if (words_.Key(key)) return true;
    return key.key != Key::Character && list_.Key(key);
}

// Beyond its end a page goes on with the next one, and above its top with the one before.
bool Reader::KeyInPage(const KeyPress& key) {
    const KeyPress pressed = IsLetter(key, U' ') ? KeyPress{.key = Key::PageDown} : key;
    const int top = page_.View().Top();
    const bool used = page_.Key(pressed);
    if (page_.View().Top() != top) return used;
    if (pressed.Is(Key::PageUp)) TurnPage(-1, kEnd);
    if (pressed.Is(Key::PageDown)) TurnPage(1);
    return used;
}

bool Reader::Text(std::string_view utf8) {
    return finding_ && words_.Type(utf8);
}

std::span<const PadKey> Reader::PadKeys() const {
    return kPadKeys;
}

int Reader::Highlight() const {
    return focus_.Has(kPages) ? list_.Chosen() + 1 : 0;
}

std::optional<zo::ui::Rect> Reader::FocusedPane() const {
    return focus_.Has(kPages) ? pages_area_ : page_area_;
}

// What Enter would do, or where among the found words the page stands.
std::string Reader::StandingText() const {
    if (focus_.Has(kPages)) {
        const kp::BinderPage* page = PageChosen();
        return page == nullptr ? std::string() : "Enter opens " + PageWords(*page) + ".";
    }
    if (const std::string_view link = page_.ChosenHint(); !link.empty()) return std::string(link);
    if (found_ == 0) return {};
    return found_at_ > 0 ? base::Format("Found %d of %d. F3 goes to the next.", found_at_, found_)
                         : base::Format("Found %d. F3 goes to the next.", found_);
}

void Reader::DescribeFrame(FrameRecord& record) const {
    record.title = "SPEC BINDER";
    const std::vector<kp::BinderPage>& pages = shell_.Content().pages;
    const auto read = std::ranges::count_if(pages, [this](const kp::BinderPage& page) {
        return shell_.Progress().binder_seen.contains(page.id);
    });
    record.place = base::Format("%td of %zu pages read", read, pages.size());
    record.standing = StandingText();
    record.standing_alert = false;
    record.keys = {
        {.key = {.key = Key::Tab}, .word = "Panel"},
        {.key = {.key = Key::Enter}, .word = "Open"},
        {.key = {.key = Key::Left, .with = kAlt},
         .cap = "Alt+←",
         .word = "Back",
         .enabled = trail_->CanGo(-1)},
        {.key = {.key = Key::Right, .with = kAlt},
         .cap = "Alt+→",
         .word = "Forward",
         .enabled = trail_->CanGo(1)},
        {.key = {.key = Key::Character, .character = U'/'}, .word = "Find"},
        {.key = {.key = Key::Escape}, .word = "Close"},
    };
}

bool Reader::CaptureRequest(std::string_view request) {
    if (request == "find") {
        StartFinding();
        words_.Type("crc");
    } else if (request == "pages") {
        focus_.Focus(kPages);
    } else if (request == "links") {
        show_link_ = true;
    } else if (const kp::BinderPage* page = kp::FindPage(shell_.Content().pages, request)) {
        GoTo(page->id);
    } else {
        return false;
    }
    return true;
}

}  // namespace Kest
