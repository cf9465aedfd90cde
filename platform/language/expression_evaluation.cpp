#include <algorithm>
#include <compare>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "component/host/repository.h"
#include "component/host/simulation.h"

#include "platform/language/object_expression_tree.h"

namespace {

using mero::Comparison;
using mero::NamedObjects;
using mero::ObjectExpressionTree;
using mero::ObjectFilter;
using mero::ObjectOperand;
using mero::ObjectsOfClass;
using mero::QuotedText;
using mero::SetOperation;

/// Codes of `aEvaluateExpression`.
enum EvaluationCode : int { EvaluationOk = 0, EvaluationFailed = 1 };

/// Identifiers in ascending order, each once.
using Objects = std::vector<MeroId>;

struct EvaluationFailure {};

void makeSet(Objects& objects) {
    std::ranges::sort(objects);
    objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
}

SV::String textOf(const QuotedText& quoted) {
    return quoted.hasBackslash ? SV::String(quoted.plain()) : SV::String(quoted.raw);
}

bool isMet(Comparison comparison, std::partial_ordering order) {
    switch (comparison) {
        case Comparison::Equal:
            return std::is_eq(order);
        case Comparison::NotEqual:
            return std::is_neq(order);
        case Comparison::Less:
            return std::is_lt(order);
        case Comparison::LessOrEqual:
            return std::is_lteq(order);
        case Comparison::Greater:
            return std::is_gt(order);
        case Comparison::GreaterOrEqual:
            return std::is_gteq(order);
    }
    return false;
}

/// True for success, false for something that isn't there, a failure for anything else.
bool isThere(int code) {
    if (code == RepositoryOk) {
        return true;
    }
    if (code == RepositoryNotFound || code == RepositoryClassUnknown) {
        return false;
    }
    throw EvaluationFailure();
}

/// Evaluates in one model. Throws `EvaluationFailure`, which doesn't leave this file.
class Evaluation {
public:
    Evaluation(MeroCoreModelingManager& manager, MeroId model, bool includeSubClasses)
        : repository(manager), modelId(model), withSubClasses(includeSubClasses) {
        if (repository.enhanced().getLibraryOfModel(modelId, libraryId) != RepositoryOk) {
            throw EvaluationFailure();
        }
    }

    Objects evaluate(const ObjectExpressionTree& tree) {
        Objects result;
        Objects pending;
        SetOperation pendingOperation = SetOperation::Union;
        for (const auto& [operation, operand] : tree.steps) {
            Objects objects = evaluateOperand(operand);
            // A run of unions, or of differences, is carried out at once.
            if (operation != pendingOperation || operation == SetOperation::Intersection) {
                combine(result, pendingOperation, pending);
                pendingOperation = operation;
                pending = std::move(objects);
            } else {
                pending.insert(pending.end(), objects.begin(), objects.end());
            }
        }
        combine(result, pendingOperation, pending);
        return result;
    }

private:
    struct ComparedAttribute {
        MeroId id;
        bool isNumber;
        bool isInteger;
    };

    static void combine(Objects& result, SetOperation operation, Objects& pending) {
        makeSet(pending);
        Objects combined;
        auto out = std::back_inserter(combined);
        switch (operation) {
            case SetOperation::Union:
                std::ranges::set_union(result, pending, out);
                break;
            case SetOperation::Difference:
                std::ranges::set_difference(result, pending, out);
                break;
            case SetOperation::Intersection:
                std::ranges::set_intersection(result, pending, out);
                break;
        }
        result = std::move(combined);
        pending.clear();
    }

    Objects evaluateOperand(const ObjectOperand& operand) {
        Objects objects = std::visit([this](const auto& content) { return find(content); }, operand.content);
        for (const ObjectFilter& filter : operand.filters) {
            const std::string attributeName = filter.attribute.plain();
            std::unordered_map<MeroId, std::optional<ComparedAttribute>> attributes;
            std::erase_if(objects, [&](MeroId object) {
                const auto attribute = attributeOf(object, attributeName, attributes);
                return !attribute || !matches(object, *attribute, filter);
            });
        }
        return objects;
    }

    Objects find(const std::unique_ptr<ObjectExpressionTree>& brackets) { return evaluate(*brackets); }

    Objects find(const ObjectsOfClass& all) {
        ISortedSet<MeroId> instances;
        const MeroId classId = classNamed(all.className);
        if (repository.basic().getAllInstancesOfClassAndSubClassInModel(modelId, classId, instances,
                                                                        withSubClasses) != RepositoryOk) {
            throw EvaluationFailure();
        }
        return {instances.begin(), instances.end()};
    }

