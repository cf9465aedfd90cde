#pragma once

#include <cstddef>
#include <vector>

#include "component/host/sv_window.h"

namespace SV {

/// Position in a list that isn't there.
inline constexpr std::size_t ListEntryNotFound = static_cast<std::size_t>(-1);

/// List of texts of which at most one is selected, drawn as a list or as a drop-down box by its form.
class ListBox : public Control {
public:
    ListBox(Window* parent, ResId id);

    /// At the end, or at `position`. Gives the entry's position.
    std::size_t InsertEntry(const String& text, std::size_t position = ListEntryNotFound);
    void RemoveEntry(std::size_t position);
    void Clear();
    [[nodiscard]] std::size_t GetEntryCount() const { return entries.size(); }
    /// Empty outside.
    [[nodiscard]] const String& GetEntry(std::size_t position) const;
    [[nodiscard]] std::size_t GetEntryPos(const String& text) const;

    void SelectEntryPos(std::size_t position, bool select = true);
    /// Nothing if the text isn't there.
    void SelectEntry(const String& text, bool select = true);
    void SetNoSelection();
    [[nodiscard]] bool IsEntryPosSelected(std::size_t position) const;
    [[nodiscard]] std::size_t GetSelectEntryCount() const;
    /// First of the selected ones; `ListEntryNotFound` and an empty text for none.
    [[nodiscard]] std::size_t GetSelectEntryPos(std::size_t index = 0) const;
    [[nodiscard]] String GetSelectEntry(std::size_t index = 0) const;

    void SetSelectHdl(Handler handler) { selectHandler = std::move(handler); }
    void SetDoubleClickHdl(Handler handler) { doubleClickHandler = std::move(handler); }

    /// The selection is these entries and no others; several only where several can be selected.
    bool userSelect(const std::vector<std::size_t>& positions);
    bool userSelect(std::size_t position) { return userSelect(std::vector<std::size_t>{position}); }
    bool userDoubleClick(std::size_t position);

protected:
    ListBox(Window* parent, ResId id, ControlClass kind, bool isMulti);
    void pullState(const FormState& initial) override;

private:
    struct Entry {
        String text;
        bool selected = false;
    };
    std::vector<Entry> entries;
    bool multi = false;
    Handler selectHandler;
    Handler doubleClickHandler;
};

class MultiListBox : public ListBox {
public:
    MultiListBox(Window* parent, ResId id);
};

}  // namespace SV

/// List of names that is filled anew from what it depends on, keeping the selected name where it stays.
class MeroRefreshSelectBox : public SV::ListBox {
public:
    using SV::ListBox::ListBox;

    /// Selects the name that was selected before if it is there, else the first. Runs no handler.
    void Refresh(const std::vector<SV::String>& names);
};
