#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "component/agents/super_agent.h"
#include "component/management/agent_management.h"
#include "tests/component/support/embedded_platform.h"
#include "tests/component/support/failing_repository.h"
#include "tests/component/support/recording_control.h"
#include "tests/component/support/sample_models.h"

namespace mero::test {
namespace {

const SV::String wholeDays = "CALENDAR DAILY hours:\"00:00-24:00\"";

const std::string definitionOfFaults = "AGENT\npath-analysis\nlock-calendar\n" + frequencySection;

std::string documentOfFaults() {
    return sampleModels(agentDocument("M", "Process agent", definitionOfFaults, taskObjects),
                        agentDocument("W", "Environment agent", "AGENT\nvolume-analysis", "all \"Worker\""));
}

/// What came of a scenario in which one call failed.
struct Outcome {
    std::string operation;  ///< the one that failed; empty if all calls went well
    int status = 0;
    std::string before;
    std::string after;
    std::vector<std::string> internalErrors;
    std::vector<std::uint32_t> boxes;
    bool waiting = false;
};

/// `scenario` gives a status; `prepare` comes before the failing call.
class RepositoryFaults : public testing::Test {
protected:
    using Step = std::function<int(EmbeddedPlatform&, MeroAgentManagement&)>;

    static Outcome runWithFault(int call, int code, const Step& prepare, const Step& scenario) {
        EmbeddedPlatform platform(documentOfFaults());
        MeroAgentManagement management;
        if (prepare) {
            prepare(platform, management);
        }
        Outcome outcome;
        outcome.before = platform.snapshot();
        {
            const FailingRepository repository(call, code);
            outcome.status = scenario(platform, management);
            outcome.operation = repository.failedOperation();
        }
        outcome.after = platform.snapshot();
        outcome.internalErrors = EmbeddedPlatform::internalErrors();
        outcome.boxes = EmbeddedPlatform::boxes();
        outcome.waiting = SV::GetpApp()->IsWait();
        return outcome;
    }

    /// Lets one call after the other fail until the scenario passes without a failure.
    static void failEachCall(const Step& scenario, const std::function<void(const Outcome&)>& examine,
                             const Step& prepare = {}) {
        for (int call = 1;; ++call) {
            const Outcome outcome = runWithFault(call, RepositoryStorageFailed, prepare, scenario);
            if (outcome.operation.empty()) {
                EXPECT_GT(call, 1);
                break;
            }
            SCOPED_TRACE("call " + std::to_string(call) + ", " + outcome.operation);
            EXPECT_FALSE(outcome.waiting);
            examine(outcome);
        }
    }

