#include "apps/mero/collected_results.h"

#include <algorithm>

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/display/agent_result_windows.h"
#include "component/management/general_services.h"

namespace mero {

namespace {

constexpr SV::ResId MessageNoGroup(0x20051AC);

MeroResultRequest requestOf(const RunOptions& options, double scale) {
    MeroResultRequest request;
    request.scaled = options.scaled.has_value();
    request.frequency = options.scaled.value_or(0);
    request.frequencyPeriod = SV::String(options.period);
    request.scale = scale;
    return request;
}

/// A label as tables show it stands behind the row's number and a blank.
std::string withoutNumber(std::string_view field) {
    return std::string(field.substr(std::min(field.find(' ') + 1, field.size())));
}

/// Kinds of the rows below the separator, in their order.
std::vector<ResultTable::RowKind> summaryKinds(const RunOptions& options) {
    std::vector<ResultTable::RowKind> kinds;
    if (options.sum) {
        kinds.push_back(ResultTable::RowKind::Sum);
    }
    if (options.extremes) {
        kinds.push_back(ResultTable::RowKind::Minimum);
        kinds.push_back(ResultTable::RowKind::Maximum);
    }
    return kinds;
}

}  // namespace

ResultName ResultCollector::nameOf(MeroId id) const {
    std::string text;
    if (const Model* const model = repository.findModel(id)) {
        text = model->name.view();
    } else if (const Object* const object = repository.findObject(id)) {
        text = object->name.view();
    }
    return {text.empty() ? "#" + std::to_string(id) : text, id};
}

std::string ResultCollector::modelOf(MeroId id) const {
    const Object* const object = repository.findObject(id);
    const Model* const model = object != nullptr ? repository.findModel(object->modelId) : nullptr;
    return model != nullptr ? std::string(model->name.view()) : std::string();
}

std::string ResultCollector::classOf(MeroId id) const {
    const Object* const object = repository.findObject(id);
    const Library::Class* const found =
        object != nullptr ? repository.library().findClass(object->classId) : nullptr;
    return found != nullptr ? std::string(found->name) : std::string();
}

ResultSetDocument ResultCollector::write(MeroAgentResultSet& set) const {
    ResultSetDocument document;
    document.resultKind = set.getResultKind();
    document.valueType = set.getValueType();
    document.mode = set.getMode();
    for (const MeroDoubleResult* const result : set.getAllResults()) {
        ResultOfObject object{nameOf(result->getObjectId()), modelOf(result->getObjectId()), {}};
        for (const auto& item : result->getItems()) {
            ResultItem written{{}, item->getValue(), item->getDivisor()};
            for (const MeroId id : item->getPath()) {
                written.path.push_back(nameOf(id));
            }
            object.items.push_back(std::move(written));
        }
        document.results.push_back(std::move(object));
    }
    if (MeroSequenceResult* const history = set.getHistory(true)) {
        auto& readings = document.history.emplace();
        MeroSequenceEntry entry;
        while (history->getNext(entry)) {
            readings.push_back({nameOf(entry.objectId).text, entry.time, entry.value});
        }
    }
    return document;
}

std::vector<ResultCollector::ShownSet> ResultCollector::fetchSets(MeroSuperAgent& agent,
                                                                  ResultOfAgent& document,
                                                                  Grouping& grouping) const {
    bool isFetched = agent.isRunPrepared();
    if (isFetched && options.scaled.has_value()) {
        isFetched = agent.computeScale(SV::String(options.scope), *options.scaled, SV::String(options.period),
                                       document.scale) == StatusOk;
    }
    const MeroResultRequest request = requestOf(options, document.scale);
    std::vector<ShownSet> shownSets;
    for (const auto& subAgent : agent.getSubAgents()) {
        MeroAgentResultSet* const set = isFetched ? fetch(*subAgent, request, grouping) : nullptr;
        SV::String name;
        subAgent->getName(name);
        ResultOfSubAgent written{std::string(name.view()),
                                 std::string(getKeywordOfType(subAgent->getAgentType()).view()),
                                 subAgent->getAgentState(),
                                 subAgent->getFinishedProcesses(),
                                 {}};
        if (set != nullptr) {
            written.resultSet = write(*set);
            if (set->isShown(request.scaled)) {
                shownSets.push_back({set, written.name, written.type, document.subAgents.size()});
            }
        }
        document.subAgents.push_back(std::move(written));
    }
    return shownSets;
}

MeroAgentResultSet* ResultCollector::fetch(MeroAtomarAgent& subAgent, const MeroResultRequest& request,
                                           Grouping& grouping) const {
    if (grouping == Grouping::NotWanted) {
        return subAgent.getResultSet(request);
    }
    int status = StatusRefused;
    MeroAgentResultSet* const set = subAgent.getLimitedResultSet(
        SV::String(options.groupClass), SV::String(options.groupRelation), status, request);
    if (status == StatusOk) {
        grouping = Grouping::Formed;
    }
    return set;
}

void ResultCollector::collect(MeroSuperAgent& agent) {
    ResultOfAgent document{
        nameOf(agent.getInstanceId()), modelOf(agent.getInstanceId()), agent.isStarted() ? 1 : 0, 1.0, {}};
    const bool isGroupWanted = !options.groupClass.empty() && agent.canLimitByRelation();
    Grouping grouping = isGroupWanted ? Grouping::Missing : Grouping::NotWanted;
    const std::vector<ShownSet> shownSets = fetchSets(agent, document, grouping);
    if (!shownSets.empty()) {
        if (grouping == Grouping::Missing) {
            showInfoBox(SV::String(MessageNoGroup) +
                        SV::String(" Agent: " + document.name.text + " (" + document.model + ")"));
        }
        if (options.needsTables()) {
            addTable(agent, shownSets, document, grouping == Grouping::Formed);
        }
    }
    documents.push_back(std::move(document));
}

void ResultCollector::addTable(MeroSuperAgent& agent, const std::vector<ShownSet>& sets,
                               const ResultOfAgent& document, bool isGrouped) {
    MeroAgentResultWindows windows(agent);
    MeroResultOptions display = windows.getOptions();
    display.sumChecked = options.sum;
    display.extremeChecked = options.extremes;
    windows.setOptions(display);
    ResultTable table{document.name, document.model, document.scale, isGrouped, {}, {}};
    std::vector<MeroAgentResultSet*> columns;
    for (const ShownSet& shown : sets) {
        if (!shown.set->hasObjectResults(false)) {
            continue;
        }
        columns.push_back(shown.set);
        table.columns.push_back(
            {.measure = shown.measure,
             .type = shown.type,
             .position = shown.position,
             .unit = shown.set->getResultKind() == ResultKindTime ? ResultUnit::Seconds : ResultUnit::Number,
             .scale = shown.set->isSingleValue() ? document.scale : 1.0});
    }
    MeroAgentBrowserObjects objects;
    bool isEmpty = true;
    if (!windows.fillBrowser(objects, options.displayKind(), isEmpty, columns, document.scale) || isEmpty) {
        return;
    }
    const std::vector<ResultTable::RowKind> summary = summaryKinds(options);
    const int separators = summary.empty() ? 0 : 1;
    const int objectRows = objects.getNumberOfRows() - static_cast<int>(summary.size()) - separators;
    for (int number = 0; number < objectRows; ++number) {
        table.rows.push_back(rowOf(objects, number, ResultTable::RowKind::Object));
    }
    int number = objectRows + separators;
    for (const ResultTable::RowKind kind : summary) {
        table.rows.push_back(rowOf(objects, number++, kind));
    }
    shownTables.push_back(std::move(table));
}

ResultTable::Row ResultCollector::rowOf(const MeroAgentBrowserObjects& objects, int number,
                                        ResultTable::RowKind kind) const {
    ResultTable::Row row;
    row.kind = kind;
    row.label = objects.getField(number, 0).view();
    if (kind == ResultTable::RowKind::Object) {
        const MeroId object = objects.getObjectOfRow(number);
        row.depth = static_cast<std::size_t>(objects.getRowDepth(number));
        row.object = nameOf(object);
        row.objectModel = modelOf(object);
        row.objectClass = classOf(object);
        row.label = withoutNumber(row.label);
    }
    for (int column = 1; column <= objects.getNumberOfColumns(); ++column) {
        row.cells.push_back(objects.getNumber(number, column).value_or(ResultTable::NoValue));
    }
    return row;
}

}  // namespace mero
