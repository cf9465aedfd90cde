#pragma once

#include <functional>

#include "component/host/browser_objects.h"
#include "component/host/sv_menu.h"
#include "component/host/sv_window.h"

/// Mode in which tables of results are shown: expandable rows, frozen first column, row selection.
inline constexpr int BrowserModeResults = 48;

/// Control that shows a table. The table holds all state; it isn't owned and has to be taken off, or to
/// outlive the control.
class MeroBrowser : public SV::Control {
public:
    MeroBrowser(SV::Window* parent, SV::ResId id);
    ~MeroBrowser() override;

    void SetMode(int newMode) { mode = newMode; }
    [[nodiscard]] int GetMode() const { return mode; }
    /// Null takes the table off.
    void SetObjects(MeroShrinkExpandBrowserObjects* newObjects);
    [[nodiscard]] MeroShrinkExpandBrowserObjects* GetObjects() const { return objects; }

    /// Items that the window adds to the table's own; without a handler there are the table's alone: expand
    /// all, shrink all, copy, search.
    void SetPopupHdl(std::function<void(SV::PopupMenu&)> handler) { popupHandler = std::move(handler); }
    /// True if the item was the window's. Called around the table's own items too, before and behind: see
    /// `SetBusyHdl`.
    void SetPopupSelectHdl(std::function<bool(int)> handler) { popupSelectHandler = std::move(handler); }
    /// Told true before and false after each work that the browser does by its menu.
    void SetBusyHdl(std::function<void(bool)> handler) { busyHandler = std::move(handler); }

    [[nodiscard]] SV::PopupMenu GetPopupMenu() const;
    void userOpenPopup();
    bool userChoosePopup(int itemId);
    /// A click on a row, counted from 0 as if all were expanded; on its sign it expands or shrinks.
    bool userClick(int row, int column);

private:
    void obey(int itemId);

    int mode = 0;
    MeroShrinkExpandBrowserObjects* objects = nullptr;
    std::function<void(SV::PopupMenu&)> popupHandler;
    std::function<bool(int)> popupSelectHandler;
    std::function<void(bool)> busyHandler;
};

/// Items of a browser's menu.
enum MeroBrowserItem : int {
    BrowserItemExpandAll = 101,
    BrowserItemShrinkAll = 102,
    BrowserItemCopy = 103,
    BrowserItemSearch = 104
};
