#include "platform/interchange/event_trace.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <locale>
#include <sstream>

#include "platform/engine/simulation.h"
#include "platform/engine/trace_replay.h"
#include "platform/interchange/repository_document.h"
#include "tests/platform/engine/process_builder.h"
#include "tests/platform/interchange/test_files.h"

namespace mero {
namespace {

/// Two processes and a staff whose names are made to be mistaken.
class EventTraceTest : public testing::Test {
protected:
    EventTraceTest() {
        ProcessBuilder order(repository, "Order");
        orderId = order.id();
        order.add("Process agent", "Check");
        check = order.add("Task", "Check");
        secondCheck = order.add("User task", "Check");
        oddName = order.add("Task", "Ask, \"now\"\r\nor never");
        hashName = order.add("Task", "#5");
        shipId = ProcessBuilder(repository, "Ship").id();
        environmentId = repository.addModel("Staff", 1, ModelAccess::Write, true).value();
        addStaff("Role", "Ann");
        ann = addStaff("Worker", "Ann");
        van = addStaff("Equipment", "Van");
    }

    MeroId addStaff(std::string_view className, const char* name) {
        const MeroId classId = repository.library().findClass(ClassCodeEnvironmentLibrary, className)->id;
        return repository.addObject(environmentId, classId, name).value();
    }

    Result<EventTrace> read(const std::string& text) {
        std::istringstream input(text);
        return readEventTrace(input, "trace.csv", repository, environmentId);
    }
    SimEvent only(const std::string& text) {
        auto result = read(text);
        EXPECT_TRUE(result.isGood()) << result.error().text;
        SimEvent event;
        if (result.isGood()) {
            trace = std::move(result.value());
            EXPECT_EQ(trace.size(), 1U);
            trace.read(0, event);
        }
        return event;
    }
    std::string write(const EventTrace& written) {
        std::ostringstream output;
        EventTraceWriter writer(output, repository, environmentId);
        SimEvent event;
        for (std::size_t index = 0; index < written.size(); ++index) {
            written.read(index, event);
            writer.record(event);
        }
        EXPECT_TRUE(writer.finish().isGood());
        return output.str();
    }

