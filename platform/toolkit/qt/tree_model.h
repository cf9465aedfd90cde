#pragma once

#include <QAbstractItemModel>
#include <memory>
#include <unordered_map>
#include <vector>

#include "component/host/tree_list_box.h"

namespace mero::qt {

/// Entries of a tree list for a view. It mirrors the shape of the tree, since a view has to be told before an
/// entry goes; texts and pictures are the list's own. Indices point to nodes that stay where they are: small
/// numbers would make expanding and collapsing slow.
class TreeModel : public QAbstractItemModel {
public:
    explicit TreeModel(const MeroTreeListBox& shownList);
    ~TreeModel() override;

    void insert(MeroId parentId, int position);
    void remove(MeroId parentId, int position);
    void clear();
    void entryChanged(MeroId id);

    [[nodiscard]] QModelIndex indexOf(MeroId id) const;
    [[nodiscard]] MeroId idOf(const QModelIndex& index) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Node {
        MeroId id = MeroNoTreeEntry;
        Node* parent = nullptr;
        int row = 0;
        std::vector<std::unique_ptr<Node>> children;
    };
    [[nodiscard]] Node* nodeOf(const QModelIndex& index) const;
    void forget(const Node& node);

    const MeroTreeListBox& list;
    std::unique_ptr<Node> root;
    std::unordered_map<MeroId, Node*> nodes;
};

}  // namespace mero::qt
