#include "component/host/tab_control.h"

#include <algorithm>

MeroTabControl::MeroTabControl(SV::Window* parent, SV::ResId id)
    : Control(parent, id, SV::ControlClass::TabControl) {
    bind();
}

const MeroTabControl::Page* MeroTabControl::find(MeroId pageId) const {
    const auto place = std::ranges::find(pages, pageId, &Page::id);
    return place != pages.end() ? &*place : nullptr;
}

bool MeroTabControl::InsertPage(MeroId pageId, const SV::String& text) {
    if (pageId == NoPage || find(pageId) != nullptr) {
        return false;
    }
    pages.push_back({pageId, text, {}});
    if (current == NoPage) {
        current = pageId;
    }
    tell({SV::Aspect::ItemsInserted, static_cast<int>(pages.size()) - 1, 1, pageId});
    return true;
}

bool MeroTabControl::RemovePage(MeroId pageId) {
    const auto place = std::ranges::find(pages, pageId, &Page::id);
    if (place == pages.end()) {
        return false;
    }
    const auto position = static_cast<std::size_t>(place - pages.begin());
    pages.erase(place);
    if (current == pageId) {
        current = pages.empty() ? NoPage : pages[std::min(position, pages.size() - 1)].id;
    }
    tell({SV::Aspect::ItemsRemoved, static_cast<int>(position), 1, pageId});
    return true;
}

bool MeroTabControl::InsertElement(MeroId pageId, SV::Control& element) {
    const auto place = std::ranges::find(pages, pageId, &Page::id);
    if (place == pages.end()) {
        return false;
    }
    place->elements.push_back(&element);
    tell({SV::Aspect::ItemChanged, static_cast<int>(place->elements.size()) - 1, 1, pageId});
    return true;
}

std::vector<SV::Control*> MeroTabControl::GetElements(MeroId pageId) const {
    const Page* page = find(pageId);
    return page != nullptr ? page->elements : std::vector<SV::Control*>();
}

bool MeroTabControl::HasPage(MeroId pageId) const {
    return find(pageId) != nullptr;
}

std::vector<MeroId> MeroTabControl::GetPages() const {
    std::vector<MeroId> ids;
    std::ranges::transform(pages, std::back_inserter(ids), &Page::id);
    return ids;
}

bool MeroTabControl::SetPageText(MeroId pageId, const SV::String& text) {
    const auto place = std::ranges::find(pages, pageId, &Page::id);
    if (place == pages.end()) {
        return false;
    }
    place->text = text;
    tell({SV::Aspect::PageText, static_cast<int>(place - pages.begin()), 1, pageId});
    return true;
}

SV::String MeroTabControl::GetPageText(MeroId pageId) const {
    const Page* page = find(pageId);
    return page != nullptr ? page->text : SV::String();
}

bool MeroTabControl::SetCurPageId(MeroId pageId) {
    if (find(pageId) == nullptr) {
        return false;
    }
    current = pageId;
    tell({SV::Aspect::CurrentPage, 0, 0, pageId});
    return true;
}

bool MeroTabControl::userActivate(MeroId pageId) {
    if (!IsReachable() || find(pageId) == nullptr) {
        return false;
    }
    if (pageId != current) {
        SetCurPageId(pageId);
        run(activateHandler);
    }
    return true;
}
