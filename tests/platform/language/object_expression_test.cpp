#include "platform/language/object_expression.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "component/host/core_variables.h"
#include "component/host/simulation.h"

#include "platform/repository/repository.h"
#include "platform/repository/repository_services.h"

namespace {

using mero::Library;
using mero::Repository;

class ObjectExpressionTest : public testing::Test {
protected:
    ObjectExpressionTest() : services(repository) {
        std::size_t type = 0;
        while (repository.library().modelTypes()[type].name != "Business process") {
            ++type;
        }
        model = repository.addModel("Order", type, mero::ModelAccess::Write, true).value();
        check = add("Task", "Check");
        pack = add("Manual task", "Pack \"all\" \\ goods");
        ship = add("Call activity", "Ship");
        sameName = add("Start event", "Check");
        set(check, "Number", 3);
        set(pack, "Number", 10);
        set(check, "Costs", 2.5);
        set(check, "Execution time", SV::String("00:000:00:30:00"));
    }

    MeroId classNamed(const char* name) {
        return repository.library().findClass(ClassCodeProcessLibrary, name)->id;
    }

    MeroId add(const char* className, const SV::String& name) {
        return repository.addObject(model, classNamed(className), name).value();
    }

    void set(MeroId object, const char* attribute, const mero::AttributeValue& value) {
        const MeroId classId = repository.findObject(object)->classId;
        const MeroId attributeId = repository.library().findAttribute(classId, attribute)->id;
        ASSERT_TRUE(repository.setValue(object, attributeId, value).isGood());
    }

    std::vector<MeroId> evaluate(std::string_view expression) {
        ISortedSet<MeroId> objects{1};
        EXPECT_EQ(aEvaluateExpression(model, expression, objects, OseScopeModel, true, true), 0)
            << expression;
        return {objects.begin(), objects.end()};
    }

    bool isRefused(std::string_view expression) {
        ISortedSet<MeroId> objects{1};
        const int code = aEvaluateExpression(model, expression, objects, OseScopeModel, true, true);
        EXPECT_TRUE(code == 0 || objects.empty());
        return code != 0;
    }

    using Ids = std::vector<MeroId>;

