#include "output/record_choice.h"

#include "base/failure.h"

namespace veldrin::output {

bool SelectionCounts(const catalogue::RecordList& data1, const OutputViews& views) {
  return data1.SelBookmarks.Count() != 0 && !views.FormViewIsShown();
}

ListWalk::ListWalk(catalogue::RecordList& data1) : Data1(data1), Guard(data1) {
  if (Data1.AbsolutePosition() >= 0) Bookmark = Data1.Bookmark();
}

ListWalk::~ListWalk() {
  base::ResumeNext([this] {
    if (Bookmark && Data1.PositionOf(*Bookmark) != Data1.AbsolutePosition()) Data1.SetBookmark(*Bookmark);
  });
}

void VisitSelected(catalogue::RecordList& data1, int count, const std::function<void()>& visit) {
  const int bookmark = data1.Bookmark();
  data1.SuppressReposition = true;
  for (int i = 0; i < count; ++i) {
    data1.SetBookmark(data1.SelBookmarks[i]);
    visit();
  }
  data1.SetBookmark(bookmark);
  data1.SuppressReposition = false;
}

QString StoredName(const catalogue::RecordList& data1) {
  return data1.Field(QStringLiteral("PhotoID")).toString() + QLatin1Char('.') +
         data1.Field(QStringLiteral("ImageType")).toString();
}

}  // namespace veldrin::output
