// The program: with no arguments the window; with arguments the command line
// (see app/CommandLine.h). The choice is made before any application object
// exists, so the command line never loads a widget or a GUI platform.
#include <cstdio>
#include <string>

#include "app/CommandLineCrawl.h"
#include "platform/MemoryPolicy.h"
#include "platform/WindowModule.h"

int main(int argc, char** argv) {
    using namespace vantorin;
    ReturnLargeBuffersToTheSystem();
    if (argc > 1) return RunCommandLine(argc, argv);
    std::string error;
    const int status = RunWindowModule(argc, argv, error);
    if (status != -1) return status;
    std::fprintf(stderr, "vantorin: the window module cannot be loaded (%s)\n", error.c_str());
    return 1;
}
