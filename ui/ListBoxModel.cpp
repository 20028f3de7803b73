#include "ui/ListBoxModel.h"

#include "platform/gui/Latin1.h"

namespace vantorin {

ListBoxModel::ListBoxModel(QObject* parent) : QAbstractListModel(parent) {}

void ListBoxModel::AddItem(const std::string& item) {
    const int row = ListCount();
    beginInsertRows(QModelIndex(), row, row);
    items_.push_back(item);
    endInsertRows();
}

int ListBoxModel::ListCount() const {
    return static_cast<int>(items_.size());
}

std::string ListBoxModel::Item(int index) const {
    if (index < 0 || index >= ListCount()) return std::string();
    return items_[static_cast<std::size_t>(index)];
}

void ListBoxModel::RemoveItem(int index) {
    if (index < 0 || index >= ListCount()) return;
    beginRemoveRows(QModelIndex(), index, index);
    items_.erase(items_.begin() + index);
    endRemoveRows();
}

void ListBoxModel::Clear() {
    beginResetModel();
    items_.clear();
    endResetModel();
}

int ListBoxModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ListCount();
}

QVariant ListBoxModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= ListCount()) return {};
    return ToQt(items_[static_cast<std::size_t>(index.row())]);
}

}  // namespace vantorin
