#include "platform/interchange/repository_document.h"

#include <array>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <unordered_map>

#include "component/host/core_variables.h"

#include "platform/interchange/document_node.h"
#include "platform/interchange/json_reader.h"

namespace mero {

namespace {

constexpr std::string_view FormatName = "mero-repository";
constexpr std::int32_t FormatVersion = 1;

/// The keys of an agent beside its name and class, and the attributes that they stand for.
struct AgentText {
    std::string_view key;
    std::string_view attribute;
};
constexpr std::array AgentTexts{AgentText{"definition", "Definition"}, AgentText{"objects", "Objects"},
                                AgentText{"calendar", "Calendar"}, AgentText{"infotext", "Info text"},
                                AgentText{"results", "Results"}};

MeroId libraryOf(const Repository& repository, const Model& model) {
    const MeroId modelClass = repository.library().modelTypes()[model.type].classId;
    return modelClass == ClassCodeProcessModel ? ClassCodeProcessLibrary : ClassCodeEnvironmentLibrary;
}

template <class T>
T taken(Result<T> result, const DocumentNode& place) {
    if (!result) {
        place.refuse(result.error().text);
    }
    return std::move(result.value());
}

void taken(const Result<void>& result, const DocumentNode& place) {
    if (!result) {
        place.refuse(result.error().text);
    }
}

/// Objects of a model by name alone, agents left out; made on first use and not kept up to date.
class ObjectNames {
public:
    explicit ObjectNames(const Repository& source) : repository(source) {}

    /// `classId` 0 means any class.
    std::vector<MeroId> find(MeroId model, MeroId classId, std::string_view name) {
        const auto& index = indexOf(model);
        const auto entry = index.find(name);
        if (entry == index.end()) {
            return {};
        }
        std::vector<MeroId> found = entry->second;
        std::erase_if(found, [&](MeroId id) {
            return classId != MeroNoId && repository.findObject(id)->classId != classId;
        });
        return found;
    }

private:
    using Index = std::unordered_map<std::string_view, std::vector<MeroId>>;

    /// The names are the repository's own, which nothing renames meanwhile.
    const Index& indexOf(MeroId model) {
        const auto [entry, fresh] = indices.try_emplace(model);
        if (fresh) {
            for (const MeroId id : repository.findModel(model)->objects) {
                const Object& object = *repository.findObject(id);
                if (!repository.library().findClass(object.classId)->agent) {
                    entry->second[object.name.view()].push_back(id);
                }
            }
        }
        return entry->second;
    }

    const Repository& repository;
    std::unordered_map<MeroId, Index> indices;
};

/// One reading of one document. Objects are made in a first pass over the models, what refers to other
/// objects or models is looked up in a second.
class DocumentReader {
public:
    explicit DocumentReader(Repository& target)
        : repository(target), library(target.library()), names(target) {}

    void read(const DocumentNode& document) {
        checkHeader(document);
        const std::vector<DocumentNode> models = document.listAt("models");
        for (const DocumentNode& model : models) {
            readModel(model);
        }
        for (std::size_t index = 0; index < models.size(); ++index) {
            for (const DocumentNode& relation : models[index].listAt("relations")) {
                readRelation(relation, madeModels[index]);
            }
        }
        checkReferences();
        for (std::size_t index = 0; index < models.size(); ++index) {
            applyState(models[index], madeModels[index]);
        }
    }

    void takeBack() {
        for (auto model = madeModels.rbegin(); model != madeModels.rend(); ++model) {
            (void)repository.removeModel(*model);
        }
    }

private:
    struct PendingReference {
        DocumentNode place;
        std::string model;
    };

    static void checkHeader(const DocumentNode& document) {
        document.checkKeys({"format", "version", "models"});
        const DocumentNode format = document.at("format");
        if (format.text() != FormatName) {
            format.refuse(
                fmt::format("the format is {}, not {}", inQuotes(format.text()), inQuotes(FormatName)));
        }
        const DocumentNode version = document.at("version");
        if (version.integer() != FormatVersion) {
            version.refuse(fmt::format("version {} isn't known, only {}", version.integer(), FormatVersion));
        }
    }

