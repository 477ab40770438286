#include "output/mail.h"

#include "controls/busy_pointer.h"
#include "controls/error_box.h"
#include "controls/msg_box.h"

namespace veldrin::output {

// The body begins with a place for each attachment.
void PhotoMail::SendPhotos() {
  catalogue::Choice choice = Chosen();
  if (choice.Photos.empty()) return;
  controls::TrapWithBox(&Window, [&] {
    auto photos = TakePhotos(*Engine.OpenDatabase(ThePaths.WorkFile), choice, Window);
    if (photos.empty()) return;
    const controls::BusyPointer busy;
    MAPISess.Action(mapSignOn);
    MAPIMess.SessionID = MAPISess.SessionID();
    MAPIMess.Action(mapCompose);
    if (photos.size() > MaxAttachments) {
      controls::MsgBox(
          &Window,
          QStringLiteral("The max of %1 photo images can be attached per e-mail!").arg(MaxAttachments),
          controls::vbInformation, QStringLiteral("Information"));
      photos.resize(MaxAttachments);
    }
    const int count = static_cast<int>(photos.size());
    MAPIMess.MsgNoteText =
        choice.IsSelection
            ? QString(count, QLatin1Char(' ')) + QStringLiteral("\n\r%1 Photo image(s) attached").arg(count)
            : QStringLiteral(" \n\r1 Photo image attached");
    for (const auto& photo : photos) Attach(photo);
    MAPIMess.Action(mapSendDialog);
    MAPISess.Action(mapSignOff);
    MAPIMess.SessionID = 0;
    Tell({QStringLiteral("photos"), QStringLiteral("attached to the message"), count, {}, false});
  });
}

void PhotoMail::Attach(const catalogue::CheckedPhotos::Photo& photo) {
  MAPIMess.AttachmentIndex = MAPIMess.AttachmentCount();
  MapiAttachment& attachment = MAPIMess.Attachment();
  attachment.AttachmentName = StoredName(photo);
  attachment.AttachmentPathName = ThePaths.ImageDir + attachment.AttachmentName;
  attachment.AttachmentPosition = MAPIMess.AttachmentIndex;
  attachment.AttachmentType = mapData;
}

}  // namespace veldrin::output
