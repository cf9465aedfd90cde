#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "component/host/sv_geometry.h"
#include "component/host/sv_image.h"
#include "component/host/sv_peer.h"
#include "component/host/sv_string.h"

namespace SV {

class Control;

using Handler = std::function<void()>;

/// A key as the user typed it.
struct KeyEvent {
    char32_t character = 0;  ///< 0 for a key without one
};

/// A window, and base of everything that is seen. The object is its state: all can be read and driven without
/// a display. Operations in upper camel case are the program's and run no handler; those that begin with
/// `user` do what a user does: they refuse where the user couldn't, and run the handlers.
class Window {
public:
    /// Without a form: a parent for others.
    explicit Window(Window* parent = nullptr);
    /// With the form of the resource module that has this identifier; an unknown one is an internal error.
    Window(Window* parent, ResId form);
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    /// Not owned; null for a top window.
    [[nodiscard]] Window* GetParent() const { return windowState.parent; }
    void SetParent(Window* parent);
    /// 0 for none.
    [[nodiscard]] ResId GetForm() const { return windowState.form; }
    /// Controls that have this window as parent, in the order of their making. Not owned.
    [[nodiscard]] const std::vector<Control*>& GetControls() const { return ownControls; }
    /// Null if there is none with this identifier.
    [[nodiscard]] Control* FindControl(ResId id) const;

    void SetText(const String& newText);
    [[nodiscard]] const String& GetText() const { return windowState.text; }
    void Show(bool show = true);
    void Hide() { Show(false); }
    [[nodiscard]] bool IsVisible() const { return windowState.visible; }
    void Enable(bool enable = true);
    void Disable() { Enable(false); }
    /// The window's own flag; see `Control::IsReachable`.
    [[nodiscard]] bool IsEnabled() const { return windowState.enabled; }

    void SetPosPixel(const Point& newPosition);
    [[nodiscard]] const Point& GetPosPixel() const { return windowState.position; }
    /// Size without frame.
    void SetOutputSizePixel(const Size& newSize);
    [[nodiscard]] const Size& GetOutputSizePixel() const { return windowState.size; }
    void SetMinOutputSizePixel(const Size& newSize);
    [[nodiscard]] const Size& GetMinOutputSizePixel() const { return windowState.minimumSize; }
    /// Pixels of a length in tenths of a millimetre at 96 dots an inch.
    [[nodiscard]] static int LogicToPixel(int tenthsOfMillimetre);

    void Minimize();
    void Restore();
    [[nodiscard]] bool IsMinimized() const { return windowState.minimized; }
    /// To the front, and the focus to it.
    void ToTop();
    void GrabFocus();
    [[nodiscard]] bool HasFocus() const;
    /// What has the focus in the whole program; null for none.
    [[nodiscard]] static Window* GetFocusWindow();

    void SetHelpId(int newHelpId) { windowState.helpId = newHelpId; }
    [[nodiscard]] int GetHelpId() const { return windowState.helpId; }
    void SetIcon(const Image& newIcon);
    [[nodiscard]] const Image& GetIcon() const { return windowState.icon; }
    /// What is told of a window that the pointer rests on; empty for nothing.
    void SetToolTip(const String& newToolTip);
    [[nodiscard]] const String& GetToolTip() const { return windowState.toolTip; }
    void SetBackground(const Color& newColor);
    [[nodiscard]] const Color& GetBackground() const { return windowState.background; }

    /// The user asks to close the window. True if it may go: the base hides it. An override may delete the
    /// window.
    virtual bool Close();
    /// The size has changed.
    virtual void Resize() {}
    /// True if the key was used.
    virtual bool KeyInput([[maybe_unused]] const KeyEvent& key) { return false; }
    virtual void GetFocus() {}
    virtual void LoseFocus() {}

    /// The user moved or sized the window: state and `Resize` without telling the peer again.
    void userPlace(const Point& newPosition, const Size& newSize);
    /// The focus comes, and goes from where it was.
    void userFocus();
    /// As for `Close`.
    bool userClose() { return Close(); }
    bool userKey(const KeyEvent& key) { return KeyInput(key); }

    /// Null without one.
    [[nodiscard]] Peer* GetPeer() const { return ownPeer.get(); }

protected:
    /// Gives the peer to a window that has none yet.
    void setPeer(std::unique_ptr<Peer> newPeer) { ownPeer = std::move(newPeer); }
    void tell(const Change& change) const;
    void tell(Aspect aspect) const { tell(Change{aspect}); }
    /// Text, enabled, visible of the form.
    void pullWindowState(const FormState& initial);

private:
    friend class Control;

    /// In one place, so that its short names are free for the parameters of derived classes.
    struct State {
        Window* parent = nullptr;
        ResId form;
        String text;
        String toolTip;
        Image icon;
        Color background{ColorRole::Dialog};
        Point position;
        Size size;
        Size minimumSize;
        int helpId = 0;
        bool visible = false;
        bool enabled = true;
        bool minimized = false;
    };
    State windowState;
    std::vector<Control*> ownControls;
    std::unique_ptr<Peer> ownPeer;
};

using SysWin = Window;

/// A part of a window with an identifier of the resource module. The end of the constructor of each class
/// that can be made binds it to the widget of the window's form.
class Control : public Window {
public:
    ~Control() override;

    [[nodiscard]] ResId GetId() const { return controlId; }
    [[nodiscard]] ControlClass GetClass() const { return controlClass; }
    /// True if the control and all that it stands in are shown and enabled, so that a user can reach it.
    [[nodiscard]] bool IsReachable() const;

    void SetGetFocusHdl(Handler handler) { getFocusHandler = std::move(handler); }
    void SetLoseFocusHdl(Handler handler) { loseFocusHandler = std::move(handler); }

    void GetFocus() override;
    void LoseFocus() override;

protected:
    /// `parent` has to outlive the control's use; id 0 for a control that no form holds.
    Control(Window* parent, ResId id, ControlClass kind);

    /// Pulls the state of the form, then makes the peer. Called once, at the end of a constructor.
    void bind();
    virtual void pullState(const FormState& initial) { pullWindowState(initial); }
    /// Runs a handler by a copy, since it may delete its owner.
    static void run(const Handler& handler);

private:
    ResId controlId;
    ControlClass controlClass;
    Handler getFocusHandler;
    Handler loseFocusHandler;
};

}  // namespace SV
