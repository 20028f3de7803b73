// Opens folders and addresses with the desktop's handler.
#pragma once

#include "platform/ShellOpen.h"

namespace vantorin {

class QtShellOpen : public ShellOpen {
public:
    // The folder is in the program's backslash form.
    void OpenFolder(const std::string& folder) override;
    void OpenAddress(const std::string& address) override;
};

}  // namespace vantorin
