#include "platform/repository/repository.h"

#include <limits>

#include "tests/platform/repository/sample_models.h"

namespace mero {
namespace {

class RepositoryTest : public testing::Test {
protected:
    std::string reasonOf(const Result<MeroId>& result) { return result ? "accepted" : result.error().text; }

    Repository repository;
    ModelBuilder builder{repository};
    const MeroId task = classNamed(42, "Task");
    const MeroId userTask = classNamed(42, "User task");
};

TEST_F(RepositoryTest, ModelsAndObjectsCountTogetherAndRelationsForThemselves) {
    const MeroId model = builder.process("Order");
    const MeroId first = builder.object(model, "Task", "A");
    const MeroId flow = builder.flow(first, first);
    const MeroId second = builder.object(model, "Task", "B");
    EXPECT_EQ(std::vector<MeroId>({model, first, second, builder.environment("Staff")}),
              std::vector<MeroId>({1000001, 1000002, 1000003, 1000004}));
    EXPECT_EQ(flow, Repository::FirstId);
    ASSERT_TRUE(repository.removeObject(second));
    EXPECT_EQ(builder.object(model, "Task", "B"), 1000005) << "a number is given only once";
}

TEST_F(RepositoryTest, NamesAreUniqueInModelAndClass) {
    const MeroId order = builder.process("Order");
    const MeroId check = builder.object(order, "Task", "Check");
    builder.object(order, "User task", "Check");
    builder.object(builder.process("Ship"), "Task", "Check");
    EXPECT_EQ(reasonOf(repository.addObject(order, task, "Check")),
              "the model \"Order\" has already an object \"Check\" of class \"Task\"");
    EXPECT_EQ(reasonOf(repository.addModel("Ship", CompanyMap, ModelAccess::Write, true)),
              "there is already a model \"Ship\"");
    EXPECT_FALSE(repository.addModel("", BusinessProcess, ModelAccess::Write, true));
    EXPECT_FALSE(repository.addModel(std::string("a\0b", 3), BusinessProcess, ModelAccess::Write, true));
    EXPECT_FALSE(repository.addModel("Other", 3, ModelAccess::Write, true));
    EXPECT_FALSE(repository.renameObject(check, ""));
    EXPECT_TRUE(repository.renameObject(check, "Check"));
    const MeroId pack = builder.object(order, "Task", "Pack");
    EXPECT_FALSE(repository.renameObject(pack, "Check"));
    EXPECT_EQ(repository.findObject(pack)->name, "Pack");
    EXPECT_TRUE(repository.renameObject(check, "Look"));
    EXPECT_TRUE(repository.renameObject(pack, "Check"));
    EXPECT_EQ(repository.findObject(order, task, "Check")->id, pack);
}

TEST_F(RepositoryTest, MadeNamesTakeTheLowestFreeNumber) {
    const MeroId model = builder.process("Order");
    builder.object(model, "Task", "Task 2");
    const MeroId first = builder.object(model, "Task", "");
    const MeroId third = builder.object(model, "Task", "");
    EXPECT_EQ(repository.findObject(first)->name, "Task 1");
    EXPECT_EQ(repository.findObject(third)->name, "Task 3");
    ASSERT_TRUE(repository.removeObject(first));
    EXPECT_EQ(repository.findObject(builder.object(model, "Task", ""))->name, "Task 1");
    ASSERT_TRUE(repository.renameObject(third, "Pack"));
    EXPECT_EQ(repository.findObject(builder.object(model, "Task", ""))->name, "Task 3");
    EXPECT_EQ(repository.findObject(builder.object(model, "User task", ""))->name, "User task 1");
}

TEST_F(RepositoryTest, ClassesStandInModelsOfTheirLibraryOnly) {
    const MeroId process = builder.process("Order");
    const MeroId environment = builder.environment("Staff");
    const MeroId worker = classNamed(39, "Worker");
    EXPECT_EQ(reasonOf(repository.addObject(process, worker, "Ann")),
              "a model of type \"Business process\" can't hold an object of class \"Worker\"");
    EXPECT_FALSE(repository.addObject(environment, task, "Check"));
    EXPECT_FALSE(repository.addObject(process, classNamed(42, "Activity"), "Check"));
    EXPECT_FALSE(repository.addObject(process, ClassCodeProcessLibrary, "Check"));
    EXPECT_FALSE(repository.addObject(process, 77777, ""));
    EXPECT_FALSE(repository.addObject(77777, task, ""));
    EXPECT_TRUE(repository.findModel(process)->objects.empty());
}

TEST_F(RepositoryTest, RelationsJoinTheClassesOfTheirEnds) {
    const MeroId order = builder.process("Order");
    const MeroId start = builder.object(order, "Start event", "Start");
    const MeroId check = builder.object(order, "Task", "Check");
    const MeroId variable = builder.object(order, "Variable", "V");
    const MeroId elsewhere = builder.object(builder.process("Ship"), "Task", "Check");
    const MeroId sequenceFlow = relationNamed(42, "Sequence flow");
    const MeroId first = builder.flow(start, check);
    const MeroId second = builder.flow(start, elsewhere);
    EXPECT_EQ(reasonOf(repository.addRelation(sequenceFlow, start, variable)),
              "a relation \"Sequence flow\" can't end at the Variable \"V\"");
    EXPECT_FALSE(repository.addRelation(relationNamed(42, "Attached to"), check, start));
    EXPECT_FALSE(repository.addRelation(77777, start, check));
    EXPECT_FALSE(repository.addRelation(sequenceFlow, start, order));
    EXPECT_EQ(repository.findModel(order)->relations, std::vector<MeroId>({first, second}));
    EXPECT_EQ(repository.relationsFrom(start).size(), 2u);
    EXPECT_EQ(repository.relationsTo(elsewhere).size(), 1u);
}

TEST_F(RepositoryTest, ValuesFitTheTypeOfTheirAttributeOrAreRefused) {
    const MeroId process = builder.process("Order");
    const MeroId check = builder.object(process, "Task", "Check");
    const MeroId start = builder.object(process, "Start event", "Start");
    struct Case {
        MeroId object;
        const char* attribute;
        AttributeValue value;
        bool accepted;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Case& item :
         {Case{check, "Execution time", SV::String("01:364:23:59:59"), true},
          Case{check, "Execution time", SV::String("1 hour"), false}, Case{check, "Execution time", 5, false},
          Case{check, "Number", -7, true}, Case{check, "Number", 1.0, false},
          Case{check, "Number", SV::String("1"), false}, Case{check, "Costs", 0.1, true},
          Case{check, "Costs", 3, true}, Case{check, "Costs", infinity, false},
          Case{check, "Performer", SV::String("anybody at \"all\""), true},
          Case{check, "Performer", SV::String(std::string("a\0b", 3)), false},
          Case{start, "Time period", SV::String("per month"), true},
          Case{start, "Time period", SV::String("per week"), false},
          Case{start, "Arrival calendar", SV::String("no calendar"), true}}) {
        const MeroId attribute = attributeNamed(repository.findObject(item.object)->classId, item.attribute);
        const AttributeValue before = repository.valueOf(*repository.findObject(item.object), attribute);
        EXPECT_EQ(repository.setValue(item.object, attribute, item.value).isGood(), item.accepted)
            << item.attribute;
        if (!item.accepted) {
            EXPECT_EQ(repository.valueOf(*repository.findObject(item.object), attribute), before);
        }
    }
    EXPECT_EQ(repository.numberOf(*repository.findObject(check), "Costs"), 3.0);
    EXPECT_FALSE(repository.setValue(check, attributeNamed(classNamed(42, "Start event"), "Quantity"), 1));
    EXPECT_FALSE(repository.setValue(process, ClassCodeInstanceName, SV::String("Other")));
    builder.set(check, "Name", SV::String("Look"));
    EXPECT_EQ(repository.findObject(process, task, "Look")->id, check);
}

TEST_F(RepositoryTest, DefaultsAreNotKeptAsValues) {
    const MeroId worker = builder.object(builder.environment("Staff"), "Worker", "Ann");
    EXPECT_EQ(repository.numberOf(*repository.findObject(worker), "Availability"), 100.0);
    EXPECT_EQ(repository.textOf(*repository.findObject(worker), "Calendar"),
              "CALENDAR\nDAILY hours:\"00:00-24:00\"");
    builder.set(worker, "Hourly wages", 12.5);
    builder.set(worker, "Availability", 50);
    ASSERT_EQ(repository.findObject(worker)->values.size(), 2u);
    EXPECT_LT(repository.findObject(worker)->values[0].first, repository.findObject(worker)->values[1].first);
    builder.set(worker, "Availability", 100);
    EXPECT_EQ(repository.findObject(worker)->values.size(), 1u);
    EXPECT_EQ(repository.numberOf(*repository.findObject(worker), "Number"), 0.0) << "workers have no number";
    EXPECT_EQ(repository.textOf(*repository.findObject(worker), "Hourly wages"), "") << "it is no text";
}

TEST_F(RepositoryTest, RemovingAnObjectTakesItsRelationsFromBothEnds) {
    const MeroId order = builder.process("Order");
    const MeroId ship = builder.process("Ship");
    const MeroId a = builder.object(order, "Task", "A");
    const MeroId b = builder.object(order, "Task", "B");
    const MeroId c = builder.object(ship, "Task", "C");
    builder.flow(a, b);
    builder.flow(b, b);
    const MeroId kept = builder.flow(a, c);
    builder.flow(c, b);
    ASSERT_TRUE(repository.removeObject(b));
    EXPECT_EQ(repository.findModel(order)->relations, std::vector<MeroId>({kept}));
    EXPECT_TRUE(repository.findModel(ship)->relations.empty());
    EXPECT_EQ(repository.relationsFrom(a).size(), 1u);
    EXPECT_TRUE(repository.relationsFrom(c).empty());
    EXPECT_EQ(repository.findObject(order, task, "B"), nullptr);
    EXPECT_EQ(repository.objectsOfClass(order, task).size(), 1u);
    EXPECT_FALSE(repository.removeObject(b));

    ASSERT_TRUE(repository.removeModel(order));
    EXPECT_EQ(repository.findObject(a), nullptr);
    EXPECT_EQ(repository.findRelation(kept), nullptr);
    EXPECT_TRUE(repository.relationsTo(c).empty());
    EXPECT_EQ(repository.findModel("Order"), nullptr);
    EXPECT_EQ(repository.modelIds(), std::vector<MeroId>({ship}));
    EXPECT_FALSE(repository.removeModel(order));
    builder.process("Order");
}

TEST_F(RepositoryTest, LookingForAnyClassLeavesAgentsOut) {
    const MeroId order = builder.process("Order");
    builder.object(order, "Process agent", "Check");
    EXPECT_EQ(repository.findObject(order, MeroNoId, "Check"), nullptr);
    const MeroId later = builder.object(order, "User task", "Check");
    builder.object(order, "Task", "Check");
    EXPECT_EQ(repository.findObject(order, MeroNoId, "Check")->id, later);
}

}  // namespace
}  // namespace mero
