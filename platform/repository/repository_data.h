#pragma once

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/repository/repository.h"

namespace mero {

/// Hash by the bytes of a text, so that `SV::String` keys are found by `std::string_view` too.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    std::size_t operator()(const SV::String& text) const { return (*this)(text.view()); }
};

struct TextEqual {
    using is_transparent = void;
    static std::string_view view(std::string_view text) { return text; }
    static std::string_view view(const SV::String& text) { return text.view(); }
    template <class Left, class Right>
    bool operator()(const Left& left, const Right& right) const {
        return view(left) == view(right);
    }
};

template <class T>
using TextMap = std::unordered_map<SV::String, T, TextHash, TextEqual>;

[[nodiscard]] Error noModel(MeroId id);
[[nodiscard]] Error noObject(MeroId id);

/// Identifiers of what has changed since the last save. What is named here and doesn't exist was removed.
struct RepositoryChanges {
    std::unordered_set<MeroId> models;
    std::unordered_set<MeroId> objects;
    std::unordered_set<MeroId> relations;

    [[nodiscard]] bool empty() const { return models.empty() && objects.empty() && relations.empty(); }
};

struct Repository::Data {
    struct ModelEntry {
        Model model;
        bool storedAsLoaded = true;
        std::unordered_map<MeroId, std::vector<MeroId>> objectsByClass;  ///< ascending
        TextMap<std::vector<MeroId>> objectsByName;                      ///< ascending
        std::unordered_map<MeroId, int> nextNumberOfName;                ///< by class: lower ones are taken
    };

    std::unordered_map<MeroId, ModelEntry> models;
    std::unordered_map<MeroId, Object> objects;
    std::unordered_map<MeroId, Relation> relations;
    std::vector<MeroId> modelOrder;
    TextMap<MeroId> modelsByName;
    std::unordered_map<MeroId, std::vector<MeroId>> relationsFrom;
    std::unordered_map<MeroId, std::vector<MeroId>> relationsTo;
    MeroId nextId = FirstId;
    MeroId nextRelationId = FirstId;
    RepositoryChanges changes;

    // Checks; each gives the reason of a refusal.
    [[nodiscard]] Result<void> checkModel(const SV::String& name, std::size_t type) const;
    [[nodiscard]] Result<void> checkObject(MeroId modelId, MeroId classId, const SV::String& name) const;
    [[nodiscard]] Result<void> checkRelation(MeroId relationClassId, MeroId from, MeroId to) const;

    // Unchecked changes that keep the indices, without a note in `changes`.
    void insertModel(Model model);
    void insertObject(Object object);
    void insertRelation(Relation relation);
    void eraseRelation(MeroId relationId);
    void eraseObject(MeroId objectId);

    [[nodiscard]] const Object* findObject(const ModelEntry& entry, MeroId classId,
                                           std::string_view name) const;
    [[nodiscard]] SV::String makeObjectName(ModelEntry& entry, const Library::Class& objectClass) const;
    void forgetRelationsOf(MeroId objectId);
};

/// What stores may do beyond others: put content in as it was saved, and read what has changed.
class RepositoryAccess {
public:
    explicit RepositoryAccess(Repository& accessedRepository) : data(*accessedRepository.data) {}

    // The identifiers come from the store; a refusal names what is wrong with the content. Values go in by
    // the repository's own operations; `forgetChanges` ends it.
    Result<void> restoreModel(const Model& model);
    Result<void> restoreObject(const Object& object);
    Result<void> restoreRelation(const Relation& relation);
    /// Numbers at which to go on; never lower than what the content needs.
    void restoreCounters(MeroId nextId, MeroId nextRelationId);

    [[nodiscard]] MeroId nextId() const { return data.nextId; }
    [[nodiscard]] MeroId nextRelationId() const { return data.nextRelationId; }
    [[nodiscard]] bool isStoredAsLoaded(MeroId modelId) const;
    [[nodiscard]] const RepositoryChanges& changes() const { return data.changes; }
    void forgetChanges() { data.changes = {}; }

private:
    Repository::Data& data;
};

}  // namespace mero
