#include "component/host/tree_list_box.h"

#include <algorithm>
#include <unordered_map>

#include "platform/toolkit/text_search.h"

namespace {

struct TreeEntry {
    SV::String text;
    SV::Image image;
    MeroId parent = MeroNoTreeEntry;
    std::vector<MeroId> children;
    std::size_t position = 0;
    bool selected = false;
    bool expanded = false;
};

constexpr int SingleSelectionBit = 4;

}  // namespace

struct MeroTreeListBox::Impl {
    std::unordered_map<MeroId, TreeEntry> entries;
    std::vector<MeroId> roots;
    std::size_t selected = 0;

    [[nodiscard]] TreeEntry* find(MeroId id) {
        const auto place = entries.find(id);
        return place != entries.end() ? &place->second : nullptr;
    }

    [[nodiscard]] std::vector<MeroId>* childrenOf(MeroId id) {
        if (id == MeroNoTreeEntry) {
            return &roots;
        }
        TreeEntry* entry = find(id);
        return entry != nullptr ? &entry->children : nullptr;
    }

    void setSelected(TreeEntry& entry, bool on) {
        if (entry.selected != on) {
            entry.selected = on;
            selected += on ? 1 : static_cast<std::size_t>(-1);
        }
    }

    void clearSelection() {
        if (selected > 0) {
            for (auto& [id, entry] : entries) {
                entry.selected = false;
            }
            selected = 0;
        }
    }

    void eraseBranch(MeroId id) {
        std::vector<MeroId> open{id};
        while (!open.empty()) {
            const MeroId each = open.back();
            open.pop_back();
            TreeEntry& entry = entries.at(each);
            open.insert(open.end(), entry.children.begin(), entry.children.end());
            setSelected(entry, false);
            entries.erase(each);
        }
    }

    [[nodiscard]] std::vector<MeroId> inOrder() {
        std::vector<MeroId> order;
        order.reserve(entries.size());
        std::vector<MeroId> open(roots.rbegin(), roots.rend());
        while (!open.empty()) {
            const MeroId each = open.back();
            open.pop_back();
            order.push_back(each);
            const auto& children = entries.at(each).children;
            open.insert(open.end(), children.rbegin(), children.rend());
        }
        return order;
    }
};

MeroTreeListBox::MeroTreeListBox(SV::Window* parent, SV::ResId id, int style)
    : Control(parent, id, SV::ControlClass::TreeListBox),
      impl(std::make_unique<Impl>()),
      several((style & SingleSelectionBit) == 0) {
    bind();
}

MeroTreeListBox::~MeroTreeListBox() = default;

bool MeroTreeListBox::InsertEntry(MeroId id, const SV::String& text, MeroId parentId,
                                  const SV::Image& image) {
    std::vector<MeroId>* brothers = impl->childrenOf(parentId);
    if (id < 0 || brothers == nullptr || impl->entries.contains(id)) {
        return false;
    }
    const std::size_t position = brothers->size();
    brothers->push_back(id);
    impl->entries.emplace(id, TreeEntry{text, image, parentId, {}, position});
    tell({SV::Aspect::ItemsInserted, static_cast<int>(position), 1, parentId});
    return true;
}

bool MeroTreeListBox::RemoveEntry(MeroId id) {
    TreeEntry* entry = impl->find(id);
    if (entry == nullptr) {
        return false;
    }
    const MeroId parentId = entry->parent;
    const std::size_t position = entry->position;
    std::vector<MeroId>& brothers = *impl->childrenOf(parentId);
    brothers.erase(brothers.begin() + static_cast<std::ptrdiff_t>(position));
    for (std::size_t each = position; each < brothers.size(); ++each) {
        impl->entries.at(brothers[each]).position = each;
    }
    impl->eraseBranch(id);
    tell({SV::Aspect::ItemsRemoved, static_cast<int>(position), 1, parentId});
    return true;
}

void MeroTreeListBox::Clear() {
    impl->entries.clear();
    impl->roots.clear();
    impl->selected = 0;
    tell(SV::Aspect::ItemsCleared);
}

bool MeroTreeListBox::HasEntry(MeroId id) const {
    return impl->entries.contains(id);
}

