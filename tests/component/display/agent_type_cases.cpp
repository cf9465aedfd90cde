#include "component/host/resource_ids.h"
#include "component/host/sv_edits.h"

#include "component/agents/agent_types.h"
#include "component/display/agent_type_box.h"
#include "component/management/agent_management.h"
#include "tests/component/display/selection_cases.h"
#include "tests/component/support/dialog_run.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/failing_repository.h"

namespace mero::test {

namespace {

namespace Form = MeroAgentsInModelsForm;

constexpr const char* Models = R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Order", "type": "Business process", "objects": [ { "name": "Check", "class": "Task" } ] },
  { "name": "Staff", "type": "Working environment", "objects": [ { "name": "Ann", "class": "Worker" } ] },
  { "name": "Map", "type": "Company map" } ] })";

/// A library with other predefined agents.
class OtherTemplates : public FailingRepository {
public:
    explicit OtherTemplates(std::string libraryText)
        : FailingRepository(NoCall), text(std::move(libraryText)) {}
    using FailingRepository::getAttributeValue;
    int getAttributeValue(MeroId instanceId, MeroId attributeId, const char*& value, bool resolved) override {
        if (attributeId == Mero_GetCoreVar(CorePredefinedAgents)) {
            value = text.c_str();
            return RepositoryOk;
        }
        return FailingRepository::getAttributeValue(instanceId, attributeId, value, resolved);
    }

private:
    std::string text;
};

struct TypePanel : SV::ModalDialog {
    explicit TypePanel(int analysis)
        : SV::ModalDialog(nullptr, Form::Form), box(this, Form::TypeBox, analysis) {
        box.setInfoWindow(&info);
        box.SetSelectHdl([this] { box.showTemplateInfo(); });
    }
    SV::MultiLineEdit info{this, Form::InfoEdit};
    MeroAgentTypeBox box;
};

std::string offers(const MeroAgentTypeBox& box) {
    std::string text = box.IsEnabled() ? "" : "disabled";
    for (const MeroId entry : box.GetEntriesInOrder()) {
        text += (text.empty() ? "" : ",") + std::string(box.GetEntryText(entry).GetStr()) +
                (box.IsSelected(entry) ? "*" : "");
    }
    return text + "\n";
}

constexpr const char* OddTemplates =
    "AGENT \"Any\" FREQUENCY name:\"f\" resultscope:process absolute OBSERVED \"x\"\n"
    "AGENT \"Gap\" allowed-modeltype-1:\"Business process\" allowed-modeltype-3:\"Working environment\""
    " STRAIN name:\"s\" resultscope:process class:\"Worker\"\n"
    "AGENT \"Path\" path-analysis STRAIN name:\"s\" resultscope:process class:\"Worker\"\n"
    "AGENT \"Capacity\" capacity-analysis STRAIN name:\"s\" resultscope:process class:\"Worker\"\n"
    "AGENT \"Nothing\"\n"
    "AGENT \"Elsewhere\" allowed-modeltype-1:\"Moon\"\n";

std::string offersByModel(UserDriver& user) {
    const EmbeddedPlatform platform(Models);
    const OtherTemplates library(OddTemplates);
    MeroAgentManagement management;
    std::string notes;
    for (const int analysis : {AnalysisNone, AnalysisPath, AnalysisVolume}) {
        TypePanel panel(analysis);
        user.show(panel);
        for (const char* const model : {"Order", "Staff", "Map"}) {
            panel.box.updateForModel(platform.model(model));
            notes += offers(panel.box);
        }
    }
    return notes;
}

