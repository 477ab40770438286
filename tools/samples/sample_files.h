// Writes pictures as files of every type that the catalogue takes in.
#pragma once

#include <QImage>
#include <QString>

namespace veldrin::samples {

/// The type is that of the name's extension: jpg, bmp, dib, gif, pcd, pcx, tga. `upright` is the picture as
/// people see it. `variant`: of jpg the orientation tag (3, 6 or 8; the file's picture is stored turned, 0
/// writes no tag), of tga the version when it is the first. Throws std::runtime_error.
void WriteSample(const QImage& upright, const QString& path, int variant = 0);

/// A true-color Targa file of version 2, or of version 1, which has no footer.
QByteArray ToTarga(const QImage& image, int version);

/// A JPEG file whose picture is turned so that a reader that honours the tag (1 to 8; here 3, 6 or 8) shows
/// it upright.
QByteArray ToTurnedJpeg(const QImage& upright, int orientation, int quality = 88);

}  // namespace veldrin::samples
