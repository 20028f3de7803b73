#include "app/ProgramParts.h"

#include "platform/DefaultFolder.h"
#include "platform/PageTextFile.h"
#include "platform/ProgramFolder.h"
#include "platform/QtSocket.h"
#include "platform/QtTimer.h"

namespace vantorin {

ProgramParts::ProgramParts()
    : files(DefaultTargetFolder(), FindProgramFolder()),
      engine({files, filters, VisiblePageText, loop, QtSocketFactory(), QtTimerFactory(),
              DefaultTargetFolder()}) {}

}  // namespace vantorin
