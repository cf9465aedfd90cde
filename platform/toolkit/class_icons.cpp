#include "component/host/class_icons.h"

#include <map>
#include <string_view>

namespace {

/// Looks of the standard library: the class of a BPMN element by its kind.
class StandardLooks : public MeroGrObjAttrHandler {
public:
    const MeroGrPattern* FindPattern(bool, bool withDefault, const SV::String& className) override {
        static const std::map<std::string_view, MeroGrPattern> patterns = makePatterns();
        const auto place = patterns.find(className.view());
        if (!className.IsEmpty() && place != patterns.end()) {
            return &place->second;
        }
        return withDefault && !className.IsEmpty() ? &patterns.at(OtherClasses) : nullptr;
    }

private:
    static constexpr std::string_view OtherClasses{};

    static std::map<std::string_view, MeroGrPattern> makePatterns() {
        const std::pair<std::string_view, const char*> names[] = {
            {OtherClasses, "class"},
            {"Task", "activity"},
            {"Activity", "activity"},
            {"Call activity", "process"},
            {"Sub-process", "process"},
            {"Exclusive gateway", "gateway"},
            {"Inclusive gateway", "gateway"},
            {"Parallel gateway", "gateway"},
            {"Event-based gateway", "gateway"},
            {"Start event", "event"},
            {"Intermediate event", "event"},
            {"End event", "event"},
            {"Worker", "worker"},
            {"Role", "environment"},
            {"Organisational unit", "environment"},
            {"Resource", "resource"},
        };
        std::map<std::string_view, MeroGrPattern> patterns;
        for (const auto& [className, iconName] : names) {
            patterns.emplace(className, MeroGrPattern(SV::Image(SV::String(iconName))));
        }
        return patterns;
    }
};

}  // namespace

MeroGrObjAttrHandler* MeroGrObjAttrHandler::GetGlobal() {
    static StandardLooks looks;
    return &looks;
}
