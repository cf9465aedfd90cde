#include "apps/workbench/model_list.h"

#include "apps/workbench/texts.h"
#include "apps/workbench/workbench_messages.h"
#include "platform/toolkit/qt/icons.h"

namespace mero {

namespace {

void describeState(QTreeWidgetItem& item, Workspace::AgentState state) {
    switch (state) {
        case Workspace::AgentState::Active:
            item.setIcon(0, qt::namedIcon("agent_active"));
            item.setToolTip(0, say(WorkbenchText::AgentActive));
            break;
        case Workspace::AgentState::Inactive:
            item.setIcon(0, qt::namedIcon("agent_inactive"));
            item.setToolTip(0, say(WorkbenchText::AgentInactive));
            break;
        case Workspace::AgentState::Invalid:
            item.setIcon(0, qt::namedIcon("agent_invalid"));
            item.setToolTip(0, say(WorkbenchText::AgentInvalid));
            break;
    }
}

std::unique_ptr<QTreeWidgetItem> itemOf(MeroId id, const std::string& name) {
    auto item = std::make_unique<QTreeWidgetItem>();
    item->setText(0, QString::fromStdString(name));
    item->setData(0, Qt::UserRole, id);
    return item;
}

}  // namespace

ModelList::ModelList(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setColumnCount(1);
    setUniformRowHeights(true);
    setAccessibleName(say(WorkbenchText::Models));
    connect(this, &QTreeWidget::currentItemChanged, this, [this] {
        if (selectHandler) {
            selectHandler();
        }
    });
}

void ModelList::setModels(const std::vector<Workspace::ModelEntry>& models) {
    const QSignalBlocker blocker(this);
    const MeroId selected = getSelected();
    clear();
    for (const Workspace::ModelEntry& model : models) {
        auto item = itemOf(model.id, model.name);
        item->setIcon(0, qt::namedIcon(model.isProcess ? "process" : "environment"));
        item->setToolTip(0, item->text(0));
        for (const Workspace::AgentEntry& agent : model.agents) {
            auto child = itemOf(agent.id, agent.name);
            describeState(*child, agent.state);
            item->addChild(child.release());
        }
        addTopLevelItem(item.release());
    }
    expandAll();
    if (QTreeWidgetItem* const item = find(selected)) {
        setCurrentItem(item);
    }
}

QTreeWidgetItem* ModelList::find(MeroId id) const {
    for (int row = 0; row < topLevelItemCount(); ++row) {
        QTreeWidgetItem* const model = topLevelItem(row);
        if (model->data(0, Qt::UserRole).toInt() == id) {
            return model;
        }
        for (int child = 0; child < model->childCount(); ++child) {
            if (model->child(child)->data(0, Qt::UserRole).toInt() == id) {
                return model->child(child);
            }
        }
    }
    return nullptr;
}

void ModelList::select(MeroId id) {
    const QSignalBlocker blocker(this);
    if (QTreeWidgetItem* const item = find(id)) {
        setCurrentItem(item);
    }
}

MeroId ModelList::getSelected() const {
    return currentItem() != nullptr ? currentItem()->data(0, Qt::UserRole).toInt() : MeroNoId;
}

MeroId ModelList::getSelectedModel() const {
    const QTreeWidgetItem* item = currentItem();
    if (item != nullptr && item->parent() != nullptr) {
        item = item->parent();
    }
    return item != nullptr ? item->data(0, Qt::UserRole).toInt() : MeroNoId;
}

}  // namespace mero
