#include "platform/interchange/repository_document.h"
#include "tests/platform/interchange/parameter_import.h"

namespace mero {

namespace {

Result<ImportReport> import(const std::string& name, Repository& repository) {
    return importBpmn({test::dataFile(name), name}, repository);
}

class BpmnImport : public test::ParameterImport {
protected:
    [[nodiscard]] std::string className(const Object& of) const {
        return repository.library().findClass(of.classId)->name;
    }
    [[nodiscard]] std::string done(const ImportReport& report, std::string_view element) const {
        std::string all;
        for (const ImportNote& note : report.notes) {
            if (note.element.find(element) != std::string::npos) {
                all += (all.empty() ? "" : "; ") + note.done;
            }
        }
        return all;
    }
};

TEST_F(BpmnImport, EveryKindOfElementFindsItsClass) {
    const auto report = import("many_kinds.bpmn", repository);
    ASSERT_TRUE(report) << report.error().text;
    const std::vector<std::pair<std::string, std::string>> expected{
        {"Start event 1", "Start event"},
        {"Check", "Task"},
        {"Check (2)", "User task"},
        {"Send task 1", "Send task"},
        {"How?", "Exclusive gateway"},
        {"Exclusive gateway 1", "Exclusive gateway"},
        {"Intermediate event 1", "Intermediate event"},
        {"Ship", "Call activity"},
        {"Bill", "Task"},
        {"Pack", "Sub-process"},
        {"Later", "Task"},
        {"End event 1", "End event"}};
    for (const auto& [name, wanted] : expected) {
        EXPECT_EQ(className(object("Shop", name)), wanted) << name;
    }
    EXPECT_EQ(text(object("Shop", "Check"), "BPMN element"), "task");
    EXPECT_EQ(text(object("Shop", "Check"), "Loop"), "standard");
    EXPECT_EQ(repository.numberOf(object("Shop", "Check"), "Loop maximum"), 3.0);
    EXPECT_EQ(text(object("Shop", "Check (2)"), "Loop"), "sequential");
    EXPECT_EQ(text(object("Shop", "Check"), "Bounds"), "10.5 -20 100 80");
    EXPECT_EQ(text(object("Shop", "Check (2)"), "Bounds"), "");
    EXPECT_EQ(text(object("Shop", "End event 1"), "Event kind"), "terminate");
}

TEST_F(BpmnImport, PoolsAndSubProcessesBecomeModelsThatAreCalled) {
    const auto report = import("many_kinds.bpmn", repository);
    ASSERT_TRUE(report) << report.error().text;
    std::vector<std::string> names;
    for (const MeroId id : repository.modelIds()) {
        names.emplace_back(repository.findModel(id)->name.view());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Shop", "Shop / Pack", "Shop / Event sub-process", "Shop (2)",
                                               "Shop staff"}));
    EXPECT_EQ(text(object("Shop", "Pack"), "Referenced model"), "Shop / Pack");
    EXPECT_EQ(text(object("Shop", "Ship"), "Referenced model"), "Shop (2)");
    EXPECT_EQ(className(object("Shop (2)", "Receive task 1")), "Manual task");
    EXPECT_EQ(className(object("Shop (2)", "Receive task 1 (2)")), "Receive task");
    EXPECT_EQ(repository.findModel(repository.findModel("Shop / Pack")->id)->relations.size(), 1U);
}