const SV::String& MeroTreeListBox::GetEntryText(MeroId id) const {
    static const SV::String Nothing;
    const TreeEntry* entry = impl->find(id);
    return entry != nullptr ? entry->text : Nothing;
}

bool MeroTreeListBox::SetEntryText(MeroId id, const SV::String& text) {
    TreeEntry* entry = impl->find(id);
    if (entry == nullptr) {
        return false;
    }
    entry->text = text;
    tell({SV::Aspect::ItemChanged, 0, 1, id});
    return true;
}

const SV::Image& MeroTreeListBox::GetEntryImage(MeroId id) const {
    static const SV::Image Nothing;
    const TreeEntry* entry = impl->find(id);
    return entry != nullptr ? entry->image : Nothing;
}

bool MeroTreeListBox::SetEntryImage(MeroId id, const SV::Image& image) {
    TreeEntry* entry = impl->find(id);
    if (entry == nullptr) {
        return false;
    }
    entry->image = image;
    tell({SV::Aspect::ItemChanged, 0, 1, id});
    return true;
}

MeroId MeroTreeListBox::GetParentEntry(MeroId id) const {
    const TreeEntry* entry = impl->find(id);
    return entry != nullptr ? entry->parent : MeroNoTreeEntry;
}

std::vector<MeroId> MeroTreeListBox::GetChildren(MeroId id) const {
    const std::vector<MeroId>* children = impl->childrenOf(id);
    return children != nullptr ? *children : std::vector<MeroId>();
}

std::size_t MeroTreeListBox::GetEntryCount() const {
    return impl->entries.size();
}

std::size_t MeroTreeListBox::GetRootCount() const {
    return impl->roots.size();
}

std::size_t MeroTreeListBox::GetChildCount(MeroId id) const {
    const std::vector<MeroId>* children = impl->childrenOf(id);
    return children != nullptr ? children->size() : 0;
}

MeroId MeroTreeListBox::GetChild(MeroId id, std::size_t position) const {
    const std::vector<MeroId>* children = impl->childrenOf(id);
    return children != nullptr && position < children->size() ? (*children)[position] : MeroNoTreeEntry;
}

std::size_t MeroTreeListBox::GetEntryPos(MeroId id) const {
    const TreeEntry* entry = impl->find(id);
    return entry != nullptr ? entry->position : 0;
}

std::vector<MeroId> MeroTreeListBox::GetEntriesInOrder() const {
    return impl->inOrder();
}

bool MeroTreeListBox::SelectEntry(MeroId id, bool select) {
    TreeEntry* entry = impl->find(id);
    if (entry == nullptr) {
        return false;
    }
    if (select && !several) {
        impl->clearSelection();
    }
    impl->setSelected(*entry, select);
    tell(SV::Aspect::Selection);
    return true;
}

void MeroTreeListBox::SetNoSelection() {
    impl->clearSelection();
    tell(SV::Aspect::Selection);
}

bool MeroTreeListBox::IsSelected(MeroId id) const {
    const TreeEntry* entry = impl->find(id);
    return entry != nullptr && entry->selected;
}

std::size_t MeroTreeListBox::GetSelectionCount() const {
    return impl->selected;
}

std::vector<MeroId> MeroTreeListBox::GetSelectedEntries() const {
    if (impl->selected == 0) {
        return {};
    }
    if (impl->selected == 1) {
        const auto place =
            std::ranges::find_if(impl->entries, [](const auto& each) { return each.second.selected; });
        return {place->first};
    }
    std::vector<MeroId> order = impl->inOrder();
    std::erase_if(order, [this](MeroId each) { return !IsSelected(each); });
    return order;
}

MeroId MeroTreeListBox::GetSelectedEntry() const {
    const std::vector<MeroId> all = GetSelectedEntries();
    return all.empty() ? MeroNoTreeEntry : all.front();
}

bool MeroTreeListBox::Expand(MeroId id, bool expand) {
    TreeEntry* entry = impl->find(id);
    if (entry == nullptr) {
        return false;
    }
    entry->expanded = expand;
    tell({SV::Aspect::Expanded, 0, 0, id});
    return true;
}

