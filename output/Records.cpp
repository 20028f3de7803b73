#include "output/Records.h"

#include "output/LocalPath.h"

namespace vantorin {

void AppendToFile(const std::string& text, std::string& path, Mirror& m) {
    MakeLocalPath(path, m.vars, m.fs);
    m.fs.AppendLine(path, text);
}

}  // namespace vantorin
