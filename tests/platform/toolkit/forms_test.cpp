#include "platform/toolkit/forms.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "component/host/sv_edits.h"

#include "platform/resources/messages.h"
#include "platform/toolkit/internal_errors.h"

namespace mero {

namespace {

std::string widget(const std::string& widgetClass, const std::string& properties) {
    return "<item><widget class=\"" + widgetClass + "\" name=\"w\">" + properties + "</widget></item>";
}

std::string identifier(const std::string& id) {
    return "<property name=\"resourceId\" stdset=\"0\"><string notr=\"true\">" + id + "</string></property>";
}

std::string document(const std::string& items) {
    return "<ui version=\"4.0\"><widget class=\"QDialog\" name=\"f\">" + identifier("0x2010010") +
           "<layout class=\"QVBoxLayout\" name=\"l\">" + items + "</layout></widget></ui>";
}

/// Identifiers that the host contract declares for each form, by the namespace's comment-free text.
std::map<std::uint32_t, std::set<std::uint32_t>> declaredControls() {
    std::ifstream file(MERO_SOURCE_DIR "/component/host/resource_ids.h");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const std::regex entry(R"((namespace (\w+) \{)|(SV::ResId (\w+)\{(0x[0-9A-F]+)\}))");
    std::map<std::uint32_t, std::set<std::uint32_t>> forms;
    std::uint32_t form = 0;
    for (std::sregex_iterator each(text.begin(), text.end(), entry), end; each != end; ++each) {
        const std::string name = (*each)[4];
        if (name == "Form") {
            form = static_cast<std::uint32_t>(std::stoul((*each)[5], nullptr, 16));
        } else if (!name.empty() && name != "Icon" && name != "TimeButtonImage") {
            forms[form].insert(static_cast<std::uint32_t>(std::stoul((*each)[5], nullptr, 16)));
        }
    }
    // A calendar has seven days, each with a label and an edit.
    constexpr std::uint32_t FirstOfDays = 0x2000001;
    constexpr std::uint32_t ControlsOfDays = 14;
    for (std::uint32_t each = 0; each < ControlsOfDays; ++each) {
        forms.at(0x2010050).insert(FirstOfDays + each);
    }
    // The window of a run shows the curves of a history with other labels.
    const auto history = forms.at(0x2004EA2);
    std::ranges::copy_if(history, std::inserter(forms.at(0x2004FF9), forms.at(0x2004FF9).end()),
                         [](std::uint32_t id) { return id != 0x2004EA3; });
    return forms;
}

char acceleratorOf(const SV::String& text) {
    const std::size_t place = text.Search("~");
    return place == SV::String::NotFound || place + 1 >= text.Len()
               ? '\0'
               : static_cast<char>(std::tolower(static_cast<unsigned char>(text[place + 1])));
}

TEST(FormsTest, EveryFormIsGoodAndHoldsTheDeclaredControls) {
    const auto declared = declaredControls();
    std::set<std::uint32_t> seen;
    for (const FormSource& source : formSources()) {
        const Result<Form> form = readForm(source.name, source.document);
        ASSERT_TRUE(form.isGood()) << form.error().text;
        std::set<std::uint32_t> controls;
        for (const FormControl& control : form.value().controls) {
            controls.insert(control.id.value);
        }
        const std::uint32_t id = form.value().id.value;
        EXPECT_TRUE(seen.insert(id).second) << source.name;
        ASSERT_TRUE(declared.contains(id)) << source.name;
        EXPECT_EQ(controls, declared.at(id)) << source.name;
    }
    EXPECT_EQ(seen.size(), declared.size());
}

TEST(FormsTest, AcceleratorsOfAFormAreUniqueInEveryLanguage) {
    for (const std::string_view language : availableLanguages()) {
        ASSERT_TRUE(setLanguage(language));
        for (const FormSource& source : formSources()) {
            std::map<char, std::string> taken;
            const Result<Form> form = readForm(source.name, source.document);
            for (const FormControl& control : form.value().controls) {
                const char accelerator = acceleratorOf(control.state.text);
                if (accelerator != '\0') {
                    const auto [place, isNew] = taken.emplace(accelerator, control.name);
                    EXPECT_TRUE(isNew) << language << " " << source.name << ": " << control.name << " and "
                                       << place->second << " share " << accelerator;
                }
            }
        }
    }
    setLanguage("en");
}

TEST(FormsTest, RefusesAFaultyFormWithItsPlace) {
    const std::string good = widget("QLineEdit", identifier("0x2000001"));
    const struct {
        std::string document;
        std::string error;
    } cases[] = {
        {"<ui", "f.ui: "},
        {"<ui><widget class=\"QDialog\"/></ui>", "f.ui: the form has no identifier"},
        {document(widget("QLineEdit", "")), "f.ui: w: no identifier in \"\""},
        {document(widget("QLineEdit", identifier("2000001"))), "f.ui: w: no identifier in \"2000001\""},
        {document(good + good), "f.ui: w: the identifier 0x2000001 is there twice"},
        {document(widget("QLabel", identifier("0x2000001") +
                                       "<property name=\"text\"><string>@0x2FFFFFF</string></property>")),
         "f.ui: w: unknown message @0x2FFFFFF"},
    };
    EXPECT_TRUE(readForm("f", document(good)).isGood());
    for (const auto& each : cases) {
        const Result<Form> form = readForm("f", each.document);
        ASSERT_FALSE(form.isGood()) << each.document;
        EXPECT_TRUE(form.error().text.starts_with(each.error)) << form.error().text;
    }
}

TEST(FormsTest, AnUnknownControlOrAWrongClassIsAnInternalError) {
    InternalErrorLog::GetGlobal().clear();
    SV::Window window(nullptr, SV::ResId(0x2010020));
    const SV::Edit edit(&window, SV::ResId(0x2000002));
    EXPECT_TRUE(InternalErrorLog::GetGlobal().getErrors().empty());
    const SV::Edit unknown(&window, SV::ResId(0x2000099));
    const SV::Edit label(&window, SV::ResId(0x2000001));
    EXPECT_EQ(InternalErrorLog::GetGlobal().getErrors().size(), 2U);
    const SV::Window noForm(nullptr, SV::ResId(0x2000001));
    EXPECT_EQ(InternalErrorLog::GetGlobal().getErrors().size(), 3U);
    InternalErrorLog::GetGlobal().clear();
}

}  // namespace

}  // namespace mero
