#include <algorithm>

#include "journeys/journey_steps.h"

namespace veldrin::test {

namespace {

constexpr int FewPhotos = 14;

int AnyPhoto(const Walk& walk, int a) {
  return std::next(walk.Model.Rows.begin(), a % std::ssize(walk.Model.Rows))->first;
}

QString AnyFolder(const Walk& walk, int a) {
  return std::next(walk.Model.Folders.begin(), a % std::ssize(walk.Model.Folders))->first;
}

void DeletePhotoElsewhere(Walk& walk, int a, int) {
  if (walk.Model.Rows.size() < FewPhotos) return;
  walk.Elsewhere([&](JourneyModel& model) { model.Delete(AnyPhoto(walk, a)); });
}

// Another photo gets the number of one that was deleted, which must be the highest.
void ReplacePhotoElsewhere(Walk& walk, int a, int) {
  if (walk.Model.Rows.size() < FewPhotos) return;
  walk.Elsewhere([&](JourneyModel& model) {
    model.Delete(model.Rows.rbegin()->first);
    model.Store(model.NextNumber(), walk.NewPhoto(9), AnyFolder(walk, a));
  });
}

void AddPhotosElsewhere(Walk& walk, int a, int b) {
  const int wanted = walk.Model.Rows.size() < FewPhotos ? 20 : 1;
  walk.Elsewhere([&](JourneyModel& model) {
    for (int i = 0; i < wanted; ++i)
      model.Store(model.NextNumber(), walk.NewPhoto(b % 9), AnyFolder(walk, a + i / 3));
  });
}

// With other texts it is another photo than the one that the user sees.
void RetitlePhotoElsewhere(Walk& walk, int a, int) {
  if (walk.Model.Rows.empty()) return;
  walk.Elsewhere([&](JourneyModel& model) {
    JourneyModel::Photo& photo = model.Rows.at(AnyPhoto(walk, a));
    photo.Title = walk.NewText();
    photo.Birth = walk.NewBirth();
  });
}

void RenameFolderElsewhere(Walk& walk, int a, int) {
  const QString folder = AnyFolder(walk, a);
  if (folder.isEmpty()) return;
  walk.Elsewhere([&](JourneyModel& model) { model.Folders.at(folder) = walk.NewText(); });
}

void DeleteFolderElsewhere(Walk& walk, int a, int b) {
  const QString folder = AnyFolder(walk, a);
  if (folder.isEmpty()) return;
  walk.Elsewhere([&](JourneyModel& model) {
    b % 2 == 0 ? model.ReplaceFolder(folder, walk.NewText()) : model.RemoveFolderElsewhere(folder);
  });
}

void LoseImage(Walk& walk, int a, int b) {
  if (walk.Model.Rows.empty()) return;
  const int number = AnyPhoto(walk, a);
  walk.Elsewhere([&](JourneyModel& model) {
    JourneyModel::Photo& photo = model.Rows.at(number);
    if (photo.Colour == 0) return;
    photo.Image = b % 2 == 0 ? QByteArray() : QByteArray("damaged");
    photo.Colour = 0;
    photo.FileChanged = true;
  });
}

void HoldCatalogue(Walk& walk, int a, int) { walk.HoldInNextStep(a % 2 == 0); }

void Restart(Walk& walk, int, int) { walk.Restart(); }

}  // namespace

std::span<const StepKind> WorldSteps() {
  static const StepKind kinds[] = {STEP(DeletePhotoElsewhere, 2),
                                   STEP(ReplacePhotoElsewhere, 1),
                                   STEP(AddPhotosElsewhere, 2),
                                   STEP(RetitlePhotoElsewhere, 1),
                                   STEP(RenameFolderElsewhere, 1),
                                   STEP(DeleteFolderElsewhere, 1),
                                   STEP(LoseImage, 1),
                                   STEP(HoldCatalogue, 2),
                                   STEP(Restart, 3)};
  return kinds;
}

}  // namespace veldrin::test