    void readModel(const DocumentNode& node) {
        node.checkKeys({"name", "type", "access", "loaded", "objects", "relations", "agents"});
        const std::string name = nameOf(node);
        if (repository.findModel(name) != nullptr) {
            node.at("name").refuse(fmt::format("there is already a model {}", inQuotes(name)));
        }
        const MeroId model = taken(
            repository.addModel(name, typeOf(node.at("type")), ModelAccess::Write, true), node.at("name"));
        madeModels.push_back(model);
        for (const DocumentNode& object : node.listAt("objects")) {
            object.checkKeys({"name", "class", "attributes"});
            const Library::Class& objectClass = classOf(object.at("class"), model);
            if (objectClass.agent) {
                object.at("class").refuse("an agent has to stand in the list \"agents\"");
            }
            readAttributes(object, makeObject(object, model, objectClass), objectClass);
        }
        for (const DocumentNode& agent : node.listAt("agents")) {
            readAgent(agent, model);
        }
    }

    static std::string nameOf(const DocumentNode& node) {
        std::string name = node.at("name").text();
        if (name.empty()) {
            node.at("name").refuse("the name is empty");
        }
        return name;
    }

    [[nodiscard]] std::size_t typeOf(const DocumentNode& node) const {
        const std::string name = node.text();
        const auto types = library.modelTypes();
        for (std::size_t type = 0; type < types.size(); ++type) {
            if (types[type].name == name) {
                return type;
            }
        }
        node.refuse(fmt::format("unknown model type {}", inQuotes(name)));
    }

    [[nodiscard]] const Library::Class& classOf(const DocumentNode& node, MeroId model) const {
        const std::string name = node.text();
        const Library::Class* found =
            library.findClass(libraryOf(repository, *repository.findModel(model)), name);
        if (found == nullptr) {
            node.refuse(fmt::format("unknown class {}", inQuotes(name)));
        }
        if (found->abstract) {
            node.refuse(fmt::format("the class {} is abstract", inQuotes(name)));
        }
        return *found;
    }

    MeroId makeObject(const DocumentNode& node, MeroId model, const Library::Class& objectClass) {
        const std::string name = nameOf(node);
        const Object* existing = repository.findObject(model, objectClass.id, name);
        if (existing != nullptr && existing->classId == objectClass.id) {
            node.at("name").refuse(fmt::format("the model has already an object {} of class {}",
                                               inQuotes(name), inQuotes(objectClass.name)));
        }
        return taken(repository.addObject(model, objectClass.id, name), node.at("name"));
    }

    void readAttributes(const DocumentNode& node, MeroId object, const Library::Class& objectClass) {
        const std::optional<DocumentNode> attributes = node.find("attributes");
        if (!attributes) {
            return;
        }
        for (const auto& [name, value] : attributes->entries()) {
            const Library::Attribute* attribute = library.findAttribute(objectClass.id, name);
            if (attribute == nullptr || attribute->id == ClassCodeInstanceName) {
                value.refuse(fmt::format("the class {} has no such attribute", inQuotes(objectClass.name)));
            }
            taken(repository.setValue(object, attribute->id, valueFor(*attribute, value)), value);
        }
    }

    AttributeValue valueFor(const Library::Attribute& attribute, const DocumentNode& node) {
        switch (attribute.type) {
            case AttributeInteger:
                return node.integer();
            case AttributeDouble:
                return node.number();
            case AttributeModelReference:
                if (!node.text().empty()) {
                    references.push_back({node, node.text()});
                }
                return SV::String(node.text());
            default:
                return SV::String(node.text());
        }
    }

    void readAgent(const DocumentNode& node, MeroId model) {
        node.checkKeys({"name", "class", "definition", "objects", "calendar", "infotext", "results"});
        const Library::Class& agentClass = classOf(node.at("class"), model);
        if (!agentClass.agent) {
            node.at("class").refuse(fmt::format("{} isn't a class of agents", inQuotes(agentClass.name)));
        }
        const MeroId agent = makeObject(node, model, agentClass);
        for (const AgentText& text : AgentTexts) {
            const std::optional<DocumentNode> value = node.find(text.key);
            const Library::Attribute* attribute = library.findAttribute(agentClass.id, text.attribute);
            if (value && attribute != nullptr) {
                taken(repository.setValue(agent, attribute->id, SV::String(value->text())), *value);
            }
        }
    }

