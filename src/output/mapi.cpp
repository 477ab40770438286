#include "output/mapi.h"

#include "output/mail_program.h"

namespace veldrin::output {

void MapiSession::Action(SessionAction action) {
  if (action == mapSignOff) {
    TheSessionID = 0;
    return;
  }
  RequireMailProgram();
  TheSessionID = 1;
}

MapiAttachment& MapiMessages::Attachment() {
  if (AttachmentIndex == AttachmentCount()) Attachments.emplace_back();
  return Attachments.at(AttachmentIndex);
}

void MapiMessages::Action(MessageAction action) {
  if (SessionID == 0) throw base::RuntimeError(mapNoSession, QStringLiteral("There is no mail session."));
  if (action == mapCompose) {
    MsgNoteText.clear();
    Attachments.clear();
    AttachmentIndex = 0;
    return;
  }
  std::vector<MailFile> files;
  files.reserve(Attachments.size());
  for (const MapiAttachment& attachment : Attachments)
    files.push_back({attachment.AttachmentName, attachment.AttachmentPathName});
  ComposeMail(MsgNoteText, files, ThePaths.MailDir, Work);
}

}  // namespace veldrin::output
