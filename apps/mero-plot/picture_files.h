#pragma once

#include <QString>
#include <string>
#include <vector>

#include "platform/interchange/picture_document.h"
#include "platform/support/result.h"

namespace mero {

/// Writes each picture to a folder that is there, as NAME.png, NAME@2x.png and NAME.svg; a file that is there
/// already is replaced. Gives the names of the files, or the first that couldn't be written.
[[nodiscard]] Result<std::vector<std::string>> savePictures(const std::vector<Picture>& pictures,
                                                            const QString& folder);

/// Writes one process to a file, as SVG if its name ends so, else as PNG in twice the usual size. False if it
/// can't be written.
[[nodiscard]] bool saveProcessPicture(const ProcessPicture& picture, const QString& path);

}  // namespace mero
