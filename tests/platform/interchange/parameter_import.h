#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>

#include "platform/interchange/bpmn_import.h"
#include "tests/platform/interchange/test_files.h"

namespace mero::test {

inline std::string dataFile(const std::string& name) {
    return readFile(sourceFile("tests/platform/interchange/data/" + name));
}

/// Imports processes with parameters and looks at what became of them.
class ParameterImport : public testing::Test {
protected:
    [[nodiscard]] const Object& object(std::string_view model, std::string_view name) const {
        const Model* found = repository.findModel(model);
        const Object* result = found == nullptr ? nullptr : repository.findObject(found->id, MeroNoId, name);
        if (result == nullptr) {
            throw std::runtime_error("no object " + std::string(name));
        }
        return *result;
    }
    [[nodiscard]] std::string text(const Object& of, std::string_view attribute) const {
        return repository.textOf(of, attribute).GetStr();
    }
    [[nodiscard]] const Relation& flow(std::string_view model, std::string_view identifier) const {
        for (const MeroId id : repository.findModel(model)->relations) {
            const Relation& relation = *repository.findRelation(id);
            if (repository.textOf(relation, "BPMN identifier") == SV::String(identifier)) {
                return relation;
            }
        }
        throw std::runtime_error("no flow " + std::string(identifier));
    }
    [[nodiscard]] std::size_t countWorkers(std::string_view model) const {
        const Library::Class* worker = repository.library().findClass(ClassCodeEnvironmentLibrary, "Worker");
        return repository.objectsOfClass(repository.findModel(model)->id, worker->id).size();
    }
    static bool mentions(const ImportReport& report, std::string_view text) {
        return std::any_of(report.notes.begin(), report.notes.end(), [text](const ImportNote& note) {
            return noteText(note).find(text) != std::string::npos;
        });
    }

    Repository repository;
};

}  // namespace mero::test
