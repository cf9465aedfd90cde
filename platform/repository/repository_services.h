#pragma once

#include <memory>

#include "component/host/model_types.h"
#include "component/host/repository.h"
#include "component/host/sim_mapping.h"

#include "platform/repository/repository.h"

namespace mero {

/// Answers the host contract of the model repository on top of a `Repository`: manager, simulation mapping
/// and model types. It is the installed one of each from its construction to its destruction, then those
/// before stand again.
///
/// Writing operations are refused with `RepositoryNotWritable` in a model with read access. Changes go into
/// the `Repository` at once; saving them is up to its store. Objects of a model that isn't loaded can be read
/// and written: loading only decides which models take part in a run.
class RepositoryServices {
public:
    /// The repository has to outlive this.
    explicit RepositoryServices(Repository& servedRepository);
    RepositoryServices(const RepositoryServices&) = delete;
    RepositoryServices& operator=(const RepositoryServices&) = delete;
    ~RepositoryServices();

    [[nodiscard]] MeroCoreModelingManager& manager();
    [[nodiscard]] MeroSimMappingHandler& simMapping();
    [[nodiscard]] MeroModelTypeAttrHandler& modelTypes();

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};

}  // namespace mero
