#include "platform/repository/predefined_agents.h"

namespace mero {

namespace {

// Measures that any model could hold name their model type: their objects exist in models of that type alone.

constexpr char ForEveryAnalysis[] = R"kiln(
AGENT "How often activities run"
 objects:"all \"Activity\" + all \"Call\""
 infotext:"Counts the executions of every activity and call: in the whole run, and for one process on average. An activity that runs 0.25 times per process runs in every fourth one; one with 0 is never reached."
 auto-showextremum
FREQUENCY name:"Executions in all" resultscope:mainobjects absolute
FREQUENCY name:"Executions per process" resultscope:mainobjects history-mem relative

AGENT "How long a process takes"
 objects:"all \"Activity\" + all \"Call\""
 infotext:"Measures how long a process takes, and how much of it is spent at each activity, waiting included. The history shows whether processes get slower during the run."
CYCLETIME name:"Cycle time of the process" resultscope:process history-mem
CYCLETIME name:"Time at the activity" resultscope:mainobjects

AGENT "Where the time goes"
 objects:"all \"Activity\""
 infotext:"Adds up the planned times of the activities that a process passes through: work, waiting, rest and transport. What isn't work is time that customers wait without anybody working for them."
 auto-buildsum
AVGSUM name:"Work" resultscope:mainobjects class:"Activity" attribute:"Execution time" attribute-type:time
AVGSUM name:"Waiting" resultscope:mainobjects class:"Activity" attribute:"Waiting time" attribute-type:time
AVGSUM name:"Rest" resultscope:mainobjects class:"Activity" attribute:"Resting time" attribute-type:time
AVGSUM name:"Transport" resultscope:mainobjects class:"Activity" attribute:"Transport time" attribute-type:time
FORMULA name:"All together" expression:"T:\"Work\" + \"Waiting\" + \"Rest\" + \"Transport\""
OBSERVED "Work"
OBSERVED "Waiting"
OBSERVED "Rest"
OBSERVED "Transport"
FORMULA name:"Share of work in percent" expression:"N:\"Work\" == 0 ? 0 : 100 * \"Work\" / (\"Work\" + \"Waiting\" + \"Rest\" + \"Transport\")"
OBSERVED "Work"
OBSERVED "Waiting"
OBSERVED "Rest"
OBSERVED "Transport"

AGENT "What a process costs"
 objects:"all \"Activity\""
 infotext:"Adds up the costs that stand at the activities a process passes through, for one process on average. The sum is the cost of the process; set the period to a year to see the cost of a year."
 auto-buildsum
AVGSUM name:"Costs" resultscope:mainobjects class:"Activity" attribute:"Costs" attribute-type:numeric history-mem
FREQUENCY name:"Executions per process" resultscope:mainobjects relative
)kiln";

constexpr char ForCapacity[] = R"kiln(
AGENT "Work that activities demand"
 volume-analysis
 allowed-modeltype-1:"Business process"
 objects:"all \"Activity\""
 infotext:"How much working time of people each activity demands, for the process starts of a period that you choose. Absence is counted in by the availability of the workers."
 auto-buildsum
STRAIN name:"Demanded work" resultscope:mainobjects class:"Worker"

AGENT "Cost of people by activity"
 volume-analysis
 allowed-modeltype-1:"Business process"
 objects:"all \"Activity\""
 infotext:"Turns working time into money by the hourly wages of the workers: on average over all processes, and for one execution."
 auto-buildsum
WWECOST name:"Cost per process" resultscope:mainobjects volume-analysis class:"Worker" attribute:"Hourly wages"
UWWECOST name:"Cost per execution" resultscope:mainobjects volume-analysis class:"Worker" attribute:"Hourly wages"

AGENT "Cost of resources by activity"
 volume-analysis
 allowed-modeltype-1:"Business process"
 objects:"all \"Activity\""
 infotext:"Turns the time that equipment and IT systems are bound into money by their hourly rates: on average over all processes, and for one execution."
 auto-buildsum
WWECOST name:"Cost per process" resultscope:mainobjects volume-analysis class:"Resource" attribute:"Hourly rate"
UWWECOST name:"Cost per execution" resultscope:mainobjects volume-analysis class:"Resource" attribute:"Hourly rate"

AGENT "People needed"
 volume-analysis
 allowed-modeltype-1:"Working environment"
 objects:"all \"Worker\""
 infotext:"How much working time the processes demand of each worker, for the process starts of a period that you choose. More than a worker's hours in that period can't be done. Group by role to see which role is short of people."
 grouping-class:"Role"
 grouping-relation:"Has role"
STRAIN name:"Demanded work" resultscope:mainobjects class:"Worker"

AGENT "Cost of the staff"
 volume-analysis
 allowed-modeltype-1:"Working environment"
 objects:"all \"Worker\""
 infotext:"What the work of each worker costs by his hourly wages, for one process on average. The sum is the cost of people for one process."
 auto-buildsum
 grouping-class:"Organisational unit"
 grouping-relation:"Belongs to"
WWECOST name:"Cost per process" resultscope:mainobjects volume-analysis class:"Worker" attribute:"Hourly wages"

AGENT "Cost of the resources"
 volume-analysis
 allowed-modeltype-1:"Working environment"
 objects:"all \"Resource\""
 infotext:"What the use of each resource costs by its hourly rate, for one process on average."
 auto-buildsum
WWECOST name:"Cost per process" resultscope:mainobjects volume-analysis class:"Resource" attribute:"Hourly rate"
)kiln";

