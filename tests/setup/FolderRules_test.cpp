#include "setup/FolderRules.h"

#include <gtest/gtest.h>

namespace vantorin {

TEST(FolderRules, NormalisesTheTypedFolder) {
    // The chooser's root keeps its double backslash; three "__" passes leave
    // nine "?" down to two.
    const std::pair<const char*, const char*> cases[] = {{"D:/sites/abc", "D:\\sites\\abc\\"},
                                                         {"", "\\"},
                                                         {"C:\\\\", "C:\\\\"},
                                                         {"a*{b}|c<d>e!f&g**", "abc_d_e_f_g\\"},
                                                         {"a????????b", "a_b\\"},
                                                         {"a?????????b", "a__b\\"}};
    for (const auto& [typed, folder] : cases)
        EXPECT_EQ(NormaliseFolderText(typed), folder) << typed;
}

}  // namespace vantorin
