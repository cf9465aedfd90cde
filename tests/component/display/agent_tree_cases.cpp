#include "component/host/host_dialogs.h"
#include "component/host/resource_ids.h"

#include "component/agents/agent_types.h"
#include "component/display/agent_tree_list_box.h"
#include "component/management/agent_management.h"
#include "tests/component/display/selection_cases.h"
#include "tests/component/support/dialog_run.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {

namespace {

namespace Form = MeroAgentsInModelsForm;

/// "Alpha" calls itself, "Beta" twice, "Gamma", which isn't loaded, and a model that is gone; "Beta" calls
/// "Alpha". Agents: "Count", "Rest", which is inactive, and "Bad", which has no good objects.
std::string callingModels() {
    const std::string inactive = "AGENT\ndeactivate\n" + frequencySection;
    return R"({"format":"mero-repository","version":1,"models":[
      {"name":"Alpha","type":"Business process","objects":[
         {"name":"Task 1","class":"Task"},
         {"name":"Again","class":"Call activity","attributes":{"Referenced model":"Alpha"}},
         {"name":"First","class":"Call activity","attributes":{"Referenced model":"Beta"}},
         {"name":"Part","class":"Sub-process","attributes":{"Referenced model":"Beta"}},
         {"name":"Later","class":"Call activity","attributes":{"Referenced model":"Gamma"}},
         {"name":"Lost","class":"Call activity"}],
       "agents":[)" +
           agentDocument("Count", "Process agent", "AGENT\n" + frequencySection, "{\"Task 1\":\"Task\" }") +
           "," + agentDocument("Rest", "Process agent", inactive, "{\"Task 1\":\"Task\" }") +
           R"(]},
      {"name":"Beta","type":"Business process","objects":[
         {"name":"Task 2","class":"Task"},
         {"name":"Back","class":"Call activity","attributes":{"Referenced model":"Alpha"}}],
       "agents":[)" +
           agentDocument("Bad", "Process agent", "AGENT\n" + frequencySection, "nothing good") +
           R"(]},
      {"name":"Gamma","type":"Business process","loaded":false},
      {"name":"Staff","type":"Working environment","objects":[{"name":"Ann","class":"Worker"}],
       "agents":[)" +
           agentDocument("Load", "Environment agent", "AGENT", "{\"Ann\":\"Worker\" }") + "]}]}";
}

struct TreePanel : SV::ModalDialog {
    explicit TreePanel(MeroAgentManagement& management) : SV::ModalDialog(nullptr, Form::Form) {
        tree.setManagement(management);
    }
    MeroAgentTreeListBox tree{this, Form::Tree, true};
};

class CallingModels {
public:
    CallingModels() {
        const char* const gone = "Nobody\nNowhere";
        auto& repository = MeroCoreModelingManager::GetGlobal()->enhanced();
        MeroId attribute = Mero_GetCoreVar(CoreReferencedModel);
        repository.setAttributeValue(platform.model("Alpha"), platform.object("Alpha", "Lost"), attribute,
                                     gone, false);
    }
    EmbeddedPlatform platform{callingModels()};
    MeroAgentManagement management;
    TreePanel panel{management};
    MeroAgentTreeListBox& tree = panel.tree;
};

const char* stateOf(const SV::Image& image) {
    switch (image.GetResource().value) {
        case 0x2005043:
            return "active";
        case 0x2005044:
            return "inactive";
        case 0x2005045:
            return "invalid";
        default:
            return image.GetName().GetStr();
    }
}

/// One line an entry, indented by its depth.
std::string outline(const MeroAgentTreeListBox& tree) {
    std::string text;
    for (const MeroId entry : tree.GetEntriesInOrder()) {
        for (MeroId above = tree.GetParentEntry(entry); above != MeroNoTreeEntry;
             above = tree.GetParentEntry(above)) {
            text += ' ';
        }
        text += std::string(tree.GetEntryText(entry).GetStr()) + " [" + stateOf(tree.GetEntryImage(entry)) +
                "]\n";
    }
    return text;
}

std::string allModels(UserDriver& user) {
    CallingModels use;
    user.show(use.panel);
    const ISortedSet<MeroId> models{use.platform.model("Alpha"), use.platform.model("Beta"),
                                    use.platform.model("Gamma")};
    std::string status;
    for (int time = 0; time < 2; ++time) {
        status += std::to_string(use.tree.insertModels(models, use.platform.model("Staff"), AnalysisPath));
    }
    return status + "\n" + outline(use.tree);
}

std::string agentsOneByOne(UserDriver& user) {
    CallingModels use;
    user.show(use.panel);
    const MeroId count = use.platform.agent("Alpha", "Count");
    const MeroId bad = use.platform.agent("Beta", "Bad");
    std::string notes = std::to_string(use.tree.insertModel(use.platform.model("Staff")));
    notes += std::to_string(use.tree.insertAgent(bad, MeroNoId));
    notes += std::to_string(use.tree.insertAgent(count, use.platform.model("Alpha")));
    notes += std::to_string(use.tree.insertAgent(count, MeroNoId));
    use.tree.setAgentImage(bad, AgentEntryInactive);
    notes += "\n" + outline(use.tree);
    notes += std::to_string(use.tree.removeAgent(bad)) + " ";
    notes += std::to_string(use.tree.removeAgent(bad)) + " ";
    notes += std::to_string(use.tree.isAgentEntry(use.tree.getEntryOfAgent(count)));
    notes += std::to_string(use.tree.isAgentEntry(use.tree.getEntryOfModel(use.platform.model("Staff"))));
    return notes;
}

std::string selections(UserDriver& user) {
    CallingModels use;
    user.show(use.panel);
    use.tree.insertModels({use.platform.model("Alpha")}, MeroNoId, AnalysisPath);
    const MeroId count = use.tree.getEntryOfAgent(use.platform.agent("Alpha", "Count"));
    const MeroId rest = use.tree.getEntryOfAgent(use.platform.agent("Alpha", "Rest"));
    const MeroId beta = use.tree.getEntryOfModel(use.platform.model("Beta"));
    MeroId reference = MeroNoTreeEntry;
    for (const MeroId entry : use.tree.GetEntriesInOrder()) {
        reference =
            use.tree.GetEntryText(entry).Search("(already") != SV::String::NotFound ? entry : reference;
    }
    std::string notes;
    for (const std::vector<MeroId>& chosen :
         {std::vector<MeroId>{count}, {count, rest}, {beta}, {count, beta}, {reference}}) {
        user.select(use.tree, chosen);
        const auto& tree = use.tree;
        notes += std::to_string(tree.isAgentSelected(true)) + std::to_string(tree.isAgentSelected(false)) +
                 std::to_string(tree.isModelSelected(true)) + std::to_string(tree.isModelSelected(false));
        const Model* model = use.platform.repository().findModel(tree.getModelOfSelection());
        notes += model != nullptr ? std::string(" ") + model->name.GetStr() + ", " : " none, ";
    }
    return notes;
}

std::string hiddenWord(UserDriver& user) {
    // The word is searched in the tree as well: all its beginnings have to find the one agent.
    const EmbeddedPlatform platform(sampleModels(agentDocument(
        "mirrorcabinet \"2\"", "Process agent", "AGENT\npath-analysis\n" + frequencySection, taskObjects)));
    MeroAgentManagement management;
    TreePanel panel(management);
    user.show(panel);
    panel.tree.insertModels({platform.model("Order")}, MeroNoId, AnalysisPath);
    const MeroId agent = panel.tree.getEntryOfAgent(platform.agent("Order", "mirrorcabinet \"2\""));
    std::string notes;
    const auto typeWord = [&](const char* word) {
        runNextDialog(
            [&](SV::ModalDialog& shown) {
                notes += std::string(shown.GetText().GetStr()) + ": " + textOf(shown, MeroViewForm::Text);
                user.close(shown);
            },
            [&] {
                for (const char* letter = word; *letter != '\0'; ++letter) {
                    user.key(panel.tree, *letter);
                }
            });
        notes += std::string("|");
    };
    user.select(panel.tree, {agent});
    user.key(panel.tree, 'x');  // whatever was typed before
    typeWord("mirrormirrorcabinet");
    typeWord("xmirrorcabinet");
    user.select(panel.tree, {agent, panel.tree.getEntryOfModel(platform.model("Order"))});
    notes += std::to_string(panel.tree.GetSelectionCount());
    return notes;
}

std::string hiddenWordOfTwo(UserDriver&) {
    // Without a search in between, so that both stay selected.
    CallingModels use;
    use.panel.Show();
    use.tree.insertModels({use.platform.model("Alpha")}, MeroNoId, AnalysisPath);
    const MeroId count = use.tree.getEntryOfAgent(use.platform.agent("Alpha", "Count"));
    const MeroId rest = use.tree.getEntryOfAgent(use.platform.agent("Alpha", "Rest"));
    int views = 0;
    runNextDialog([&](SV::ModalDialog&) { ++views; },
                  [&] {
                      for (const bool one : {false, true}) {
                          for (const char letter : std::string("mirrorcabinet")) {
                              use.tree.SetNoSelection();
                              use.tree.SelectEntry(count);
                              use.tree.SelectEntry(rest, !one);
                              use.tree.userKey({static_cast<char32_t>(letter)});
                          }
                          views *= 10;
                      }
                  });
    return std::to_string(views);
}

}  // namespace

std::vector<ToolkitCase> agentTreeCases() {
    return {
        {"ModelsStandOnceInFullAndEndCycles", allModels,
         "11\n"
         "Alpha [business-process-16.png]\n"
         " Count [active]\n"
         " Rest [inactive]\n"
         " Alpha (already listed) [business-process-16.png]\n"
         " Beta [business-process-16.png]\n"
         "  Bad [invalid]\n"
         "  Alpha (already listed) [business-process-16.png]\n"
         " Gamma (not loaded) [business-process-16.png]\n"
         " Lost: reference can't be read [selbox/unknow2.png]\n"
         "Gamma (not loaded) [business-process-16.png]\n"
         "Staff [working-environment-16.png]\n"
         " Load [active]\n"},
        {"AgentsBringTheirModels", agentsOneByOne,
         "1111\n"
         "Staff [working-environment-16.png]\n"
         "Beta [business-process-16.png]\n"
         " Alpha [business-process-16.png]\n"
         "  Alpha (already listed) [business-process-16.png]\n"
         "  Beta (already listed) [business-process-16.png]\n"
         "  Gamma (not loaded) [business-process-16.png]\n"
         "  Lost: reference can't be read [selbox/unknow2.png]\n"
         "  Count [active]\n"
         " Bad [inactive]\n"
         "1 35 10"},
        {"SelectionTellsAgentsFromModels", selections,
         "1100 Alpha, 0100 Alpha, 0011 Beta, 0101 Alpha, 0000 none, "},
        {"HiddenWordShowsAnAgentAsATemplate", hiddenWord,
         "|mirrorcabinet \"2\": AGENT \"mirrorcabinet \\\"2\\\"\"\n"
         "objects: \"{\\\"Check\\\":\\\"Task\\\" }\"\n"
         "calendar: \"CALENDAR\nDAILY hours:\\\"00:00-24:00\\\"\"\n"
         "infotext: \"\"\n"
         "path-analysis\n" +
             frequencySection + "|2"},
        {"HiddenWordNeedsOneAgent", hiddenWordOfTwo, "10"},
    };
}

}  // namespace mero::test
