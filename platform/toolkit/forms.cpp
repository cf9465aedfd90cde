#include "platform/toolkit/forms.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <memory>
#include <pugixml.hpp>
#include <set>
#include <sstream>

#include "component/host/basic_services.h"
#include "component/host/sv_window.h"

#include "platform/resources/messages.h"

namespace mero {

namespace {

constexpr const char* ModuleName = "toolkit";

using Node = pugi::xml_node;

Node propertyOf(Node widget, const char* name) {
    return widget.find_child_by_attribute("property", "name", name).first_child();
}

std::string textOf(Node widget, const char* name) {
    return propertyOf(widget, name).text().get();
}

bool flagOf(Node widget, const char* name, bool otherwise) {
    const Node value = propertyOf(widget, name);
    return value ? std::string_view(value.text().get()) == "true" : otherwise;
}

/// 0 for what isn't a hexadecimal identifier as in 0x2000019.
std::uint32_t identifierOf(std::string_view text) {
    constexpr int Hexadecimal = 16;
    std::uint32_t id = 0;
    if (!text.starts_with("0x")) {
        return 0;
    }
    const auto [end, error] = std::from_chars(text.data() + 2, text.data() + text.size(), id, Hexadecimal);
    return error == std::errc() && end == text.data() + text.size() ? id : 0;
}

/// Containers and spacers show no control.
bool needsIdentifier(std::string_view widgetClass) {
    return widgetClass != "QWidget" && widgetClass != "QFrame" && widgetClass != "QDialog" &&
           widgetClass != "QStackedWidget" && widgetClass != "Line";
}

/// The text with "&" as mark of an accelerator, as widgets want it.
std::string withAmpersand(std::string_view text) {
    std::string marked;
    for (const char each : text) {
        marked += each == '&' ? "&&" : std::string(1, each == '~' ? '&' : each);
    }
    return marked;
}

class FormReader {
public:
    explicit FormReader(std::string_view name) : formName(name) { form.name = name; }

    Result<Form> read(std::string_view source) {
        const auto parsed = document.load_buffer(source.data(), source.size());
        if (!parsed) {
            return Error{formName + ".ui: " + parsed.description()};
        }
        const Node root = document.child("ui").child("widget");
        form.id = SV::ResId(identifierOf(textOf(root, "resourceId")));
        if (form.id.value == 0) {
            return Error{formName + ".ui: the form has no identifier"};
        }
        form.state.visible = false;
        readTexts(root, form.state);
        const Node geometry = propertyOf(root, "geometry");
        form.size = {geometry.child("width").text().as_int(), geometry.child("height").text().as_int()};
        readChildren(root, 0);
        if (!fault.empty()) {
            return Error{formName + ".ui: " + fault};
        }
        std::ostringstream out;
        document.save(out, "", pugi::format_raw);
        form.document = out.str();
        return std::move(form);
    }

private:
    void readChildren(Node parent, int group) {
        for (const Node child : parent.children()) {
            const std::string_view tag = child.name();
            if (tag == "widget") {
                readWidget(child, group);
            } else if (tag == "layout" || tag == "item") {
                readChildren(child, group);
            }
        }
    }

    void readWidget(Node widget, int group) {
        const std::string widgetClass = widget.attribute("class").value();
        const std::string name = widget.attribute("name").value();
        const std::string idText = textOf(widget, "resourceId");
        FormControl control{SV::ResId(identifierOf(idText)), widgetClass, name, {}};
        control.state.radioGroup = widgetClass == "QRadioButton" ? group : 0;
        readTexts(widget, control.state);
        readState(widget, control.state);
        const bool isNumbered = control.id.value != 0;
        if (!isNumbered && (!idText.empty() || needsIdentifier(widgetClass))) {
            fail(name + ": no identifier in \"" + idText + "\"");
        }
        if (isNumbered && form.find(control.id) != nullptr) {
            fail(name + ": the identifier " + idText + " is there twice");
        }
        if (isNumbered) {
            form.controls.push_back(std::move(control));
        }
        readChildren(widget, ++groups);
    }

    void readTexts(Node widget, SV::FormState& state) {
        for (const Node property : widget.children("property")) {
            Node value = property.child("string");
            const std::string text = value.text().get();
            if (!text.starts_with('@')) {
                continue;
            }
            const std::string_view message = messageText(identifierOf(std::string_view(text).substr(1)));
            if (message.empty()) {
                fail(std::string(widget.attribute("name").value()) + ": unknown message " + text);
            }
            value.text().set(withAmpersand(message).c_str());
            (std::string_view(property.attribute("name").value()) == "toolTip" ? state.toolTip : state.text) =
                SV::String(SV::ResId(identifierOf(std::string_view(text).substr(1))));
        }
    }

