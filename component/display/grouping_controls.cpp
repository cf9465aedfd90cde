#include "component/display/grouping_controls.h"

#include "component/host/resource_ids.h"

#include "component/display/grouping_relations.h"

namespace Form = MeroSelectResultForm;

MeroGroupingControls::MeroGroupingControls(SV::Window* dialog)
    : box(dialog, Form::GroupBox),
      classLabel(dialog, Form::ClassLabel),
      classList(dialog, Form::ClassList),
      relationLabel(dialog, Form::RelationLabel),
      relationList(dialog, Form::RelationList) {
    box.SetClickHdl([this] { updateLists(); });
    classList.SetSelectHdl([this] { fillRelations(); });
}

void MeroGroupingControls::show(bool shown) {
    box.Show(shown);
    classLabel.Show(shown);
    classList.Show(shown);
    relationLabel.Show(shown);
    relationList.Show(shown);
}

void MeroGroupingControls::enable(bool enabled) {
    box.Enable(enabled);
    updateLists();
}

void MeroGroupingControls::check(bool checked) {
    box.Check(checked);
    updateLists();
}

void MeroGroupingControls::disableAll() {
    enable(false);
}

void MeroGroupingControls::updateLists() {
    const bool canChoose = box.IsEnabled() && box.IsChecked();
    classLabel.Enable(canChoose);
    classList.Enable(canChoose);
    relationLabel.Enable(canChoose);
    relationList.Enable(canChoose);
}

void MeroGroupingControls::fill(const MeroResultOptions& options) {
    classList.Refresh(findGroupingClasses());
    classList.SelectEntryPos(0);
    classList.SelectEntry(options.groupClass);
    if (!isFilled()) {
        box.Check(false);
        disableAll();
    }
    fillRelations();
    relationList.SelectEntry(options.groupRelation);
}

void MeroGroupingControls::clear() {
    classList.Clear();
    relationList.Clear();
}

void MeroGroupingControls::fillRelations() {
    relationList.Clear();
    if (classList.GetSelectEntryCount() > 0) {
        relationList.Refresh(findGroupingRelations(classList.GetSelectEntry()));
    }
}

void MeroGroupingControls::write(MeroResultOptions& options) const {
    options.groupChecked = box.IsEnabled() && box.IsChecked();
    if (classList.GetSelectEntryCount() > 0) {
        options.groupClass = classList.GetSelectEntry();
    }
    if (relationList.GetSelectEntryCount() > 0) {
        options.groupRelation = relationList.GetSelectEntry();
    }
}
