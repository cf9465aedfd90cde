#pragma once

#include "component/host/sv_buttons.h"
#include "component/host/sv_edits.h"
#include "component/host/sv_lists.h"

#include "component/results/result_options.h"

/// The part of the selection of results that asks whether results are grouped, and over which class and
/// relation: a check box with two lists, of which the second depends on the first. The lists can be used
/// while the box is enabled and checked.
class MeroGroupingControls {
public:
    explicit MeroGroupingControls(SV::Window* dialog);
    MeroGroupingControls(const MeroGroupingControls&) = delete;
    MeroGroupingControls& operator=(const MeroGroupingControls&) = delete;

    void show(bool shown);
    /// The lists follow.
    void enable(bool enabled);
    void check(bool checked);
    /// Fills the lists and selects class and relation of the options, where they are offered, else the first
    /// ones. Without a class nothing can be grouped: that unchecks and disables all.
    void fill(const MeroResultOptions& options);
    void disableAll();
    /// Empties the lists.
    void clear();

    [[nodiscard]] bool isEnabled() const { return box.IsEnabled(); }
    [[nodiscard]] bool isFilled() const { return classList.GetEntryCount() > 0; }
    /// Check of an enabled box, and the selections as far as there are any.
    void write(MeroResultOptions& options) const;
    void setToolTip(const SV::String& text) { box.SetToolTip(text); }

private:
    void updateLists();
    /// Relations between the selected class and people or resources; selects the first.
    void fillRelations();

    SV::CheckBox box;
    SV::FixedText classLabel;
    MeroRefreshSelectBox classList;
    SV::FixedText relationLabel;
    MeroRefreshSelectBox relationList;
};
