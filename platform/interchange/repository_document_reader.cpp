#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <optional>

#include "component/host/core_variables.h"

#include "platform/interchange/document_node.h"
#include "platform/interchange/json_reader.h"
#include "platform/interchange/repository_document.h"
#include "platform/interchange/repository_document_parts.h"

namespace mero {

namespace {

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

}  // namespace mero
