#pragma once

#include <vector>

#include "component/host/sv_image.h"
#include "component/host/sv_string.h"

namespace SV {

struct MenuItem {
    int id = 0;  ///< 0 for a separator
    String text;
    bool enabled = true;
    bool checked = false;
};

/// Items in order; texts may have a "~" accelerator.
class Menu {
public:
    void InsertItem(int id, const String& text) { items.push_back({id, text}); }
    void InsertSeparator() { items.push_back({}); }
    void EnableItem(int id, bool enable = true);
    void CheckItem(int id, bool check = true);
    void Clear() { items.clear(); }
    [[nodiscard]] const std::vector<MenuItem>& GetItems() const { return items; }
    /// Null if there is none.
    [[nodiscard]] const MenuItem* FindItem(int id) const;

private:
    std::vector<MenuItem> items;
};

/// Menu that opens where the user asks for it; filled each time.
class PopupMenu : public Menu {};

}  // namespace SV
