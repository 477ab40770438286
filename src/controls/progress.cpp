#include "controls/progress.h"

#include <QApplication>
#include <QEventLoop>
#include <QFutureWatcher>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSemaphore>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <QtConcurrentRun>
#include <exception>
#include <utility>

#include "base/runtime_error.h"

namespace veldrin::controls {

namespace {

// In milliseconds.
constexpr int Quick = 500;    // what is done sooner needs no window
constexpr qint64 Frame = 20;  // as often as people can see
constexpr int BetweenTries = 50;

QString Locked() { return QStringLiteral("Another machine is using the catalogue."); }

// Ends when the condition's owner says so, or after a time at most.
void RunEvents(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

// Work in another thread.
class Errand {
 public:
  Errand(QThreadPool& pool, const std::function<void()>& work) {
    TheFuture = QtConcurrent::run(&pool, [this, work] {
      const QScopedValueRollback<Errand*> here(OfThread(), this);
      try {
        work();
      } catch (...) {
        Error = std::current_exception();
      }
      Ended.release();
    });
  }
  ~Errand() { TheFuture.waitForFinished(); }
  Errand(const Errand&) = delete;
  Errand& operator=(const Errand&) = delete;

  /// The one that the calling thread is about; null in the window's.
  static Errand*& OfThread() {
    thread_local Errand* errand = nullptr;
    return errand;
  }

  /// Waits as long as windows needn't be kept alive. False when the work takes longer. A click that it
  /// belongs to should see its press ended before its release comes.
  bool IsBrief() {
    constexpr int brief = 10;  // milliseconds
    constexpr int click = 90;
    return Ended.tryAcquire(1, QGuiApplication::mouseButtons() == Qt::NoButton ? brief : click);
  }
  const QFuture<void>& Future() const { return TheFuture; }
  void Stop() { IsStopped = true; }
  /// For another machine.
  bool IsWaiting() const { return Waiting; }
  /// Waits, and raises what the work raised.
  void End() {
    TheFuture.waitForFinished();
    if (Error) std::rethrow_exception(Error);
  }

  // LongWork::Retry within the work.
  void Retry(const std::function<void()>& action, int patience) {
    const auto ended = qScopeGuard([this] { Waiting = false; });
    QElapsedTimer waited;
    waited.start();
    for (;;) {
      try {
        return action();
      } catch (const base::RuntimeError& error) {
        if (error.Number() != base::errLocked || waited.hasExpired(patience) || IsStopped) throw;
      }
      Waiting = true;
      QThread::msleep(BetweenTries);
    }
  }

 private:
  std::exception_ptr Error;
  QSemaphore Ended;
  std::atomic<bool> IsStopped = false;
  std::atomic<bool> Waiting = false;
  QFuture<void> TheFuture;
};

}  // namespace

void LongWork::RunBeside(const std::function<void()>& work, const std::function<void()>& stop) {
  Errand errand(Pool, work);
  if (!errand.IsBrief()) {
    std::unique_ptr<Progress> own;
    if (Current == nullptr)
      own = std::make_unique<Progress>(*this, QStringLiteral("Working on the Catalogue...."), 0);
    Progress& progress = *Current;
    const bool wasStopped = progress.IsStopped();
    progress.Await(errand.Future(), [&] {
      if (own) own->Show(0, errand.IsWaiting() ? Locked() : QString());
      if (!progress.IsStopped() || wasStopped) return;
      errand.Stop();
      stop();
    });
  }
  errand.End();
}

LongWork::LongWork(QWidget& window) : Window(window) {
  constexpr int soon = 100;  // milliseconds
  Closing.setSingleShot(true);
  Closing.setInterval(soon);
  QObject::connect(&Closing, &QTimer::timeout, &Closing, [this] { CloseWhenFree(); });
}

// What the work had to tell is read first.
void LongWork::CloseWhenFree() {
  const bool isFree =
      Current == nullptr && QApplication::activeModalWidget() == nullptr && !DropInput::IsOn();
  if (!isFree) return Closing.start();
  MustClose = false;
  Window.close();
}

void LongWork::Retry(const std::function<void()>& action) {
  if (Errand* errand = Errand::OfThread()) return errand->Retry(action, Patience);
  if (Waiting) return action();
  QElapsedTimer waited;
  waited.start();
  std::unique_ptr<Progress> own;
  for (;;) {
    try {
      return action();
    } catch (const base::RuntimeError& error) {
      if (error.Number() != base::errLocked || waited.elapsed() >= Patience) throw;
      if (Current == nullptr) own = std::make_unique<Progress>(*this, Locked(), 0);
      const QScopedValueRollback<bool> waiting(Waiting, true);
      RunEvents(BetweenTries);
      Current->Paint();
      if (Current->Stopped) throw;
    }
  }
}

Progress::Progress(LongWork& work, const QString& caption, int total)
    : Work(work),
      Outer(std::exchange(work.Current, this)),
      Below(QApplication::activeModalWidget()),
      Caption(caption),
      Total(total) {
  Begun.start();
  Painted.start();
}

// What came meanwhile is dropped, not put off.
Progress::~Progress() {
  QCoreApplication::processEvents();
  Work.Current = Outer;
  if (Work.MustClose) Work.Closing.start();
}

bool Progress::Step(int done) {
  constexpr float all = 100;
  const float value = Total == 0 ? 0 : all * static_cast<float>(done) / static_cast<float>(Total);
  return Show(value, PercentText(value));
}

bool Progress::Show(float value, const QString& caption) {
  Value = value;
  Percent = caption;
  if (Painted.hasExpired(Frame)) Paint();
  return !Stopped;
}

void Progress::Paint() {
  if (!Window && Begun.hasExpired(Quick)) {
    // Not modal: the main window couldn't be closed then. A dialog that is blocks none of its own.
    Window = std::make_unique<ProgressWindow>(Caption, Below != nullptr ? Below : &Work.Window);
    QObject::connect(Window.get(), &ProgressWindow::Stop, Window.get(), [this] { Stopped = true; });
    Window->show();
  }
  if (Window) {
    Window->SetValue(Value);
    Window->SetPercent(Percent);
  }
  QCoreApplication::processEvents();
  Painted.start();
}

void Progress::Await(const QFuture<void>& future, const std::function<void()>& meanwhile) {
  while (!future.isFinished()) {
    QEventLoop loop;
    QFutureWatcher<void> watcher;
    QObject::connect(&watcher, &QFutureWatcher<void>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(future);
    QTimer::singleShot(static_cast<int>(Frame), &loop, [&loop] { loop.quit(); });
    loop.exec();
    if (meanwhile) meanwhile();
    if (Painted.hasExpired(Frame)) Paint();
  }
}

void Progress::Run(const std::function<void()>& work, const std::function<int()>& done) {
  Errand errand(Work.Pool, work);
  if (!errand.IsBrief()) {
    Await(errand.Future(), [&] {
      if (Stopped) errand.Stop();
      if (done) Step(done());
      if (errand.IsWaiting()) Show(Value, Locked());
    });
  }
  errand.End();
}

// A box that comes up meanwhile is to be answered, or all would wait for it.
bool Progress::Gate::Passes(QObject* receiver, QEvent* event) const {
  const auto isOf = [receiver](const QWidget* window) {
    const auto* widget = qobject_cast<QWidget*>(receiver);
    return window != nullptr &&
           (receiver == window->windowHandle() || (widget != nullptr && widget->window() == window));
  };
  const QWidget* box = QApplication::activeModalWidget();
  bool isMeant = box != Owner.Below && isOf(box);
  for (const Progress* progress = Owner.Work.Current; progress != nullptr; progress = progress->Outer)
    isMeant |= isOf(progress->Window.get());
  if (!isMeant) return false;
  const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
  return !isKey || !static_cast<QKeyEvent*>(event)->isAutoRepeat();
}

void Progress::Gate::CloseAsked(const QObject* window) {
  Owner.Stopped = true;
  const QWidget& main = Owner.Work.Window;
  if (window == &main || window == main.windowHandle()) Owner.Work.MustClose = true;
}

}  // namespace veldrin::controls
