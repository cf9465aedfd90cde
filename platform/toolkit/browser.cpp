#include "component/host/browser.h"

#include "component/host/basic_services.h"

#include "platform/toolkit/browser_state.h"
#include "platform/toolkit/toolkit_messages.h"

MeroBrowser::MeroBrowser(SV::Window* parent, SV::ResId id) : Control(parent, id, SV::ControlClass::Browser) {
    bind();
}

MeroBrowser::~MeroBrowser() {
    if (objects != nullptr) {
        objects->impl->browser = nullptr;
    }
}

void MeroBrowser::SetObjects(MeroShrinkExpandBrowserObjects* newObjects) {
    if (objects != nullptr) {
        objects->impl->browser = nullptr;
    }
    objects = newObjects;
    if (objects != nullptr) {
        objects->impl->browser = this;
    }
    tell(SV::Aspect::Objects);
}

SV::PopupMenu MeroBrowser::GetPopupMenu() const {
    SV::PopupMenu menu;
    if (objects == nullptr) {
        return menu;
    }
    menu.InsertItem(BrowserItemExpandAll, SV::String(mero::MessageExpandAll));
    menu.InsertItem(BrowserItemShrinkAll, SV::String(mero::MessageShrinkAll));
    menu.InsertSeparator();
    menu.InsertItem(BrowserItemCopy, SV::String(mero::MessageCopy));
    menu.InsertItem(BrowserItemSearch, SV::String(mero::MessageSearchItem));
    if (popupHandler) {
        popupHandler(menu);
    }
    return menu;
}

void MeroBrowser::userOpenPopup() {
    const SV::PopupMenu menu = GetPopupMenu();
    if (!menu.GetItems().empty() && IsReachable()) {
        if (const int chosen = SV::Toolkit::GetGlobal().runMenu(this, menu)) {
            userChoosePopup(chosen);
        }
    }
}

bool MeroBrowser::userChoosePopup(int itemId) {
    const SV::PopupMenu menu = GetPopupMenu();
    const SV::MenuItem* item = menu.FindItem(itemId);
    if (item == nullptr || !item->enabled || !IsReachable()) {
        return false;
    }
    const auto busy = busyHandler;
    if (busy) {
        busy(true);
    }
    if (!popupSelectHandler || !popupSelectHandler(itemId)) {
        obey(itemId);
    }
    if (busy) {
        busy(false);
    }
    return true;
}

void MeroBrowser::obey(int itemId) {
    switch (itemId) {
        case BrowserItemExpandAll:
            objects->expandAll();
            break;
        case BrowserItemShrinkAll:
            objects->shrinkAll();
            break;
        case BrowserItemCopy:
            tell(SV::Aspect::Copied);
            break;
        case BrowserItemSearch:
            objects->search(GetParent());
            break;
        default:
            break;
    }
}

bool MeroBrowser::userClick(int row, int column) {
    if (!IsReachable() || objects == nullptr || row < 0 || row >= objects->getNumberOfRows()) {
        return false;
    }
    objects->doLeftClick(row, column);
    return true;
}

bool MeroShrinkExpandBrowserObjects::Impl::expandEveryRow(bool expand) {
    if (browser == nullptr) {
        displayErrorMessage("aeadsply", __LINE__);
        return false;
    }
    for (mero::BrowserRow& row : rows) {
        row.expanded = expand && !row.children.empty();
    }
    tell({SV::Aspect::Expanded, 0, 0, -1});
    return true;
}

void MeroShrinkExpandBrowserObjects::Impl::tell(const SV::Change& change) const {
    if (browser != nullptr && browser->GetPeer() != nullptr) {
        browser->GetPeer()->changed(change);
    }
}
