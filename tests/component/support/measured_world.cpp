#include "tests/component/support/measured_world.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <sstream>
#include <stdexcept>

#include "component/agents/super_agent.h"
#include "component/management/general_services.h"
#include "component/management/run_globals.h"
#include "platform/engine/trace_replay.h"
#include "platform/interchange/event_trace.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {

namespace {

std::string worldDocument(const MeasuredWorld::Setup& setup) {
    const std::string agent = agentDocument("M", setup.inEnvironment ? "Environment agent" : "Process agent",
                                            "AGENT\n" + setup.sections, setup.objects, setup.calendar);
    return R"({"format":"mero-repository","version":1,"models":[
      {"name":"Order","type":"Business process","objects":[
        {"name":"Check","class":"Task","attributes":{"Execution time":"00:000:01:00:00","Number":3}},
        {"name":"Pack","class":"Task","attributes":{"Execution time":"00:000:02:00:00","Number":5}},
        {"name":"Ship","class":"Call activity","attributes":{"Referenced model":"Shipping"}}],
       "agents":[)" +
           (setup.inEnvironment ? "" : agent) + R"(]},
      {"name":"Shipping","type":"Business process","objects":[
        {"name":"Load","class":"Task","attributes":{"Execution time":"00:000:00:30:00","Number":7}},
        {"name":"Again","class":"Call activity","attributes":{"Referenced model":"Shipping"}}]},
      {"name":"Staff","type":"Working environment","objects":[
        {"name":"Ann","class":"Worker","attributes":{"Availability":50,"Hourly wages":20,
                                        "Calendar":"CALENDAR\nDAILY hours:\"08:00-16:00\""}},
        {"name":"Bob","class":"Worker","attributes":{"Hourly wages":12.5,
                                        "Calendar":"CALENDAR\nDAILY hours:\"00:00-24:00\""}},
        {"name":"Zed","class":"Worker","attributes":{"Availability":0,"Hourly wages":10,
                                        "Calendar":"CALENDAR\nDAILY hours:\"00:00-24:00\""}},
        {"name":"Eve","class":"Worker","attributes":{"Calendar":"CALENDAR"}},
        {"name":"Van","class":"IT system","attributes":{"Hourly rate":8}}],
       "agents":[)" +
           (setup.inEnvironment ? agent : "") + "]}]}";
}

/// The test's columns as those of a recorded run. Event 1 tells its worker in a column of its own.
std::string traceOf(const std::string& lines) {
    std::string trace =
        "code,time,main_model,main_key,model,key,pass,object,executive,assigned,resource,called_model,"
        "called_key,calling_object\n";
    std::istringstream input(lines);
    for (std::string line; std::getline(input, line);) {
        std::array<std::string, 12> cells;
        std::istringstream words(line);
        for (std::string& cell : cells) {
            std::getline(words, cell, ',');
        }
        const auto& [code, time, mainKey, model, key, pass, object, worker, resource, calledModel, calledKey,
                     caller] = cells;
        const bool isAssignment = code == "1";
        trace += fmt::format("{},{},{},{},{},{},{},{},{},{},{},{},{},{}\n", code, time,
                             mainKey.empty() ? "" : "Order", mainKey, model, key, pass, object,
                             isAssignment ? "" : worker, isAssignment ? worker : "", resource, calledModel,
                             calledKey, caller);
    }
    return trace;
}

}  // namespace

std::string linesOf(const WorkedPass& pass) {
    std::string lines;
    const auto add = [&](int code, int time) {
        lines += fmt::format("{},{},{},{},{},{},{}\n", code, time, pass.place, pass.pass, pass.object,
                             pass.worker, pass.resource);
    };
    add(EventObjectReached, pass.from);
    if (!pass.resource.empty()) {
        add(EventResourceBound, pass.from);
    }
    add(EventExecutiveAssigned, pass.from);
    add(EventWorkStart, pass.from);
    add(EventWorkEnd, pass.to);
    if (!pass.resource.empty()) {
        add(EventResourceFreed, pass.to);
    }
    return lines;
}

MeasuredWorld::MeasuredWorld(const Setup& setup)
    : platform(worldDocument(setup)), agentId(platform.agent(setup.inEnvironment ? "Staff" : "Order", "M")) {
    const Library& library = Library::standard();
    const MeroId executionTime =
        library.findAttribute(library.coreVariable(CoreActivity), "Execution time")->id;
    const SV::DateTime start(SV::Date(5, 1, 2026), SV::Time(0, 0));
    const ISortedSet<MeroId> models{platform.model("Order"), platform.model("Shipping")};
    status = management.simStart(setup.analysis, &control, {executionTime, 0, 0, 0}, models,
                                 platform.model("Staff"), &start, 365.0, 24.0);
}

MeasuredWorld::~MeasuredWorld() {
    management.simEnd();
}

void MeasuredWorld::play(const std::string& lines) {
    std::istringstream input(traceOf(lines));
    const auto trace = readEventTrace(input, "trace", platform.repository(), platform.model("Staff"));
    if (!trace) {
        throw std::runtime_error(trace.error().text);
    }
    replayTrace(trace.value(), control);
}

MeroAtomarAgent& MeasuredWorld::subAgent(std::size_t index) const {
    MeroSuperAgent* superAgent = nullptr;
    gAgentManagement->getAgentFromID(superAgent, agentId, 1);
    if (superAgent == nullptr || index >= superAgent->getSubAgents().size()) {
        throw std::out_of_range("the agent has no such sub-agent: its start has failed");
    }
    return *superAgent->getSubAgents()[index];
}

std::map<std::string, double> MeasuredWorld::values(std::size_t index) const {
    std::map<std::string, double> byPath;
    MeroAgentResultSet* const set = subAgent(index).getResultSet(request);
    if (set == nullptr) {
        return byPath;
    }
    for (const MeroDoubleResult* const result : set->getResults(true)) {
        for (const auto& item : result->getItems()) {
            std::string path;
            for (const MeroId id : item->getPath()) {
                SV::String name;
                getAttributeText(id, name, ClassCodeInstanceName);
                path += (path.empty() ? "" : " / ") + std::string(name.view());
            }
            byPath[path] = item->getValue();
        }
    }
    return byPath;
}

}  // namespace mero::test
