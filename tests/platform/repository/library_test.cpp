#include "platform/repository/library.h"

#include <gtest/gtest.h>
#include <set>

namespace mero {
namespace {

const Library& library = Library::standard();

TEST(Library, IdentifiersAreUniqueAndBelowThoseOfModels) {
    std::set<MeroId> seen{MeroNoId};
    const auto claim = [&seen](MeroId id) {
        EXPECT_LT(id, 1000000);
        EXPECT_TRUE(seen.insert(id).second) << id;
    };
    std::set<MeroId> attributes;
    for (const Library::Class& entry : library.classes()) {
        claim(entry.id);
        attributes.insert(entry.attributes.begin(), entry.attributes.end());
    }
    for (const Library::RelationClass& entry : library.relationClasses()) {
        claim(entry.id);
        attributes.insert(entry.attributes.begin(), entry.attributes.end());
    }
    for (const MeroId id : attributes) {
        claim(id);
        EXPECT_NE(library.findAttribute(id), nullptr) << id;
    }
}

TEST(Library, CoreVariablesNameTheirClassesAndAttributes) {
    struct Case {
        MeroCoreVarType number;
        const char* name;
    };
    for (const auto& [number, name] :
         {Case{CoreFlowNode, "Flow node"}, Case{CoreExclusiveGateway, "Exclusive gateway"},
          Case{CoreInclusiveGateway, "Inclusive gateway"}, Case{CoreParallelGateway, "Parallel gateway"},
          Case{CoreCall, "Call"}, Case{CoreEndEvent, "End event"},
          Case{CoreIntermediateEvent, "Intermediate event"}, Case{CoreActivity, "Activity"},
          Case{CoreStartEvent, "Start event"}, Case{CoreEventBasedGateway, "Event-based gateway"},
          Case{CoreVariable, "Variable"}, Case{CoreProcessAgentBase, "Process agent base"},
          Case{CoreExecutive, "Executive"}, Case{CoreGroup, "Group"}, Case{CoreResource, "Resource"},
          Case{CoreEnvironmentAgentBase, "Environment agent base"}}) {
        const Library::Class* entry = library.findClass(Mero_GetCoreVar(number));
        ASSERT_NE(entry, nullptr) << number;
        EXPECT_EQ(entry->name, name);
    }
    struct Attribute {
        MeroCoreVarType number;
        MeroId libraryId;
        const char* className;
        const char* name;
    };
    for (const auto& [number, libraryId, className, name] :
         {Attribute{CoreStartQuantity, 42, "Start event", "Quantity"},
          Attribute{CoreStartPeriod, 42, "Start event", "Time period"},
          Attribute{CoreReferencedModel, 42, "Sub-process", "Referenced model"},
          Attribute{CoreProcessAgentCalendar, 42, "Process agent", "Calendar"},
          Attribute{CoreProcessAgentObjects, 42, "Process agent", "Objects"},
          Attribute{CoreProcessAgentDefinition, 42, "Process agent", "Definition"},
          Attribute{CoreProcessAgentResults, 42, "Process agent", "Results"},
          Attribute{CoreProcessAgentInfoText, 42, "Process agent", "Info text"},
          Attribute{CoreAvailability, 39, "Worker", "Availability"},
          Attribute{CoreExecutiveCalendar, 39, "Worker", "Calendar"},
          Attribute{CoreEnvironmentAgentCalendar, 39, "Environment agent", "Calendar"},
          Attribute{CoreEnvironmentAgentObjects, 39, "Environment agent", "Objects"},
          Attribute{CoreEnvironmentAgentDefinition, 39, "Environment agent", "Definition"},
          Attribute{CoreEnvironmentAgentResults, 39, "Environment agent", "Results"},
          Attribute{CoreEnvironmentAgentInfoText, 39, "Environment agent", "Info text"}}) {
        const Library::Attribute* attribute =
            library.findAttribute(library.findClass(libraryId, className)->id, name);
        ASSERT_NE(attribute, nullptr) << name;
        EXPECT_EQ(attribute->id, Mero_GetCoreVar(number)) << name;
    }
    EXPECT_TRUE(library.hasAttribute(42, Mero_GetCoreVar(CorePredefinedAgents)));
    for (const int unknown : {-1, 0, 14, 255, 256, 1000000}) {
        EXPECT_EQ(library.coreVariable(unknown), MeroNoId) << unknown;
    }
    EXPECT_EQ(Mero_GetCoreVarConst(CoreProcessLibrary), 42);
    EXPECT_EQ(Mero_GetCoreVarConst(CoreEnvironmentLibrary), 39);
}

TEST(Library, InheritanceCountsAClassAsItsOwnSubClassButDoesNotListIt) {
    const MeroId flowNode = library.findClass(42, "Flow node")->id;
    const MeroId activity = library.findClass(42, "Activity")->id;
    const MeroId task = library.findClass(42, "Task")->id;
    EXPECT_TRUE(library.isSubClassOf(task, task));
    EXPECT_TRUE(library.isSubClassOf(flowNode, task));
    EXPECT_FALSE(library.isSubClassOf(task, activity));
    EXPECT_FALSE(library.isSubClassOf(flowNode, 77777));
    EXPECT_TRUE(library.isSubClassOf(ClassCodeModel, ClassCodeProcessModel));
    EXPECT_EQ(library.subClassesOf(activity).size(), 8u);
    EXPECT_EQ(library.subClassesOf(flowNode).size(), 19u);
    EXPECT_TRUE(library.subClassesOf(task).empty());
    EXPECT_TRUE(library.subClassesOf(77777).empty());
}

TEST(Library, AttributesComeFromTheBaseFirstAndAreFoundByNameInTheClass) {
    const MeroId equipment = library.findClass(39, "Equipment")->id;
    const auto attributes = library.attributesOf(equipment);
    ASSERT_EQ(attributes.size(), 3u);
    EXPECT_EQ(attributes[0]->id, ClassCodeInstanceName);
    EXPECT_EQ(attributes[1]->name, "Hourly rate");
    EXPECT_EQ(attributes[2]->name, "Calendar");
    EXPECT_EQ(attributes[1], library.findAttribute(library.findClass(39, "IT system")->id, "Hourly rate"));
    EXPECT_EQ(library.findAttribute(equipment, "Hourly wages"), nullptr);
    EXPECT_EQ(library.findAttribute(equipment, "hourly rate"), nullptr);
    const Library::RelationClass* flow = library.findRelationClass(42, "Sequence flow");
    ASSERT_NE(flow, nullptr);
    EXPECT_NE(library.findRelationAttribute(flow->id, "Probability"),
              library.findAttribute(library.findClass(42, "Intermediate event")->id, "Probability"));
    EXPECT_EQ(library.findAttribute(flow->id, "Probability"), nullptr);
    EXPECT_EQ(library.findRelationClass(39, "Sequence flow"), nullptr);
}

}  // namespace
}  // namespace mero
