#include "app/StopSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>

namespace vantorin {

namespace {

int pipeEnds[2] = {-1, -1};

void WriteByte(int) {
    const char byte = 1;
    // Nothing more may be done in a signal handler; a full pipe already wakes the loop.
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

}  // namespace

StopSignals::StopSignals(std::function<void()> onStop) : onStop_(std::move(onStop)) {
    if (pipe(pipeEnds) != 0) return;
    for (int end : pipeEnds) {
        fcntl(end, F_SETFL, fcntl(end, F_GETFL) | O_NONBLOCK);
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    notifier_ = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
        char bytes[16];
        while (read(pipeEnds[0], bytes, sizeof bytes) > 0) {
        }
        if (onStop_) onStop_();
    });
    struct sigaction action {};
    action.sa_handler = WriteByte;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

StopSignals::~StopSignals() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    notifier_.reset();
    for (int& end : pipeEnds) {
        if (end >= 0) close(end);
        end = -1;
    }
}

}  // namespace vantorin
