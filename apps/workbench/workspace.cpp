#include "apps/workbench/workspace.h"

#include <utility>

#include "component/host/core_variables.h"
#include "component/host/kiln_parser.h"

#include "apps/mero/file_import.h"
#include "apps/workbench/workbench_messages.h"
#include "component/agents/super_agent.h"
#include "component/display/agent_type_box.h"

namespace mero {

namespace {

/// The box of the component that offers predefined agents, as a state without a display.
class TemplateBox {
public:
    TemplateBox(MeroId model, int analysis) : box(&owner, SV::ResId{}, analysis) {
        box.setInfoWindow(&info);
        box.updateForModel(model);
    }

    SV::Window owner;
    SV::Window info;
    MeroAgentTypeBox box;
};

constexpr SV::ResId DefaultCalendar{0x20051A6};
constexpr auto MeasuredObjects = R"(all "Activity" + all "Call")";

std::string quoted(SV::ResId message) {
    return "\"" + std::string(SV::String(message).view()) + "\"";
}

/// Default names come in the user's language.
std::string measuresDefinition() {
    return "AGENT\nFREQUENCY name:" + quoted(WorkbenchText::MeasureFrequency) +
           " resultscope:mainobjects relative history-mem\nCYCLETIME name:" +
           quoted(WorkbenchText::MeasureCycleTime) +
           " resultscope:mainobjects history-mem\nAVGSUM name:" + quoted(WorkbenchText::MeasureCosts) +
           " resultscope:mainobjects class:\"Activity\" attribute:\"Costs\" attribute-type:numeric";
}

}  // namespace

Workspace::Workspace(std::string openPath, std::unique_ptr<RepositoryFile> openFile)
    : filePath(std::move(openPath)), file(std::move(openFile)), services(file->repository()) {}

std::vector<Workspace::ModelEntry> Workspace::models() {
    Repository& content = repository();
    std::vector<ModelEntry> entries;
    for (const MeroId id : content.modelIds()) {
        const Model& model = *content.findModel(id);
        ModelEntry entry{id, std::string(model.name.view()), false, {}};
        entry.isProcess = content.library().modelTypes()[model.type].classId == ClassCodeProcessModel;
        // Reading an agent may rewrite its texts.
        for (const MeroId object : std::vector<MeroId>(model.objects)) {
            const Library::Class* const kind =
                content.library().findClass(content.findObject(object)->classId);
            if (kind == nullptr || !kind->agent) {
                continue;
            }
            AgentEntry agent{object, nameOf(object), AgentState::Invalid};
            MeroSuperAgent* found = nullptr;
            constexpr int Create = 1;
            constexpr int EmptyListRefused = 0;
            int parts[3] = {};
            if (agents.getAgentFromID(found, object, Create) == StatusOk && found != nullptr &&
                found->checkAgent(parts[0], parts[1], parts[2], EmptyListRefused) == StatusOk) {
                agent.state = found->getActivation() != 0 ? AgentState::Active : AgentState::Inactive;
            }
            entry.agents.push_back(std::move(agent));
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::string Workspace::nameOf(MeroId id) {
    if (const Model* const model = repository().findModel(id)) {
        return std::string(model->name.view());
    }
    const Object* const object = repository().findObject(id);
    return object != nullptr ? std::string(object->name.view()) : std::string();
}

Result<ImportReport> Workspace::import(const std::string& name,
                                       const std::vector<std::string>& parameterFiles) {
    Result<ImportReport> report = importFile(name, parameterFiles, repository());
    if (report) {
        if (const Result<void> saved = file->save(); !saved) {
            return saved.error();
        }
    }
    return report;
}

Result<MeroId> Workspace::addMeasures(MeroId model) {
    MeroKilnParser definition(SV::String(measuresDefinition()), SV::String("definition"), SV::String());
    definition.Parse();
    const Library& library = repository().library();
    MeroId agentClass = MeroNoId;
    for (const MeroId candidate : library.subClassesOf(library.coreVariable(CoreProcessAgentBase))) {
        agentClass = library.findClass(candidate)->abstract ? agentClass : candidate;
    }
    MeroId agent = MeroNoId;
    constexpr int NoDialog = 0;
    const int status = agents.createSuperAgent(
        model, agentClass, agent, SV::String(MeasuredObjects), &definition, SV::String(DefaultCalendar),
        SV::String(WorkbenchText::MeasuresInfo), nullptr, NoDialog, SV::String());
    MeroSuperAgent* made = nullptr;
    if (status != StatusOk || agents.getAgentFromID(made, agent, 0) != StatusOk) {
        return Error{std::string(SV::String(WorkbenchText::AgentNotMade).view())};
    }
    // The name is a wish: a model may have such an agent already.
    static_cast<void>(made->setName(SV::String(WorkbenchText::MeasuresName)));
    if (const Result<void> saved = file->save(); !saved) {
        return saved.error();
    }
    return agent;
}

std::vector<Workspace::AgentTemplate> Workspace::templatesFor(MeroId model, int analysis) const {
    TemplateBox offer(model, analysis);
    std::vector<AgentTemplate> templates;
    for (const MeroId entry : offer.box.GetEntriesInOrder()) {
        offer.box.SelectEntry(entry);
        offer.box.showTemplateInfo();
        templates.push_back({entry, std::string(offer.box.GetEntryText(entry).view()),
                             std::string(offer.info.GetText().view())});
    }
    return templates;
}

Result<MeroId> Workspace::addAgent(MeroId model, int analysis, MeroId agentTemplate) {
    TemplateBox offer(model, analysis);
    MeroId agent = MeroNoId;
    if (!offer.box.SelectEntry(agentTemplate) ||
        offer.box.createSuperAgentFromSelection(model, agent) != StatusOk) {
        return Error{std::string(SV::String(WorkbenchText::AgentNotMade).view())};
    }
    if (const Result<void> saved = file->save(); !saved) {
        return saved.error();
    }
    return agent;
}

Result<void> Workspace::setActive(MeroId agent, bool isActive) {
    const int wanted = isActive ? 1 : 0;
    if (agents.setActivationOfAgent(agent, wanted) != StatusOk) {
        return Error{std::string(SV::String(WorkbenchText::AgentNotChanged).view())};
    }
    return file->save();
}

}  // namespace mero
