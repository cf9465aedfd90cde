#pragma once

#include <QTreeWidget>
#include <functional>
#include <vector>

#include "apps/workbench/workspace.h"

namespace mero {

/// The models of the repository with their agents below them; an icon tells whether an agent measures.
class ModelList : public QTreeWidget {
public:
    explicit ModelList(QWidget* parent = nullptr);

    void setModels(const std::vector<Workspace::ModelEntry>& models);
    /// Selects a model or agent without a call of the handler; nothing for an unknown one.
    void select(MeroId id);
    /// 0 for none.
    [[nodiscard]] MeroId getSelected() const;
    /// Model of what is selected.
    [[nodiscard]] MeroId getSelectedModel() const;
    [[nodiscard]] QTreeWidgetItem* find(MeroId id) const;

    /// A user has selected something.
    void setSelectHandler(std::function<void()> handler) { selectHandler = std::move(handler); }

private:
    std::function<void()> selectHandler;
};

}  // namespace mero
