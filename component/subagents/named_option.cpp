#include "component/subagents/named_option.h"

#include "component/agents/keyword_flags.h"
#include "component/management/general_services.h"
#include "component/management/message_text.h"
#include "component/management/repository_call.h"

namespace {

constexpr SV::ResId UnknownName{0x2005173};

int refuseName(const SV::String& agentName, const SV::String& unknown) {
    showErrorBox(fillMessage(UnknownName, {{"%s1", agentName}, {"%s2", unknown}}));
    return StatusRepositoryError;
}

}  // namespace

void MeroNamedOption::setDefaultValues() {
    id = MeroNoId;
    visible = true;
    editable = true;
}

void MeroNamedOption::readFlags(const MeroKilnParser& parser) {
    visible = !parser.IsContained(SV::String("hide-") + keyword);
    editable = !parser.IsContained(SV::String("lock-") + keyword);
}

void MeroNamedOption::appendFlags(SV::String& text) const {
    if (!visible) {
        text += SV::String(MeroSectionLineStart) + "hide-" + keyword;
    }
    if (!editable) {
        text += SV::String(MeroSectionLineStart) + "lock-" + keyword;
    }
}

int MeroNamedOption::readClass(const MeroKilnParser& parser, const SV::String& agentName,
                               MeroCoreVarConstType library) {
    id = MeroNoId;
    if (!isNamed(parser)) {
        return StatusOk;
    }
    const SV::String name = parser.GetStrValue(keyword);
    const bool known = repositoryDoes([&](auto& repository) {
        return repository.enhanced().getClassIDFromClassName(Mero_GetCoreVarConst(library), name, id);
    });
    if (!known) {
        id = MeroNoId;
    }
    return known ? StatusOk : refuseName(agentName, name);
}

int MeroNamedOption::readAttribute(const MeroKilnParser& parser, const SV::String& agentName,
                                   MeroId classId) {
    id = MeroNoId;
    if (!isNamed(parser)) {
        return StatusOk;
    }
    const SV::String name = parser.GetStrValue(keyword);
    const bool known = repositoryDoes([&](auto& repository) {
        return repository.enhanced().getAttributeIDFromAttributeName(classId, name, id);
    });
    if (!known) {
        id = MeroNoId;
    }
    return known ? StatusOk : refuseName(agentName, name);
}

SV::String MeroNamedOption::className() const {
    SV::String name;
    if (id != MeroNoId && getAttributeText(id, name, ClassCodeName) != StatusOk) {
        name = {};
    }
    return name;
}

SV::String MeroNamedOption::attributeName() const {
    SV::String name;
    if (id != MeroNoId && getAttributeNameText(id, name) != StatusOk) {
        name = {};
    }
    return name;
}

void MeroNamedOption::appendName(SV::String& text, const SV::String& name) const {
    if (!name.IsEmpty()) {
        text +=
            SV::String(MeroSectionLineStart) + keyword + ":" + MeroKilnParser::GetKilnTextOfStrValue(name);
    }
}

void MeroNamedOption::appendClass(SV::String& text) const {
    appendName(text, className());
}
void MeroNamedOption::appendAttribute(SV::String& text) const {
    appendName(text, attributeName());
}

bool MeroNamedOption::isEqualClass(const MeroKilnParser& parser) const {
    return parser.GetStrValue(keyword) == className();
}

bool MeroNamedOption::isEqualAttribute(const MeroKilnParser& parser) const {
    return parser.GetStrValue(keyword) == attributeName();
}
