#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sstream>

#include "platform/interchange/xes_import.h"
#include "platform/interchange/xes_rows.h"
#include "platform/interchange/xes_trace.h"

namespace mero {

namespace {

/// An event of a test log.
std::string event(const std::string& activity, const std::string& transition, const std::string& time,
                  const std::string& more = {}) {
    std::string text = "<event>";
    const auto add = [&text](const std::string& kind, const std::string& key, const std::string& value) {
        text += value.empty() ? "" : "<" + kind + " key=\"" + key + "\" value=\"" + value + "\"/>";
    };
    add("string", "concept:name", activity);
    add("string", "lifecycle:transition", transition);
    add("date", "time:timestamp", time.empty() ? "" : "2026-01-05T00:00:" + time + "Z");
    return text + more + "</event>\n";
}

std::string trace(const std::string& events) {
    return "<trace>\n" + events + "</trace>";
}

std::string resource(const std::string& name) {
    return "<string key=\"org:resource\" value=\"" + name + "\"/>";
}

/// The run as text: time, code and what else there is of activity, worker and pass, events separated by "; ".
std::string play(const std::string& content, XesClock clock = XesClock::Instants) {
    std::istringstream input("<log>" + content + "</log>");
    Repository repository;
    const auto report = importXes(input, "log.xes", repository);
    if (!report) {
        return report.error().text;
    }
    input.clear();
    input.seekg(0);
    XesTrace run(input, "log.xes", repository, report.value().models.front(), report.value().environment,
                 clock);
    if (const auto prepared = run.prepare(); !prepared) {
        return prepared.error().text;
    }
    std::string text;
    SimEvent next;
    while (run.next(next).value()) {
        text += (text.empty() ? "" : "; ") + std::to_string(next.time) + ":" + std::to_string(next.code);
        if (next.code == EventRunStart || next.code == EventRunEnd) {
            continue;
        }
        text += std::string(" ") + (next.passKey->IsEmpty() ? next.mainKey : next.passKey)->GetStr();
        for (const MeroId id : {next.objectId, next.assignedExecutiveId, next.executiveId}) {
            text += id == MeroNoId ? "" : std::string(" ") + repository.findObject(id)->name.GetStr();
        }
    }
    return text;
}

TEST(XesTrace, PlaysAllTransitionsOfTheStandard) {
    EXPECT_EQ(play(trace(
                  event("A", "schedule", "01") + event("A", "assign", "02", resource("Ann")) +
                  event("A", "reassign", "03", resource("Bob")) + event("A", "START", "04", resource("Bob")) +
                  event("A", "suspend", "05", resource("Bob")) + event("A", "Resume", "06", resource("Bob")) +
                  event("A", "complete", "07", resource("Bob")))),
              "0:3; 1:11 1; 1:22 1.1 A; 2:1 1.1 A Ann; 3:1 1.1 A Bob; 4:17 1.1 A Bob; 5:18 1.1 A Bob; "
              "6:19 1.1 A Bob; 7:20 1.1 A Bob; 7:13 1; 7:6");
}

TEST(XesTrace, GivesUpPassesWithoutAnEndAndEndsAbortedCases) {
    const std::string work = event("B", "complete", "01");
    const std::string begin = "0:3; 1:11 1; 1:22 1.1 B; 1:17 1.1 B; 1:20 1.1 B; ";
    EXPECT_EQ(play(trace(work + event("A", "schedule", "02") + event("A", "withdraw", "03"))),
              begin + "2:22 1.2 A; 3:15 1; 3:6");
    EXPECT_EQ(play(trace(work + event("A", "schedule", "02") + event("A", "manualskip", "03"))),
              begin + "2:22 1.2 A; 3:13 1; 3:6");
    EXPECT_EQ(play(trace(work + event("A", "start", "02") + event("A", "ate_abort", "03") +
                         event("B", "complete", "04"))),
              begin + "2:22 1.2 A; 2:17 1.2 A; 3:18 1.2 A; 4:22 1.3 B; 4:17 1.3 B; 4:20 1.3 B; 4:13 1; 4:6");
    EXPECT_EQ(play(trace(work + event("A", "pi_abort", "02") + event("B", "complete", "03"))),
              begin + "2:15 1; 2:6");
    EXPECT_EQ(play(trace(work + event("A", "Wait - User", "02"))), begin + "2:13 1; 2:6");
}

TEST(XesTrace, ClosesWorkThatOutlastsItsCase) {
    const std::string work = event("D", "complete", "01") + event("A", "start", "01", resource("Ann")) +
                             event("B", "start", "01", resource("Bob")) +
                             event("B", "suspend", "02", resource("Bob"));
    const std::string begin =
        "0:3; 1:11 1; 1:22 1.1 D; 1:17 1.1 D; 1:20 1.1 D; 1:22 1.2 A; 1:1 1.2 A Ann; 1:17 1.2 A Ann; "
        "1:22 1.3 B; 1:1 1.3 B Bob; 1:17 1.3 B Bob; 2:18 1.3 B Bob; ";
    EXPECT_EQ(play(trace(work)), begin + "2:18 1.2 A Ann; 2:13 1; 2:6");
    EXPECT_EQ(play(trace(work + event("A", "pi_abort", "03") + event("A", "complete", "04"))),
              begin + "3:18 1.2 A Ann; 3:15 1; 3:6");
    EXPECT_EQ(play(trace(work + event("A", "ate_abort", "03") + event("C", "start", "04") +
                         event("C", "suspend", "05"))),
              begin + "3:18 1.2 A Ann; 4:22 1.4 C; 4:17 1.4 C; 5:18 1.4 C; 5:13 1; 5:6");
}

TEST(XesTrace, GivesEachWorkPeriodOneWorker) {
    const std::string begin = "0:3; 1:11 1; 1:22 1.1 A; ";
    const std::string end = "5:13 1; 5:6";
    const std::string ann = resource("Ann");
    const std::string bob = resource("Bob");
    for (const auto& [events, expected] : std::vector<std::pair<std::string, std::string>>{
             {event("A", "start", "01", ann) + event("A", "suspend", "02") + event("A", "resume", "03"),
              "1:1 1.1 A Ann; 1:17 1.1 A Ann; 2:18 1.1 A Ann; 3:19 1.1 A Ann; 5:20 1.1 A Ann; "},
             {event("A", "start", "01") + event("A", "suspend", "02") + event("A", "resume", "03", bob),
              "1:1 1.1 A Bob; 1:17 1.1 A Bob; 2:18 1.1 A Bob; 3:19 1.1 A Bob; 5:20 1.1 A Bob; "},
             {event("A", "start", "01", ann) + event("A", "suspend", "02", ann) +
                  event("A", "resume", "03", bob),
              "1:1 1.1 A Ann; 1:17 1.1 A Ann; 2:18 1.1 A Ann; 3:1 1.1 A Bob; 3:19 1.1 A Bob; 5:20 1.1 A "
              "Bob; "},
             {event("A", "start", "01", ann) + event("A", "reassign", "02", bob) +
                  event("A", "assign", "03", bob),
              "1:1 1.1 A Ann; 1:17 1.1 A Ann; 2:18 1.1 A Ann; 2:1 1.1 A Bob; 2:19 1.1 A Bob; 5:20 1.1 A "
              "Bob; "},
             {event("A", "start", "01") + event("A", "assign", "02", bob),
              "1:1 1.1 A Bob; 1:17 1.1 A Bob; 5:20 1.1 A Bob; "}}) {
        EXPECT_EQ(play(trace(events + event("A", "complete", "05"))),
                  fmt::format("{}{}{}", begin, expected, end));
    }
    EXPECT_EQ(play(trace(event("A", "assign", "01", ann) + event("A", "start", "02", ann) +
                         event("A", "complete", "05", bob))),
              begin + "1:1 1.1 A Ann; 2:1 1.1 A Bob; 2:17 1.1 A Bob; 5:20 1.1 A Bob; " + end);
}

TEST(XesTrace, PairsFirstInFirstOutAndSortsByTime) {
    EXPECT_EQ(
        play(trace(event("A", "complete", "07") + event("A", "start", "01") + event("A", "start", "03") +
                   event("A", "suspend", "04") + event("A", "complete", "05"))),
        "0:3; 1:11 1; 1:22 1.1 A; 1:17 1.1 A; 3:22 1.2 A; 3:17 1.2 A; 4:18 1.1 A; 5:19 1.1 A; "
        "5:20 1.1 A; 7:20 1.2 A; 7:13 1; 7:6");
}

TEST(XesTrace, MergesCasesByTimeAndLeavesEmptyOnesOut) {
    EXPECT_EQ(play("<trace/>" + trace("") + trace(event("A", "", "02") + event("B", "", "05")) +
                   trace(event("A", "", "03"))),
              "0:3; 2:11 3; 2:22 3.1 A; 2:17 3.1 A; 2:20 3.1 A; 3:11 4; 3:22 4.1 A; 3:17 4.1 A; 3:20 4.1 A; "
              "3:13 4; 5:22 3.2 B; 5:17 3.2 B; 5:20 3.2 B; 5:13 3; 5:6");
}

TEST(XesTrace, FillsWhatEventsLack) {
    EXPECT_EQ(play(trace(event("", "", "") + event("A", "own word", "02") + event("B", "", ""))),
              "0:3; 2:11 1; 2:22 1.1 (no activity); 2:17 1.1 (no activity); 2:20 1.1 (no activity); "
              "2:22 1.2 A; 2:17 1.2 A; 2:20 1.2 A; 2:22 1.3 B; 2:17 1.3 B; 2:20 1.3 B; 2:13 1; 2:6");
    EXPECT_EQ(play(trace("<event><string key='Activity' value='A'/><string key='resource' value='Ann'/>"
                         "<string key='time:timestamp' value='2026/01/06 00:00:00.999'/></event>")),
              "0:3; 86400:11 1; 86400:22 1.1 A; 86400:1 1.1 A Ann; 86400:17 1.1 A Ann; 86400:20 1.1 A Ann; "
              "86400:13 1; 86400:6");
}

TEST(XesTrace, PlaysIntervalEventsFromTheirStart) {
    const auto from = [](const std::string& time) {
        return "<date key='start_timestamp' value='2026-01-05T00:00:" + time + "Z'/>";
    };
    EXPECT_EQ(play(trace(event("A", "", "09", from("01")) + event("B", "", "05", from("07")))),
              "0:3; 1:11 1; 1:22 1.2 A; 1:17 1.2 A; 5:22 1.1 B; 5:17 1.1 B; 5:20 1.1 B; 9:20 1.2 A; "
              "9:13 1; 9:6");
    EXPECT_EQ(play(trace(event("A", "schedule", "01") + event("A", "complete", "09", from("05")) +
                         event("B", "schedule", "02") + event("B", "assign", "03", resource("Ann")) +
                         event("B", "complete", "09", from("01")))),
              "0:3; 1:11 1; 1:22 1.1 A; 2:22 1.2 B; 3:1 1.2 B Ann; 3:17 1.2 B Ann; 5:17 1.1 A; 9:20 1.1 A; "
              "9:20 1.2 B Ann; 9:13 1; 9:6");
}

TEST(XesTrace, PlaysALogWithoutTimesAtTimeZero) {
    const std::string log =
        trace(event("A", "complete", "")) + trace(event("A", "complete", "") + event("B", "complete", "x"));
    const std::string expected =
        "0:3; 0:11 1; 0:22 1.1 A; 0:17 1.1 A; 0:20 1.1 A; 0:13 1; 0:11 2; 0:22 2.1 A; 0:17 2.1 A; 0:20 2.1 "
        "A; "
        "0:22 2.2 B; 0:17 2.2 B; 0:20 2.2 B; 0:13 2; 0:6";
    EXPECT_EQ(play(log), expected);
    EXPECT_EQ(play(log, XesClock::WallClock), expected);
    std::istringstream input("<log>" + log + "</log>");
    Repository repository;
    EXPECT_EQ(importXes(input, "log.xes", repository).value().runOptions, "--start 1970-01-05T00:00:00");
}

TEST(XesTrace, HeedsOrDropsOffsets) {
    const std::string log = trace(
        "<event><string key='concept:name' value='A'/><string key='lifecycle:transition' value='start'/>"
        "<date key='time:timestamp' value='2026-03-29T01:00:00+01:00'/></event>"
        "<event><string key='concept:name' value='A'/><string key='lifecycle:transition' "
        "value='complete'/><date key='time:timestamp' value='2026-03-29T04:00:00+02:00'/></event>");
    const std::string sunday = std::to_string(6 * 86400 + 3600);
    EXPECT_NE(play(log).find(sunday + ":17"), std::string::npos);
    EXPECT_NE(play(log).find(std::to_string(6 * 86400 + 3 * 3600) + ":20"), std::string::npos);
    EXPECT_NE(play(log, XesClock::WallClock).find(std::to_string(6 * 86400 + 4 * 3600) + ":20"),
              std::string::npos);
}

TEST(XesTrace, RefusesALogOfOtherModels) {
    Repository repository;
    std::istringstream other("<log><trace>" + event("A", "", "01") + "</trace></log>");
    const auto report = importXes(other, "a.xes", repository);
    std::istringstream input("<log>\n<trace>\n" + event("B", "", "01") + "</trace></log>");
    XesTrace run(input, "b.xes", repository, report.value().models.front(), MeroNoId);
    EXPECT_EQ(run.prepare().error().text, "b.xes:3: the model \"a\" has no activity \"B\"");
}

TEST(XesRowSorter, MergesRunsOfTheTemporaryFile) {
    constexpr std::uint32_t Rows = 50'000;
    XesRowSorter sorter(5000);
    for (std::uint32_t index = 0; index < Rows; ++index) {
        XesRow row;
        row.time = static_cast<std::int64_t>(index * 7919U % Rows / 3);
        row.caseNumber = index % 7;
        row.sequence = index;
        sorter.add(row);
    }
    sorter.finish();
    XesRow last;
    XesRow row;
    std::uint32_t count = 0;
    for (; sorter.next(row); last = row, ++count) {
        ASSERT_TRUE(count == 0 || last < row);
    }
    EXPECT_EQ(count, Rows);
}

TEST(XesImport, MakesActivitiesWorkersRolesAndUnitsAndCountsWhatIsMissing) {
    const std::string staff =
        resource("Ann") +
        "<string key=\"org:role\" value=\"Clerk\"/><string key=\"org:group\" value=\"Desk\"/>";
    std::istringstream input("<log><string key=\"concept:name\" value=\"Claims\"/>" +
                             trace(event("A", "start", "01", staff) + event("A", "complete", "02", staff) +
                                   event("", "Queued", "x")) +
                             "<trace/></log>");
    Repository repository;
    const auto report = importXes(input, "dir/log.xes.gz", repository);
    ASSERT_TRUE(report.isGood()) << report.error().text;
    EXPECT_EQ(repository.findModel("Claims")->objects.size(), 2U);
    const MeroId environment = repository.findModel("Claims resources")->id;
    EXPECT_EQ(environment, report.value().environment);
    const Object* const ann = repository.findObject(environment, MeroNoId, "Ann");
    ASSERT_NE(ann, nullptr);
    ASSERT_EQ(repository.relationsFrom(ann->id).size(), 2U);
    std::string notes;
    for (const ImportNote& note : report.value().notes) {
        notes += noteText(note).substr(15) + "\n";
    }
    EXPECT_EQ(notes,
              " 1 traces without events: left out\n"
              " 1 events without activity: played as \"(no activity)\"\n"
              " 1 events without resource: played with the worker of their pass\n"
              " 1 times that can't be read: taken as missing\n"
              " 1 events with an unknown transition: not played\n");
}

TEST(XesImport, CountsPassesThatNobodyWorksOn) {
    const auto countedIn = [](const std::string& content) {
        std::istringstream input("<log>" + content + "</log>");
        Repository repository;
        const auto report = importXes(input, "log.xes", repository);
        for (const ImportNote& note : report.value().notes) {
            if (note.element.ends_with("passes without any resource")) {
                return note.element.substr(0, note.element.find(' '));
            }
        }
        return std::string("none");
    };
    const std::string ann = resource("Ann");
    EXPECT_EQ(countedIn(trace(event("A", "start", "01") + event("A", "start", "02", ann) +
                              event("A", "complete", "03") + event("A", "complete", "04"))),
              "1");
    EXPECT_EQ(countedIn(trace(event("A", "schedule", "01") + event("A", "start", "02") +
                              event("A", "complete", "03", ann))),
              "none");
    EXPECT_EQ(
        countedIn(trace(event("A", "", "01") + event("A", "", "01", ann)) + trace(event("B", "", "01"))),
        "2");
}

TEST(XesImport, TakesBackWhatItMadeOfARefusedLog) {
    Repository repository;
    std::istringstream input("<log><trace>" + event("A", "", "01", resource("Ann")) + "</log>");
    EXPECT_EQ(importXes(input, "log.xes", repository).error().text,
              "log.xes:2:1: \"log\" is closed where \"trace\" is open");
    EXPECT_TRUE(repository.modelIds().empty());
}

}  // namespace

}  // namespace mero
