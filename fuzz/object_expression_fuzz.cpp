#include "component/host/simulation.h"

#include "fuzz/fuzz_input.h"
#include "platform/interchange/repository_document.h"
#include "platform/language/object_expression.h"
#include "platform/repository/repository_services.h"

namespace {

constexpr const char* Models = R"({ "format": "mero-repository", "version": 1, "models": [
  { "name": "M", "type": "Business process", "objects": [
    { "name": "a", "class": "Task", "attributes": { "Number": 3, "Costs": 1.5 } },
    { "name": "a", "class": "User task" }, { "name": "\"b\"", "class": "Call activity" } ] } ] })";

struct Platform {
    Platform() : services(repository) { (void)readRepositoryDocument(Models, "models", repository); }
    mero::Repository repository;
    mero::RepositoryServices services;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Platform platform;
    const auto readable = mero::checkObjectExpression(asText(data, size));
    requireReason(readable);
    ISortedSet<MeroId> objects{77};
    const int code = aEvaluateExpression(platform.repository.findModel("M")->id,
                                         SV::String(asText(data, size)), objects, OseScopeModel, true, true);
    require(code == 0 || objects.empty(), "a failure gives no objects");
    require(code != 0 || readable.isGood(), "what can't be read can't be evaluated");
    return 0;
}
