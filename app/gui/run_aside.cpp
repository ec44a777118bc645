#include "run_aside.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <exception>
#include <memory>
#include <string>

namespace halvard::gui {

void RunAside(const std::function<void()>& work) {
  std::exception_ptr thrown;
  QEventLoop loop;
  const std::unique_ptr<QThread> thread(QThread::create([&] {
    try {
      work();
    } catch (...) {
      thrown = std::current_exception();
    }
  }));
  // Emitted on the worker thread, so the loop hears of it through its own queue, even when the
  // work ends before the loop starts.
  QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit,
                   Qt::QueuedConnection);
  thread->start();
  loop.exec();
  thread->wait();
  if (thrown) std::rethrow_exception(thrown);
}

QueuedProgress::~QueuedProgress() {
  QCoreApplication::sendPostedEvents(&receiver_);
}

void QueuedProgress::Step(int done, int total, std::string_view text) {
  QMetaObject::invokeMethod(
      &receiver_, [this, done, total, line = std::string(text)] { shown_.Step(done, total, line); },
      Qt::QueuedConnection);
}

}  // namespace halvard::gui
