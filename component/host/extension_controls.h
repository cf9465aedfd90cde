#pragma once

#include <functional>
#include <vector>

#include "component/host/sv_buttons.h"
#include "component/host/sv_window.h"

/// A row of buttons with pictures.
class MeroToolBox : public SV::Control {
public:
    struct Item {
        int id;
        SV::Image image;
        SV::String helpText;  ///< tool tip and accessible name
        bool enabled = true;
    };

    MeroToolBox(SV::Window* parent, SV::ResId id);

    /// False for an identifier that is there.
    bool InsertItem(int itemId, const SV::Image& image, const SV::String& helpText);
    void EnableItem(int itemId, bool enable = true);
    [[nodiscard]] const std::vector<Item>& GetItems() const { return items; }
    /// Gets the identifier of the pressed item.
    void SetSelectHdl(std::function<void(int)> handler) { selectHandler = std::move(handler); }

    bool userPress(int itemId);

private:
    std::vector<Item> items;
    std::function<void(int)> selectHandler;
};

/// Corner by which a window is sized.
class MeroSizingGrip : public SV::Control {
public:
    MeroSizingGrip(SV::Window* parent, SV::ResId id);
};

/// One line of text at the lower edge of a window.
class MeroStatusBar : public SV::Control {
public:
    MeroStatusBar(SV::Window* parent, SV::ResId id);
};

/// Area that scrolls what stands in it.
class MeroScrollableControl : public SV::Control {
public:
    MeroScrollableControl(SV::Window* parent, SV::ResId id);
};