    void readRelation(const DocumentNode& node, MeroId model) {
        node.checkKeys({"class", "from", "to", "attributes"});
        const DocumentNode classNode = node.at("class");
        const Library::RelationClass* relationClass =
            library.findRelationClass(libraryOf(repository, *repository.findModel(model)), classNode.text());
        if (relationClass == nullptr) {
            classNode.refuse(fmt::format("unknown relation {}", inQuotes(classNode.text())));
        }
        const MeroId from = endOf(node.at("from"), model, relationClass->fromClassId);
        const MeroId to = endOf(node.at("to"), model, relationClass->toClassId);
        const MeroId relation = taken(repository.addRelation(relationClass->id, from, to), node);
        const std::optional<DocumentNode> attributes = node.find("attributes");
        if (!attributes) {
            return;
        }
        for (const auto& [name, value] : attributes->entries()) {
            const Library::Attribute* attribute = library.findRelationAttribute(relationClass->id, name);
            if (attribute == nullptr) {
                value.refuse(
                    fmt::format("the relation {} has no such attribute", inQuotes(relationClass->name)));
            }
            taken(repository.setRelationValue(relation, attribute->id, valueFor(*attribute, value)), value);
        }
    }

    /// The object that a relation end names.
    MeroId endOf(const DocumentNode& node, MeroId ownModel, MeroId wantedClass) {
        MeroId model = ownModel;
        MeroId classId = MeroNoId;
        DocumentNode nameNode = node;
        if (node.json().is_object()) {
            node.checkKeys({"model", "class", "name"});
            nameNode = node.at("name");
            if (const std::optional<DocumentNode> modelNode = node.find("model")) {
                const Model* found = repository.findModel(modelNode->text());
                if (found == nullptr) {
                    modelNode->refuse(fmt::format("there is no model {}", inQuotes(modelNode->text())));
                }
                model = found->id;
            }
            if (const std::optional<DocumentNode> classNode = node.find("class")) {
                classId = classOf(*classNode, model).id;
            }
        }
        const std::vector<MeroId> found = names.find(model, classId, nameNode.text());
        if (found.empty()) {
            nameNode.refuse(fmt::format("there is no object {}", inQuotes(nameNode.text())));
        }
        if (found.size() > 1) {
            nameNode.refuse(fmt::format("several objects bear the name {}: their class is needed",
                                        inQuotes(nameNode.text())));
        }
        const Object& object = *repository.findObject(found.front());
        if (!library.isSubClassOf(wantedClass, object.classId)) {
            nameNode.refuse(fmt::format("a {} can't stand at this end of the relation",
                                        library.findClass(object.classId)->name));
        }
        return found.front();
    }

    void checkReferences() const {
        for (const PendingReference& reference : references) {
            if (repository.findModel(reference.model) == nullptr) {
                reference.place.refuse(fmt::format("there is no model {}", inQuotes(reference.model)));
            }
        }
    }

    /// Last of all, so that a model that may only be read can be filled before.
    void applyState(const DocumentNode& node, MeroId model) {
        if (const std::optional<DocumentNode> access = node.find("access")) {
            const std::string word = access->text();
            if (word != "write" && word != "read") {
                access->refuse(fmt::format("\"write\" or \"read\" is expected here, not {}", inQuotes(word)));
            }
            taken(repository.setAccess(model, word == "read" ? ModelAccess::Read : ModelAccess::Write),
                  *access);
        }
        if (const std::optional<DocumentNode> loaded = node.find("loaded")) {
            taken(repository.setLoaded(model, loaded->flag()), *loaded);
        }
    }

    Repository& repository;
    const Library& library;
    ObjectNames names;
    std::vector<MeroId> madeModels;
    std::vector<PendingReference> references;
};

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

Result<void> readRepositoryDocument(std::string_view text, std::string_view source, Repository& repository) {
    const Result<nlohmann::json> json = readJson(text, source);
    if (!json) {
        return json.error();
    }
    DocumentReader reader(repository);
    try {
        reader.read(DocumentNode(json.value(), ""));
    } catch (const DocumentRefused& refused) {
        reader.takeBack();
        return Error{fmt::format("{}: {}", source, refused.what())};
    }
    return {};
}

std::string writeRepositoryDocument(const Repository& repository) {
    return DocumentWriter(repository)
               .document()
               .dump(2, ' ', false, nlohmann::json::error_handler_t::replace) +
           "\n";
}

}  // namespace mero
