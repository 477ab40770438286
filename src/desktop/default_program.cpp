#include "desktop/default_program.h"

#include <gio/gdesktopappinfo.h>

#include <QFile>
#include <memory>

#include "base/runtime_error.h"

namespace veldrin::desktop {

namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
struct Free {
  void operator()(void* memory) const { g_free(memory); }
};
template <class Object>
using Owned = std::unique_ptr<Object, Unref>;
using Text = std::unique_ptr<char, Free>;

[[noreturn]] void RaiseNoProgram(const QString& reason) {
  throw base::RuntimeError(base::errCantCreateObject,
                           QStringLiteral("The program can't be started: %1").arg(reason));
}

QString ClassOf(GAppInfo* found) {
  const Owned<GAppInfo> program(found);
  return program ? QString::fromUtf8(g_app_info_get_id(program.get())) : QString();
}

}  // namespace

QString GetExtensionClass(const QString& extension) {
  const Text type(g_content_type_guess(QFile::encodeName(QLatin1Char('x') + extension.toLower()).constData(),
                                       nullptr, 0, nullptr));
  return ClassOf(g_app_info_get_default_for_type(type.get(), FALSE));
}

QString GetSchemeClass(const QString& scheme) {
  return ClassOf(g_app_info_get_default_for_uri_scheme(scheme.toUtf8().constData()));
}

void OpenWithProgram(const QString& programClass, const QString& file) {
  if (programClass.isEmpty()) RaiseNoProgram(QStringLiteral("none is registered"));
  const Owned<GDesktopAppInfo> program(g_desktop_app_info_new(programClass.toUtf8().constData()));
  if (!program) RaiseNoProgram(programClass);
  const Owned<GFile> opened(g_file_new_for_path(QFile::encodeName(file).constData()));
  GList files{opened.get(), nullptr, nullptr};
  GError* error = nullptr;
  if (g_app_info_launch(G_APP_INFO(program.get()), &files, nullptr, &error) != FALSE) return;
  const QString reason = QString::fromUtf8(error->message);
  g_error_free(error);
  RaiseNoProgram(reason);
}

}  // namespace veldrin::desktop
