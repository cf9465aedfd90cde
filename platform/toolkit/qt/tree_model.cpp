#include "platform/toolkit/qt/tree_model.h"

#include "platform/toolkit/qt/icons.h"
#include "platform/toolkit/qt/text_conversion.h"

namespace mero::qt {

TreeModel::TreeModel(const MeroTreeListBox& shownList) : list(shownList), root(std::make_unique<Node>()) {
    nodes.emplace(MeroNoTreeEntry, root.get());
}

TreeModel::~TreeModel() = default;

TreeModel::Node* TreeModel::nodeOf(const QModelIndex& index) const {
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : root.get();
}

void TreeModel::insert(MeroId parentId, int position) {
    const auto place = nodes.find(parentId);
    if (place == nodes.end()) {
        return;
    }
    Node& parentNode = *place->second;
    const MeroId id = list.GetChild(parentId, static_cast<std::size_t>(position));
    beginInsertRows(indexOf(parentId), position, position);
    auto node = std::make_unique<Node>(Node{id, &parentNode, position, {}});
    nodes[id] = node.get();
    parentNode.children.insert(parentNode.children.begin() + position, std::move(node));
    endInsertRows();
}

void TreeModel::forget(const Node& node) {
    for (const auto& child : node.children) {
        forget(*child);
    }
    nodes.erase(node.id);
}

void TreeModel::remove(MeroId parentId, int position) {
    const auto place = nodes.find(parentId);
    if (place == nodes.end()) {
        return;
    }
    auto& children = place->second->children;
    beginRemoveRows(indexOf(parentId), position, position);
    forget(*children[static_cast<std::size_t>(position)]);
    children.erase(children.begin() + position);
    for (std::size_t each = static_cast<std::size_t>(position); each < children.size(); ++each) {
        children[each]->row = static_cast<int>(each);
    }
    endRemoveRows();
}

void TreeModel::clear() {
    beginResetModel();
    root->children.clear();
    nodes.clear();
    nodes.emplace(MeroNoTreeEntry, root.get());
    endResetModel();
}

void TreeModel::entryChanged(MeroId id) {
    const QModelIndex changed = indexOf(id);
    emit dataChanged(changed, changed);
}

QModelIndex TreeModel::indexOf(MeroId id) const {
    const auto place = nodes.find(id);
    return place != nodes.end() && id != MeroNoTreeEntry ? createIndex(place->second->row, 0, place->second)
                                                         : QModelIndex();
}

MeroId TreeModel::idOf(const QModelIndex& index) const {
    return nodeOf(index)->id;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    const Node& node = *nodeOf(parent);
    const auto position = static_cast<std::size_t>(row);
    return row >= 0 && column == 0 && position < node.children.size()
               ? createIndex(row, column, node.children[position].get())
               : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex& index) const {
    Node* above = index.isValid() ? nodeOf(index)->parent : nullptr;
    return above != nullptr && above != root.get() ? createIndex(above->row, 0, above) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(nodeOf(parent)->children.size());
}

int TreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
        return plain(list.GetEntryText(idOf(index)));
    }
    if (role == Qt::DecorationRole) {
        const SV::Image& image = list.GetEntryImage(idOf(index));
        return image.IsEmpty() ? QVariant() : QVariant(iconOf(image));
    }
    return {};
}

}  // namespace mero::qt
