#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "component/host/sv_application.h"
#include "component/host/sv_boxes.h"

#include "platform/interchange/repository_document.h"
#include "platform/repository/repository_services.h"
#include "platform/toolkit/internal_errors.h"

namespace mero::test {

/// The embedded platform with the models of a repository document, and with empty records of boxes and
/// internal errors, for the length of a test.
class EmbeddedPlatform {
public:
    explicit EmbeddedPlatform(std::string_view document) : services(content) {
        const auto read = readRepositoryDocument(document, "test", content);
        if (!read) {
            throw std::runtime_error(read.error().text);
        }
        clearRecords();
        SV::GetpApp()->Wait(false);
    }
    EmbeddedPlatform(const EmbeddedPlatform&) = delete;
    EmbeddedPlatform& operator=(const EmbeddedPlatform&) = delete;
    ~EmbeddedPlatform() {
        SV::BoxDesk::GetGlobal().setResponder({});
        clearRecords();
    }

    static void clearRecords() {
        SV::BoxDesk::GetGlobal().clearRecords();
        InternalErrorLog::GetGlobal().clear();
    }

    /// Messages of the boxes that were shown, in order.
    [[nodiscard]] static std::vector<std::uint32_t> boxes() {
        std::vector<std::uint32_t> messages;
        for (const auto& record : SV::BoxDesk::GetGlobal().getRecords()) {
            messages.push_back(record.message.value);
        }
        return messages;
    }

    /// Modules that reported internal errors, in order.
    [[nodiscard]] static std::vector<std::string> internalErrors() {
        std::vector<std::string> modules;
        for (const auto& error : InternalErrorLog::GetGlobal().getErrors()) {
            modules.push_back(error.module);
        }
        return modules;
    }

    static void answerBoxesWith(int answer) {
        SV::BoxDesk::GetGlobal().setResponder(
            [answer](SV::BoxKind, SV::Window*, int, const SV::String&) { return answer; });
    }

    [[nodiscard]] Repository& repository() { return content; }
    [[nodiscard]] MeroId model(std::string_view name) const {
        const Model* const found = content.findModel(name);
        return found != nullptr ? found->id : MeroNoId;
    }
    [[nodiscard]] MeroId object(std::string_view modelName, std::string_view name) const {
        const Object* const found = content.findObject(model(modelName), MeroNoId, name);
        return found != nullptr ? found->id : MeroNoId;
    }
    /// Agents aren't found by their name alone, since an object may have the same.
    [[nodiscard]] MeroId agent(std::string_view modelName, std::string_view name) const {
        for (const char* const className : {"Process agent", "Environment agent"}) {
            const MeroId library =
                className[0] == 'P' ? ClassCodeProcessLibrary : ClassCodeEnvironmentLibrary;
            const auto* const agentClass = Library::standard().findClass(library, className);
            const Object* const found = content.findObject(model(modelName), agentClass->id, name);
            if (found != nullptr) {
                return found->id;
            }
        }
        return MeroNoId;
    }
    [[nodiscard]] std::string textOf(MeroId objectId, std::string_view attribute) const {
        return std::string(content.textOf(*content.findObject(objectId), attribute).view());
    }
    /// Everything that is stored.
    [[nodiscard]] std::string snapshot() const { return writeRepositoryDocument(content); }

private:
    Repository content;
    RepositoryServices services;
};

}  // namespace mero::test
