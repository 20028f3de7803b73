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

std::string NativePageText(const std::string& path) {
    return VisiblePageText(FileSystem::ToNative(path).string());
}

}  // namespace

ProgramParts::ProgramParts(Dialogs& dialogs, ShellOpen& shell, SettingsStore& settings)
    : vars(StartingVariables()),
      fs(vars.TargetFolder, FindProgramFolder()),
      services{vars, fs, settings, dialogs},
      engine(vars, fs,
             {dialogs, shell, NativePageText, [] { QCoreApplication::processEvents(); },
              QtSocketFactory(), QtTimerFactory()}) {}

}  // namespace vantorin
