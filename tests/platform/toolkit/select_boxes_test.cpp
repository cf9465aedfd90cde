#include "component/host/select_boxes.h"

#include <gtest/gtest.h>

#include "component/host/class_icons.h"
#include "component/host/core_variables.h"
#include "component/host/repository.h"

#include "tests/component/support/embedded_platform.h"

namespace mero::test {

namespace {

constexpr const char* Models = R"({"format":"mero-repository","version":1,"models":[
  {"name":"Order","type":"Business process",
   "objects":[{"name":"Pack","class":"Task"},{"name":"A \"b\"","class":"Task"},{"name":"Check","class":"Task"}]},
  {"name":"Empty","type":"Business process"}]})";

MeroId modelNamed(EmbeddedPlatform&, const SV::String& name) {
    MeroId model = MeroNoId;
    MeroCoreModelingManager::GetGlobal()->references().getTargetModelID(name, ClassCodeModel, model);
    return model;
}

SV::String texts(const MeroTreeListBox& box) {
    SV::String all;
    for (const MeroId id : box.GetEntriesInOrder()) {
        all += SV::String(box.GetParentEntry(id) == MeroNoTreeEntry ? "/" : ".") + box.GetEntryText(id);
    }
    return all;
}

class SelectBoxesTest : public testing::Test {
protected:
    SelectBoxesTest() {
        MeroCoreModelingManager::GetGlobal()->enhanced().getAllInstantiableClasses(
            Mero_GetCoreVarConst(CoreProcessLibrary), classes, false);
        box.SetClasses(classes);
    }

    EmbeddedPlatform platform{Models};
    SV::Window window;
    MeroHierarchyClassSelectBox box{&window, SV::ResId(0)};
    ISortedSet<MeroId> classes;
};

TEST_F(SelectBoxesTest, ShowsTheInstancesOfAModelBelowTheirClasses) {
    EXPECT_EQ(box.ShowInstances(modelNamed(platform, "Order")), RepositoryOk);
    EXPECT_EQ(texts(box), SV::String("/Task.A \"b\".Check.Pack"));
    const MeroId task = box.GetChild(MeroNoTreeEntry, 0);
    EXPECT_FALSE(box.isInstanceEntry(task));
    EXPECT_TRUE(box.isInstanceEntry(box.GetChild(task, 0)));
    EXPECT_EQ(box.ShowInstances(modelNamed(platform, "Empty")), RepositoryOk);
    EXPECT_EQ(box.GetEntryCount(), 0U);
    EXPECT_NE(box.ShowInstances(MeroNoId), RepositoryOk);
}

TEST_F(SelectBoxesTest, WritesTheSelectionAsAnExpressionThatSelectsItAgain) {
    box.ShowInstances(modelNamed(platform, "Order"));
    ASSERT_TRUE(box.setPreselection("{\"Pack\":\"Task\", \"A \\\"b\\\"\":\"Task\" }"));
    const ISortedSet<MeroId> selected = box.getSelectedInstances();
    EXPECT_EQ(selected.size(), 2U);
    SV::String expression;
    EXPECT_TRUE(box.getSelectedInstancesOSE(expression));
    box.SetNoSelection();
    EXPECT_FALSE(box.setPreselection("{\"Pack\""));
    EXPECT_TRUE(box.getSelectedInstances().empty());
    ASSERT_TRUE(box.setPreselection(expression)) << expression.GetStr();
    EXPECT_EQ(box.getSelectedInstances().size(), selected.size());
    box.SelectEntry(box.GetChild(MeroNoTreeEntry, 0));
    EXPECT_EQ(box.getSelectedInstances().size(), selected.size()) << "a class is no instance";
}

TEST_F(SelectBoxesTest, ListsObjectsByName) {
    MeroCoreObjectSelectBox list(&window, SV::ResId(0));
    EXPECT_EQ(list.GetSelectedObject(), MeroNoId);
    ISortedSet<MeroId> tasks;
    MeroId task = MeroNoId;
    MeroCoreModelingManager::GetGlobal()->enhanced().getClassIDFromClassName(
        Mero_GetCoreVarConst(CoreProcessLibrary), "Task", task);
    MeroCoreModelingManager::GetGlobal()->basic().getAllInstancesOfClassAndSubClassInModel(
        modelNamed(platform, "Order"), task, tasks, true);
    EXPECT_EQ(list.ShowObjects(tasks), RepositoryOk);
    EXPECT_EQ(texts(list), SV::String("/A \"b\"/Check/Pack"));
    EXPECT_EQ(list.ShowObjects({task}), RepositoryOk);
    EXPECT_EQ(texts(list), SV::String("/Task"));
    list.SelectEntry(task);
    EXPECT_EQ(list.GetSelectedObject(), task);
}

TEST(ClassIconsTest, KnownClassesHaveALookAndOthersTheCommonOne) {
    MeroGrObjAttrHandler& looks = *MeroGrObjAttrHandler::GetGlobal();
    EXPECT_NE(looks.FindPattern(true, true, "Task")->GetIconImage(),
              looks.FindPattern(true, true, "Own class")->GetIconImage());
    EXPECT_EQ(looks.FindPattern(true, true, ""), nullptr);
    EXPECT_EQ(looks.FindPattern(true, false, "Own class"), nullptr);
}

}  // namespace

}  // namespace mero::test
