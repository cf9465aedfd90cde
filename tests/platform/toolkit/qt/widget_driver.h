#pragma once

#include <QWidget>

#include "tests/platform/toolkit/user_driver.h"

namespace mero::test {

/// Widget of a window or control; null if it has none.
[[nodiscard]] QWidget* widgetFor(const SV::Window& window);

/// By mouse and keys on the widgets, as far as they can be reached.
class WidgetDriver : public UserDriver {
public:
    void show(SV::Window& window) override;
    void click(SV::Control& button) override;
    void type(SV::Edit& edit, const char* text) override;
    void enter(SV::NumericField& field, int value) override;
    void select(SV::ListBox& list, std::size_t position) override;
    void select(MeroTreeListBox& tree, const std::vector<MeroId>& ids) override;
    void doubleClick(MeroTreeListBox& tree, MeroId id) override;
    void collapse(MeroTreeListBox& tree, MeroId id) override;
    void key(MeroTreeListBox& tree, char character) override;
    void activate(MeroTabControl& tabs, MeroId page) override;
    void clickRow(MeroBrowser& browser, int row) override;
    void close(SV::Window& window) override;
};

}  // namespace mero::test
