#include "platform/repository/repository_services.h"

#include "component/host/model_references.h"

#include "tests/platform/repository/sample_models.h"

namespace mero {
namespace {

using Ids = ISortedSet<MeroId>;

constexpr MeroId Nothing = 4711;

class RepositoryServicesTest : public testing::Test {
protected:
    RepositoryServicesTest() {
        order = builder.process("Order");
        check = builder.object(order, "Task", "Check");
        agent = builder.object(order, "Process agent", "Measures");
        staff = builder.environment("Staff");
        ann = builder.object(staff, "Worker", "Ann");
        clerk = builder.object(staff, "Role", "Clerk");
        hasRole = relationNamed(39, "Has role");
        EXPECT_TRUE(repository.addRelation(hasRole, ann, clerk));
    }

    std::string textOf(MeroId id, MeroId attribute, int expectedCode = RepositoryOk) {
        const char* value = nullptr;
        EXPECT_EQ(enhanced.getAttributeValue(id, attribute, value, true), expectedCode);
        return value != nullptr ? value : "";
    }

    Repository repository;
    ModelBuilder builder{repository};
    RepositoryServices services{repository};
    MeroCoreMM_Enhanced& enhanced = services.manager().enhanced();
    MeroId order, check, agent, staff, ann, clerk, hasRole;
};

TEST(RepositoryServices, AreInstalledWhileTheyLive) {
    Repository repository;
    EXPECT_EQ(MeroCoreModelingManager::GetGlobal(), nullptr);
    {
        RepositoryServices outer(repository);
        {
            const RepositoryServices inner(repository);
            EXPECT_NE(MeroCoreModelingManager::GetGlobal(), &outer.manager());
        }
        EXPECT_EQ(MeroCoreModelingManager::GetGlobal(), &outer.manager());
        EXPECT_EQ(MeroSimMappingHandler::GetGlobal(), &outer.simMapping());
        EXPECT_EQ(MeroModelTypeAttrHandler::GetGlobal(), &outer.modelTypes());
    }
    EXPECT_EQ(MeroCoreModelingManager::GetGlobal(), nullptr);
    EXPECT_EQ(MeroSimMappingHandler::GetGlobal(), nullptr);
    MeroId modelId = 0;
    EXPECT_NE(MeroCoreInterReferenceHandler::getTargetModelID("Order", ClassCodeModel, modelId),
              RepositoryOk);
}

TEST_F(RepositoryServicesTest, InstanceOfAnswersByClassOrTellsWhyNot) {
    struct Case {
        MeroId classId;
        MeroId instanceId;
        int code;
        bool isInstance;
    };
    const MeroId activity = Mero_GetCoreVar(CoreActivity);
    for (const auto& [classId, instanceId, code, isInstance] :
         {Case{activity, check, RepositoryOk, true}, Case{classNamed(42, "Task"), check, RepositoryOk, true},
          Case{activity, agent, RepositoryOk, false}, Case{activity, ann, RepositoryClassUnknown, false},
          Case{Mero_GetCoreVar(CoreProcessAgentBase), agent, RepositoryOk, true},
          Case{Mero_GetCoreVar(CoreEnvironmentAgentBase), agent, RepositoryClassUnknown, false},
          Case{Nothing, check, RepositoryClassUnknown, false},
          Case{activity, order, RepositoryClassUnknown, false},
          Case{activity, Nothing, RepositoryNotFound, false},
          Case{ClassCodeModel, check, RepositoryOk, false}, Case{ClassCodeModel, order, RepositoryOk, true},
          Case{ClassCodeModel, staff, RepositoryOk, true},
          Case{ClassCodeProcessModel, order, RepositoryOk, true},
          Case{ClassCodeEnvironmentModel, order, RepositoryOk, false}}) {
        bool answer = !isInstance;
        EXPECT_EQ(enhanced.instanceOf(classId, instanceId, answer), code) << classId << " " << instanceId;
        EXPECT_EQ(answer, isInstance) << classId << " " << instanceId;
    }
}

TEST_F(RepositoryServicesTest, MetaModelIsAnsweredByLibrary) {
    MeroId id = Nothing;
    EXPECT_EQ(enhanced.classOf(check, id), RepositoryOk);
    EXPECT_EQ(id, classNamed(42, "Task"));
    EXPECT_EQ(enhanced.classOf(staff, id), RepositoryOk);
    EXPECT_EQ(id, ClassCodeEnvironmentModel);
    EXPECT_NE(enhanced.classOf(Nothing, id), RepositoryOk);
    EXPECT_EQ(enhanced.getClassIDFromClassName(42, "Worker", id), RepositoryNotFound);
    EXPECT_EQ(id, MeroNoId);
    EXPECT_EQ(enhanced.getClassIDFromClassName(39, "Worker", id), RepositoryOk);
    EXPECT_EQ(enhanced.getAttributeIDFromAttributeName(id, "Name", id), RepositoryOk);
    EXPECT_EQ(id, ClassCodeInstanceName);
    EXPECT_EQ(enhanced.getAttributeIDFromAttributeName(classNamed(39, "Worker"), "Costs", id),
              RepositoryNotFound);

    Ids all;
    Ids instantiable;
    Ids withAgents;
    EXPECT_EQ(enhanced.getAllClasses(39, all), RepositoryOk);
    EXPECT_EQ(enhanced.getAllInstantiableClasses(39, instantiable, false), RepositoryOk);
    EXPECT_EQ(enhanced.getAllInstantiableClasses(39, withAgents, true), RepositoryOk);
    EXPECT_EQ(all.size(), 10u);
    EXPECT_EQ(instantiable.size(), 5u);
    EXPECT_EQ(withAgents.size(), 6u);
    EXPECT_EQ(enhanced.getAllClasses(ClassCodeModel, all), RepositoryClassUnknown);
    EXPECT_TRUE(all.empty());

    Ids plain;
    Ids inherited;
    const MeroId agentClass = classNamed(42, "Process agent");
    EXPECT_EQ(enhanced.getNotebookAttributeIDsFromClassID(agentClass, inherited, true, true), RepositoryOk);
    EXPECT_EQ(enhanced.getNotebookAttributeIDsFromClassID(agentClass, plain, true, false), RepositoryOk);
    EXPECT_EQ(inherited.size(), 6u);
    EXPECT_EQ(plain, Ids{ClassCodeInstanceName});
}

TEST_F(RepositoryServicesTest, ReadingTellsMissingAttributesFromThoseOfAnotherKind) {
    const MeroId taskClass = classNamed(42, "Task");
    const MeroId costs = attributeNamed(taskClass, "Costs");
    const MeroId number = attributeNamed(taskClass, "Number");
    const MeroId time = attributeNamed(taskClass, "Execution time");
    builder.set(check, "Costs", 2.5);
    builder.set(check, "Number", 7);
    double real = -1.0;
    MeroId whole = -1;
    EXPECT_EQ(enhanced.getAttributeValue(check, costs, real, true), RepositoryOk);
    EXPECT_EQ(real, 2.5);
    EXPECT_EQ(enhanced.getAttributeValue(check, number, whole, true), RepositoryOk);
    EXPECT_EQ(whole, 7);
    EXPECT_EQ(enhanced.getAttributeValue(check, number, real, true), RepositoryWrongType);
    EXPECT_EQ(enhanced.getAttributeValue(check, time, real, true), RepositoryWrongType);
    EXPECT_EQ(enhanced.getAttributeValue(ann, costs, real, true), RepositoryNotFound);
    EXPECT_EQ(enhanced.getAttributeValue(Nothing, costs, real, true), RepositoryNotFound);
    EXPECT_EQ(textOf(check, time), "00:000:00:00:00");
    textOf(check, costs, RepositoryWrongType);
    textOf(ann, time, RepositoryNotFound);
    textOf(taskClass, time, RepositoryNotFound);

    EXPECT_EQ(textOf(check, ClassCodeInstanceName), "Check");
    EXPECT_EQ(textOf(order, ClassCodeInstanceName), "Order");
    EXPECT_EQ(textOf(taskClass, ClassCodeName), "Task");
    EXPECT_EQ(textOf(hasRole, ClassCodeName), "Has role");
    EXPECT_EQ(textOf(hasRole, ClassCodeRelationName), "Has role");
    EXPECT_EQ(textOf(staff, ClassCodeModelType), "Working environment");
    textOf(check, ClassCodeModelType, RepositoryNotFound);
    MeroId isAbstract = 0;
    EXPECT_EQ(enhanced.getAttributeValue(classNamed(42, "Activity"), ClassCodeAbstract, isAbstract, true),
              RepositoryOk);
    EXPECT_EQ(isAbstract, 1);
    EXPECT_EQ(enhanced.getAttributeValue(taskClass, ClassCodeAbstract, isAbstract, true), RepositoryOk);
    EXPECT_EQ(isAbstract, 0);
    textOf(check, ClassCodeName, RepositoryNotFound);
    EXPECT_NE(textOf(ClassCodeProcessLibrary, Mero_GetCoreVar(CorePredefinedAgents)), "");
    textOf(ClassCodeEnvironmentLibrary, Mero_GetCoreVar(CorePredefinedAgents), RepositoryNotFound);
}

TEST_F(RepositoryServicesTest, InstancesAreFoundByNameClassAndRelation) {
    MeroId id = Nothing;
    EXPECT_EQ(enhanced.getInstanceIDFromInstanceName(order, classNamed(42, "Task"), "Check", id),
              RepositoryOk);
    EXPECT_EQ(id, check);
    EXPECT_EQ(enhanced.getInstanceIDFromInstanceName(order, Mero_GetCoreVar(CoreFlowNode), "Check", id),
              RepositoryOk);
    EXPECT_EQ(enhanced.getInstanceIDFromInstanceName(order, classNamed(42, "User task"), "Check", id),
              RepositoryNotFound);
    EXPECT_EQ(id, MeroNoId);

    Ids instances{Nothing};
    auto& basic = services.manager().basic();
    EXPECT_EQ(
        basic.getAllInstancesOfClassAndSubClassInModel(order, Mero_GetCoreVar(CoreFlowNode), instances, true),
        RepositoryOk);
    EXPECT_EQ(instances, Ids{check});
    EXPECT_EQ(basic.getAllInstancesOfClassAndSubClassInModel(order, Mero_GetCoreVar(CoreExecutive), instances,
                                                             true),
              RepositoryOk);
    EXPECT_TRUE(instances.empty());
    EXPECT_EQ(basic.getAllInstancesOfClassAndSubClassInModel(order, Nothing, instances, true),
              RepositoryClassUnknown);

    EXPECT_EQ(enhanced.getToInstances(ann, hasRole, instances), RepositoryOk);
    EXPECT_EQ(instances, Ids{clerk});
    EXPECT_EQ(enhanced.getFromInstances(clerk, hasRole, instances), RepositoryOk);
    EXPECT_EQ(instances, Ids{ann});
    EXPECT_EQ(enhanced.getFromInstances(ann, hasRole, instances), RepositoryOk);
    EXPECT_TRUE(instances.empty());
    EXPECT_NE(enhanced.getToInstances(order, hasRole, instances), RepositoryOk);

    Ids relations;
    EXPECT_EQ(enhanced.getAllFromRelationsRecursive(classNamed(39, "Equipment"), relations), RepositoryOk);
    EXPECT_EQ(relations, (Ids{relationNamed(39, "Provided by"), relationNamed(39, "Used by")}));
    EXPECT_EQ(enhanced.getAllToRelationsRecursive(classNamed(39, "Role"), relations), RepositoryOk);
    EXPECT_EQ(relations, (Ids{hasRole, relationNamed(39, "Used by")}));
}

TEST_F(RepositoryServicesTest, WritingGivesTheCodesOfRefusals) {
    const MeroId definition = Mero_GetCoreVar(CoreProcessAgentDefinition);
    const MeroId taskClass = classNamed(42, "Task");
    const auto set = [&](MeroId model, MeroId object, MeroId attribute, const SV::String& text) {
        return enhanced.setAttributeValue(model, object, attribute, text, false);
    };
    SV::String longest;
    for (int count = 0; count < 3600; ++count) {
        longest += "\xC3\xA4";
    }
    EXPECT_EQ(set(order, agent, definition, longest), RepositoryOk);
    EXPECT_EQ(set(order, agent, definition, longest + "a"), RepositoryValueTooLong);
    EXPECT_EQ(textOf(agent, definition), longest.GetStr());
    EXPECT_EQ(set(order, check, attributeNamed(taskClass, "Performer"), longest + "a"), RepositoryOk);
    EXPECT_EQ(set(staff, agent, definition, ""), RepositoryNotFound);
    EXPECT_EQ(set(order, check, definition, ""), RepositoryNotFound);
    EXPECT_EQ(set(order, check, attributeNamed(taskClass, "Costs"), "1"), RepositoryWrongType);
    EXPECT_EQ(set(order, check, attributeNamed(taskClass, "Execution time"), "soon"), RepositoryBadValue);
    EXPECT_EQ(set(order, check, ClassCodeInstanceName, "Look"), RepositoryOk);
    EXPECT_EQ(textOf(check, ClassCodeInstanceName), "Look");

    MeroId made = Nothing;
    EXPECT_EQ(enhanced.createInstance(order, taskClass, "Look", made, true), RepositoryNameInUse);
    EXPECT_EQ(made, MeroNoId);
    EXPECT_EQ(enhanced.createInstance(order, classNamed(39, "Worker"), "", made, true),
              RepositoryClassUnknown);
    EXPECT_EQ(enhanced.createInstance(order, Mero_GetCoreVar(CoreActivity), "", made, true),
              RepositoryClassUnknown);
    EXPECT_EQ(enhanced.createInstance(order, taskClass, "", made, true), RepositoryOk);
    EXPECT_EQ(textOf(made, ClassCodeInstanceName), "Task 1");

    MeroId conflict = Nothing;
    EXPECT_EQ(enhanced.RenameInstance(order, made, "Look", conflict, true), RepositoryNameInUse);
    EXPECT_EQ(conflict, check);
    EXPECT_EQ(enhanced.RenameInstance(order, made, "Task 1", conflict, true), RepositoryOk);
    EXPECT_EQ(enhanced.RenameInstance(order, made, "", conflict, true), RepositoryBadValue);
    EXPECT_EQ(enhanced.deleteInstance(staff, made, false), RepositoryNotFound);
    EXPECT_EQ(enhanced.deleteInstance(order, made, false), RepositoryOk);
    EXPECT_EQ(enhanced.deleteInstance(order, made, false), RepositoryNotFound);
}

TEST_F(RepositoryServicesTest, ModelsWithReadAccessRefuseEveryChange) {
    ASSERT_TRUE(repository.setAccess(order, ModelAccess::Read));
    MeroCoreAccessMode mode = AccessNone;
    EXPECT_EQ(enhanced.getAccessMode(order, mode), RepositoryOk);
    EXPECT_EQ(mode, AccessRead);
    MeroId id = Nothing;
    EXPECT_EQ(enhanced.createInstance(order, classNamed(42, "Task"), "", id, true), RepositoryNotWritable);
    EXPECT_EQ(enhanced.RenameInstance(order, check, "Look", id, true), RepositoryNotWritable);
    EXPECT_EQ(enhanced.deleteInstance(order, check, false), RepositoryNotWritable);
    EXPECT_EQ(enhanced.setAttributeValue(order, agent, Mero_GetCoreVar(CoreProcessAgentObjects), "", false),
              RepositoryNotWritable)
        << "even a text that is there already";
    EXPECT_EQ(repository.findModel(order)->objects.size(), 2u);
}

TEST_F(RepositoryServicesTest, ModelsAndInstancesAreToldApart) {
    MeroId id = Nothing;
    EXPECT_EQ(enhanced.getModelOfInstance(ann, id), RepositoryOk);
    EXPECT_EQ(id, staff);
    EXPECT_EQ(enhanced.getModelOfInstance(order, id), RepositoryClassUnknown);
    EXPECT_EQ(enhanced.getModelOfInstance(Nothing, id), RepositoryNotFound);
    EXPECT_EQ(enhanced.getLibraryOfModel(staff, id), RepositoryOk);
    EXPECT_EQ(id, ClassCodeEnvironmentLibrary);
    bool isProcess = false;
    EXPECT_EQ(enhanced.getModelClass(order, isProcess), RepositoryOk);
    EXPECT_TRUE(isProcess);
    EXPECT_NE(enhanced.getModelClass(check, isProcess), RepositoryOk);
    SV::String name;
    EXPECT_EQ(enhanced.getModelNameAndVersion(staff, name), RepositoryOk);
    EXPECT_EQ(name, "Staff");

    auto& types = services.modelTypes();
    EXPECT_EQ(types.GetModelTypeIndex("Company map"), 2);
    EXPECT_EQ(types.GetModelTypeIndex("Map"), -1);
    EXPECT_EQ(types.GetModelTypeIndexOfModel(staff), 1);
    EXPECT_EQ(types.GetModelTypeLibraryClassID(2), ClassCodeProcessLibrary);
    EXPECT_EQ(types.GetModelTypeLibraryClassID(3), MeroNoId);
    EXPECT_FALSE(types.IsSimulateableModelType(2));
    EXPECT_TRUE(types.GetModelTypeIconImg(-1, 16).IsEmpty());
}

class ModelCallsTest : public RepositoryServicesTest {
protected:
    Ids subProcesses(MeroId model, Ids& loaded, MeroId& problem) {
        Ids models;
        Ids other;
        bool flag = false;
        EXPECT_EQ(enhanced.computeSubprocesses(model, models, loaded, problem, other, flag), RepositoryOk);
        EXPECT_FALSE(flag);
        return models;
    }
};

TEST_F(ModelCallsTest, ClosureNamesACallerThatIsReachedAgainAndLoadsWhatIsMissing) {
    const MeroId ship = builder.process("Ship", false);
    const MeroId bill = builder.process("Bill");
    builder.process("Uncalled", false);
    builder.call(order, "to Ship", "Ship");
    builder.call(order, "nowhere", "");
    builder.call(ship, "to Bill", "Bill");
    builder.call(bill, "back", "Ship");
    Ids loaded;
    MeroId problem = Nothing;

    Ids known;
    EXPECT_EQ(enhanced.getSubprocessInformationLoadedModels(order, known, false), RepositoryOk);
    EXPECT_TRUE(known.empty()) << "what lies behind a model that isn't loaded isn't known";

    EXPECT_EQ(subProcesses(order, loaded, problem), (Ids{ship, bill}));
    EXPECT_EQ(loaded, Ids{ship});
    EXPECT_EQ(problem, MeroNoId);
    EXPECT_TRUE(services.manager().loadSave().IsModelLoaded(ship));
    EXPECT_EQ(subProcesses(ship, loaded, problem), (Ids{ship, bill}));
    EXPECT_TRUE(loaded.empty());
    EXPECT_TRUE(subProcesses(staff, loaded, problem).empty());

    EXPECT_EQ(enhanced.getSubprocessInformationLoadedModels(order, known, true), RepositoryOk);
    EXPECT_EQ(known, Ids{ship});
    EXPECT_EQ(enhanced.getSubprocessInformationLoadedModels(order, known, false), RepositoryOk);
    EXPECT_EQ(known, (Ids{ship, bill}));

    EXPECT_EQ(enhanced.discardModel(ship), RepositoryOk);
    bool allLoaded = true;
    EXPECT_EQ(enhanced.modelsLoaded({ship, bill}, loaded, ClassCodeProcessModel, allLoaded), RepositoryOk);
    EXPECT_EQ(loaded, Ids{bill});
    EXPECT_FALSE(allLoaded);
    EXPECT_NE(enhanced.discardModel(Nothing), RepositoryOk);
}

TEST_F(ModelCallsTest, ACallOfSomethingElseThanAProcessIsAProblem) {
    const MeroId ship = builder.process("Ship");
    builder.call(order, "good", "Ship");
    const MeroId bad = builder.call(ship, "bad", "Staff");
    builder.call(ship, "worse", "No such model");
    Ids loaded;
    MeroId problem = MeroNoId;
    EXPECT_EQ(subProcesses(order, loaded, problem), Ids{ship});
    EXPECT_EQ(problem, bad);
}

TEST_F(ModelCallsTest, ReferencesAreResolvedByTheHelpersOfTheContract) {
    const MeroId ship = builder.process("Ship");
    const MeroId call = builder.call(order, "to Ship", "Ship\nNo such model\n");
    const MeroId attribute = Mero_GetCoreVar(CoreReferencedModel);
    MeroId id = Nothing;
    int code = RepositoryOk;
    MeroCoreInterReferenceHandler handler(order, call, attribute);
    EXPECT_EQ(handler.initHandler(textOf(call, attribute), code), RepositoryOk);
    ASSERT_EQ(handler.getInterReferenceCount(), 2u);
    EXPECT_EQ(handler.getInterReference(0).GetIDOfReferencedModel(id), RepositoryOk);
    EXPECT_EQ(id, ship);
    EXPECT_NE(handler.getInterReference(1).GetIDOfReferencedModel(id), RepositoryOk);
    EXPECT_EQ(MeroCoreInterReferenceHandler(order, call, ClassCodeInstanceName).initHandler("Ship", code),
              RepositoryWrongType);
    EXPECT_NE(MeroCoreInterReferenceHandler(staff, call, attribute).initHandler("Ship", code), RepositoryOk);
    EXPECT_NE(MeroCoreInterReferenceHandler::getTargetModelID("", ClassCodeModel, id), RepositoryOk);
    EXPECT_NE(MeroCoreInterReferenceHandler::getTargetModelID("Staff", ClassCodeProcessModel, id),
              RepositoryOk);

    MeroModelTypeInterRefs references;
    EXPECT_EQ(MeroSetInterRefDlg::getCalledSubProcesses(references), RepositoryOk);
    Ids models;
    EXPECT_EQ(MeroReferencedModelsHandler(order, references).getAllReferencedModels(models), RepositoryOk);
    EXPECT_EQ(models, Ids{ship});
    EXPECT_EQ(MeroReferencedModelsHandler(staff, references).getAllReferencedModels(models), RepositoryOk);
    EXPECT_TRUE(models.empty());

    Ids classes;
    EXPECT_EQ(MeroReferencedModelsHandler::getAllSubmodelReferencingClasses(42, classes), RepositoryOk);
    EXPECT_EQ(classes, Ids{classNamed(42, "Call")});
    EXPECT_EQ(MeroReferencedModelsHandler::getSubModelAttributeOfClass(classes[0], id), RepositoryOk);
    EXPECT_EQ(id, attribute);
    EXPECT_NE(MeroReferencedModelsHandler::getSubModelAttributeOfClass(classNamed(42, "Task"), id),
              RepositoryOk);
}

}  // namespace
}  // namespace mero