TEST_F(BpmnImport, FlowsLanesAndBoundariesBecomeRelationsAndPerformers) {
    const auto report = import("many_kinds.bpmn", repository);
    ASSERT_TRUE(report) << report.error().text;
    const auto gateway = repository.relationsFrom(object("Shop", "Exclusive gateway 1").id);
    ASSERT_EQ(gateway.size(), 2U);
    const Relation& again = *repository.findRelation(gateway[0]);
    const Relation& otherwise = *repository.findRelation(gateway[1]);
    EXPECT_EQ(repository.textOf(again, "Condition"), "n < 3");
    EXPECT_EQ(repository.numberOf(again, "Default"), 0.0);
    EXPECT_EQ(repository.textOf(otherwise, "Condition"), "done");
    EXPECT_EQ(repository.numberOf(otherwise, "Default"), 1.0);
    EXPECT_EQ(repository.textOf(otherwise, "BPMN identifier"), "f3");
    const Relation& first =
        *repository.findRelation(repository.relationsFrom(object("Shop", "Start event 1").id).front());
    EXPECT_EQ(repository.textOf(first, "Waypoints"), "1,2 3.25,4");

    const Object& late = object("Shop", "Intermediate event 1");
    EXPECT_EQ(text(late, "Event kind"), "timer");
    EXPECT_EQ(text(late, "Duration"), "fixed(90000.5)");
    EXPECT_EQ(repository.numberOf(late, "Interrupting"), 0.0);
    EXPECT_EQ(repository.findRelation(repository.relationsFrom(late.id).front())->to,
              object("Shop", "Check (2)").id);
    EXPECT_EQ(repository.findRelation(repository.relationsFrom(object("Shop", "to A").id).front())->to,
              object("Shop", "from A").id);
    EXPECT_EQ(repository.findRelation(repository.relationsFrom(object("Shop", "Send task 1").id).front())->to,
              object("Shop (2)", "Receive task 1 (2)").id);

    EXPECT_EQ(text(object("Shop", "Check"), "Performer"), R"(role "Front \"desk\"")");
    EXPECT_EQ(text(object("Shop", "Check (2)"), "Performer"), "role \"Lane 2\"");
    EXPECT_EQ(text(object("Shop / Pack", "Wrap"), "Performer"), "role \"Lane 2\"") << "as the whole of it";
    EXPECT_EQ(className(object("Shop staff", "Front \"desk\"")), "Role");
    EXPECT_EQ(report.value().environment, repository.findModel("Shop staff")->id);
}

TEST_F(BpmnImport, EventsThatGetATimeOrAMessageAreExecuted) {
    const auto report =
        importBpmn({R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL">
      <collaboration id="c"><messageFlow id="m" sourceRef="a" targetRef="told"/></collaboration>
      <process id="p"><task id="a" name="Ask"/><task id="b" name="Work"/>
        <boundaryEvent id="told" name="Told" attachedToRef="b"><messageEventDefinition/></boundaryEvent>
        <boundaryEvent id="deaf" name="Deaf" attachedToRef="b"><messageEventDefinition/></boundaryEvent>
        <boundaryEvent id="rule" name="Rule" attachedToRef="b"><conditionalEventDefinition/></boundaryEvent>
      </process></definitions>)",
                    "shop.bpmn"},
                   repository,
                   {{R"({"event_distribution": [{"event_id": "rule", "distribution_name": "fix",
        "distribution_params": [5]}]})",
                     "shop.json"}});
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_EQ(done(report.value(), "Told"), "");
    EXPECT_EQ(done(report.value(), "Deaf"), "imported, not executed (message event)");
    EXPECT_EQ(done(report.value(), "Rule"), "acts by its time and chance, not as a conditional event");
}

TEST_F(BpmnImport, PerformersOfActivitiesAreRoles) {
    const auto report = importBpmn({R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL">
      <resource id="r" name="Clerk"/>
      <process id="p" name="Shop"><laneSet><lane id="l" name="Desk"><flowNodeRef>a</flowNodeRef>
          <flowNodeRef>b</flowNodeRef></lane></laneSet>
        <task id="a" name="Ask"><performer><resourceRef>r</resourceRef></performer></task>
        <task id="b" name="Bill"/>
        <userTask id="c" name="Call"><potentialOwner><resourceAssignmentExpression><formalExpression>insured
          </formalExpression></resourceAssignmentExpression></potentialOwner></userTask>
        <task id="d" name="Do"><humanPerformer><resourceAssignmentExpression><formalExpression>#{actor}
          </formalExpression></resourceAssignmentExpression></humanPerformer></task></process></definitions>)",
                                    "shop.bpmn"},
                                   repository);
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_EQ(text(object("Shop", "Ask"), "Performer"), "role \"Clerk\"") << "more than the lane says";
    EXPECT_EQ(text(object("Shop", "Bill"), "Performer"), "role \"Desk\"");
    EXPECT_EQ(text(object("Shop", "Call"), "Performer"), "role \"insured\"");
    EXPECT_EQ(className(object("Shop staff", "insured")), "Role");
    EXPECT_EQ(done(report.value(), "\"Do\""), "the performer \"#{actor}\" isn't used");
}

