#pragma once

#include <span>
#include <vector>

#include "platform/repository/repository.h"

namespace mero {

/// Names of the models that the text of a reference attribute holds: one a line, empty lines left out.
[[nodiscard]] std::vector<std::string_view> splitReferences(std::string_view text);

/// Who is called by a model, directly and over other models.
struct ModelCalls {
    ISortedSet<MeroId> models;  ///< with the caller itself, if it is reached again
    /// First calling object whose reference names no process model, else 0.
    MeroId problem = MeroNoId;
};

enum class CallDepth { Direct, Recursive };
enum class CallRange { AllModels, LoadedModels };

/// Follows the references of calls from `modelId`, in order of objects. A call without a reference calls
/// nothing. With `LoadedModels` models that aren't loaded are neither named nor looked into.
[[nodiscard]] ModelCalls findModelCalls(const Repository& repository, MeroId modelId, CallDepth depth,
                                        CallRange range);

}  // namespace mero