    Objects find(const NamedObjects& named) {
        Objects objects;
        objects.reserve(named.objects.size());
        auto& enhanced = repository.enhanced();
        for (const auto& [name, className] : named.objects) {
            MeroId object = MeroNoId;
            const MeroId classId = classNamed(className);
            if (isThere(enhanced.getInstanceIDFromInstanceName(modelId, classId, textOf(name), object))) {
                objects.push_back(object);
            }
        }
        makeSet(objects);
        return objects;
    }

    MeroId classNamed(const QuotedText& className) {
        const auto known = classes.find(className.raw);
        if (known != classes.end()) {
            return known->second;
        }
        MeroId classId = MeroNoId;
        if (repository.enhanced().getClassIDFromClassName(libraryId, textOf(className), classId) !=
            RepositoryOk) {
            throw EvaluationFailure();
        }
        classes.emplace(className.raw, classId);
        return classId;
    }

    std::optional<ComparedAttribute> attributeOf(
        MeroId object, const std::string& name,
        std::unordered_map<MeroId, std::optional<ComparedAttribute>>& attributes) {
        MeroId classId = MeroNoId;
        if (!isThere(repository.enhanced().classOf(object, classId))) {
            return std::nullopt;
        }
        const auto [place, isNew] = attributes.try_emplace(classId);
        if (isNew) {
            place->second = lookUpAttribute(classId, name);
        }
        return place->second;
    }

    std::optional<ComparedAttribute> lookUpAttribute(MeroId classId, const std::string& name) {
        ComparedAttribute attribute{};
        MeroCoreAttributeType type = AttributeText;
        auto& enhanced = repository.enhanced();
        if (!isThere(enhanced.getAttributeIDFromAttributeName(classId, name, attribute.id)) ||
            !isThere(enhanced.getUIAttributeType(attribute.id, type))) {
            return std::nullopt;
        }
        attribute.isInteger = type == AttributeInteger;
        attribute.isNumber = attribute.isInteger || type == AttributeDouble;
        return attribute;
    }

    bool matches(MeroId object, const ComparedAttribute& attribute, const ObjectFilter& filter) {
        if (attribute.isNumber != std::holds_alternative<double>(filter.literal)) {
            return false;
        }
        if (attribute.isNumber) {
            const auto value = numberOf(object, attribute);
            return value && isMet(filter.comparison, *value <=> std::get<double>(filter.literal));
        }
        const char* value = nullptr;
        if (!isThere(repository.enhanced().getAttributeValue(object, attribute.id, value, true))) {
            return false;
        }
        const std::string_view text = value != nullptr ? value : "";
        return isMet(filter.comparison, text <=> std::string_view(std::get<std::string>(filter.literal)));
    }

    std::optional<double> numberOf(MeroId object, const ComparedAttribute& attribute) {
        auto& enhanced = repository.enhanced();
        if (attribute.isInteger) {
            MeroId value = 0;
            return isThere(enhanced.getAttributeValue(object, attribute.id, value, true))
                       ? std::optional<double>(value)
                       : std::nullopt;
        }
        double value = 0.0;
        return isThere(enhanced.getAttributeValue(object, attribute.id, value, true)) ? std::optional(value)
                                                                                      : std::nullopt;
    }

    MeroCoreModelingManager& repository;
    MeroId modelId;
    MeroId libraryId = MeroNoId;
    bool withSubClasses;
    std::map<std::string_view, MeroId> classes;  ///< by name as written
};

}  // namespace

int aEvaluateExpression(MeroId modelId, const SV::String& expression, ISortedSet<MeroId>& objects,
                        [[maybe_unused]] MeroOSEScope scope, bool withSubClasses,
                        [[maybe_unused]] bool loadedOnly) {
    objects.clear();
    const auto tree = mero::readObjectExpression(expression.view());
    MeroCoreModelingManager* manager = MeroCoreModelingManager::GetGlobal();
    if (!tree || manager == nullptr) {
        return EvaluationFailed;
    }
    try {
        const Objects found = Evaluation(*manager, modelId, withSubClasses).evaluate(tree.value());
        objects.insertRange(found.begin(), found.end());
    } catch (const EvaluationFailure&) {
        return EvaluationFailed;
    }
    return EvaluationOk;
}
