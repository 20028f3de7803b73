#include "platform/QtSettingsStore.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include "tests/support/TempDir.h"

namespace vantorin {

// What store objects wrote, a fresh one reads back byte for byte (Latin-1
// letters included), from the file in the user's settings folder; a key never
// stored gives the default.
TEST(QtSettingsStore, AFreshStoreReadsBackWhatWasStored) {
    testing::TempDir dir;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(dir.Native()));
    const std::pair<std::string, std::string> stored[] = {{"InDir", "/home/r\xe9my/Sites/"},
                                                          {"LastURL", "http://www.caf\xe9.test/"},
                                                          {"Timeout", " 12.5"}};
    for (const auto& [key, value] : stored) QtSettingsStore().Put(key, value);  // each its own
    QtSettingsStore reader;
    for (const auto& [key, value] : stored) EXPECT_EQ(reader.Read(key, "default"), value) << key;
    EXPECT_EQ(reader.Read("Never", "default"), "default");
    EXPECT_TRUE(testing::NativeExists(dir.NativePath("Vantorin/Vantorin.conf")));
}

}  // namespace vantorin
