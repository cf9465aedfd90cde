#include "component/host/extension_controls.h"

#include <algorithm>

MeroToolBox::MeroToolBox(SV::Window* parent, SV::ResId id) : Control(parent, id, SV::ControlClass::ToolBox) {
    bind();
}

bool MeroToolBox::InsertItem(int itemId, const SV::Image& image, const SV::String& helpText) {
    if (std::ranges::find(items, itemId, &Item::id) != items.end()) {
        return false;
    }
    items.push_back({itemId, image, helpText});
    tell({SV::Aspect::ItemsInserted, static_cast<int>(items.size()) - 1, 1, itemId});
    return true;
}

void MeroToolBox::EnableItem(int itemId, bool enable) {
    const auto place = std::ranges::find(items, itemId, &Item::id);
    if (place != items.end()) {
        place->enabled = enable;
        tell({SV::Aspect::ItemChanged, static_cast<int>(place - items.begin()), 1, itemId});
    }
}

bool MeroToolBox::userPress(int itemId) {
    const auto place = std::ranges::find(items, itemId, &Item::id);
    if (!IsReachable() || place == items.end() || !place->enabled) {
        return false;
    }
    if (selectHandler) {
        const auto copy = selectHandler;
        copy(itemId);
    }
    return true;
}

MeroSizingGrip::MeroSizingGrip(SV::Window* parent, SV::ResId id)
    : Control(parent, id, SV::ControlClass::SizingGrip) {
    bind();
}

MeroStatusBar::MeroStatusBar(SV::Window* parent, SV::ResId id)
    : Control(parent, id, SV::ControlClass::StatusBar) {
    bind();
}

MeroScrollableControl::MeroScrollableControl(SV::Window* parent, SV::ResId id)
    : Control(parent, id, SV::ControlClass::ScrollableControl) {
    bind();
}
