#pragma once

#include <vector>

#include "component/host/browser.h"
#include "component/host/sv_buttons.h"
#include "component/host/sv_edits.h"
#include "component/host/sv_lists.h"
#include "component/host/tab_control.h"
#include "component/host/tree_list_box.h"

namespace mero::test {

/// What a user does, with or without a display: by the state of the controls, or by mouse and keys on their
/// widgets.
class UserDriver {
public:
    virtual ~UserDriver() = default;

    virtual void show(SV::Window& window) = 0;
    virtual void click(SV::Control& button) = 0;
    /// Replaces the text.
    virtual void type(SV::Edit& edit, const char* text) = 0;
    virtual void enter(SV::NumericField& field, int value) = 0;
    virtual void select(SV::ListBox& list, std::size_t position) = 0;
    virtual void select(MeroTreeListBox& tree, const std::vector<MeroId>& ids) = 0;
    virtual void doubleClick(MeroTreeListBox& tree, MeroId id) = 0;
    virtual void collapse(MeroTreeListBox& tree, MeroId id) = 0;
    virtual void key(MeroTreeListBox& tree, char character) = 0;
    virtual void activate(MeroTabControl& tabs, MeroId page) = 0;
    virtual void clickRow(MeroBrowser& browser, int row) = 0;
    virtual void close(SV::Window& window) = 0;
};

/// By state alone.
class StateDriver : public UserDriver {
public:
    void show(SV::Window& window) override { window.Show(); }
    void click(SV::Control& button) override;
    void type(SV::Edit& edit, const char* text) override { edit.userType(text); }
    void enter(SV::NumericField& field, int value) override { field.userEnter(value); }
    void select(SV::ListBox& list, std::size_t position) override { list.userSelect(position); }
    void select(MeroTreeListBox& tree, const std::vector<MeroId>& ids) override { tree.userSelect(ids); }
    void doubleClick(MeroTreeListBox& tree, MeroId id) override { tree.userDoubleClick(id); }
    void collapse(MeroTreeListBox& tree, MeroId id) override { tree.userExpand(id, false); }
    void key(MeroTreeListBox& tree, char character) override {
        tree.userKey({static_cast<char32_t>(character)});
    }
    void activate(MeroTabControl& tabs, MeroId page) override { tabs.userActivate(page); }
    void clickRow(MeroBrowser& browser, int row) override { browser.userClick(row, 0); }
    void close(SV::Window& window) override { window.userClose(); }
};

}  // namespace mero::test
