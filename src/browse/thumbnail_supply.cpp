#include "browse/thumbnail_supply.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "base/failure.h"
#include "browse/external_viewer.h"
#include "browse/page_arithmetic.h"
#include "catalogue/image_store.h"

namespace veldrin::browse {

namespace {

// Of a list of a million photos nobody looks at all.
constexpr int MostAhead = 2000;
constexpr int WalkStep = 24;        // takes a few milliseconds
constexpr int WalkInterval = 50;    // milliseconds
constexpr int BeforeWalking = 500;  // the user may be on the way to another folder

}  // namespace

double ThumbnailSupply::PixelRatio() {
  double ratio = 1;
  for (const QScreen* screen : QGuiApplication::screens())
    ratio = std::max(ratio, screen->devicePixelRatio());
  return ratio;
}

ThumbnailSupply::ThumbnailSupply(catalogue::RecordList& data1, engine::DBEngine& engine,
                                 const catalogue::Paths& paths)
    : Data1(data1), Engine(engine), ThePaths(paths), Maker(paths) {
  Painted.setSingleShot(true);
  Walk.setSingleShot(true);
  connect(&Painted, &QTimer::timeout, this, &ThumbnailSupply::PagePainted);
  connect(&Walk, &QTimer::timeout, this, &ThumbnailSupply::WalkOn);
  connect(&Maker, &ThumbnailMaker::Made, this, &ThumbnailSupply::Made);
  connect(&Maker, &ThumbnailMaker::HasTimeToSpare, this, [this] { Walk.start(0); });
  connect(&Data1, &catalogue::RecordList::Refreshed, this, &ThumbnailSupply::Refreshed);
}

void ThumbnailSupply::Refreshed() {
  Maker.Forget();
  Painted.stop();
  OnPage.clear();
  WalkedTo = std::max(0, Data1.AbsolutePosition());
  WalkEnd = std::min(Data1.RecordCount(), WalkedTo + MostAhead);
  Walk.start(BeforeWalking);
}

void ThumbnailSupply::ShowPage(int start, std::deque<ThumbnailMaker::Wish> missing) {
  PageStart = start;
  OnPage = std::move(missing);
  Maker.Want(OnPage, PixelRatio());
  Painted.start(0);
}

void ThumbnailSupply::LeavePage() {
  Painted.stop();
  OnPage.clear();
  Maker.Want({}, PixelRatio());
}

void ThumbnailSupply::PagePainted() {
  if (TakeBackReturned()) return Q_EMIT Returned();
  base::ResumeNext([this] {
    std::deque<ThumbnailMaker::Wish> wishes = OnPage;
    for (const int start : {PageStart + CellCount, PageStart - CellCount})
      for (const auto& wish : MissingAt(start, CellCount)) wishes.push_back(wish);
    Maker.Want(std::move(wishes), PixelRatio());
  });
}

// Few photos are ever noted: they are asked for together. What can't be written now is left for the next
// look.
bool ThumbnailSupply::TakeBackReturned() const {
  bool any = false;
  base::ResumeNext([&] {
    QStringList numbers;
    const int end = std::min(Data1.RecordCount(), PageStart + CellCount);
    for (int place = PageStart; place < end; ++place) numbers << QString::number(Data1.BookmarkAt(place));
    if (numbers.isEmpty()) return;
    const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
    const auto noted =
        database->OpenRecordset(QStringLiteral("SELECT PhotoID FROM CheckPhotos WHERE PhotoID IN (%1)")
                                    .arg(numbers.join(QLatin1Char(','))),
                                engine::dbOpenSnapshot);
    bool written = true;
    for (; written && !noted->AtEOF(); noted->MoveNext()) {
      written = RefreshCheckedPhoto(*database, ThePaths, noted->Field(QStringLiteral("PhotoID")).toInt());
      any |= written;
    }
  });
  return any;
}

// The pages before the list's current record have been looked at, mostly.
void ThumbnailSupply::WalkOn() {
  if (WalkedTo >= WalkEnd) return;
  std::deque<ThumbnailMaker::Wish> missing;
  if (!base::ResumeNext([&] { missing = MissingAt(WalkedTo, WalkStep); })) return Walk.start(BeforeWalking);
  WalkedTo += WalkStep;
  missing.empty() ? Walk.start(WalkInterval) : Maker.Spare(std::move(missing), PixelRatio());
}

// Nobody sees these photos yet: what they look like isn't noted.
std::deque<ThumbnailMaker::Wish> ThumbnailSupply::MissingAt(int first, int count) const {
  const int begin = std::clamp(first, 0, Data1.RecordCount());
  const int end = std::clamp(first + count, 0, Data1.RecordCount());
  std::deque<ThumbnailMaker::Wish> missing;
  std::vector<int> places;
  for (int place = begin; place < end; ++place) {
    if (!QFileInfo::exists(ThumbFileName(ThePaths, Data1.BookmarkAt(place)))) places.push_back(place);
  }
  if (places.empty()) return missing;
  const auto rows = Data1.Recordset().ReadRows(begin, end - begin);
  const qsizetype type = Data1.Recordset().FieldNames().indexOf(QStringLiteral("ImageType"));
  for (const int place : places) {
    const auto& row = rows[place - begin];
    if (!row.empty()) missing.push_back({Data1.BookmarkAt(place), row[type].toString()});
  }
  return missing;
}

}  // namespace veldrin::browse
