#include "platform/dao/value.h"

namespace veldrin::platform {

namespace {
const QString Form = QStringLiteral("yyyy-MM-dd HH:mm:ss");
}

QString DateToStore(const QDateTime& date) { return date.toString(Form); }

QDateTime DateFromStore(const QString& text) { return QDateTime::fromString(text, Form); }

}  // namespace veldrin::platform
