// A mail session and the message in hand, as the mail controls have them.
#pragma once

#include <QString>
#include <vector>

#include "catalogue/paths.h"
#include "controls/progress.h"

namespace veldrin::output {

enum SessionAction : int { mapSignOn = 1, mapSignOff = 2 };

class MapiSession {
 public:
  /// Signing on raises mapLoginFail where there is no mail program. A session that an error left open is
  /// taken up again.
  void Action(SessionAction action);
  /// 0 without a session.
  int SessionID() const { return TheSessionID; }

 private:
  int TheSessionID = 0;
};

enum MessageAction : int { mapSendDialog = 2, mapCompose = 6 };
enum AttachmentKind : int { mapData = 0 };

struct MapiAttachment {
  QString AttachmentName;  ///< the name that it has in the message
  QString AttachmentPathName;
  /// The place in the body. Mail programs of today show attachments apart from it, in this order.
  int AttachmentPosition = 0;
  AttachmentKind AttachmentType = mapData;
};

class MapiMessages {
 public:
  /// The references must outlive the object.
  MapiMessages(const catalogue::Paths& paths, controls::LongWork& work) : ThePaths(paths), Work(work) {}

  int SessionID = 0;
  QString MsgNoteText;  ///< the body
  int AttachmentIndex = 0;

  int AttachmentCount() const { return static_cast<int>(Attachments.size()); }
  /// The attachment that AttachmentIndex selects; an index of AttachmentCount appends one.
  MapiAttachment& Attachment();

  /// Begins a new message, or opens the one in hand in the user's mail program and waits as ComposeMail does.
  /// Raises mapNoSession without a session, and what ComposeMail raises.
  void Action(MessageAction action);

 private:
  const catalogue::Paths& ThePaths;
  controls::LongWork& Work;
  std::vector<MapiAttachment> Attachments;
};

}  // namespace veldrin::output
