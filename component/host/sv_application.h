#pragma once

#include "component/host/sv_string.h"

namespace SV {

/// A window as parent of boxes and dialogs. Without a toolkit it is state only.
class Window {
public:
    explicit Window(Window* parent = nullptr) : parentWindow(parent) {}
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window() = default;

    /// Not owned; null for a top window.
    [[nodiscard]] Window* GetParent() const { return parentWindow; }
    void SetText(const String& text) { caption = text; }
    [[nodiscard]] const String& GetText() const { return caption; }
    void Show() { visible = true; }
    void Hide() { visible = false; }
    [[nodiscard]] bool IsVisible() const { return visible; }

private:
    Window* parentWindow;
    String caption;
    bool visible = false;
};

/// The one application object: wait state and main window.
class Application {
public:
    /// Turns the wait cursor on or off. It doesn't count: who nests reads `IsWait` first and restores it
    /// last.
    void Wait(bool on) { waiting = on; }
    [[nodiscard]] bool IsWait() const { return waiting; }
    [[nodiscard]] Window* GetAppWindow() { return &mainWindow; }

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