    static void readState(Node widget, SV::FormState& state) {
        state.enabled = flagOf(widget, "enabled", true);
        state.visible = flagOf(widget, "visible", true);
        state.checked = flagOf(widget, "checked", false);
        state.readOnly = flagOf(widget, "readOnly", false);
        state.minimum = propertyOf(widget, "minimum").text().as_int();
        state.maximum = propertyOf(widget, "maximum").text().as_int();
        state.maximumLength = propertyOf(widget, "maxLength").text().as_int();
        if (const Node value = propertyOf(widget, "value")) {
            state.text = SV::String(value.text().get());
        }
        for (const Node item : widget.children("item")) {
            state.items.emplace_back(textOf(item, "text"));
        }
    }

    void fail(const std::string& text) {
        if (fault.empty()) {
            fault = text;
        }
    }

    std::string formName;
    pugi::xml_document document;
    Form form;
    int groups = 0;
    std::string fault;
};

/// Forms of one language by identifier.
using FormTable = std::map<std::uint32_t, Form>;

FormTable readAllForms() {
    FormTable table;
    for (const FormSource& source : formSources()) {
        Result<Form> form = readForm(source.name, source.document);
        if (form.isGood()) {
            const std::uint32_t id = form.value().id.value;
            table.emplace(id, std::move(form.value()));
        } else {
            displayErrorMessage(ModuleName, __LINE__);
        }
    }
    return table;
}

}  // namespace

const FormControl* Form::find(SV::ResId control) const {
    const auto place = std::ranges::find(controls, control, &FormControl::id);
    return place != controls.end() ? &*place : nullptr;
}

Result<Form> readForm(std::string_view name, std::string_view document) {
    return FormReader(name).read(document);
}

const Form* findForm(SV::ResId id) {
    static std::map<std::string_view, FormTable> languages;
    const auto [place, isNew] = languages.try_emplace(currentLanguage());
    if (isNew) {
        place->second = readAllForms();
    }
    const auto form = place->second.find(id.value);
    return form != place->second.end() ? &form->second : nullptr;
}

bool canShow(std::string_view widgetClass, SV::ControlClass kind) {
    using Kind = SV::ControlClass;
    switch (kind) {
        case Kind::FixedText:
        case Kind::StatusBar:
            return widgetClass == "QLabel";
        case Kind::GroupBox:
            return widgetClass == "QGroupBox";
        case Kind::Edit:
            return widgetClass == "QLineEdit";
        case Kind::MultiLineEdit:
            return widgetClass == "QPlainTextEdit";
        case Kind::NumericField:
            return widgetClass == "QSpinBox";
        case Kind::ListBox:
            return widgetClass == "QListWidget" || widgetClass == "QComboBox";
        case Kind::MultiListBox:
        case Kind::FunctionGraphLegend:
            return widgetClass == "QListWidget";
        case Kind::CheckBox:
            return widgetClass == "QCheckBox";
        case Kind::RadioButton:
            return widgetClass == "QRadioButton";
        case Kind::PushButton:
            return widgetClass == "QPushButton";
        case Kind::TreeListBox:
            return widgetClass == "QTreeView";
        case Kind::TabControl:
            return widgetClass == "QTabWidget";
        case Kind::ScrollableControl:
            return widgetClass == "QScrollArea";
        case Kind::ToolBox:
        case Kind::SizingGrip:
        case Kind::Browser:
        case Kind::FunctionGraph:
        case Kind::Diagram:
            return widgetClass == "QWidget";
    }
    return false;
}

const SV::Window* formWindowOf(const SV::Control& control) {
    const SV::Window* window = control.GetParent();
    while (window != nullptr && window->GetForm().value == 0) {
        window = window->GetParent();
    }
    return window;
}

const FormControl* formControlOf(const SV::Control& control) {
    const SV::Window* window = formWindowOf(control);
    const Form* form = window != nullptr ? findForm(window->GetForm()) : nullptr;
    if (form == nullptr || control.GetId().value == 0) {
        return nullptr;
    }
    const FormControl* found = form->find(control.GetId());
    if (found == nullptr || !canShow(found->widgetClass, control.GetClass())) {
        displayErrorMessage(ModuleName, static_cast<int>(control.GetId().value));
        return nullptr;
    }
    return found;
}

}  // namespace mero