    Repository repository;
    mero::RepositoryServices services;
    MeroId model = MeroNoId;
    MeroId check = MeroNoId;
    MeroId pack = MeroNoId;
    MeroId ship = MeroNoId;
    MeroId sameName = MeroNoId;
};

TEST_F(ObjectExpressionTest, PairsFindObjectsByNameAndClass) {
    EXPECT_EQ(evaluate(R"({"Check":"Task" })"), Ids{check});
    EXPECT_EQ(
        evaluate(
            R"( { , "Ship" : "Call activity",, "Check":"Start event","Check":"Task", "Check":"Task" ,} )"),
        (Ids{check, ship, sameName}));
    EXPECT_EQ(evaluate(R"({"Pack \"all\" \\ goods":"Manual task"})"), Ids{pack});
    EXPECT_EQ(evaluate(R"({"Nobody":"Task", "Check":"Task"})"), Ids{check});
    EXPECT_EQ(evaluate("{}"), Ids{});
}

TEST_F(ObjectExpressionTest, AllFindsAClassWithItsSubClasses) {
    EXPECT_EQ(evaluate(R"(all "Activity")"), (Ids{check, pack}));
    EXPECT_EQ(evaluate(R"(all"Task")"), Ids{check});
    EXPECT_EQ(evaluate(R"(all "End event")"), Ids{});
}

TEST_F(ObjectExpressionTest, OperationsGoFromLeftToRightAndWhereBindsTighter) {
    EXPECT_EQ(evaluate(R"(all "Activity" - {"Check":"Task"} + {"Ship":"Call activity"})"), (Ids{pack, ship}));
    EXPECT_EQ(evaluate(R"(all "Activity" + {"Ship":"Call activity"} & all "Call")"), Ids{ship});
    EXPECT_EQ(evaluate(R"(all "Activity" + ({"Ship":"Call activity"} & all "Task"))"), (Ids{check, pack}));
    EXPECT_EQ(evaluate(R"(all "Activity" - {"Check":"Task"} - {"Check":"Task"} - (all "Manual task"))"),
              Ids{});
    EXPECT_EQ(evaluate(R"({"Check":"Task"} + all "Activity" where "Number" > 5)"), (Ids{check, pack}));
    EXPECT_EQ(evaluate(R"(({"Check":"Task"} + all "Activity") where "Number" > 5)"), Ids{pack});
}

TEST_F(ObjectExpressionTest, WhereComparesNumbersAsNumbersAndTextsByBytes) {
    const struct {
        const char* filter;
        Ids expected;
    } cases[] = {
        {R"("Number" = 3)", {check}},
        {R"("Number" <> 3)", {pack}},
        {R"("Number" < 10)", {check}},
        {R"("Number" <= 1e1)", {check, pack}},
        {R"("Number" >= -2.5)", {check, pack}},
        {R"("Costs" > +2.4 where "Number" = 3)", {check}},
        {R"("Number" = "3")", {}},
        {R"("Number" <> "3")", {}},
        {R"("Execution time" = 1800)", {}},
        {R"("Execution time" >= "00:000:00:30:00")", {check}},
        {R"("Execution time" < "00:000:00:30:00")", {pack}},
        {R"("Name" < "D")", {check}},
        {R"("Tusks" <> "x")", {}},
        {R"("Referenced model" = "")", {}},
    };
    for (const auto& [filter, expected] : cases) {
        EXPECT_EQ(evaluate(std::string(R"(all "Activity" where )") + filter), expected) << filter;
    }
}

TEST_F(ObjectExpressionTest, AnUnknownClassIsAFailureAnywhere) {
    EXPECT_TRUE(isRefused(R"({"Check":"Tusk"})"));
    EXPECT_TRUE(isRefused(R"({"Check":"Task"} + all "Tusk")"));
    EXPECT_TRUE(isRefused(R"({"Ann":"Worker"})"));
}

TEST_F(ObjectExpressionTest, FailsWithoutModelOrRepository) {
    ISortedSet<MeroId> objects{1};
    EXPECT_NE(aEvaluateExpression(4711, "{}", objects, OseScopeModel, true, true), 0);
    EXPECT_TRUE(objects.empty());
    MeroCoreModelingManager* installed = MeroCoreModelingManager::SetGlobal(nullptr);
    EXPECT_TRUE(isRefused("{}"));
    MeroCoreModelingManager::SetGlobal(installed);
}

TEST_F(ObjectExpressionTest, RefusesBrokenTextsWithThePlace) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", "line 1, column 1: expected {"},
        {"  ", "line 1, column 3: expected {"},
        {"Check", "line 1, column 1: expected {"},
        {"{\"Check\"", "line 1, column 9: expected a colon"},
        {"{\"Check\":}", "line 1, column 10: expected a class name"},
        {"{\"Check\":\"Task\"", "line 1, column 16: expected a comma or a closing brace"},
        {"{\"Check\":\"Task\" \"Ship\":\"Task\"}", "line 1, column 17: expected a comma or a closing brace"},
        {"{Check:\"Task\"}", "line 1, column 2: expected an object name"},
        {"{\"Check\":\"Task}", "line 1, column 10: the string that begins here"},
        {"{}\n{}", "line 2, column 1: expected +, -, &, where or the end"},
        {"{} +", "line 1, column 5: expected {"},
        {"all", "line 1, column 4: expected a class name"},
        {"allTasks", "line 1, column 1: expected {"},
        {"({}", "line 1, column 4: expected +, -, &, where or a closing bracket"},
        {"{})", "line 1, column 3: expected +"},
        {"{} where Number = 3", "line 1, column 10: expected an attribute name"},
        {"{} where \"Number\" == 3", "line 1, column 20: expected a string or a number"},
        {"{} where \"Number\" ! 3", "line 1, column 19: expected ="},
        {"{} where \"Number\" = inf", "line 1, column 21: expected a string or a number"},
        {"{} where \"Number\" = 1e999", "this number is out of range"},
    };
    for (const auto& [text, error] : cases) {
        const auto result = mero::checkObjectExpression(text);
        ASSERT_FALSE(result.isGood()) << text;
        EXPECT_NE(result.error().text.find(error), std::string::npos) << text << "\n" << result.error().text;
        EXPECT_TRUE(isRefused(text)) << text;
    }
    EXPECT_TRUE(mero::checkObjectExpression(R"({"x":"Tusk"} & all "Y" where "z" <> "")").isGood());
}

TEST_F(ObjectExpressionTest, DeepBracketsAreRefusedWithoutExhaustingTheStack) {
    EXPECT_EQ(evaluate(std::string(100, '(') + R"(all "Task")" + std::string(100, ')')), Ids{check});
    const auto result = mero::checkObjectExpression(std::string(100000, '('));
    ASSERT_FALSE(result.isGood());
    EXPECT_NE(result.error().text.find("nested too deeply"), std::string::npos);
}

TEST_F(ObjectExpressionTest, LongChainsStayQuick) {
    std::string expression = "{}";
    for (int each = 0; each < 20000; ++each) {
        const SV::String name = SV::String("T") + SV::String(each);
        add("Task", name);
        expression += " + {\"" + std::string(name.view()) + "\":\"Task\"}";
    }
    EXPECT_EQ(evaluate(expression).size(), 20000U);
}

}  // namespace
