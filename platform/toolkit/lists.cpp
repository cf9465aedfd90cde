#include <algorithm>

#include "component/host/sv_lists.h"

namespace SV {

namespace {

Change itemChange(Aspect aspect, std::size_t position, int count = 1) {
    return {aspect, static_cast<int>(position), count};
}

}  // namespace

ListBox::ListBox(Window* parent, ResId id) : ListBox(parent, id, ControlClass::ListBox, false) {
    bind();
}

ListBox::ListBox(Window* parent, ResId id, ControlClass kind, bool isMulti)
    : Control(parent, id, kind), multi(isMulti) {}

void ListBox::pullState(const FormState& initial) {
    Control::pullState(initial);
    for (const String& text : initial.items) {
        entries.push_back({text});
    }
}

std::size_t ListBox::InsertEntry(const String& text, std::size_t position) {
    position = std::min(position, entries.size());
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(position), {text});
    tell(itemChange(Aspect::ItemsInserted, position));
    return position;
}

void ListBox::RemoveEntry(std::size_t position) {
    if (position < entries.size()) {
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(position));
        tell(itemChange(Aspect::ItemsRemoved, position));
    }
}

void ListBox::Clear() {
    entries.clear();
    tell(Aspect::ItemsCleared);
}

const String& ListBox::GetEntry(std::size_t position) const {
    static const String Nothing;
    return position < entries.size() ? entries[position].text : Nothing;
}

std::size_t ListBox::GetEntryPos(const String& text) const {
    const auto place = std::ranges::find(entries, text, &Entry::text);
    return place != entries.end() ? static_cast<std::size_t>(place - entries.begin()) : ListEntryNotFound;
}

void ListBox::SelectEntryPos(std::size_t position, bool select) {
    if (position >= entries.size()) {
        return;
    }
    if (select && !multi) {
        for (Entry& each : entries) {
            each.selected = false;
        }
    }
    entries[position].selected = select;
    tell(Aspect::Selection);
}

void ListBox::SelectEntry(const String& text, bool select) {
    SelectEntryPos(GetEntryPos(text), select);
}

void ListBox::SetNoSelection() {
    for (Entry& each : entries) {
        each.selected = false;
    }
    tell(Aspect::Selection);
}

bool ListBox::IsEntryPosSelected(std::size_t position) const {
    return position < entries.size() && entries[position].selected;
}

std::size_t ListBox::GetSelectEntryCount() const {
    return static_cast<std::size_t>(std::ranges::count(entries, true, &Entry::selected));
}

std::size_t ListBox::GetSelectEntryPos(std::size_t index) const {
    for (std::size_t position = 0; position < entries.size(); ++position) {
        if (entries[position].selected && index-- == 0) {
            return position;
        }
    }
    return ListEntryNotFound;
}

String ListBox::GetSelectEntry(std::size_t index) const {
    return GetEntry(GetSelectEntryPos(index));
}

bool ListBox::userSelect(const std::vector<std::size_t>& positions) {
    const bool areGood =
        (multi || positions.size() <= 1) &&
        std::ranges::all_of(positions, [this](std::size_t each) { return each < entries.size(); });
    if (!IsReachable() || !areGood) {
        return false;
    }
    for (Entry& each : entries) {
        each.selected = false;
    }
    for (const std::size_t position : positions) {
        entries[position].selected = true;
    }
    tell(Aspect::Selection);
    run(selectHandler);
    return true;
}

bool ListBox::userDoubleClick(std::size_t position) {
    if (!userSelect(position)) {
        return false;
    }
    run(doubleClickHandler);
    return true;
}

MultiListBox::MultiListBox(Window* parent, ResId id) : ListBox(parent, id, ControlClass::MultiListBox, true) {
    bind();
}

}  // namespace SV

void MeroRefreshSelectBox::Refresh(const std::vector<SV::String>& names) {
    const SV::String before = GetSelectEntry();
    Clear();
    for (const SV::String& name : names) {
        InsertEntry(name);
    }
    const std::size_t place = GetEntryPos(before);
    SelectEntryPos(place != SV::ListEntryNotFound ? place : 0);
}
