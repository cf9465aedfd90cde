#include <gtest/gtest.h>
#include <set>

#include "component/host/resource_ids.h"
#include "component/host/sv_datetime.h"
#include "component/host/sv_dialog.h"

#include "component/agents/agent_types.h"
#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/display/agent_type_box.h"
#include "component/management/agent_management.h"
#include "component/management/general_services.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/recording_control.h"

namespace mero::test {

namespace {

namespace Form = MeroAgentsInModelsForm;

constexpr const char* Models = R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Order", "type": "Business process", "objects": [ { "name": "Check", "class": "Task" } ] },
  { "name": "Staff", "type": "Working environment", "objects": [
    { "name": "Ann", "class": "Worker" }, { "name": "Press", "class": "Equipment" } ] } ] })";

constexpr MeroAnalysis Analyses[] = {AnalysisPath, AnalysisVolume, AnalysisStaticWorkLoad,
                                     AnalysisNonStaticWorkLoad};

/// Makes all agents that are offered for the model; gives their names in the list.
std::vector<SV::String> makeAllOffered(int analysis, MeroId model) {
    SV::ModalDialog window(nullptr, Form::Form);
    MeroAgentTypeBox box(&window, Form::TypeBox, analysis);
    box.updateForModel(model);
    std::vector<SV::String> names;
    for (const MeroId entry : box.GetEntriesInOrder()) {
        box.SelectEntry(entry);
        MeroId made = MeroNoId;
        if (entry != box.GetEntriesInOrder().front()) {
            names.push_back(box.GetEntryText(entry));
            EXPECT_EQ(box.createSuperAgentFromSelection(model, made), StatusOk) << names.back().GetStr();
        }
    }
    return names;
}

MeroId timeOfActivity(const char* name) {
    MeroId attribute = MeroNoId;
    MeroCoreModelingManager::GetGlobal()->enhanced().getAttributeIDFromAttributeName(
        Mero_GetCoreVar(CoreActivity), name, attribute);
    return attribute;
}

TEST(PredefinedAgents, CanBeMadeAndMeasureInEachAnalysisTheyAreOfferedFor) {
    std::set<SV::String> everOffered;
    for (const MeroAnalysis analysis : Analyses) {
        const EmbeddedPlatform platform(Models);
        MeroAgentManagement management;
        for (const char* const model : {"Order", "Staff"}) {
            for (const SV::String& name : makeAllOffered(analysis, platform.model(model))) {
                EXPECT_TRUE(everOffered.insert(SV::String(model) + name).second || analysis != AnalysisPath)
                    << "two agents named " << name.GetStr();
            }
        }
        RecordingControl control;
        const SV::DateTime start(SV::Date(5, 1, 2026), SV::Time(8, 0));
        const ISequence<MeroId> times{timeOfActivity("Execution time"), timeOfActivity("Waiting time"),
                                      timeOfActivity("Resting time"), timeOfActivity("Transport time")};
        EXPECT_EQ(management.simStart(analysis, &control, times, {platform.model("Order")},
                                      platform.model("Staff"), &start, 365.0, 24.0),
                  StatusOk);
        for (const auto& agent : management.getSuperAgents()) {
            SV::String name;
            agent->getName(name);
            EXPECT_FALSE(agent->getSubAgents().empty()) << name.GetStr() << " in analysis " << analysis;
            for (const auto& measure : agent->getSubAgents()) {
                SV::String measureName;
                measure->getName(measureName);
                EXPECT_NE(measure->getAgentState(), AgentFailed)
                    << name.GetStr() << ": " << measureName.GetStr();
            }
        }
        EXPECT_EQ(management.simEnd(), StatusOk);
        EXPECT_EQ(EmbeddedPlatform::boxes(), std::vector<std::uint32_t>());
        EXPECT_EQ(EmbeddedPlatform::internalErrors(), std::vector<std::string>());
    }
    MeroKilnParser library(
        Library::standard().findAttribute(Mero_GetCoreVar(CorePredefinedAgents))->defaultText, "library",
        "attribute");
    ASSERT_EQ(library.Parse(), 0);
    std::size_t predefined = 0;
    for (int element = 0; library.SetCurElemIndex(element); ++element) {
        predefined += library.GetKeyword() == "AGENT" ? 1 : 0;
        EXPECT_TRUE(library.GetKeyword() == MeroObservedKeyword ||
                    isAgentKeyword(library.GetKeyword(), true));
    }
    EXPECT_EQ(everOffered.size(), predefined) << "each is offered for one kind of model";
}

}  // namespace

}  // namespace mero::test
