#include "ui/ListBoxModel.h"

#include <gtest/gtest.h>

namespace vantorin {
namespace {

TEST(ListBoxModel, BehavesAsAListBoxAndKeepsEveryByte) {
    ListBoxModel list;
    list.AddItem("a/1");
    list.AddItem("caf\xe9/\x80");
    list.AddItem("a/3");
    EXPECT_EQ(list.ListCount(), 3);
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.Item(1), "caf\xe9/\x80");
    EXPECT_EQ(list.data(list.index(1)).toString().toLatin1().toStdString(), "caf\xe9/\x80");

    // Out-of-range positions do nothing and read as "".
    for (int bad : {-1, 3, 100}) {
        list.RemoveItem(bad);
        EXPECT_EQ(list.Item(bad), "");
    }
    EXPECT_EQ(list.ListCount(), 3);

    list.RemoveItem(list.ListCount() - 1);  // the scheduler takes the last item
    EXPECT_EQ(list.Item(list.ListCount() - 1), "caf\xe9/\x80");
    list.Clear();
    EXPECT_EQ(list.rowCount(), 0);
}

TEST(ListBoxModel, TensOfThousandsOfItemsAddAndDrainFromTheEnd) {
    ListBoxModel list;
    for (int i = 0; i < 50000; ++i) list.AddItem("www.site.com/page" + std::to_string(i));
    EXPECT_EQ(list.ListCount(), 50000);
    EXPECT_EQ(list.Item(49999), "www.site.com/page49999");
    while (list.ListCount() > 0) list.RemoveItem(list.ListCount() - 1);
    EXPECT_EQ(list.rowCount(), 0);
}

}  // namespace
}  // namespace vantorin
