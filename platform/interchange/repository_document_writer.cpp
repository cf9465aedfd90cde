#include <nlohmann/json.hpp>

#include "component/host/core_variables.h"

#include "platform/interchange/repository_document.h"
#include "platform/interchange/repository_document_parts.h"

namespace mero {

namespace {

using Json = nlohmann::ordered_json;

/// Writes what differs from the defaults, in the order of the library.
class DocumentWriter {
public:
    explicit DocumentWriter(const Repository& source)
        : repository(source), library(source.library()), names(source) {}

    [[nodiscard]] Json document() {
        Json models = Json::array();
        for (const MeroId id : repository.modelIds()) {
            models.push_back(model(*repository.findModel(id)));
        }
        return {{"format", FormatName}, {"version", FormatVersion}, {"models", std::move(models)}};
    }

private:
    [[nodiscard]] Json model(const Model& source) {
        Json node{{"name", source.name.view()}, {"type", library.modelTypes()[source.type].name}};
        if (source.access == ModelAccess::Read) {
            node["access"] = "read";
        }
        if (!source.loaded) {
            node["loaded"] = false;
        }
        for (const MeroId id : source.objects) {
            const Object& object = *repository.findObject(id);
            const Library::Class& objectClass = *library.findClass(object.classId);
            Json entry{{"name", object.name.view()}, {"class", objectClass.name}};
            if (objectClass.agent) {
                addAgentTexts(object, entry);
            } else {
                addAttributes(object.values, entry);
            }
            node[objectClass.agent ? "agents" : "objects"].push_back(std::move(entry));
        }
        for (const MeroId id : source.relations) {
            node["relations"].push_back(relation(*repository.findRelation(id)));
        }
        return inOrder(std::move(node));
    }

    /// Lists in the order objects, relations, agents, whatever was met first.
    static Json inOrder(Json node) {
        for (const char* key : {"objects", "relations", "agents"}) {
            if (const auto found = node.find(key); found != node.end()) {
                Json list = std::move(*found);
                node.erase(found);
                node[key] = std::move(list);
            }
        }
        return node;
    }

    void addAgentTexts(const Object& agent, Json& entry) const {
        for (const AgentText& text : AgentTexts) {
            const Library::Attribute* attribute = library.findAttribute(agent.classId, text.attribute);
            for (const auto& [id, value] : agent.values) {
                if (attribute != nullptr && id == attribute->id) {
                    entry[std::string(text.key)] = jsonOf(value);
                }
            }
        }
    }

    void addAttributes(const AttributeValues& values, Json& entry) const {
        for (const auto& [id, value] : values) {
            entry["attributes"][library.findAttribute(id)->name] = jsonOf(value);
        }
    }

    static Json jsonOf(const AttributeValue& value) {
        if (const auto* text = std::get_if<SV::String>(&value)) {
            return text->view();
        }
        if (const auto* integer = std::get_if<std::int32_t>(&value)) {
            return *integer;
        }
        return std::get<double>(value);
    }

    [[nodiscard]] Json relation(const Relation& source) {
        const MeroId ownModel = repository.findObject(source.from)->modelId;
        Json entry{{"class", library.findRelationClass(source.classId)->name},
                   {"from", end(source.from, ownModel)},
                   {"to", end(source.to, ownModel)}};
        addAttributes(source.values, entry);
        return entry;
    }

    /// The name alone where it is enough.
    [[nodiscard]] Json end(MeroId id, MeroId ownModel) {
        const Object& object = *repository.findObject(id);
        const bool foreign = object.modelId != ownModel;
        const bool ambiguous = names.find(object.modelId, MeroNoId, object.name.view()).size() > 1;
        if (!foreign && !ambiguous) {
            return object.name.view();
        }
        Json node = Json::object();
        if (foreign) {
            node["model"] = repository.findModel(object.modelId)->name.view();
        }
        if (ambiguous) {
            node["class"] = library.findClass(object.classId)->name;
        }
        node["name"] = object.name.view();
        return node;
    }

    const Repository& repository;
    const Library& library;
    ObjectNames names;
};

}  // namespace

std::string writeRepositoryDocument(const Repository& repository) {
    return DocumentWriter(repository)
               .document()
               .dump(2, ' ', false, nlohmann::json::error_handler_t::replace) +
           "\n";
}

}  // namespace mero
