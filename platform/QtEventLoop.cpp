#include "platform/QtEventLoop.h"

#include <QMetaObject>
#include <QObject>

namespace vantorin {

QtEventLoop::QtEventLoop() : context_(std::make_unique<QObject>()) {}

QtEventLoop::~QtEventLoop() = default;

void QtEventLoop::ResumeLater(std::coroutine_handle<> job) {
    waiting_.Add(job);
    if (posted_) return;
    posted_ = true;
    QMetaObject::invokeMethod(
        context_.get(), [this] { Turn(); }, Qt::QueuedConnection);
}

void QtEventLoop::Turn() {
    posted_ = false;
    waiting_.Turn();
}

}  // namespace vantorin
