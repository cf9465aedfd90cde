#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/repository/repository.h"

namespace mero {

// What the reader and the writer of repository documents share.

inline constexpr std::string_view FormatName = "mero-repository";
inline constexpr std::int32_t FormatVersion = 1;

/// The keys of an agent beside its name and class, and the attributes that they stand for.
struct AgentText {
    std::string_view key;
    std::string_view attribute;
};
inline constexpr std::array AgentTexts{AgentText{"definition", "Definition"}, AgentText{"objects", "Objects"},
                                       AgentText{"calendar", "Calendar"}, AgentText{"infotext", "Info text"},
                                       AgentText{"results", "Results"}};

/// Objects of a model by name alone, agents left out; made on first use and not kept up to date.
class ObjectNames {
public:
    explicit ObjectNames(const Repository& source) : repository(source) {}

    /// `classId` 0 means any class.
    std::vector<MeroId> find(MeroId model, MeroId classId, std::string_view name);

private:
    using Index = std::unordered_map<std::string_view, std::vector<MeroId>>;

    /// The names are the repository's own, which nothing renames meanwhile.
    const Index& indexOf(MeroId model);

    const Repository& repository;
    std::unordered_map<MeroId, Index> indices;
};

}  // namespace mero
