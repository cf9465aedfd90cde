#include <algorithm>
#include <charconv>

#include "component/host/sv_edits.h"

namespace SV {

FixedText::FixedText(Window* parent, ResId id) : Control(parent, id, ControlClass::FixedText) {
    bind();
}

GroupBox::GroupBox(Window* parent, ResId id) : Control(parent, id, ControlClass::GroupBox) {
    bind();
}

Edit::Edit(Window* parent, ResId id) : Edit(parent, id, ControlClass::Edit) {
    bind();
}

void Edit::pullState(const FormState& initial) {
    Control::pullState(initial);
    readOnly = initial.readOnly;
    maximumLength = initial.maximumLength;
}

void Edit::SetSelection(const Selection& newSelection) {
    const std::size_t length = GetText().Len();
    selection.begin = std::min(newSelection.begin, length);
    selection.end = std::clamp(newSelection.end, selection.begin, length);
    tell(Aspect::TextSelection);
}

String Edit::GetSelected() const {
    const std::size_t length = GetText().Len();
    const std::size_t begin = std::min(selection.begin, length);
    const std::size_t end = std::clamp(selection.end, begin, length);
    return GetText().view().substr(begin, end - begin);
}

void Edit::ReplaceSelected(const String& text) {
    String whole = GetText();
    const std::size_t begin = std::min(selection.begin, whole.Len());
    whole.Erase(begin, GetSelected().Len());
    whole.Insert(text, begin);
    SetText(whole);
    SetSelection({begin + text.Len(), begin + text.Len()});
}

void Edit::SetReadOnly(bool on) {
    readOnly = on;
    tell(Aspect::ReadOnly);
}

bool Edit::userType(const String& newText) {
    const bool isTooLong =
        maximumLength > 0 && newText.CountCodePoints() > static_cast<std::size_t>(maximumLength);
    if (!IsReachable() || readOnly || isTooLong) {
        return false;
    }
    if (newText == GetText()) {
        return true;
    }
    SetText(newText);
    selection.begin = std::min(selection.begin, newText.Len());
    selection.end = std::min(selection.end, newText.Len());
    run(modifyHandler);
    return true;
}

MultiLineEdit::MultiLineEdit(Window* parent, ResId id) : Edit(parent, id, ControlClass::MultiLineEdit) {
    bind();
}

NumericField::NumericField(Window* parent, ResId id) : Control(parent, id, ControlClass::NumericField) {
    bind();
}

void NumericField::pullState(const FormState& initial) {
    Control::pullState(initial);
    if (initial.maximum > initial.minimum) {
        minimum = initial.minimum;
        maximum = initial.maximum;
    }
    std::int32_t number = 0;
    const std::string_view text = initial.text.view();
    std::from_chars(text.data(), text.data() + text.size(), number);
    value = std::clamp(number, minimum, maximum);
}

void NumericField::SetValue(std::int32_t newValue) {
    value = std::clamp(newValue, minimum, maximum);
    tell(Aspect::Text);
}

void NumericField::SetMin(std::int32_t newMinimum) {
    minimum = newMinimum;
    maximum = std::max(maximum, minimum);
    value = std::clamp(value, minimum, maximum);
    tell(Aspect::Range);
}

void NumericField::SetMax(std::int32_t newMaximum) {
    maximum = newMaximum;
    minimum = std::min(maximum, minimum);
    value = std::clamp(value, minimum, maximum);
    tell(Aspect::Range);
}

bool NumericField::userEnter(std::int32_t newValue) {
    if (!IsReachable()) {
        return false;
    }
    const std::int32_t before = value;
    SetValue(newValue);
    if (value != before) {
        run(modifyHandler);
    }
    return true;
}

}  // namespace SV