    static void expectReported(const Outcome& outcome) {
        EXPECT_FALSE(outcome.internalErrors.empty() && outcome.boxes.empty()) << "nobody was told";
    }
};

TEST_F(RepositoryFaults, CreationWithoutTextsLeavesNothingBehind) {
    failEachCall(
        [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
            MeroId id = MeroNoId;
            return management.createSuperAgent(platform.model("Order"), id, taskObjects, nullptr, 0);
        },
        [](const Outcome& outcome) {
            if (outcome.status != StatusOk) {
                EXPECT_EQ(outcome.after, outcome.before);
            }
            // A class that can't be had and an instance that can't be made are told by the status alone.
            if (outcome.operation != "createInstance" && outcome.operation != "getAllSubClasses") {
                expectReported(outcome);
            }
        });
}

TEST_F(RepositoryFaults, CreationWithAllTextsLeavesNothingBehindUnlessItCannotBeNamed) {
    failEachCall(
        [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
            MeroKilnParser parser(canonicalDefinition, "test", "test");
            parser.Parse();
            MeroId id = MeroNoId;
            const MeroId agentClass =
                Library::standard().findClass(ClassCodeProcessLibrary, "Process agent")->id;
            return management.createSuperAgent(platform.model("Order"), agentClass, id, taskObjects, &parser,
                                               wholeDays, "note", nullptr, 0, "A");
        },
        [](const Outcome& outcome) {
            if (outcome.operation == "RenameInstance") {
                EXPECT_EQ(outcome.status, StatusRepositoryError);
                EXPECT_NE(outcome.after, outcome.before);
                EXPECT_EQ(outcome.internalErrors, (std::vector<std::string>{"aeamanag"}));
            } else if (outcome.status != StatusOk) {
                EXPECT_EQ(outcome.after, outcome.before);
            } else {
                EXPECT_NE(outcome.after.find("A-"), std::string::npos);
            }
        });
}

TEST_F(RepositoryFaults, CreationThatCannotBeTakenBackIsTold) {
    // The calendar is bad, so that the last call of the repository is the deletion.
    const auto create = [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
        MeroKilnParser parser("AGENT", "test", "test");
        parser.Parse();
        MeroId id = MeroNoId;
        const MeroId agentClass = Library::standard().findClass(ClassCodeProcessLibrary, "Process agent")->id;
        return management.createSuperAgent(platform.model("Order"), agentClass, id, "", &parser, "bad", "",
                                           nullptr, 0, "");
    };
    failEachCall(create, [](const Outcome& outcome) {
        EXPECT_NE(outcome.status, StatusOk);
        if (outcome.operation == "deleteInstance") {
            EXPECT_EQ(outcome.status, StatusRepositoryError);
            EXPECT_EQ(outcome.internalErrors, (std::vector<std::string>{"aeamanag"}));
        } else {
            EXPECT_EQ(outcome.after, outcome.before);
        }
    });
}

TEST_F(RepositoryFaults, MentionOfAnAgentLosesNoText) {
    failEachCall(
        [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
            MeroSuperAgent* agent = nullptr;
            return management.getAgentFromID(agent, platform.agent("Order", "M"), 1);
        },
        [](const Outcome& outcome) {
            EXPECT_EQ(outcome.status,
                      outcome.operation == "getModelOfInstance" ? StatusRepositoryError : StatusOk);
            EXPECT_EQ(outcome.after, outcome.before);
            expectReported(outcome);
        });
}

TEST_F(RepositoryFaults, DefinitionReadStoresTheNewTextOrKeepsTheOld) {
    const auto mention = [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
        MeroSuperAgent* agent = nullptr;
        return management.getAgentFromID(agent, platform.agent("Order", "M"), 1);
    };
    failEachCall(
        [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
            MeroSuperAgent* agent = nullptr;
            management.getAgentFromID(agent, platform.agent("Order", "M"), 0);
            return agent->readDefinitionText(
                SV::String(canonicalDefinition + "\nFREQUENCY name:\"G\" relative " + "resultscope:process"));
        },
        [](const Outcome& outcome) {
            expectReported(outcome);
            const bool labelOnly =
                outcome.operation == "getAttributeName" || outcome.operation == "getAttributeValue";
            EXPECT_EQ(outcome.status, labelOnly ? StatusOk : StatusRepositoryError);
            EXPECT_EQ(outcome.after == outcome.before, outcome.status != StatusOk);
        },
        mention);
}

TEST_F(RepositoryFaults, ActivationLosesNoSection) {
    failEachCall(
        [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
            return management.setActivationOfAgent(platform.agent("Order", "M"), 0);
        },
        [](const Outcome& outcome) {
            expectReported(outcome);
            EXPECT_NE(outcome.after.find("lock-calendar"), std::string::npos);
            EXPECT_NE(outcome.after.find("FREQUENCY"), std::string::npos);
        });
}

TEST_F(RepositoryFaults, UnreadTextsAreReadOnTheNextMention) {
    failEachCall(
        [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
            const MeroId id = platform.agent("Order", "M");
            MeroSuperAgent* agent = nullptr;
            return management.getAgentFromID(agent, id, 1) == StatusOk && agent->hasUnreadTexts()
                       ? management.setActivationOfAgent(id, 0)
                       : StatusRefused;
        },
        [](const Outcome& outcome) {
            if (outcome.status == StatusOk) {
                EXPECT_NE(outcome.after.find("path-analysis\\nlock-calendar\\ndeactivate\\nFREQUENCY"),
                          std::string::npos);
            }
        });
}

TEST_F(RepositoryFaults, CheckThatCannotReadATextKeepsItsAnswers) {
    const auto mention = [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
        MeroSuperAgent* agent = nullptr;
        return management.getAgentFromID(agent, platform.agent("Order", "M"), 1);
    };
    failEachCall(
        [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
            MeroSuperAgent* agent = nullptr;
            management.getAgentFromID(agent, platform.agent("Order", "M"), 0);
            int definitionOk = 7;
            int calendarOk = 7;
            int objectsOk = 7;
            const int status = agent->checkAgent(definitionOk, calendarOk, objectsOk, 0);
            EXPECT_EQ(definitionOk == 7, status == StatusRepositoryError);
            EXPECT_EQ(agent->checkAgent(definitionOk, calendarOk, objectsOk, 0),
                      status == StatusRepositoryError ? StatusOk : status);
            return status;
        },
        [](const Outcome& outcome) {
            EXPECT_EQ(outcome.after, outcome.before);
            // A failure inside the expression is a bad expression.
            if (outcome.status == StatusRepositoryError) {
                expectReported(outcome);
            }
        },
        mention);
}

TEST_F(RepositoryFaults, RunEndsWhateverFails) {
    failEachCall(
        [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
            RecordingControl control;
            const int status =
                management.simStart(AnalysisPath, &control, {1, 2, 3, 4}, {platform.model("Order")},
                                    platform.model("Staff"), nullptr, 365.0, 24.0);
            EXPECT_EQ(management.simEnd(), StatusOk);
            EXPECT_TRUE(control.attached.empty());
            return status;
        },
        [](const Outcome& outcome) {
            EXPECT_EQ(outcome.after, outcome.before);
            expectReported(outcome);
            if (outcome.operation == "getAllReferencedModels") {
                EXPECT_EQ(outcome.status, StatusRepositoryError);
                EXPECT_EQ(outcome.internalErrors, (std::vector<std::string>{"aeamanag"}));
            }
        });
}

TEST_F(RepositoryFaults, QuietRefusalOfTheCalledModelsIsNotReported) {
    const auto start = [](EmbeddedPlatform& platform, MeroAgentManagement& management) {
        RecordingControl control;
        return management.simStart(AnalysisPath, &control, {1, 2, 3, 4}, {platform.model("Order")}, 0,
                                   nullptr, 365.0, 24.0);
    };
    const Outcome outcome = runWithFault(1, RepositoryQuietRefusal, {}, start);
    EXPECT_EQ(outcome.operation, "computeSubprocesses");
    EXPECT_EQ(outcome.status, StatusRepositoryError);
    EXPECT_TRUE(outcome.internalErrors.empty());
    EXPECT_TRUE(outcome.boxes.empty());
}

}  // namespace
}  // namespace mero::test
