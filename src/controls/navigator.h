// The four buttons by which the user goes through a list: to its first, previous, next and last record or
// page.
#pragma once

#include <QAbstractButton>
#include <QIcon>
#include <array>

#include "controls/named.h"

namespace veldrin::controls {

/// One of the buttons: its name, what its tip says, and what a click on it calls.
template <class View>
struct NavigatorStep {
  const char* Name;
  const char* Tip;
  void (View::*Click)();
};

/// Makes the buttons on a parent, in the order first, previous, next, last; the caller places them.
template <class Button, class View>
std::array<Button*, 4> MakeNavigator(QWidget& parent, View& view, const NavigatorStep<View> (&steps)[4]) {
  static const char* const icons[] = {"go-first", "go-previous", "go-next", "go-last"};
  std::array<Button*, 4> buttons{};
  for (int i = 0; i < 4; ++i) {
    buttons[i] = Named(new Button(&parent), steps[i].Name);
    buttons[i]->setIcon(QIcon::fromTheme(QLatin1String(icons[i])));
    buttons[i]->setToolTip(QLatin1String(steps[i].Tip));
    buttons[i]->setAccessibleName(buttons[i]->toolTip());
    QObject::connect(buttons[i], &QAbstractButton::clicked, &view, steps[i].Click);
  }
  return buttons;
}

}  // namespace veldrin::controls
