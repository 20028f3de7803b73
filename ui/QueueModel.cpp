#include "ui/QueueModel.h"

#include "platform/gui/Latin1.h"

namespace vantorin {

QueueModel::QueueModel(const AddressList& list, QObject* parent)
    : QAbstractListModel(parent), list_(list) {
    Sync();
}

void QueueModel::Sync() {
    // Rows from `from` on may have gone or changed; those after it are new.
    const int from = std::min(static_cast<int>(list_.ChangedFrom()), shown_);
    const int count = static_cast<int>(list_.Count());
    if (from < shown_) {
        beginRemoveRows(QModelIndex(), from, shown_ - 1);
        shown_ = from;
        endRemoveRows();
    }
    if (count > shown_) {
        beginInsertRows(QModelIndex(), shown_, count - 1);
        shown_ = count;
        endInsertRows();
    }
    list_.MarkShown();
}

int QueueModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

QVariant QueueModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    return ToQt(list_.At(static_cast<std::size_t>(index.row())));
}

}  // namespace vantorin
