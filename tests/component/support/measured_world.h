#pragma once

#include <map>
#include <memory>
#include <string>

#include "component/agents/atomar_agent.h"
#include "component/management/agent_management.h"
#include "platform/engine/control_component.h"
#include "tests/component/support/embedded_platform.h"

namespace mero::test {

/// A pass of an object: reached, assigned, worked on from its first to its last second, finished.
struct WorkedPass {
    int from = 0;
    int to = 0;
    std::string place;  ///< "main key,model,key", as in "1,Order,1"
    std::string pass;   ///< key
    std::string object;
    std::string worker;
    std::string resource = "";
};

/// The lines of its events for `MeasuredWorld::play`.
std::string linesOf(const WorkedPass& pass);

/// One run of an agent over a trace, in a small world:
///
/// - process "Order": tasks "Check" (1 h, number 3) and "Pack" (2 h, number 5), "Ship", which calls
/// "Shipping";
/// - process "Shipping": task "Load" (half an hour, number 7), "Again", which calls "Shipping" itself;
/// - environment "Staff": workers "Ann" (there for half of the time, hourly wages 20, working from 8 to 16),
///   "Bob" (12.5, always there), "Zed" (availability 0), "Eve" (a calendar without working time), and the IT
///   system "Van" (hourly rate 8).
///
/// The run starts on Monday, 5 January 2026, 0:00. A year has 365 days of 24 hours.
class MeasuredWorld {
public:
    struct Setup {
        std::string sections;  ///< of the agent's definition
        int analysis = AnalysisPath;
        bool inEnvironment = false;  ///< the agent stands in "Staff", else in "Order"
        std::string objects = "all \"Activity\" + all \"Call\"";
        std::string calendar = "CALENDAR DAILY hours:\"00:00-24:00\"";
    };

    explicit MeasuredWorld(const Setup& setup);
    MeasuredWorld(const MeasuredWorld&) = delete;
    MeasuredWorld& operator=(const MeasuredWorld&) = delete;
    ~MeasuredWorld();

    /// Lines
    /// "code,time,main_key,model,key,pass,object,worker,resource,called_model,called_key,calling_object",
    /// ended by line breaks; what is missing at the end of a line is empty. The main model is "Order".
    void play(const std::string& lines);

    /// In the order of the definition.
    [[nodiscard]] MeroAtomarAgent& subAgent(std::size_t index = 0) const;
    /// How values are asked for; unscaled unless a test changes it.
    MeroResultRequest request;
    /// Values by the names of their paths, as in "Order / Check / Ann"; an item's divisor has been applied.
    [[nodiscard]] std::map<std::string, double> values(std::size_t index = 0) const;
    [[nodiscard]] int startStatus() const { return status; }
    [[nodiscard]] const EmbeddedPlatform& host() const { return platform; }

private:
    EmbeddedPlatform platform;
    ControlComponent control;
    MeroAgentManagement management;
    MeroId agentId;
    int status = 0;
};

}  // namespace mero::test
