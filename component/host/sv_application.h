#pragma once

#include "component/host/sv_string.h"
#include "component/host/sv_window.h"

namespace SV {

/// Font by its role; the toolkit chooses face and size.
enum class Font { Application, Fixed };

/// The one application object: wait state and main window.
class Application {
public:
    /// Turns the wait cursor on or off. It doesn't count: who nests reads `IsWait` first and restores it
    /// last.
    void Wait(bool on);
    [[nodiscard]] bool IsWait() const { return waiting; }
    [[nodiscard]] Window* GetAppWindow() { return &mainWindow; }
    [[nodiscard]] Font GetAppFont() const { return Font::Application; }

private:
    bool waiting = false;
    Window mainWindow;
};

/// Never null.
[[nodiscard]] Application* GetpApp();

}  // namespace SV

/// Brackets every modal box, so that the platform knows the top window.
void Mero_PushParentWindow(SV::Window* window);
void Mero_PopParentWindow(SV::Window* window);
/// Top window of the bracketed ones, or else the application's.
[[nodiscard]] SV::Window* Mero_GetParentWindow();
