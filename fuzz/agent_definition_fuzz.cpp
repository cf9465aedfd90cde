#include "component/host/sv_boxes.h"

#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "fuzz/fuzz_input.h"
#include "platform/interchange/repository_document.h"
#include "platform/repository/repository_services.h"
#include "platform/toolkit/internal_errors.h"

namespace {

constexpr const char* Models = R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "Order", "type": "Business process", "objects": [ { "name": "Check", "class": "Task" } ],
    "agents": [ { "name": "M", "class": "Process agent" } ] } ] })";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    mero::Repository repository;
    (void)readRepositoryDocument(Models, "models", repository);
    const mero::RepositoryServices services(repository);
    const MeroAgentManagement management;
    const MeroId model = repository.findModel("Order")->id;
    MeroSuperAgent agent;
    agent.attachToInstance(repository.findModel("Order")->objects.back(), model);
    if (agent.readDefinitionText(SV::String(asText(data, size))) == StatusOk) {
        SV::String once;
        SV::String twice;
        agent.getDefinitionText(once);
        require(agent.readDefinitionText(once) == StatusOk, "the canonical text is good");
        require(agent.getDefinitionText(twice) == once, "the canonical text stays as it is");
    }
    SV::BoxDesk::GetGlobal().clearRecords();
    mero::InternalErrorLog::GetGlobal().clear();
    return 0;
}
