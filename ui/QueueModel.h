// The queue as a Qt list model, brought up to date when the window draws
// (Sync), not at every address a scan queues: a page of a thousand links
// costs the view one insertion, not a thousand. The items stay bytes in the
// list; they become QStrings (Latin-1) only when the view draws them.
#pragma once

#include <QAbstractListModel>

#include "extractor/AddressList.h"

namespace vantorin {

class QueueModel : public QAbstractListModel {
public:
    // `list` must outlive the model.
    explicit QueueModel(const AddressList& list, QObject* parent = nullptr);

    // Tells the views what changed since the last call.
    void Sync();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    const AddressList& list_;
    int shown_ = 0;  // the rows the views know of
};

}  // namespace vantorin
