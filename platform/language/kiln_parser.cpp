#include "component/host/kiln_parser.h"

#include <string>

#include "component/host/sv_boxes.h"

#include "platform/language/kiln_document.h"

using mero::KilnAttribute;
using mero::KilnElement;

struct MeroKilnParser::Impl {
    SV::String text;
    std::string label;  ///< source and name, for messages
    mero::KilnDocument document;
    std::string errorText;
    int current = 0;

    [[nodiscard]] const KilnElement* currentElement() const {
        const auto index = static_cast<std::size_t>(current);
        return index < document.elements.size() ? &document.elements[index] : nullptr;
    }

    [[nodiscard]] const KilnAttribute* find(const SV::String& key) const {
        const KilnElement* element = currentElement();
        return element != nullptr ? document.find(*element, key.view()) : nullptr;
    }
};

namespace {

std::string labelOf(const SV::String& source, const SV::String& name) {
    std::string label(source.view());
    if (!name.IsEmpty()) {
        label += label.empty() ? "\"" : " \"";
        label += name.view();
        label += '"';
    }
    return label;
}

SV::String textOf(const mero::QuotedText& quoted) {
    return quoted.hasBackslash ? SV::String(quoted.plain()) : SV::String(quoted.raw);
}

}  // namespace

MeroKilnParser::MeroKilnParser(const SV::String& text, const SV::String& source, const SV::String& name)
    : impl(std::make_unique<Impl>()) {
    impl->text = text;
    impl->label = labelOf(source, name);
}

MeroKilnParser::MeroKilnParser(MeroKilnParser&&) noexcept = default;
MeroKilnParser& MeroKilnParser::operator=(MeroKilnParser&&) noexcept = default;
MeroKilnParser::~MeroKilnParser() = default;

int MeroKilnParser::Parse() {
    impl->document = {};
    impl->errorText.clear();
    impl->current = 0;
    auto result = mero::readKilnDocument(impl->text.view());
    if (!result) {
        impl->errorText = impl->label.empty() ? "" : impl->label + ", ";
        impl->errorText += result.error().text;
        return 1;
    }
    impl->document = std::move(result.value());
    return 0;
}

SV::String MeroKilnParser::GetErrorText() const {
    return SV::String(impl->errorText);
}

void MeroKilnParser::ShowErrorBox() const {
    if (impl->errorText.empty()) {
        return;
    }
    SV::Application* application = SV::GetpApp();
    SV::Window* parent = application->GetAppWindow();
    const bool wasWaiting = application->IsWait();
    application->Wait(false);
    Mero_PushParentWindow(parent);
    MeroErrorBox(parent, SV::BoxStyleError, GetErrorText()).Execute(0);
    Mero_PopParentWindow(parent);
    application->Wait(wasWaiting);
}

int MeroKilnParser::GetElemCount() const {
    return static_cast<int>(impl->document.elements.size());
}

int MeroKilnParser::GetCurElemIndex() const {
    return impl->current;
}

bool MeroKilnParser::SetCurElemIndex(int index) {
    if (index < 0 || index >= GetElemCount()) {
        return false;
    }
    impl->current = index;
    return true;
}

SV::String MeroKilnParser::GetKeyword() const {
    const KilnElement* element = impl->currentElement();
    return element != nullptr ? SV::String(element->keyword) : SV::String();
}

bool MeroKilnParser::IsContained(const SV::String& key) const {
    return impl->find(key) != nullptr;
}

SV::String MeroKilnParser::GetStrValue(const SV::String& key) const {
    const KilnAttribute* attribute = impl->find(key);
    return attribute != nullptr ? textOf(attribute->value) : SV::String();
}

SV::String MeroKilnParser::GetStrValue() const {
    const KilnElement* element = impl->currentElement();
    return element != nullptr ? textOf(element->value) : SV::String();
}

bool MeroKilnParser::HasStrValue() const {
    const KilnElement* element = impl->currentElement();
    return element != nullptr && element->hasValue;
}

SV::String MeroKilnParser::GetModifier(const SV::String& key) const {
    const KilnAttribute* attribute = impl->find(key);
    return attribute != nullptr ? SV::String(attribute->modifier) : SV::String();
}

SV::String MeroKilnParser::GetKilnTextOfStrValue(const SV::String& value) {
    return SV::String(mero::quoteKilnText(value.view()));
}
