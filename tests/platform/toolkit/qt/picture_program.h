#pragma once

#include <functional>
#include <string>

#include "component/host/sv_window.h"

namespace mero::test {

/// Where the pictures of one look and language go.
class PictureFolder {
public:
    explicit PictureFolder(std::string folderPath) : path(std::move(folderPath)) {}

    /// Saves what a window, which is shown, looks like once all of it has been drawn.
    void save(const SV::Window& window, const std::string& name);
    [[nodiscard]] bool isComplete() const { return complete; }

private:
    std::string path;
    bool complete = true;
};

/// A program that saves pictures, by its arguments FOLDER light|dark LANGUAGE. Gives its exit status.
int savePictures(int count, char** arguments, const std::function<void(PictureFolder&)>& makePictures);

}  // namespace mero::test
