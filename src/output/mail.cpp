#include "output/mail.h"

#include "controls/busy_pointer.h"
#include "controls/error_box.h"
#include "controls/msg_box.h"

namespace veldrin::output {

void PhotoMail::SendPhotos() {
  if (Data1.RecordCount() == 0) return;
  controls::TrapWithBox(&Window, [this] {
    const controls::BusyPointer busy;
    MAPISess.Action(mapSignOn);
    MAPIMess.SessionID = MAPISess.SessionID();
    MAPIMess.Action(mapCompose);
    if (SelectionCounts(Data1, Views)) {
      AttachSelected();
    } else {
      MAPIMess.MsgNoteText = QStringLiteral(" \n\r1 Photo image attached");
      AttachCurrent();
    }
    MAPIMess.Action(mapSendDialog);
    MAPISess.Action(mapSignOff);
    MAPIMess.SessionID = 0;
  });
}

// The body begins with a place for each attachment.
void PhotoMail::AttachSelected() {
  int count = Data1.SelBookmarks.Count();
  if (count > MaxAttachments) {
    controls::MsgBox(
        &Window, QStringLiteral("The max of %1 photo images can be attached per e-mail!").arg(MaxAttachments),
        controls::vbInformation, QStringLiteral("Information"));
    count = MaxAttachments;
  }
  const QString blanks(count, QLatin1Char(' '));
  MAPIMess.MsgNoteText = blanks + QStringLiteral("\n\r%1 Photo image(s) attached").arg(count);
  VisitSelected(Data1, count, [this] { AttachCurrent(); });
}

void PhotoMail::AttachCurrent() {
  MAPIMess.AttachmentIndex = MAPIMess.AttachmentCount();
  MapiAttachment& attachment = MAPIMess.Attachment();
  attachment.AttachmentName = StoredName(Data1);
  attachment.AttachmentPathName = ThePaths.ImageDir + attachment.AttachmentName;
  attachment.AttachmentPosition = MAPIMess.AttachmentIndex;
  attachment.AttachmentType = mapData;
}

}  // namespace veldrin::output
