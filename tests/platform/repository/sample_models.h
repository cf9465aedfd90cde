#pragma once

#include <gtest/gtest.h>

#include "platform/repository/repository.h"

namespace mero {

inline constexpr std::size_t BusinessProcess = 0;
inline constexpr std::size_t WorkingEnvironment = 1;
inline constexpr std::size_t CompanyMap = 2;

inline MeroId classNamed(MeroId libraryId, std::string_view name) {
    return Library::standard().findClass(libraryId, name)->id;
}

inline MeroId attributeNamed(MeroId classId, std::string_view name) {
    return Library::standard().findAttribute(classId, name)->id;
}

inline MeroId relationNamed(MeroId libraryId, std::string_view name) {
    return Library::standard().findRelationClass(libraryId, name)->id;
}

/// Short ways to fill a repository; a refusal fails the test.
class ModelBuilder {
public:
    explicit ModelBuilder(Repository& filledRepository) : repository(filledRepository) {}

    MeroId process(const char* name, bool loaded = true, ModelAccess access = ModelAccess::Write) {
        return good(repository.addModel(name, BusinessProcess, access, loaded));
    }
    MeroId environment(const char* name) {
        return good(repository.addModel(name, WorkingEnvironment, ModelAccess::Write, true));
    }
    MeroId object(MeroId modelId, const char* className, const char* name) {
        const Model* model = repository.findModel(modelId);
        const MeroId libraryId =
            model->type == WorkingEnvironment ? ClassCodeEnvironmentLibrary : ClassCodeProcessLibrary;
        return good(repository.addObject(modelId, classNamed(libraryId, className), name));
    }
    MeroId call(MeroId modelId, const char* name, const char* calledModel) {
        const MeroId id = object(modelId, "Call activity", name);
        set(id, "Referenced model", SV::String(calledModel));
        return id;
    }
    MeroId flow(MeroId from, MeroId to) {
        return good(
            repository.addRelation(relationNamed(ClassCodeProcessLibrary, "Sequence flow"), from, to));
    }
    void set(MeroId objectId, const char* attribute, const AttributeValue& value) {
        const auto stored = repository.setValue(
            objectId, attributeNamed(repository.findObject(objectId)->classId, attribute), value);
        EXPECT_TRUE(stored) << stored.error().text;
    }

private:
    static MeroId good(const Result<MeroId>& made) {
        EXPECT_TRUE(made) << (made ? "" : made.error().text);
        return made ? made.value() : MeroNoId;
    }

    Repository& repository;
};

}  // namespace mero
