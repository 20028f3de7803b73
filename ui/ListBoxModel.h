// A list box's items as a Qt model: the queue and the links-not-taken list.
// The items stay bytes; they become QStrings (Latin-1) only when the view
// draws them, so tens of thousands of items stay cheap to add and take.
#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

#include "platform/StringList.h"

namespace vantorin {

class ListBoxModel : public QAbstractListModel, public StringList {
public:
    explicit ListBoxModel(QObject* parent = nullptr);

    void AddItem(const std::string& item) override;
    int ListCount() const override;
    std::string Item(int index) const override;
    void RemoveItem(int index) override;
    void Clear() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<std::string> items_;
};

}  // namespace vantorin
