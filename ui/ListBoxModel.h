// A list box's items as a Qt model over the engine's StringList: the queue and
// the links-not-taken list. The items stay bytes in the list; they become
// QStrings (Latin-1) only when the view draws them, so tens of thousands of
// items stay cheap to add and take.
#pragma once

#include <QAbstractListModel>

#include "platform/StringList.h"

namespace vantorin {

class ListBoxModel : public QAbstractListModel {
public:
    // Follows every change of `list` from now on; `list` must outlive the model.
    explicit ListBoxModel(StringList& list, QObject* parent = nullptr);
    ~ListBoxModel() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    void Follow(StringList::Change change, int index);

    StringList& list_;
    // The rows the views know of: the list is told to the model after each
    // change, so the count moves only between the begin and end calls.
    int shown_ = 0;
};

}  // namespace vantorin
