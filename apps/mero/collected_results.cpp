#include "apps/mero/collected_results.h"

#include <fmt/format.h>

#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/display/agent_result_windows.h"
#include "component/management/general_services.h"

namespace mero {

namespace {

MeroResultRequest requestOf(const RunOptions& options, double scale) {
    MeroResultRequest request;
    request.scaled = options.scaled.has_value();
    request.frequency = options.scaled.value_or(0);
    request.frequencyPeriod = SV::String(options.period);
    request.scale = scale;
    return request;
}

TextTable::Row rowOf(const MeroAgentBrowserObjects& objects, int number) {
    TextTable::Row row;
    row.depth = static_cast<std::size_t>(objects.getRowDepth(number));
    row.label = objects.getField(number, 0).view();
    for (int column = 1; column <= objects.getNumberOfColumns(); ++column) {
        row.cells.emplace_back(objects.getField(number, column).view());
    }
    return row;
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

void ResultCollector::collect(MeroSuperAgent& agent) {
    ResultOfAgent document{
        nameOf(agent.getInstanceId()), modelOf(agent.getInstanceId()), agent.isStarted() ? 1 : 0, 1.0, {}};
    const bool isPrepared = agent.isRunPrepared();
    bool isScaled = true;
    if (isPrepared && options.scaled.has_value()) {
        isScaled = agent.computeScale(SV::String(options.scope), *options.scaled, SV::String(options.period),
                                      document.scale) == StatusOk;
    }
    const MeroResultRequest request = requestOf(options, document.scale);
    std::vector<MeroAgentResultSet*> shownSets;
    for (const auto& subAgent : agent.getSubAgents()) {
        MeroAgentResultSet* const set = isPrepared && isScaled ? subAgent->getResultSet(request) : nullptr;
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
                shownSets.push_back(set);
            }
        }
        document.subAgents.push_back(std::move(written));
    }
    if (options.format == ResultFormat::Table && !shownSets.empty()) {
        addTable(agent, shownSets, document);
    }
    documents.push_back(std::move(document));
}

void ResultCollector::addTable(MeroSuperAgent& agent, const std::vector<MeroAgentResultSet*>& sets,
                               const ResultOfAgent& document) {
    MeroAgentResultWindows windows(agent);
    MeroResultOptions display = windows.getOptions();
    display.sumChecked = options.sum;
    display.extremeChecked = options.extremes;
    windows.setOptions(display);
    MeroAgentBrowserObjects objects;
    bool isEmpty = true;
    if (!windows.fillBrowser(objects, options.displayKind(), isEmpty, sets, document.scale) || isEmpty) {
        return;
    }
    TextTable table;
    table.headers = {document.name.text + " (" + document.model + ")",
                     fmt::format("analysis: {}   scale: {}", options.analysisName(), document.scale)};
    table.labelTitle = "Object";
    for (int column = 1; column <= objects.getNumberOfColumns(); ++column) {
        table.columns.emplace_back(objects.getColumnTitle(column).view());
    }
    const int summaryRows =
        (options.sum || options.extremes ? 1 : 0) + (options.sum ? 1 : 0) + (options.extremes ? 2 : 0);
    const int valueRows = objects.getNumberOfRows() - summaryRows;
    for (int row = 0; row < valueRows; ++row) {
        table.rows.push_back(rowOf(objects, row));
    }
    for (int row = valueRows + 1; row < objects.getNumberOfRows(); ++row) {
        table.summary.push_back(rowOf(objects, row));
    }
    shownTables.push_back(std::move(table));
}

}  // namespace mero
