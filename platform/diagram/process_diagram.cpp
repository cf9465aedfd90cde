#include "platform/diagram/process_diagram.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <unordered_map>

#include "component/host/core_variables.h"

#include "platform/diagram/missing_positions.h"

namespace mero {

namespace {

/// Numbers with one separator each between them; nothing if `text` is anything else.
std::optional<std::vector<double>> numbersOf(std::string_view text, std::string_view separators) {
    std::vector<double> numbers;
    const char* place = text.data();
    const char* const end = place + text.size();
    while (place != end) {
        double number = 0.0;
        const auto [next, status] = std::from_chars(place, end, number);
        if (status != std::errc{} || !std::isfinite(number)) {
            return std::nullopt;
        }
        numbers.push_back(number);
        place = next;
        if (place != end && separators.find(*place++) == std::string_view::npos) {
            return std::nullopt;
        }
    }
    return numbers;
}

struct KindOfClass {
    int coreVariable;
    ShapeKind kind;
};
constexpr std::array KindsOfClasses{
    KindOfClass{CoreActivity, ShapeKind::Activity},
    KindOfClass{CoreCall, ShapeKind::Call},
    KindOfClass{CoreStartEvent, ShapeKind::StartEvent},
    KindOfClass{CoreIntermediateEvent, ShapeKind::IntermediateEvent},
    KindOfClass{CoreEndEvent, ShapeKind::EndEvent},
    KindOfClass{CoreExclusiveGateway, ShapeKind::ExclusiveGateway},
    KindOfClass{CoreInclusiveGateway, ShapeKind::InclusiveGateway},
    KindOfClass{CoreParallelGateway, ShapeKind::ParallelGateway},
    KindOfClass{CoreEventBasedGateway, ShapeKind::EventBasedGateway},
};

std::optional<ShapeKind> kindOf(const Library& library, MeroId classId) {
    for (const KindOfClass& entry : KindsOfClasses) {
        if (library.isSubClassOf(library.coreVariable(entry.coreVariable), classId)) {
            return entry.kind;
        }
    }
    const Library::Class* const swimlane = library.findClass(classId);
    if (swimlane != nullptr && swimlane->name == "Pool") {
        return ShapeKind::Pool;
    }
    return swimlane != nullptr && swimlane->name == "Lane" ? std::optional(ShapeKind::Lane) : std::nullopt;
}

/// Objects without a name of their own bear that of their class and a number.
bool isMadeName(std::string_view name, std::string_view className) {
    return name.starts_with(className) &&
           name.find_first_not_of("0123456789 ()", className.size()) == std::string_view::npos;
}

/// "Business rule task" as BPMN writes it, "businessRuleTask".
std::string wordOf(std::string_view className) {
    std::string word;
    for (std::size_t each = 0; each < className.size(); ++each) {
        const bool beginsWord = each > 0 && className[each - 1] == ' ';
        if (className[each] != ' ') {
            const auto letter = static_cast<unsigned char>(className[each]);
            word += static_cast<char>(beginsWord ? std::toupper(letter) : std::tolower(letter));
        }
    }
    return word;
}

class DiagramReader {
public:
    DiagramReader(const Repository& models, const Model& drawnModel)
        : repository(models), model(drawnModel) {}

    ProcessDiagram read() {
        diagram.name = model.name.view();
        for (const MeroId id : model.objects) {
            readShape(*repository.findObject(id));
        }
        for (const MeroId id : model.relations) {
            readRelation(*repository.findRelation(id));
        }
        placeMissing(diagram);
        showContents();
        sortByDepth();
        measure();
        return std::move(diagram);
    }

private:
    void readShape(const Object& object) {
        const Library& library = repository.library();
        const std::optional<ShapeKind> kind = kindOf(library, object.classId);
        if (!kind) {
            return;
        }
        DiagramShape shape;
        shape.object = object.id;
        shape.kind = *kind;
        shape.bounds = readBounds(repository.textOf(object, "Bounds").view());
        const std::string_view name = object.name.view();
        const bool needsNoName = isEvent(*kind) || isGateway(*kind) || isSwimlane(*kind);
        if (!needsNoName || !isMadeName(name, library.findClass(object.classId)->name)) {
            shape.label = name;
        }
        const SV::String eventKind = repository.textOf(object, "Event kind");
        if (isEvent(*kind)) {
            shape.marker = eventKind.view() == "none" ? std::string_view() : eventKind.view();
            shape.isThrowing = *kind == ShapeKind::EndEvent ||
                               repository.textOf(object, "BPMN element").view() == "intermediateThrowEvent";
        } else if (*kind == ShapeKind::Activity) {
            shape.marker = wordOf(library.findClass(object.classId)->name);
        }
        const SV::String loop = repository.textOf(object, "Loop");
        shape.loop = loop.view() == "none" ? std::string_view() : loop.view();
        if (*kind == ShapeKind::IntermediateEvent) {
            shape.isInterrupting = repository.numberOf(object, "Interrupting") != 0.0;
        }
        index.emplace(object.id, diagram.shapes.size());
        diagram.shapes.push_back(std::move(shape));
    }

