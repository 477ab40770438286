#include "shell/splash.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QSvgRenderer>
#include <utility>

#include "controls/named.h"
#include "controls/twips.h"
#include "shell/app.h"

namespace veldrin::shell {

namespace {

constexpr int SplashWidth = 7476;
constexpr int SplashHeight = 5064;
constexpr int PictureHeight = 4140;
constexpr int StripHeight = SplashHeight - PictureHeight;
constexpr int Margin = 360;
constexpr int SecondMs = 1000;
// A window that the system never paints, on a desktop out of sight, must not keep the program from starting.
constexpr int UnpaintedMs = 3000;

bool IsModifier(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
         key == Qt::Key_AltGr || key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

// Fills itself with the landscape, whose edges it cuts off for that.
class Landscape : public QAbstractButton {
 public:
  explicit Landscape(QWidget* parent) : QAbstractButton(parent) { setFocusPolicy(Qt::NoFocus); }

 protected:
  void paintEvent(QPaintEvent*) override {
    const QString element = QStringLiteral("landscape");
    const QSizeF whole = Picture.boundsOnElement(element).size();
    QRectF place({}, whole.scaled(size(), Qt::KeepAspectRatioByExpanding));
    place.moveCenter(QRectF(rect()).center());
    QPainter painter(this);
    Picture.render(&painter, element, place);
  }

 private:
  QSvgRenderer Picture{QStringLiteral(":/veldrin.svg")};
};

QLabel* AddLabel(QWidget* parent, const char* name, const QString& style, QRect twips) {
  QLabel* label = controls::Named(new QLabel(parent), name);
  label->setStyleSheet(style);
  // Labels that lie on the picture leave its clicks to it.
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  controls::MoveTwips(*label, twips.x(), twips.y(), twips.width(), twips.height());
  return label;
}

}  // namespace

frmSplash::frmSplash(std::function<bool()> load, std::function<void()> showMain)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint),
      Load(std::move(load)),
      ShowMain(std::move(showMain)),
      Image1(controls::Named(new Landscape(this), "Image1")) {
  setObjectName(QStringLiteral("frmSplash"));
  // Its going is not the end of the program.
  setAttribute(Qt::WA_QuitOnClose, false);
  Timer1.setObjectName(QStringLiteral("Timer1"));
  Timer1.setParent(this);
  Timer1.setInterval(SecondMs);
  connect(&Timer1, &QTimer::timeout, this, &frmSplash::Timer1_Timer);
  connect(Image1, &QAbstractButton::clicked, this, &frmSplash::Image1_Click);
  Form_Load();
}

void frmSplash::Form_Load() {
  setWindowTitle(App::Title());
  setFixedSize(base::ToPixels(SplashWidth), base::ToPixels(SplashHeight));
  controls::MoveTwips(*Image1, 0, 0, SplashWidth, PictureHeight);

  // The second title is the shadow of the first.
  const QString titleStyle = QStringLiteral(
      "font-size: 44px; font-weight: 300; letter-spacing: 3px; background: transparent; color: %1;");
  const QRect titlePlace(Margin, 270, SplashWidth - 2 * Margin, 960);
  QLabel* shadow = AddLabel(this, "lblTitle(1)", titleStyle.arg(QStringLiteral("rgba(18, 38, 64, 70)")),
                            titlePlace.translated(base::TwipsPerPixel, base::TwipsPerPixel));
  QLabel* title = AddLabel(this, "lblTitle(0)", titleStyle.arg(QStringLiteral("white")), titlePlace);
  title->setText(App::Title());
  shadow->setText(App::Title());

  QLabel* notice = AddLabel(this, "lblNotice", QStringLiteral("font-size: 15px; color: #2b3d4f;"),
                            {Margin, PictureHeight, 4700, StripHeight});
  notice->setText(QStringLiteral("A catalogue for your photographs."));
  QLabel* version = AddLabel(this, "lblVer", QStringLiteral("font-size: 12px; color: #73808c;"),
                             {SplashWidth - Margin - 2000, PictureHeight, 2000, StripHeight});
  version->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  version->setText(App::VersionText());
}

void frmSplash::Show() {
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  move(screen.center() - rect().center());
  show();
  activateWindow();
  QTimer::singleShot(UnpaintedMs, this, &frmSplash::ActivateOnce);
}

void frmSplash::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QColor(0xfb, 0xfa, 0xf6));
  painter.setPen(QColor(0xb4, 0xbc, 0xc6));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  // The labels are painted in the same round as this; what is queued here runs when all is on screen.
  QMetaObject::invokeMethod(this, &frmSplash::ActivateOnce, Qt::QueuedConnection);
}

void frmSplash::ActivateOnce() {
  if (!std::exchange(Activated, true)) Form_Activate();
}

void frmSplash::Form_Activate() {
  QCoreApplication::processEvents();
  if (!Load()) Unload();
  // Of a window that is unloaded too: its timer shows the main window all the same, which then meets what is
  // amiss with the catalogue.
  Timer1.start();
}

void frmSplash::keyPressEvent(QKeyEvent* event) {
  if (!IsModifier(event->key())) Form_KeyPress();
}

void frmSplash::Unload() {
  Form_Unload();
  hide();
}

// The timer runs when the load is over, so an unload before that shows nothing.
void frmSplash::Form_Unload() {
  if (!Timer1.isActive()) return;
  Timer1.stop();
  ShowMain();
}

}  // namespace veldrin::shell
