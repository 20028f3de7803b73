#include "ui/ListBoxModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace vantorin {
namespace {

// The model follows the engine's list as it grows at its end, drains from its
// end and is cleared, keeping every byte of an item.
TEST(ListBoxModel, FollowsTheListAndKeepsEveryByte) {
    StringList list;
    list.AddItem("before the model");
    ListBoxModel model(list);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int i = 0; i < 200; ++i) list.AddItem("www.site.com/page" + std::to_string(i));
    list.AddItem("caf\xe9/\x80");
    ASSERT_EQ(model.rowCount(), 202);
    EXPECT_EQ(model.data(model.index(201)).toString().toLatin1().toStdString(), "caf\xe9/\x80");
    while (list.ListCount() > 1) list.RemoveItem(list.ListCount() - 1);
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.data(model.index(0)).toString(), "before the model");
    list.Clear();
    EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
}  // namespace vantorin
