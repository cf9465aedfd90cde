#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "component/host/sv_menu.h"
#include "component/host/sv_window.h"
#include "component/host/types.h"

/// Style values of tree lists.
inline constexpr int TreeStyleSeveralSelected = 49;
inline constexpr int TreeStyleOneSelected = 53;

/// Parent of a root entry, and no entry.
inline constexpr MeroId MeroNoTreeEntry = -1;

/// A tree of entries, each with a picture, a text and an identifier of its owner's choice, not below 0.
/// Inserting, removing and looking up an entry cost the same in a large tree.
class MeroTreeListBox : public SV::Control {
public:
    MeroTreeListBox(SV::Window* parent, SV::ResId id, int style = TreeStyleOneSelected);
    ~MeroTreeListBox() override;

    /// As the last one below `parentId`. False for an identifier that is there or below 0, or a parent that
    /// isn't.
    bool InsertEntry(MeroId id, const SV::String& text, MeroId parentId = MeroNoTreeEntry,
                     const SV::Image& image = SV::Image());
    /// With all below it. False if it isn't there.
    bool RemoveEntry(MeroId id);
    void Clear();

    [[nodiscard]] bool HasEntry(MeroId id) const;
    /// Empty, or `MeroNoTreeEntry`, if the entry isn't there; as below.
    [[nodiscard]] const SV::String& GetEntryText(MeroId id) const;
    bool SetEntryText(MeroId id, const SV::String& text);
    [[nodiscard]] const SV::Image& GetEntryImage(MeroId id) const;
    bool SetEntryImage(MeroId id, const SV::Image& image);
    [[nodiscard]] MeroId GetParentEntry(MeroId id) const;
    /// In order; the root entries for `MeroNoTreeEntry`.
    [[nodiscard]] std::vector<MeroId> GetChildren(MeroId id) const;
    /// All entries at all levels.
    [[nodiscard]] std::size_t GetEntryCount() const;
    [[nodiscard]] std::size_t GetRootCount() const;
    /// Direct children, by position; for the peers.
    [[nodiscard]] std::size_t GetChildCount(MeroId id) const;
    [[nodiscard]] MeroId GetChild(MeroId id, std::size_t position) const;
    /// Among its brothers.
    [[nodiscard]] std::size_t GetEntryPos(MeroId id) const;
    /// All identifiers as they stand when all is expanded.
    [[nodiscard]] std::vector<MeroId> GetEntriesInOrder() const;

    /// Where one entry can be selected, the one before loses the selection. False if it isn't there.
    bool SelectEntry(MeroId id, bool select = true);
    void SetNoSelection();
    [[nodiscard]] bool IsSelected(MeroId id) const;
    [[nodiscard]] std::size_t GetSelectionCount() const;
    /// In the order of the tree.
    [[nodiscard]] std::vector<MeroId> GetSelectedEntries() const;
    /// First of them.
    [[nodiscard]] MeroId GetSelectedEntry() const;
    [[nodiscard]] bool IsMultiSelection() const { return several; }

    bool Expand(MeroId id, bool expand = true);
    bool Collapse(MeroId id) { return Expand(id, false); }
    void ExpandAll();
    void ShrinkAll();
    [[nodiscard]] bool IsExpanded(MeroId id) const;

    /// What an empty tree tells.
    void SetEmptyText(const SV::String& text);
    [[nodiscard]] const SV::String& GetEmptyText() const { return emptyText; }

    void SetSelectHdl(SV::Handler handler) { selectHandler = std::move(handler); }
    void SetDoubleClickHdl(SV::Handler handler) { doubleClickHandler = std::move(handler); }
    /// Fills the menu each time that it opens; a menu without items doesn't open.
    void SetPopupHdl(std::function<void(SV::PopupMenu&)> handler) { popupHandler = std::move(handler); }
    /// Gets the identifier of the chosen item.
    void SetPopupSelectHdl(std::function<void(int)> handler) { popupSelectHandler = std::move(handler); }

    /// The selection is these entries and no others.
    bool userSelect(const std::vector<MeroId>& ids);
    bool userSelect(MeroId id) { return userSelect(std::vector<MeroId>{id}); }
    bool userDoubleClick(MeroId id);
    bool userExpand(MeroId id, bool expand);
    /// The menu as it would open now.
    [[nodiscard]] SV::PopupMenu GetPopupMenu() const;
    /// Opens the menu by the toolkit and obeys the choice.
    void userOpenPopup();
    /// False for an item that isn't there or is disabled.
    bool userChoosePopup(int itemId);

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
    bool several;
    SV::String emptyText;
    SV::Handler selectHandler;
    SV::Handler doubleClickHandler;
    std::function<void(SV::PopupMenu&)> popupHandler;
    std::function<void(int)> popupSelectHandler;
};

using MeroTreeView = MeroTreeListBox;

/// A tree list with a menu of its own.
class MeroPopupTreeListBox : public MeroTreeListBox {
public:
    using MeroTreeListBox::MeroTreeListBox;
};

/// A tree list in which typing finds entries.
class MeroSearchTreeListBox : public MeroPopupTreeListBox {
public:
    using MeroPopupTreeListBox::MeroPopupTreeListBox;

    /// First entry behind `from`, in the order of the tree and round its end, whose text begins with `part`,
    /// or else one that holds it; upper and lower case of ASCII letters are the same.
    [[nodiscard]] MeroId FindEntry(const SV::String& part, MeroId from = MeroNoTreeEntry) const;
    /// Adds the character to what is searched; gives true if an entry was found, which is then selected as
    /// by the user. A blank or a character that finds nothing begins anew.
    bool KeyInput(const SV::KeyEvent& key) override;

private:
    SV::String typed;
};
