#include "app/ProgramParts.h"

#include <QCoreApplication>

#include "platform/DefaultFolder.h"
#include "platform/PageText.h"
#include "platform/ProgramFolder.h"
#include "platform/QtSocket.h"
#include "platform/QtTimer.h"

namespace vantorin {

namespace {

CrawlVariables StartingVariables() {
    CrawlVariables vars;
    vars.TargetFolder = DefaultTargetFolder();
    return vars;
}

}  // namespace

std::string ProgramFolder() {
    return FindProgramFolder();
}

ProgramParts::ProgramParts(Dialogs& dialogs, ShellOpen& shell)
    : vars(StartingVariables()),
      fs(vars.TargetFolder, ProgramFolder()),
      services{vars, fs, settings, dialogs},
      window(vars, fs, dialogs, shell),
      engine(
          window, dialogs, shell, vars, fs,
          [](const std::string& path) {
              return VisiblePageText(FileSystem::ToNative(path).string());
          },
          [] { QCoreApplication::processEvents(); }, QtSocketFactory(), QtTimerFactory()) {
    window.AttachEngine(engine);
}

}  // namespace vantorin
