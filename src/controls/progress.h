// Work that may take longer than a user waits without a word: its progress, its stop, and the patience with
// other machines.
#pragma once

#include <QElapsedTimer>
#include <QFuture>
#include <QThreadPool>
#include <QTimer>
#include <atomic>
#include <functional>
#include <memory>

#include "controls/drop_input.h"
#include "controls/progress_window.h"

namespace veldrin::controls {

class Progress;

/// Belongs to a main window, which has one long work at a time.
class LongWork {
 public:
  /// `window` is the one that the progress stands over, and outlives the object.
  explicit LongWork(QWidget& window);
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

  /// Runs the action, and again as long as another machine's lock refuses it (3260): behind the progress of
  /// the work that is under way, or one of its own. Raises 3260 after a stop, and when Patience has passed.
  /// An action that is refused must have written nothing. What comes up while another one waits is tried
  /// once. Within the work of RunBeside and Progress::Run it waits in their thread.
  void Retry(const std::function<void()>& action);

  /// Runs the work in another thread, while windows live on, and raises what it raises. What is brief is
  /// awaited at once; `stop` is called, several times, where the user stops the work.
  void RunBeside(const std::function<void()>& work, const std::function<void()>& stop);

  /// How long another machine is waited for, in milliseconds.
  int Patience = 30'000;

 private:
  friend class Progress;

  void CloseWhenFree();

  QWidget& Window;
  Progress* Current = nullptr;
  bool Waiting = false;
  bool MustClose = false;  ///< the main window, which the user wanted to close
  QTimer Closing;
  QThreadPool Pool;  ///< of its own: nothing waits there for the decoding of pictures
};

/// From its making to its end what the user does elsewhere counts for nothing. After half a second a window
/// shows how far the work is.
class Progress {
 public:
  /// `total` is what Step counts to.
  Progress(LongWork& work, const QString& caption, int total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Tells that so much is done, and lets windows be painted; to be called every few milliseconds. False when
  /// the work was stopped.
  bool Step(int done);
  /// The same with the bar's value, from 0 to 100, and the text above it.
  bool Show(float value, const QString& caption);
  /// Windows live on until work in other threads has ended. It isn't ended by a stop. `meanwhile` is called
  /// now and then.
  void Await(const QFuture<void>& future, const std::function<void()>& meanwhile = {});

  /// Runs the work in another thread, while windows live on, and raises what it raises. `done` tells how much
  /// of the total that is so far.
  void Run(const std::function<void()>& work, const std::function<int()>& done = {});

  /// Also for other threads.
  bool IsStopped() const { return Stopped; }

 private:
  friend class LongWork;

  // Input for the window and for boxes passes, but for keys that are held; closing any other means Stop. The
  // main window closes when the work has ended.
  class Gate : public DropInput {
   public:
    explicit Gate(Progress& progress) : Owner(progress) {}

   private:
    bool Passes(QObject* receiver, QEvent* event) const override;
    void CloseAsked(const QObject* window) override;
    Progress& Owner;
  };

  void Paint();

  LongWork& Work;
  Progress* const Outer;
  QWidget* const Below;  ///< the dialog that the work was begun in
  const QString Caption;
  const int Total;
  float Value = 0;
  QString Percent;
  std::atomic<bool> Stopped = false;
  QElapsedTimer Begun;
  QElapsedTimer Painted;
  std::unique_ptr<ProgressWindow> Window;
  Gate Input{*this};
};

}  // namespace veldrin::controls
