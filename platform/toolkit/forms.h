#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "component/host/sv_geometry.h"
#include "component/host/sv_peer.h"

#include "platform/support/result.h"

namespace mero {

/// One widget of a form that shows a control.
struct FormControl {
    SV::ResId id;
    std::string widgetClass;  ///< as in "QLineEdit"
    std::string name;
    SV::FormState state;
};

/// A window's form: text, initial state and identifier of each control, in the order of the layout.
struct Form {
    SV::ResId id;
    std::string name;
    SV::FormState state;
    SV::Size size;
    std::vector<FormControl> controls;
    /// The form's document with the texts of the current language; a "&" stands before an accelerator.
    std::string document;

    /// Null if the form has no such control.
    [[nodiscard]] const FormControl* find(SV::ResId control) const;
};

/// Name and document of a form as it is compiled in.
struct FormSource {
    std::string_view name;
    std::string_view document;
};

[[nodiscard]] std::span<const FormSource> formSources();

/// Reads a form in the `.ui` format of Qt Designer. Each widget that shows a control has the control's
/// identifier as a text property `resourceId`; texts are identifiers of messages behind a "@", and take the
/// current language. Refused with its place: a wrong or missing identifier, one that is there twice, an
/// unknown message.
[[nodiscard]] Result<Form> readForm(std::string_view name, std::string_view document);

/// Form in the current language, or null. It stays valid until the language changes.
[[nodiscard]] const Form* findForm(SV::ResId id);

/// True if a widget of this class can show a control of this kind.
[[nodiscard]] bool canShow(std::string_view widgetClass, SV::ControlClass kind);

/// Initial state of a control, and an internal error if its window's form doesn't hold it, or holds another
/// class. Null for a control that no form holds.
[[nodiscard]] const FormControl* formControlOf(const SV::Control& control);

/// The window with a form that a control stands in, or null.
[[nodiscard]] const SV::Window* formWindowOf(const SV::Control& control);

}  // namespace mero
