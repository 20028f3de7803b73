#include "ui/ListBoxModel.h"

#include <gtest/gtest.h>

namespace vantorin {
namespace {

TEST(ListBoxModel, TensOfThousandsOfItemsKeepEveryByteAndDrainFromTheEnd) {
    ListBoxModel list;
    for (int i = 0; i < 50000; ++i) list.AddItem("www.site.com/page" + std::to_string(i));
    list.AddItem("caf\xe9/\x80");
    EXPECT_EQ(list.data(list.index(50000)).toString().toLatin1().toStdString(), "caf\xe9/\x80");
    for (int bad : {-1, 50001}) {  // out of range: nothing removed, reads as ""
        list.RemoveItem(bad);
        EXPECT_EQ(list.Item(bad), "");
    }
    EXPECT_EQ(list.ListCount(), 50001);
    while (list.ListCount() > 1) list.RemoveItem(list.ListCount() - 1);
    EXPECT_EQ(list.Item(0), "www.site.com/page0");
}

}  // namespace
}  // namespace vantorin