std::string choiceAndInfo(UserDriver& user) {
    const EmbeddedPlatform platform(Models);
    const OtherTemplates library(
        "AGENT \"One\" infotext:\"About one.\" FREQUENCY name:\"Shown\" resultscope:process absolute\n"
        "STRAIN name:\"Not shown\" dont-show-result resultscope:process class:\"Worker\"\n"
        "FORMULA name:\"Sum\" expression:\"1\" OBSERVED \"Shown\"\nAGENT \"Two\" STRAIN name:\"S\" "
        "resultscope:process");
    MeroAgentManagement management;
    TypePanel panel(AnalysisPath);
    user.show(panel);
    std::string notes;
    panel.box.updateForModel(platform.model("Order"));
    for (const MeroId entry : {panel.box.GetChild(MeroNoTreeEntry, 2), panel.box.GetChild(MeroNoTreeEntry, 1),
                               panel.box.GetChild(MeroNoTreeEntry, 0)}) {
        user.select(panel.box, {entry});
        notes += std::string(panel.info.GetText().GetStr()) + "|";
    }
    // The entry stays where it is offered.
    user.select(panel.box, {panel.box.GetChild(MeroNoTreeEntry, 2)});
    panel.box.updateForModel(platform.model("Staff"));
    notes += "\n" + offers(panel.box);
    panel.box.updateForModel(platform.model("Order"));
    user.select(panel.box, {0});
    panel.box.updateForModel(platform.model("Staff"));
    return notes + offers(panel.box);
}

std::string creation(UserDriver& user) {
    const EmbeddedPlatform platform(Models);
    const OtherTemplates library(
        "AGENT \"One\" objects:\"{\\\"Check\\\":\\\"Task\\\" }\" FREQUENCY name:\"F\" resultscope:process "
        "absolute\n"
        "AGENT \"Wrong\" calendar:\"CALENDER\" FREQUENCY name:\"F\" resultscope:process absolute\n");
    MeroAgentManagement management;
    const AnsweredBoxes boxes;
    TypePanel panel(AnalysisPath);
    user.show(panel);
    std::string notes;
    MeroId made = MeroNoId;
    notes += std::to_string(panel.box.createSuperAgentFromSelection(platform.model("Order"), made));
    panel.box.updateForModel(platform.model("Order"));
    for (const MeroId entry : panel.box.GetEntriesInOrder()) {
        user.select(panel.box, {entry});
        notes +=
            "\n" + std::to_string(panel.box.createSuperAgentFromSelection(platform.model("Order"), made));
        MeroSuperAgent* agent = nullptr;
        SV::String text;
        if (management.getAgentFromID(agent, made, 0) == StatusOk) {
            notes += std::string(" ") + platform.textOf(made, "Definition") + "|" +
                     platform.textOf(made, "Objects") + "|" + platform.textOf(made, "Info text");
        }
    }
    return notes + " " + AnsweredBoxes::messages();
}

std::string wrongLibrary(UserDriver& user) {
    const EmbeddedPlatform platform(Models);
    const OtherTemplates library("AGENT \"One\n");
    MeroAgentManagement management;
    const AnsweredBoxes boxes;
    TypePanel panel(AnalysisPath);
    user.show(panel);
    panel.box.updateForModel(platform.model("Order"));
    return offers(panel.box) + std::to_string(SV::BoxDesk::GetGlobal().getRecords().size());
}

}  // namespace

std::vector<ToolkitCase> agentTypeCases() {
    const std::string head = "AGENT\npath-analysis\nvolume-analysis\nwlstatic-analysis\nwlnonstatic-analysis";
    return {
        {"OffersSuitModelAndAnalysis", offersByModel,
         "Empty agent*,Any,Nothing,Gap\nEmpty agent*,Nothing\ndisabled\n"
         "Empty agent*,Any,Path,Nothing,Gap\nEmpty agent*,Path,Nothing\ndisabled\n"
         "Empty agent*,Any,Capacity,Nothing,Gap\nEmpty agent*,Capacity,Nothing\ndisabled\n"},
        {"SelectionIsToldAndKept", choiceAndInfo,
         "Measures of the agent:\n* S\n|About one.\n\nMeasures of the agent:\n* Shown\n* Sum\n|Agent without "
         "measures|\nEmpty agent,Two*\nEmpty agent*,Two\n"},
        {"AgentsAreMadeOfTheSelectedEntry", creation,
         "0\n1 " + head + "||\n1 " + head +
             "\nFREQUENCY\n name:\"F\"\n path-analysis\n volume-analysis\n wlstatic-analysis\n "
             "wlnonstatic-analysis\n resultscope:process\n absolute|{\"Check\":\"Task\" }|What this agent "
             "measures and why.\n0 2004E2A"},
        {"ALibraryTextThatIsNotGoodGivesTheEmptyAgentAlone", wrongLibrary, "Empty agent*\n1"},
    };
}

}  // namespace mero::test
