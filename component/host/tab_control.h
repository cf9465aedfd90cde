#pragma once

#include <vector>

#include "component/host/sv_window.h"
#include "component/host/types.h"

/// Pages behind tabs, by identifier. The control owns no page.
class MeroTabControl : public SV::Control {
public:
    static constexpr MeroId NoPage = 0;

    MeroTabControl(SV::Window* parent, SV::ResId id);

    /// At the end; the first one becomes the current page. False for an identifier that is 0 or there.
    bool InsertPage(MeroId pageId, const SV::String& text);
    /// The neighbour becomes the current page if it was this one. The elements are free again.
    bool RemovePage(MeroId pageId);
    /// Puts a control onto the page. A control of a window with a form brings the whole form with its layout;
    /// the others of the window only have to be inserted to be found by `GetElements`.
    bool InsertElement(MeroId pageId, SV::Control& element);
    [[nodiscard]] std::vector<SV::Control*> GetElements(MeroId pageId) const;
    [[nodiscard]] bool HasPage(MeroId pageId) const;
    [[nodiscard]] std::size_t GetPageCount() const { return pages.size(); }
    [[nodiscard]] std::vector<MeroId> GetPages() const;
    bool SetPageText(MeroId pageId, const SV::String& text);
    [[nodiscard]] SV::String GetPageText(MeroId pageId) const;
    /// Runs no handler.
    bool SetCurPageId(MeroId pageId);
    /// `NoPage` for none.
    [[nodiscard]] MeroId GetCurPageId() const { return current; }
    /// Called when the current page is another, by the user.
    void SetActivatePageHdl(SV::Handler handler) { activateHandler = std::move(handler); }

    bool userActivate(MeroId pageId);

private:
    struct Page {
        MeroId id;
        SV::String text;
        std::vector<SV::Control*> elements;
    };
    [[nodiscard]] const Page* find(MeroId pageId) const;

    std::vector<Page> pages;
    MeroId current = NoPage;
    SV::Handler activateHandler;
};
