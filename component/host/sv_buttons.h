#pragma once

#include "component/host/sv_dialog.h"
#include "component/host/sv_window.h"

namespace SV {

class PushButton : public Control {
public:
    PushButton(Window* parent, ResId id);

    void SetClickHdl(Handler handler) { clickHandler = std::move(handler); }
    void SetImage(const Image& newImage) { SetIcon(newImage); }
    /// What pressing does; the base runs the handler.
    virtual void Click() { run(clickHandler); }
    [[nodiscard]] bool HasClickHdl() const { return static_cast<bool>(clickHandler); }

    /// False if the button can't be reached.
    bool userClick();

private:
    Handler clickHandler;
};

/// Without a handler it ends its dialog with `DialogOk`.
class OKButton : public PushButton {
public:
    using PushButton::PushButton;
    void Click() override;
};

/// Without a handler it closes its window, as Escape does.
class CancelButton : public PushButton {
public:
    using PushButton::PushButton;
    void Click() override;
};

/// Shows the help of its window.
class HelpButton : public PushButton {
public:
    using PushButton::PushButton;
    void Click() override;
};

class CheckBox : public Control {
public:
    CheckBox(Window* parent, ResId id);

    void Check(bool check = true);
    void Uncheck() { Check(false); }
    [[nodiscard]] bool IsChecked() const { return checked; }
    void SetClickHdl(Handler handler) { clickHandler = std::move(handler); }

    bool userClick();

protected:
    void pullState(const FormState& initial) override;

private:
    bool checked = false;
    Handler clickHandler;
};

/// The user's click checks it and takes the check from the others of its group; `Check` changes this one
/// alone.
class RadioButton : public Control {
public:
    RadioButton(Window* parent, ResId id);

    void Check(bool check = true);
    void Uncheck() { Check(false); }
    [[nodiscard]] bool IsChecked() const { return checked; }
    [[nodiscard]] int GetGroup() const { return group; }
    void SetClickHdl(Handler handler) { clickHandler = std::move(handler); }

    bool userClick();

protected:
    void pullState(const FormState& initial) override;

private:
    bool checked = false;
    int group = 0;
    Handler clickHandler;
};

}  // namespace SV

/// OK button that leaves its dialog open until a handler ends it.
class MeroAssignButton : public SV::PushButton {
public:
    using SV::PushButton::PushButton;
};

/// Without a handler it closes its window.
class MeroCloseButton : public SV::CancelButton {
public:
    using SV::CancelButton::CancelButton;
};

/// Stands beside an edit for a path.
class MeroFileButton : public SV::PushButton {
public:
    using SV::PushButton::PushButton;
};

class MeroInfoButton : public SV::PushButton {
public:
    using SV::PushButton::PushButton;
};