TEST_F(BpmnImport, TimersSayHowOftenAndHowLong) {
    const auto report =
        importBpmn({R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL" xmlns:t="urn:t">
      <timerEventDefinition id="often"><timeCycle>R5/PT10M</timeCycle></timerEventDefinition>
      <process id="p" name="Shop">
        <startEvent id="s" name="Start"><eventDefinitionRef>t:often</eventDefinitionRef></startEvent>
        <intermediateCatchEvent id="w" name="Wait"><timerEventDefinition><timeCycle>R1/P5D</timeCycle>
          </timerEventDefinition></intermediateCatchEvent>
        <intermediateCatchEvent id="x" name="Day"><timerEventDefinition><timeDate>2026-01-05</timeDate>
          </timerEventDefinition></intermediateCatchEvent>
        <startEvent id="y" name="Once"><timerEventDefinition><timeDuration>PT1H</timeDuration></timerEventDefinition>
          </startEvent>
        <task id="t" name="Call"><multiInstanceLoopCharacteristics><loopCardinality>${n}</loopCardinality>
          </multiInstanceLoopCharacteristics></task>
      </process></definitions>)",
                    "shop.bpmn"},
                   repository);
    ASSERT_TRUE(report) << report.error().text;
    EXPECT_EQ(text(object("Shop", "Start"), "Event kind"), "timer");
    EXPECT_EQ(text(object("Shop", "Start"), "Arrival"), "fixed(600)");
    EXPECT_EQ(text(object("Shop", "Wait"), "Duration"), "fixed(432000)");
    EXPECT_EQ(text(object("Shop", "Day"), "Duration"), "");
    EXPECT_EQ(done(report.value(), "\"Day\""), "the time \"2026-01-05\" isn't used");
    EXPECT_EQ(done(report.value(), "\"Once\""), "the time \"PT1H\" isn't used");
    EXPECT_EQ(text(object("Shop", "Call"), "Loop"), "parallel");
    EXPECT_EQ(done(report.value(), "\"Call\""), "the number of passes \"${n}\" isn't used");
}

TEST_F(BpmnImport, WhatIsNotExecutedIsNamed) {
    const auto report = import("many_kinds.bpmn", repository);
    ASSERT_TRUE(report) << report.error().text;
    const std::vector<std::pair<std::string, std::string>> expected{
        {"startEvent (start)", "imported, not executed (signal event)"},
        {"startEvent (alarm)", "imported, not executed (error event)"},
        {"complexGateway \"How?\" (y)", "imported as an exclusive gateway"},
        {"callActivity \"Bill\" (call2)", "imported as a task, what it calls isn't there"},
        {"subProcess \"Later\" (hollow)", "imported as a task, it is empty"},
        {"subProcess (event)",
         "imported as the model \"Shop / Event sub-process\", not executed: nothing calls it"},
        {"task \"Undo\" (undo)", "imported, not executed (compensation)"},
        {"dataObject \"Order form\" (data)", "not imported"},
        {"sequenceFlow (f4)", "left out, \"wrap\" isn't an object of the same model"},
        {"messageFlow (m2)", "left out, one end isn't a flow node"},
        {"participant \"Customer\" (pool3)", "left out, the pool is empty"},
        {"lane (l2)", "names \"missing\", which isn't there"},
        {"ElementParameters", "stands outside of a scenario, isn't used"}};
    for (const auto& [element, wanted] : expected) {
        EXPECT_EQ(done(report.value(), element), wanted) << element;
    }
    EXPECT_EQ(report.value().notes.size(), expected.size());
    EXPECT_TRUE(mentions(report.value(), "many_kinds.bpmn:17:5: startEvent (start): imported, not executed"));
}

TEST_F(BpmnImport, EncodingsPrefixesAndLineEndsMakeNoDifference) {
    const std::vector<std::pair<std::string, std::string>> files{
        {"latin1.bpmn", "Büro"}, {"utf16.bpmn", "Büro"}, {"windows1252.bpmn", "10 € – Büro"}};
    for (const auto& [file, name] : files) {
        const auto report = import(file, repository);
        ASSERT_TRUE(report) << report.error().text;
        const Model& model = *repository.findModel(report.value().models.front());
        EXPECT_EQ(repository.findObject(model.objects.front())->name, name) << file;
        EXPECT_EQ(std::string(model.name.view()) + ".bpmn", file) << "named after the file";
    }
    const auto report = import("crlf_and_blanks.bpmn", repository);
    ASSERT_TRUE(report) << report.error().text;
    const Model& model = *repository.findModel("Orders of  today");
    EXPECT_EQ(model.objects.size(), 2U);
    EXPECT_EQ(model.relations.size(), 1U);
    EXPECT_EQ(className(object("Orders of  today", "Check order")), "Task");
}

