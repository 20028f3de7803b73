#include "ui/ListBoxModel.h"

#include "platform/gui/Latin1.h"

namespace vantorin {

ListBoxModel::ListBoxModel(StringList& list, QObject* parent)
    : QAbstractListModel(parent), list_(list), shown_(list.ListCount()) {
    list_.onChange = [this](StringList::Change change, int index) { Follow(change, index); };
}

ListBoxModel::~ListBoxModel() {
    list_.onChange = nullptr;
}

void ListBoxModel::Follow(StringList::Change change, int index) {
    switch (change) {
        case StringList::Change::Added:
            beginInsertRows(QModelIndex(), index, index);
            shown_ = list_.ListCount();
            endInsertRows();
            break;
        case StringList::Change::Removed:
            beginRemoveRows(QModelIndex(), index, index);
            shown_ = list_.ListCount();
            endRemoveRows();
            break;
        case StringList::Change::Cleared:
            beginResetModel();
            shown_ = 0;
            endResetModel();
            break;
    }
}

int ListBoxModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

QVariant ListBoxModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= list_.ListCount()) return {};
    return ToQt(list_.Items()[static_cast<std::size_t>(index.row())]);
}

}  // namespace vantorin
