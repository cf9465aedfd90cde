#include <algorithm>

#include "component/host/sv_application.h"

#include "platform/toolkit/parent_windows.h"

namespace SV {

Application* GetpApp() {
    static Application application;
    return &application;
}

void Application::Wait(bool on) {
    if (waiting != on) {
        waiting = on;
        Toolkit::GetGlobal().setWait(on);
    }
}

}  // namespace SV

namespace mero {

std::vector<SV::Window*>& parentWindows() {
    static std::vector<SV::Window*> windows;
    return windows;
}

}  // namespace mero

void Mero_PushParentWindow(SV::Window* window) {
    mero::parentWindows().push_back(window);
}

void Mero_PopParentWindow(SV::Window* window) {
    auto& windows = mero::parentWindows();
    const auto last = std::find(windows.rbegin(), windows.rend(), window);
    if (last != windows.rend()) {
        windows.erase(std::next(last).base());
    }
}

SV::Window* Mero_GetParentWindow() {
    const auto& windows = mero::parentWindows();
    return windows.empty() ? SV::GetpApp()->GetAppWindow() : windows.back();
}