TEST_F(BpmnImport, CallsFindModelsOfTheRepositoryByName) {
    ASSERT_TRUE(readRepositoryDocument(
        R"({"format": "mero-repository", "version": 1,
            "models": [{"name": "elsewhere", "type": "Business process"},
                       {"name": "Shop", "type": "Business process"}]})",
        "a.json", repository));
    ASSERT_TRUE(import("many_kinds.bpmn", repository));
    EXPECT_EQ(className(object("Shop (2)", "Bill")), "Call activity");
    EXPECT_EQ(text(object("Shop (2)", "Bill"), "Referenced model"), "elsewhere");
}

TEST_F(BpmnImport, ImportedModelsSurviveARoundThroughADocument) {
    ASSERT_TRUE(import("many_kinds.bpmn", repository));
    const std::string written = writeRepositoryDocument(repository);
    Repository copy;
    const auto read = readRepositoryDocument(written, "copy", copy);
    ASSERT_TRUE(read) << read.error().text;
    EXPECT_EQ(writeRepositoryDocument(copy), written);
}

std::string nested(int levels) {
    std::string text = R"(<definitions xmlns="http://www.omg.org/spec/BPMN/20100524/MODEL"><process id="p">)";
    for (int level = 0; level < levels; ++level) {
        text += "<subProcess id=\"s" + std::to_string(level) + "\">";
    }
    text += "<task/>";
    for (int level = 0; level < levels; ++level) {
        text += "</subProcess>";
    }
    return text + "</process></definitions>";
}

TEST_F(BpmnImport, DepthIsLimited) {
    const auto deep = importBpmn({nested(200), "deep.bpmn"}, repository);
    EXPECT_TRUE(deep) << deep.error().text;
    const auto deeper = importBpmn({nested(200000), "deeper.bpmn"}, repository);
    ASSERT_FALSE(deeper);
    EXPECT_NE(deeper.error().text.find("nested deeper than 256 levels"), std::string::npos)
        << deeper.error().text;
}

struct Broken {
    std::string file;
    std::string error;
};

TEST_F(BpmnImport, BrokenFilesAreRefusedWithTheirPlaceAndLeaveNothing) {
    const std::vector<Broken> table{
        {"truncated.bpmn", "truncated.bpmn:"},
        {"declared_entity.bpmn", "declared_entity.bpmn:3:3: declared entities aren't read"},
        {"other_root.bpmn", "other_root.bpmn:2:1: this is no BPMN 2.0 file"},
        {"only_empty_pools.bpmn", "only_empty_pools.bpmn: there is no process with flow nodes"},
        {"double_identifier.bpmn",
         "double_identifier.bpmn:5:24: task (a): another element has this identifier"},
        {"dangling_flow.bpmn", "dangling_flow.bpmn:5:5: sequenceFlow (f): there is no flow node \"nowhere\""},
        {"unknown_encoding.bpmn", "unknown_encoding.bpmn: the encoding \"ebcdic-cp-us\" isn't known"},
        {"broken_utf8.bpmn", "broken_utf8.bpmn:3:21: the bytes aren't UTF-8"}};
    for (const Broken& broken : table) {
        const auto report = import(broken.file, repository);
        ASSERT_FALSE(report) << broken.file;
        EXPECT_TRUE(report.error().text.starts_with(broken.error)) << report.error().text;
        EXPECT_TRUE(repository.modelIds().empty()) << broken.file;
    }
    for (const std::string& text : {std::string(), std::string("\0\0", 2), std::string("no xml"),
                                    std::string("<a/><b/>"), std::string("\xff\xfe<")}) {
        EXPECT_FALSE(importBpmn({text, "odd.bpmn"}, repository));
    }
}

TEST_F(BpmnImport, NoPrefixOfAFileCrashesOrLeavesAnything) {
    const std::string whole = test::dataFile("many_kinds.bpmn");
    for (std::size_t length = 0; length < whole.size() - 20; length += 7) {
        EXPECT_FALSE(importBpmn({std::string_view(whole).substr(0, length), "cut.bpmn"}, repository));
    }
    EXPECT_TRUE(repository.modelIds().empty());
}

}  // namespace

}  // namespace mero