    void readRelation(const Relation& relation) {
        const std::string& name = repository.library().findRelationClass(relation.classId)->name;
        const auto from = index.find(relation.from);
        if (from == index.end() || !index.contains(relation.to)) {
            return;
        }
        if (name == "Attached to") {
            diagram.shapes[from->second].host = relation.to;
        } else if (name == "Sequence flow") {
            DiagramEdge edge{relation.id, relation.from, relation.to, {}, {}, false};
            edge.points = readWaypoints(repository.textOf(relation, "Waypoints").view());
            edge.label = repository.textOf(relation, "Label").view();
            edge.isDefault = repository.numberOf(relation, "Default") != 0.0;
            diagram.edges.push_back(std::move(edge));
        }
    }

    /// Sub-processes that are drawn open show what they call, level by level.
    void showContents() {
        for (std::size_t each = 0; each < diagram.shapes.size(); ++each) {
            if (diagram.shapes[each].kind != ShapeKind::Call) {
                continue;
            }
            const Object& call = *repository.findObject(diagram.shapes[each].object);
            const Model* const called =
                repository.findModel(repository.textOf(call, "Referenced model").view());
            if (called != nullptr && called->id != model.id) {
                showContent(each, *called);
            }
        }
    }

    void showContent(std::size_t call, const Model& called) {
        DiagramReader inner(repository, called);
        for (const MeroId id : called.objects) {
            inner.readShape(*repository.findObject(id));
        }
        const DrawRect room = diagram.shapes[call].bounds;
        const auto& content = inner.diagram.shapes;
        const bool isInside =
            !content.empty() && std::all_of(content.begin(), content.end(), [&](const DiagramShape& shape) {
                return shape.bounds.width > 0.0 && room.contains(shape.bounds) && room != shape.bounds &&
                       !index.contains(shape.object);
            });
        if (!isInside) {
            return;
        }
        for (const MeroId id : called.relations) {
            inner.readRelation(*repository.findRelation(id));
        }
        placeMissing(inner.diagram);
        diagram.shapes[call].isExpanded = true;
        diagram.shapes.insert(diagram.shapes.end(), content.begin(), content.end());
        diagram.edges.insert(diagram.edges.end(), inner.diagram.edges.begin(), inner.diagram.edges.end());
    }

    void sortByDepth() {
        const auto depth = [](const DiagramShape& shape) {
            if (isSwimlane(shape.kind)) {
                return shape.kind == ShapeKind::Pool ? 0 : 1;
            }
            return shape.isExpanded ? 2 : shape.isBoundary() ? 4 : 3;
        };
        const auto area = [](const DiagramShape& shape) { return shape.bounds.width * shape.bounds.height; };
        std::stable_sort(diagram.shapes.begin(), diagram.shapes.end(),
                         [&](const DiagramShape& left, const DiagramShape& right) {
                             if (depth(left) != depth(right)) {
                                 return depth(left) < depth(right);
                             }
                             const bool mayEnclose = isSwimlane(left.kind) || left.isExpanded;
                             return mayEnclose && area(left) > area(right);
                         });
    }

    void measure() {
        for (const DiagramShape& shape : diagram.shapes) {
            diagram.extent = united(diagram.extent, shape.bounds);
        }
        constexpr double LineWidth = 1.0;
        for (const DiagramEdge& edge : diagram.edges) {
            for (const DrawPoint& point : edge.points) {
                diagram.extent = united(diagram.extent, {point.x, point.y, LineWidth, LineWidth});
            }
        }
    }

    const Repository& repository;
    const Model& model;
    ProcessDiagram diagram;
    std::unordered_map<MeroId, std::size_t> index;  ///< of shapes, before they are sorted
};

}  // namespace

const DiagramShape* ProcessDiagram::find(MeroId object) const {
    const auto found = std::find_if(shapes.begin(), shapes.end(),
                                    [object](const DiagramShape& shape) { return shape.object == object; });
    return found == shapes.end() ? nullptr : &*found;
}

DrawRect readBounds(std::string_view text) {
    const auto numbers = numbersOf(text, " ");
    if (!numbers || numbers->size() != 4 || (*numbers)[2] <= 0.0 || (*numbers)[3] <= 0.0) {
        return {};
    }
    return {(*numbers)[0], (*numbers)[1], (*numbers)[2], (*numbers)[3]};
}

DrawLine readWaypoints(std::string_view text) {
    const auto numbers = numbersOf(text, ", ");
    if (!numbers || numbers->size() % 2 != 0 || numbers->size() < 4) {
        return {};
    }
    DrawLine line;
    for (std::size_t each = 0; each < numbers->size(); each += 2) {
        line.push_back({(*numbers)[each], (*numbers)[each + 1]});
    }
    return line;
}

ProcessDiagram drawProcess(const Repository& repository, MeroId model) {
    const Model* const found = repository.findModel(model);
    return found != nullptr ? DiagramReader(repository, *found).read() : ProcessDiagram{};
}

}  // namespace mero
