#include <benchmark/benchmark.h>
#include <stdexcept>
#include <string>

#include "component/host/resource_ids.h"
#include "component/host/simulation.h"

#include "component/agents/agent_types.h"
#include "component/agents/super_agent.h"
#include "component/display/select_result_manager.h"
#include "component/management/agent_management.h"
#include "platform/engine/control_component.h"
#include "platform/interchange/repository_document.h"
#include "platform/repository/repository_services.h"
#include "platform/toolkit/qt/window_peer.h"

namespace {

constexpr int AgentsOfAModel = 50;

/// Models with fifty agents each, and so many agents in all.
std::string modelsWithAgents(int agents) {
    const std::string definition =
        R"(AGENT FREQUENCY name:\"F\" resultscope:mainobjects absolute history-mem)";
    std::string document = R"({"format":"mero-repository","version":1,"models":[)";
    for (int agent = 0; agent < agents; ++agent) {
        if (agent % AgentsOfAModel == 0) {
            document +=
                std::string(agent > 0 ? "]}," : "") + R"({"name":"Process )" + std::to_string(agent) +
                R"(","type":"Business process","objects":[{"name":"Check","class":"Task"}],"agents":[)";
        }
        document += std::string(agent % AgentsOfAModel > 0 ? "," : "") + R"({"name":"Agent )" +
                    std::to_string(agent) +
                    R"(","class":"Process agent","objects":"all \"Task\"","definition":")" + definition +
                    R"("})";
    }
    return document + "]}]}";
}

/// From the dialog's making to its first picture.
void openSelection(benchmark::State& state) {
    mero::Repository repository;
    const mero::RepositoryServices services(repository);
    if (!mero::readRepositoryDocument(modelsWithAgents(static_cast<int>(state.range(0))), "models",
                                      repository)) {
        throw std::logic_error("the models can't be read");
    }
    MeroAgentManagement management;
    mero::ControlComponent engine;
    ISortedSet<MeroId> models;
    for (const MeroId model : repository.modelIds()) {
        models.insert(model);
    }
    management.simStart(AnalysisPath, &engine, {0, 0, 0, 0}, models, MeroNoId, nullptr, 365.0, 24.0);
    ISortedSet<MeroId> agents;
    for (const auto& agent : management.getSuperAgents()) {
        agents.insert(agent->getInstanceId());
    }
    for (auto _ : state) {
        MeroSelectResultManager dialog(nullptr, agents, AnalysisPath, management);
        dialog.Show();
        benchmark::DoNotOptimize(mero::qt::widgetOf(&dialog)->grab());
    }
    state.counters["agents"] = static_cast<double>(agents.size());
    management.simEnd();
}
BENCHMARK(openSelection)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