constexpr char ForCapacityAndWorkLoad[] = R"kiln(
AGENT "Handovers"
 volume-analysis
 wlstatic-analysis
 wlnonstatic-analysis
 allowed-modeltype-1:"Business process"
 objects:"all \"Activity\""
 infotext:"How often a process passes from one worker to another. Each handover costs time and is a place for misunderstandings."
RESPCHANGE name:"Handovers per process" resultscope:process history-mem class:"Worker"
)kiln";

constexpr char ForWorkLoad[] = R"kiln(
AGENT "Work load by activity"
 wlstatic-analysis
 wlnonstatic-analysis
 allowed-modeltype-1:"Business process"
 objects:"all \"Activity\""
 infotext:"Which share of their working time people spend on each activity. A long stay with little work load means that processes wait there."
 auto-buildsum
WORKLOAD name:"Work load" resultscope:mainobjects class:"Worker"
CYCLETIME name:"Time at the activity" resultscope:mainobjects
FREQUENCY name:"Executions" resultscope:mainobjects absolute

AGENT "Work load of the staff"
 wlstatic-analysis
 wlnonstatic-analysis
 allowed-modeltype-1:"Working environment"
 objects:"all \"Worker\""
 infotext:"Which share of the working time each worker works: 1 is always, 0.5 half of the time. The history shows peaks; a worker near 1 is a bottleneck."
 auto-showextremum
 grouping-class:"Role"
 grouping-relation:"Has role"
WORKLOAD name:"Work load" resultscope:mainobjects history-mem class:"Worker"

AGENT "Cost of an execution by worker"
 wlstatic-analysis
 wlnonstatic-analysis
 allowed-modeltype-1:"Working environment"
 objects:"all \"Worker\""
 infotext:"What one execution of an activity costs by the hourly wages of the worker who carries it out."
UWWECOST name:"Cost per execution" resultscope:mainobjects wlstatic-analysis wlnonstatic-analysis class:"Worker" attribute:"Hourly wages"
)kiln";

}  // namespace

const std::string& predefinedAgentsText() {
    static const std::string text =
        std::string(ForEveryAnalysis) + ForCapacity + ForCapacityAndWorkLoad + ForWorkLoad;
    return text;
}

}  // namespace mero
