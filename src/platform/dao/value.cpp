#include "platform/dao/value.h"

namespace veldrin::platform {

namespace {
const QString Form = QStringLiteral("yyyy-MM-dd HH:mm:ss");
}

QString DateToStore(const QDateTime& date) { return date.toString(Form); }

QDateTime DateFromStore(const QString& text) {
  return {QDate::fromString(text.left(10), QStringLiteral("yyyy-MM-dd")), QTime::fromString(text.mid(11)),
          Qt::UTC};
}

}  // namespace veldrin::platform
