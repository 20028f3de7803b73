// Opens a folder (backslash form) or an "http://" address with the desktop's handler.
#pragma once

#include <string>

namespace vantorin {

class ShellOpen {
public:
    virtual ~ShellOpen() = default;
    virtual void OpenFolder(const std::string& folder) = 0;
    virtual void OpenAddress(const std::string& address) = 0;
};

}  // namespace vantorin
