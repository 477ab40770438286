// The user's mail program, through the desktop's `xdg-email`.
#pragma once

#include <QStringList>

#include "base/runtime_error.h"
#include "controls/progress.h"

namespace veldrin::output {

/// Numbers customary for mail.
enum MailErrorNumber : int {
  mapUserAbort = 32001,
  mapFailure = 32002,
  mapLoginFail = 32003,
  mapAttachmentNotFound = 32011,
  mapAttachmentOpenFailure = 32012,
  mapNoSession = 32053,
};

/// A file of a message, and the name that it is to have there.
struct MailFile {
  QString Name;
  QString Path;
};

/// Raises mapLoginFail where no message can be composed: without `xdg-email`, or without a mail program.
void RequireMailProgram();

/// Opens the mail program on a new message, without a recipient and without a subject, for the user to
/// finish. Comes back when the mail program has taken it, or after `LaunchSeconds` when it is still at work:
/// some stay at work until the user closes them. Meanwhile windows are painted, but what the user does counts
/// for nothing.
/// Raises mapAttachmentNotFound or mapAttachmentOpenFailure, before anything is opened, for a file that isn't
/// there, is a link or can't be read, and mapFailure when the mail program fails. What has to be copied for
/// the mail program goes to a directory of its own below `mailDir`, which ends in a separator and holds
/// nothing else, and stays there for a day or two, since files may be read when the message is sent. It is
/// copied as a long work; stopping it raises mapUserAbort.
void ComposeMail(const QString& body, const std::vector<MailFile>& files, const QString& mailDir,
                 controls::LongWork& work);

constexpr int LaunchSeconds = 3;

}  // namespace veldrin::output