void MeroTreeListBox::ExpandAll() {
    for (auto& [id, entry] : impl->entries) {
        entry.expanded = true;
    }
    tell({SV::Aspect::Expanded, 0, 0, MeroNoTreeEntry});
}

void MeroTreeListBox::ShrinkAll() {
    for (auto& [id, entry] : impl->entries) {
        entry.expanded = false;
    }
    tell({SV::Aspect::Expanded, 0, 0, MeroNoTreeEntry});
}

bool MeroTreeListBox::IsExpanded(MeroId id) const {
    const TreeEntry* entry = impl->find(id);
    return entry != nullptr && entry->expanded;
}

void MeroTreeListBox::SetEmptyText(const SV::String& text) {
    emptyText = text;
    tell(SV::Aspect::Drawing);
}

bool MeroTreeListBox::userSelect(const std::vector<MeroId>& ids) {
    const bool areGood = (several || ids.size() <= 1) &&
                         std::ranges::all_of(ids, [this](MeroId each) { return HasEntry(each); });
    if (!IsReachable() || !areGood) {
        return false;
    }
    impl->clearSelection();
    for (const MeroId id : ids) {
        impl->setSelected(impl->entries.at(id), true);
    }
    tell(SV::Aspect::Selection);
    run(selectHandler);
    return true;
}

bool MeroTreeListBox::userDoubleClick(MeroId id) {
    if (!userSelect(id)) {
        return false;
    }
    run(doubleClickHandler);
    return true;
}

bool MeroTreeListBox::userExpand(MeroId id, bool expand) {
    return IsReachable() && Expand(id, expand);
}

SV::PopupMenu MeroTreeListBox::GetPopupMenu() const {
    SV::PopupMenu menu;
    if (popupHandler) {
        popupHandler(menu);
    }
    return menu;
}

void MeroTreeListBox::userOpenPopup() {
    const SV::PopupMenu menu = GetPopupMenu();
    if (menu.GetItems().empty() || !IsReachable()) {
        return;
    }
    const int chosen = SV::Toolkit::GetGlobal().runMenu(this, menu);
    if (chosen != 0 && popupSelectHandler) {
        const auto copy = popupSelectHandler;
        copy(chosen);
    }
}

bool MeroTreeListBox::userChoosePopup(int itemId) {
    const SV::PopupMenu menu = GetPopupMenu();
    const SV::MenuItem* item = menu.FindItem(itemId);
    if (item == nullptr || !item->enabled || !IsReachable()) {
        return false;
    }
    if (popupSelectHandler) {
        const auto copy = popupSelectHandler;
        copy(itemId);
    }
    return true;
}

MeroId MeroSearchTreeListBox::FindEntry(const SV::String& part, MeroId from) const {
    std::vector<MeroId> order = GetEntriesInOrder();
    const auto start = std::ranges::find(order, from);
    if (start != order.end()) {
        std::rotate(order.begin(), std::next(start), order.end());
    }
    const auto holds = [&](MeroId each, std::size_t length) {
        return mero::holdsText(GetEntryText(each).view().substr(0, length), part.view());
    };
    auto place = std::ranges::find_if(order, [&](MeroId each) { return holds(each, part.Len()); });
    if (place == order.end()) {
        place = std::ranges::find_if(order, [&](MeroId each) { return holds(each, SV::String::NotFound); });
    }
    return place != order.end() ? *place : MeroNoTreeEntry;
}

bool MeroSearchTreeListBox::KeyInput(const SV::KeyEvent& key) {
    constexpr char32_t FirstPrintable = 0x20;
    if (key.character <= FirstPrintable) {
        typed = SV::String();
        return false;
    }
    const SV::String character = mero::utf8Of(key.character);
    typed += character;
    MeroId found = FindEntry(typed);
    if (found == MeroNoTreeEntry) {
        typed = character;
        found = FindEntry(typed);
    }
    if (found == MeroNoTreeEntry) {
        typed = SV::String();
        return false;
    }
    for (MeroId above = GetParentEntry(found); above != MeroNoTreeEntry; above = GetParentEntry(above)) {
        Expand(above);
    }
    return userSelect(found);
}
