#include <algorithm>

#include "component/host/sv_menu.h"

namespace SV {

namespace {

template <class Items>
auto* findItem(Items& items, int id) {
    const auto place = std::ranges::find(items, id, &MenuItem::id);
    return id != 0 && place != items.end() ? &*place : nullptr;
}

}  // namespace

void Menu::EnableItem(int id, bool enable) {
    if (MenuItem* item = findItem(items, id)) {
        item->enabled = enable;
    }
}

void Menu::CheckItem(int id, bool check) {
    if (MenuItem* item = findItem(items, id)) {
        item->checked = check;
    }
}

const MenuItem* Menu::FindItem(int id) const {
    return findItem(items, id);
}

}  // namespace SV