    Repository repository;
    EventTrace trace;
    MeroId orderId = MeroNoId;
    MeroId shipId = MeroNoId;
    MeroId environmentId = MeroNoId;
    MeroId check = MeroNoId;
    MeroId secondCheck = MeroNoId;
    MeroId oddName = MeroNoId;
    MeroId hashName = MeroNoId;
    MeroId ann = MeroNoId;
    MeroId van = MeroNoId;
};

TEST_F(EventTraceTest, NamesAreFoundWhereTheirColumnLooks) {
    const SimEvent event = only(
        "resource,assigned,executive,pass,object,calling_object,called_key,called_model,key,model,main_key,"
        "main_model,time,code\n"
        "Van,#77,Ann,p1,Check,#1000003,k3,Ship,k2,Order,k1,Order,-5,17");
    EXPECT_EQ(event.code, 17);
    EXPECT_EQ(event.time, -5);
    EXPECT_EQ(event.mainModelId, orderId);
    EXPECT_EQ(event.modelId, orderId);
    EXPECT_EQ(event.calledModelId, shipId);
    EXPECT_EQ(event.objectId, check);
    EXPECT_EQ(event.callingObjectId, 1000003);
    EXPECT_EQ(event.executiveId, ann);
    EXPECT_EQ(event.assignedExecutiveId, 77);
    EXPECT_EQ(event.resourceId, van);
    EXPECT_EQ(event.mainKey->view(), "k1");
    EXPECT_EQ(event.key->view(), "k2");
    EXPECT_EQ(event.calledKey->view(), "k3");
    EXPECT_EQ(event.passKey->view(), "p1");
}

TEST_F(EventTraceTest, MissingColumnsAndEmptyCellsAreNothing) {
    const SimEvent event = only(
        "\xEF\xBB\xBF"
        "code,model,pass\r\n28,,\r\n\r\n");
    EXPECT_EQ(event.code, 28);
    EXPECT_EQ(event.time, 0);
    EXPECT_EQ(event.modelId, MeroNoId);
    EXPECT_TRUE(event.passKey->IsEmpty());
}

TEST_F(EventTraceTest, QuotedCellsHoldCommasQuotesAndLineBreaks) {
    const SimEvent event =
        only("code,model,object,key\n17,\"Order\",\"Ask, \"\"now\"\"\r\nor never\",\"a\nb\"\r\n");
    EXPECT_EQ(event.objectId, oddName);
    EXPECT_EQ(event.key->view(), "a\nb");
}

/// The reader takes its input in pieces of 64 KiB; a cell of any length before them moves their border.
TEST_F(EventTraceTest, PiecesOfTheInputDoNotShow) {
    constexpr std::size_t Piece = std::size_t{1} << 16;
    for (std::size_t length = Piece - 30; length < Piece + 4; ++length) {
        const std::string key(length, 'x');
        auto result = read("code,key,model,pass\r\n3," + key + ",Order,\"a\"\"b\"\r\n6,é,Ship,\r\n");
        ASSERT_TRUE(result.isGood()) << length << ": " << result.error().text;
        ASSERT_EQ(result.value().size(), 2U);
        SimEvent event;
        result.value().read(0, event);
        EXPECT_EQ(event.key->view(), key);
        EXPECT_EQ(event.passKey->view(), "a\"b");
        result.value().read(1, event);
        EXPECT_EQ(event.key->view(), "é");
        EXPECT_EQ(event.modelId, shipId);
    }
}

struct RefusedTrace {
    std::string text;
    std::string error;
};

class RefusedTraces : public EventTraceTest, public testing::WithParamInterface<RefusedTrace> {};

TEST_P(RefusedTraces, NameThePlace) {
    const auto result = read(GetParam().text);
    ASSERT_FALSE(result.isGood());
    EXPECT_EQ(result.error().text, "trace.csv:" + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, RefusedTraces,
    testing::Values(
        RefusedTrace{"", "1:1: the header line is missing"},
        RefusedTrace{"code,tme\n3,0\n", "1:6: unknown column \"tme\""},
        RefusedTrace{"code,Time\n", "1:6: unknown column \"Time\""},
        RefusedTrace{"code,time,code\n", "1:11: double column \"code\""},
        RefusedTrace{"time\n0\n", "1:1: the column \"code\" is missing"},
        RefusedTrace{"code,time\n3,0\n6\n", "3:1: 1 cells where the header has 2"},
        RefusedTrace{"code,time\n3,0,\n", "2:1: 3 cells where the header has 2"},
        RefusedTrace{"code,time\n,0\n", "2:1: code: the code is missing"},
        RefusedTrace{"code,time\n3, 0\n", "2:3: time: \" 0\" isn't an integer of 64 bits"},
        RefusedTrace{"code,time\n3,1.5\n", "2:3: time: \"1.5\" isn't an integer of 64 bits"},
        RefusedTrace{"code,time\n3,9223372036854775808\n",
                     "2:3: time: \"9223372036854775808\" isn't an integer of 64 bits"},
        RefusedTrace{"code\n2147483648\n", "2:1: code: \"2147483648\" isn't an integer of 32 bits"},
        RefusedTrace{"code,model\n3,Odrer\n", "2:3: model: unknown model \"Odrer\""},
        RefusedTrace{"code,model\n3,#2147483648\n",
                     "2:3: model: the identifier \"#2147483648\" is out of range"},
        RefusedTrace{"code,model\n3,#12x\n", "2:3: model: unknown model \"#12x\""},
        RefusedTrace{"code,object\n17,Check\n", "2:4: object: \"Check\" is given without a model"},
        RefusedTrace{"code,model,object\n17,Ship,Check\n",
                     "2:9: object: unknown object \"Check\" in model \"Ship\""},
        RefusedTrace{"code,model,object\n17,#9,Check\n", "2:7: object: unknown object \"Check\" in model #9"},
        RefusedTrace{"code,executive\n17,Van\n", "2:4: executive: unknown worker \"Van\""},
        RefusedTrace{"code,resource\n17,Ann\n", "2:4: resource: unknown resource \"Ann\""},
        RefusedTrace{"code,key\n3,\"a\nb\n6,c\n", "2:3: the closing quote of the cell is missing"},
        RefusedTrace{"code,key\n3,\"a\nb\"c\n", "3:3: text behind the closing quote of a cell"},
        RefusedTrace{"code,key\n3,a\"b\n", "2:4: a quote in a cell that doesn't begin with one"},
        RefusedTrace{"code,key\n3,a\rb\n", "2:4: a carriage return without a line feed, outside quotes"},
        RefusedTrace{"code,key\n3,\xE9t\xE9\n", "2:3: the cell isn't UTF-8"},
        RefusedTrace{"code,key\n3,\xED\xA0\x80\n", "2:3: the cell isn't UTF-8"},
        RefusedTrace{std::string("code,key\n3,a\0b\n", 15), "2:3: a zero character in a cell"},
        RefusedTrace{"code,key\n3,a\n\n6,b\n", "3:1: an empty line"},
        RefusedTrace{"code,key\n3," + std::string(1'100'000, 'x') + "\n", "2:3: a cell of more than 1 MiB"}));

TEST_F(EventTraceTest, WorkersNeedAnEnvironment) {
    std::istringstream input("code,executive\n17,Ann\n");
    const auto result = readEventTrace(input, "t", repository, MeroNoId);
    ASSERT_FALSE(result.isGood());
    EXPECT_EQ(result.error().text,
              "t:2:4: executive: unknown worker \"Ann\": the run has no working environment");
    EXPECT_FALSE(readEventTraceFile("no/such/file.csv", repository, environmentId).isGood());
    EXPECT_FALSE(readEventTraceFile(".", repository, environmentId).isGood());
}

TEST_F(EventTraceTest, WrittenNamesLeadBackToTheirObjects) {
    SimEvent event;
    event.code = 17;
    event.modelId = orderId;
    event.executiveId = ann;
    event.resourceId = van;
    EventTrace written;
    for (const MeroId object : {check, secondCheck, oddName, hashName, van, 4711}) {
        event.objectId = object;
        written.append(event);
    }
    event.modelId = shipId;
    event.objectId = check;
    written.append(event);
    event.modelId = 4711;
    written.append(event);

    const std::string text = write(written);
    EXPECT_EQ(text.substr(text.find('\n') + 1),
              fmt::format("17,0,,,Order,,,,,Check,,Ann,,Van\n"
                          "17,0,,,Order,,,,,#{},,Ann,,Van\n"
                          "17,0,,,Order,,,,,\"Ask, \"\"now\"\"\r\nor never\",,Ann,,Van\n"
                          "17,0,,,Order,,,,,#{},,Ann,,Van\n"
                          "17,0,,,Order,,,,,#{},,Ann,,Van\n"
                          "17,0,,,Order,,,,,#4711,,Ann,,Van\n"
                          "17,0,,,Ship,,,,,#{},,Ann,,Van\n"
                          "17,0,,,#4711,,,,,#{},,Ann,,Van\n",
                          secondCheck, hashName, van, check, check));
    const auto again = read(text);
    ASSERT_TRUE(again.isGood()) << again.error().text;
    EXPECT_EQ(write(again.value()), text);
}

TEST_F(EventTraceTest, FailureToWriteIsReported) {
    std::ostringstream output;
    output.setstate(std::ios::badbit);
    EventTraceWriter writer(output, repository, environmentId);
    EXPECT_FALSE(writer.finish().isGood());
}

/// Environment that the command line of an example names, 0 for none.
MeroId environmentOf(const std::string& arguments, const Repository& repository) {
    std::istringstream words(arguments);
    std::string word;
    while (words >> word) {
        if (word == "--environment" && words >> word) {
            return repository.findModel(word)->id;
        }
    }
    return MeroNoId;
}

TEST(EventTraceExamples, ReadBackAsTheyWereWritten) {
    for (const auto& example : test::contentOf(test::sourceFile("tests/system/golden"))) {
        SCOPED_TRACE(example.filename());
        if (!std::filesystem::exists(example / "trace.csv")) {
            continue;
        }
        Repository repository;
        const auto loaded =
            readRepositoryDocument(test::readFile(example / "repo.json"), "repo.json", repository);
        ASSERT_TRUE(loaded.isGood()) << loaded.error().text;
        const MeroId environment = environmentOf(test::readFile(example / "arguments.txt"), repository);

        const auto trace = readEventTraceFile(example / "trace.csv", repository, environment);
        ASSERT_TRUE(trace.isGood()) << trace.error().text;
        const auto fingerprintOf = [](const EventTrace& played, EventSink* sink) {
            ControlComponent control;
            control.setSink(sink);
            replayTrace(played, control);
            return control.fingerprint();
        };
        std::stringstream written;
        EventTraceWriter writer(written, repository, environment);
        const std::uint64_t fingerprint = fingerprintOf(trace.value(), &writer);
        ASSERT_TRUE(writer.finish().isGood());
        const auto again = readEventTrace(written, "written", repository, environment);
        ASSERT_TRUE(again.isGood()) << again.error().text;
        EXPECT_EQ(again.value().size(), trace.value().size());
        EXPECT_EQ(fingerprintOf(again.value(), nullptr), fingerprint);
    }
}

/// Stands in for a locale that the machine may not have; the locale owns it.
class GermanNumbers : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

MeroId addProcess(Repository& repository) {
    ProcessBuilder sub(repository, "Pack");
    sub.chain({sub.add("Start event", "Begin"),
               sub.add("Task", "Wrap", {{"Duration", SV::String("exponential(1234.5)")}})});
    ProcessBuilder main(repository, "Sale");
    const MeroId split = main.add("Exclusive gateway", "Split");
    const MeroId sell = main.add("Task", "Sell", {{"Duration", SV::String("normal(5000,700.25)")}});
    main.chain({main.add("Start event", "Begin"), sell, split,
                main.add("Call activity", "Pack it", {{"Referenced model", SV::String("Pack")}})});
    main.flow(split, sell, 0.25);
    return main.id();
}

TEST_F(EventTraceTest, RecordedRunReplaysToTheSameFingerprintAndBytesInAnyLocale) {
    SimulationSettings settings;
    settings.models = {addProcess(repository)};
    settings.instances = 500;
    const auto record = [&] {
        std::ostringstream output;
        EventTraceWriter writer(output, repository, environmentId);
        ControlComponent control;
        control.setSink(&writer);
        const RunSummary summary = Simulation::prepare(repository, settings).value().run(control);
        EXPECT_TRUE(writer.finish().isGood());
        return std::pair(output.str(), summary.fingerprint);
    };
    const auto [text, fingerprint] = record();

    const auto recorded = read(text);
    ASSERT_TRUE(recorded.isGood()) << recorded.error().text;
    ControlComponent control;
    std::ostringstream output;
    EventTraceWriter writer(output, repository, environmentId);
    control.setSink(&writer);
    replayTrace(recorded.value(), control);
    ASSERT_TRUE(writer.finish().isGood());
    EXPECT_EQ(control.fingerprint(), fingerprint);
    EXPECT_EQ(output.str(), text);

    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new GermanNumbers));
    EXPECT_EQ(record().first, text);
    EXPECT_TRUE(read(text).isGood());
    std::locale::global(before);
}

}  // namespace
}  // namespace mero
