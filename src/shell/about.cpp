#include "shell/about.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "controls/named.h"
#include "shell/app.h"

namespace veldrin::shell {

namespace {

QLabel* MakeLabel(QWidget* parent, const char* name, const char* style) {
  QLabel* label = controls::Named(new QLabel(parent), name);
  label->setStyleSheet(QLatin1String(style));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmAbout"));
  setWindowTitle(QStringLiteral("About the Program"));
  Form_Load();
  // Its texts decide its size.
  layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void frmAbout::Form_Load() {
  QLabel* picIcon = controls::Named(new QLabel(this), "picIcon");
  picIcon->setPixmap(QIcon(QStringLiteral(":/veldrin.svg")).pixmap(124, 124));
  QLabel* lblTitle = MakeLabel(this, "lblTitle", "font-size: 30px; font-weight: 300; letter-spacing: 1px;");
  QLabel* lblVersion = MakeLabel(this, "lblVersion", "color: #5c6873;");
  QLabel* label1 = MakeLabel(this, "Label1", "");
  QLabel* label2 = MakeLabel(this, "Label2", "color: #5c6873;");
  QPushButton* cmdOK = controls::Named(new QPushButton(QStringLiteral("OK"), this), "cmdOK");
  cmdOK->setMinimumWidth(92);
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);

  lblTitle->setText(App::Title());
  lblVersion->setText(App::VersionText());
  label1->setText(
      QStringLiteral("A catalogue for your photographs: filed in folders, found again, shown and shared."));
  label2->setText(QStringLiteral(
      "Your pictures stay on your own disks. The program is given as it is, without any warranty."));
  label1->setFixedWidth(320);
  label2->setFixedWidth(320);

  auto* texts = new QVBoxLayout;
  texts->setSpacing(2);
  texts->addWidget(lblTitle);
  texts->addWidget(lblVersion);
  texts->addSpacing(16);
  texts->addWidget(label1);
  texts->addSpacing(8);
  texts->addWidget(label2);
  texts->addSpacing(22);
  texts->addWidget(cmdOK, 0, Qt::AlignRight);
  auto* all = new QHBoxLayout(this);
  all->setContentsMargins(24, 22, 24, 20);
  all->setSpacing(26);
  all->addWidget(picIcon, 0, Qt::AlignTop);
  all->addLayout(texts);
}

}  // namespace veldrin::shell
