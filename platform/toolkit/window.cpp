#include <algorithm>

#include "component/host/basic_services.h"
#include "component/host/sv_window.h"

namespace SV {

namespace {

Window*& focusWindow() {
    static Window* window = nullptr;
    return window;
}

}  // namespace

Window::Window(Window* parent) {
    windowState.parent = parent;
}

Window::Window(Window* parent, ResId form) {
    windowState.parent = parent;
    windowState.form = form;
    FormState initial;
    initial.visible = false;
    setPeer(Toolkit::GetGlobal().makeWindowPeer(*this, form, initial));
    windowState.text = initial.text;
}

Window::~Window() {
    if (focusWindow() == this) {
        focusWindow() = nullptr;
    }
    for (Control* control : ownControls) {
        control->windowState.parent = nullptr;
    }
}

void Window::SetParent(Window* parent) {
    windowState.parent = parent;
}

Control* Window::FindControl(ResId id) const {
    const auto place = std::ranges::find(ownControls, id, &Control::GetId);
    return place != ownControls.end() ? *place : nullptr;
}

void Window::tell(const Change& change) const {
    if (ownPeer) {
        ownPeer->changed(change);
    }
}

void Window::pullWindowState(const FormState& initial) {
    windowState.text = initial.text;
    windowState.toolTip = initial.toolTip;
    windowState.enabled = initial.enabled;
    windowState.visible = initial.visible;
}

void Window::SetText(const String& newText) {
    windowState.text = newText;
    tell(Aspect::Text);
}

void Window::Show(bool show) {
    windowState.visible = show;
    tell(Aspect::Visible);
}

void Window::Enable(bool enable) {
    windowState.enabled = enable;
    tell(Aspect::Enabled);
}

void Window::SetPosPixel(const Point& newPosition) {
    windowState.position = newPosition;
    tell(Aspect::Position);
}

void Window::SetOutputSizePixel(const Size& newSize) {
    windowState.size = {std::max(newSize.width, windowState.minimumSize.width),
                        std::max(newSize.height, windowState.minimumSize.height)};
    tell(Aspect::Size);
}

void Window::SetMinOutputSizePixel(const Size& newSize) {
    windowState.minimumSize = newSize;
    tell(Aspect::MinimumSize);
}

int Window::LogicToPixel(int tenthsOfMillimetre) {
    constexpr int DotsPerInch = 96;
    constexpr int TenthsPerInch = 254;
    return (tenthsOfMillimetre * DotsPerInch + TenthsPerInch / 2) / TenthsPerInch;
}

void Window::Minimize() {
    windowState.minimized = true;
    tell(Aspect::Minimized);
}

void Window::Restore() {
    windowState.minimized = false;
    tell(Aspect::Minimized);
}

void Window::ToTop() {
    tell(Aspect::Front);
    GrabFocus();
}

void Window::GrabFocus() {
    focusWindow() = this;
    tell(Aspect::Focus);
}

bool Window::HasFocus() const {
    return focusWindow() == this;
}

Window* Window::GetFocusWindow() {
    return focusWindow();
}

void Window::SetIcon(const Image& newIcon) {
    windowState.icon = newIcon;
    tell(Aspect::Picture);
}

void Window::SetToolTip(const String& newToolTip) {
    windowState.toolTip = newToolTip;
    tell(Aspect::Text);
}

void Window::SetBackground(const Color& newColor) {
    windowState.background = newColor;
    tell(Aspect::Drawing);
}

bool Window::Close() {
    Hide();
    return true;
}

void Window::userPlace(const Point& newPosition, const Size& newSize) {
    windowState.position = newPosition;
    if (newSize != windowState.size) {
        windowState.size = newSize;
        Resize();
    }
}

void Window::userFocus() {
    Window* before = focusWindow();
    if (before == this) {
        return;
    }
    focusWindow() = this;
    if (before != nullptr) {
        before->LoseFocus();
    }
    // The loser's handler may have moved the focus on.
    if (focusWindow() == this) {
        GetFocus();
    }
}

Control::Control(Window* parent, ResId id, ControlClass kind)
    : Window(parent), controlId(id), controlClass(kind) {
    windowState.visible = true;
    if (parent != nullptr) {
        parent->ownControls.push_back(this);
    }
}

Control::~Control() {
    if (Window* parent = GetParent()) {
        std::erase(parent->ownControls, this);
    }
}

bool Control::IsReachable() const {
    for (const Window* each = this; each != nullptr; each = each->GetParent()) {
        const bool isControl = dynamic_cast<const Control*>(each) != nullptr;
        if (!each->IsEnabled() || (isControl && !each->IsVisible())) {
            return false;
        }
        if (!isControl) {
            break;
        }
    }
    return true;
}

void Control::bind() {
    FormState initial;
    std::unique_ptr<Peer> made = Toolkit::GetGlobal().makeControlPeer(*this, initial);
    pullState(initial);
    setPeer(std::move(made));
    tell(Aspect::Text);
}

void Control::run(const Handler& handler) {
    if (const Handler copy = handler) {
        copy();
    }
}

void Control::GetFocus() {
    run(getFocusHandler);
}

void Control::LoseFocus() {
    run(loseFocusHandler);
}

}  // namespace SV
