#include "platform/repository/standard_library.h"

#include "platform/repository/predefined_agents.h"

namespace mero {

namespace {

// Identifiers of the library. Repositories store them, so a number never changes and is never used again.

enum ClassId : MeroId {
    ProcessLibrary = ClassCodeProcessLibrary,
    EnvironmentLibrary = ClassCodeEnvironmentLibrary,
    ModelClass = ClassCodeModel,
    ProcessModelClass = ClassCodeProcessModel,
    EnvironmentModelClass = ClassCodeEnvironmentModel,

    FlowNode = 101,
    ExclusiveGateway = 102,
    InclusiveGateway = 103,
    ParallelGateway = 104,
    EventBasedGateway = 105,
    StartEvent = 106,
    IntermediateEvent = 107,
    EndEvent = 108,
    Activity = 109,
    Task = 110,
    UserTask = 111,
    ServiceTask = 112,
    ManualTask = 113,
    ScriptTask = 114,
    BusinessRuleTask = 115,
    SendTask = 116,
    ReceiveTask = 117,
    Call = 118,
    CallActivity = 119,
    SubProcess = 120,
    Variable = 121,
    ProcessAgentBase = 122,
    ProcessAgent = 123,
    Swimlane = 124,
    Pool = 125,
    Lane = 126,

    Executive = 201,
    Worker = 202,
    Group = 203,
    Role = 204,
    OrganisationalUnit = 205,
    Resource = 206,
    Equipment = 207,
    ItSystem = 208,
    EnvironmentAgentBase = 209,
    EnvironmentAgent = 210,
};

enum RelationClassId : MeroId {
    SequenceFlow = 301,
    MessageFlow = 302,
    AttachedTo = 303,
    HasRole = 304,
    BelongsTo = 305,
    ProvidedBy = 306,
    UsedBy = 307,
    PartOf = 308,
};

enum AttributeId : MeroId {
    ClassName = ClassCodeName,
    InstanceName = ClassCodeInstanceName,

    ExecutionTime = 401,
    WaitingTime = 402,
    RestingTime = 403,
    TransportTime = 404,
    Costs = 405,
    Number = 406,
    Performer = 407,
    Resources = 408,
    ReferencedModel = 409,
    Quantity = 410,
    TimePeriod = 411,
    BpmnElement = 412,
    BpmnIdentifier = 413,
    Bounds = 414,
    Duration = 415,
    Loop = 416,
    LoopMaximum = 417,
    LoopProbability = 418,
    EventKind = 419,
    Arrival = 420,
    ArrivalCalendar = 421,
    Interrupting = 422,
    EventProbability = 423,
    ProcessAgentCalendar = 424,
    ProcessAgentObjects = 425,
    ProcessAgentDefinition = 426,
    ProcessAgentResults = 427,
    ProcessAgentInfoText = 428,
    PredefinedAgents = 429,
    Priority = 430,

    Availability = 501,
    WorkerCalendar = 502,
    HourlyWages = 503,
    TaskDurations = 504,
    HourlyRate = 505,
    EnvironmentAgentCalendar = 506,
    EnvironmentAgentObjects = 507,
    EnvironmentAgentDefinition = 508,
    EnvironmentAgentResults = 509,
    EnvironmentAgentInfoText = 510,
    ResourceCalendar = 511,

    FlowProbability = 601,
    FlowCondition = 602,
    FlowDefault = 603,
    FlowWaypoints = 604,
    FlowLabel = 605,
};

constexpr auto NoTime = "00:000:00:00:00";
constexpr auto DefaultCalendar = "CALENDAR\nDAILY hours:\"00:00-24:00\"";
constexpr bool Abstract = true;
constexpr bool Agent = true;
constexpr bool Simulatable = true;

Library::Attribute text(MeroId id, const char* name) {
    return {id, name, AttributeText};
}
Library::Attribute agentText(MeroId id, const char* name) {
    return {id, name, AttributeText, "", 0.0, {}, true};
}
Library::Attribute time(MeroId id, const char* name) {
    return {id, name, AttributeTime, NoTime};
}
Library::Attribute integer(MeroId id, const char* name, double byDefault = 0.0) {
    return {id, name, AttributeInteger, "", byDefault};
}
Library::Attribute number(MeroId id, const char* name) {
    return {id, name, AttributeDouble};
}
Library::Attribute optionalNumber(MeroId id, const char* name) {
    return {id, name, AttributeDouble, "", 0.0, {}, false, true};
}
Library::Attribute assignmentRule(MeroId id, const char* name) {
    return {id, name, AttributeAssignmentRule};
}
Library::Attribute calendar(MeroId id, const char* name, const char* byDefault) {
    return {id, name, AttributeCalendar, byDefault};
}
Library::Attribute oneOf(MeroId id, const char* name, const char* byDefault, std::vector<std::string> words) {
    return {id, name, AttributeEnumeration, byDefault, 0.0, std::move(words)};
}

std::vector<Library::Attribute> attributeTable() {
    return {
        text(ClassName, "Class name"),
        text(InstanceName, "Name"),

        time(ExecutionTime, "Execution time"),
        time(WaitingTime, "Waiting time"),
        time(RestingTime, "Resting time"),
        time(TransportTime, "Transport time"),
        number(Costs, "Costs"),
        integer(Number, "Number"),
        assignmentRule(Performer, "Performer"),
        assignmentRule(Resources, "Resources"),
        {ReferencedModel, "Referenced model", AttributeModelReference},
        integer(Quantity, "Quantity"),
        oneOf(TimePeriod, "Time period", "per day", {"per year", "per month", "per day"}),
        text(BpmnElement, "BPMN element"),
        text(BpmnIdentifier, "BPMN identifier"),
        text(Bounds, "Bounds"),
        text(Duration, "Duration"),
        oneOf(Loop, "Loop", "none", {"none", "standard", "parallel", "sequential"}),
        integer(LoopMaximum, "Loop maximum"),
        number(LoopProbability, "Loop probability"),
        oneOf(EventKind, "Event kind", "none",
              {"none", "timer", "message", "signal", "error", "escalation", "conditional", "link",
               "compensation", "cancel", "terminate", "multiple"}),
        text(Arrival, "Arrival"),
        calendar(ArrivalCalendar, "Arrival calendar", ""),
        integer(Interrupting, "Interrupting", 1.0),
        number(EventProbability, "Probability"),
        agentText(ProcessAgentCalendar, "Calendar"),
        agentText(ProcessAgentObjects, "Objects"),
        agentText(ProcessAgentDefinition, "Definition"),
        agentText(ProcessAgentResults, "Results"),
        agentText(ProcessAgentInfoText, "Info text"),
        {PredefinedAgents, "Predefined agents", AttributeText, predefinedAgentsText()},
        integer(Priority, "Priority"),

        integer(Availability, "Availability", 100.0),
        calendar(WorkerCalendar, "Calendar", DefaultCalendar),
        number(HourlyWages, "Hourly wages"),
        text(TaskDurations, "Task durations"),
        number(HourlyRate, "Hourly rate"),
        agentText(EnvironmentAgentCalendar, "Calendar"),
        agentText(EnvironmentAgentObjects, "Objects"),
        agentText(EnvironmentAgentDefinition, "Definition"),
        agentText(EnvironmentAgentResults, "Results"),
        agentText(EnvironmentAgentInfoText, "Info text"),
        calendar(ResourceCalendar, "Calendar", DefaultCalendar),

        optionalNumber(FlowProbability, "Probability"),
        text(FlowCondition, "Condition"),
        integer(FlowDefault, "Default"),
        text(FlowWaypoints, "Waypoints"),
        text(FlowLabel, "Label"),
    };
}

Library::Class processClass(MeroId id, const char* name, MeroId base, std::vector<MeroId> attributes = {},
                            bool abstract = false, bool agent = false) {
    return {id, name, base, ProcessLibrary, abstract, agent, std::move(attributes)};
}

Library::Class environmentClass(MeroId id, const char* name, MeroId base, std::vector<MeroId> attributes = {},
                                bool abstract = false, bool agent = false) {
    return {id, name, base, EnvironmentLibrary, abstract, agent, std::move(attributes)};
}

std::vector<Library::Class> classTable() {
    return {
        // The libraries themselves and the kinds of model: nothing is an instance of them inside a model.
        processClass(ProcessLibrary, "Process library", MeroNoId, {PredefinedAgents}, Abstract),
        environmentClass(EnvironmentLibrary, "Environment library", MeroNoId, {}, Abstract),
        {ModelClass, "Model", MeroNoId, MeroNoId, Abstract, !Agent, {InstanceName}},
        processClass(ProcessModelClass, "Process model", ModelClass, {}, Abstract),
        environmentClass(EnvironmentModelClass, "Environment model", ModelClass, {}, Abstract),

        processClass(FlowNode, "Flow node", MeroNoId, {InstanceName, BpmnElement, BpmnIdentifier, Bounds},
                     Abstract),
        processClass(ExclusiveGateway, "Exclusive gateway", FlowNode),
        processClass(InclusiveGateway, "Inclusive gateway", FlowNode),
        processClass(ParallelGateway, "Parallel gateway", FlowNode),
        processClass(EventBasedGateway, "Event-based gateway", FlowNode),
        processClass(StartEvent, "Start event", FlowNode,
                     {Quantity, TimePeriod, EventKind, Arrival, ArrivalCalendar}),
        processClass(IntermediateEvent, "Intermediate event", FlowNode,
                     {EventKind, Duration, Interrupting, EventProbability}),
        processClass(EndEvent, "End event", FlowNode, {EventKind}),
        processClass(Activity, "Activity", FlowNode,
                     {ExecutionTime, WaitingTime, RestingTime, TransportTime, Costs, Number, Performer,
                      Resources, Duration, Priority, Loop, LoopMaximum, LoopProbability},
                     Abstract),
        processClass(Task, "Task", Activity),
        processClass(UserTask, "User task", Activity),
        processClass(ServiceTask, "Service task", Activity),
        processClass(ManualTask, "Manual task", Activity),
        processClass(ScriptTask, "Script task", Activity),
        processClass(BusinessRuleTask, "Business rule task", Activity),
        processClass(SendTask, "Send task", Activity),
        processClass(ReceiveTask, "Receive task", Activity),
        processClass(Call, "Call", FlowNode, {ReferencedModel, Loop, LoopMaximum, LoopProbability}, Abstract),
        processClass(CallActivity, "Call activity", Call),
        processClass(SubProcess, "Sub-process", Call),
        processClass(Variable, "Variable", MeroNoId, {InstanceName}),
        processClass(ProcessAgentBase, "Process agent base", MeroNoId, {InstanceName}, Abstract, Agent),
        processClass(ProcessAgent, "Process agent", ProcessAgentBase,
                     {ProcessAgentCalendar, ProcessAgentObjects, ProcessAgentDefinition, ProcessAgentResults,
                      ProcessAgentInfoText},
                     !Abstract, Agent),
        // Parts of the drawing, without a part in a run.
        processClass(Swimlane, "Swimlane", MeroNoId, {InstanceName, BpmnElement, BpmnIdentifier, Bounds},
                     Abstract),
        processClass(Pool, "Pool", Swimlane),
        processClass(Lane, "Lane", Swimlane),

        environmentClass(Executive, "Executive", MeroNoId, {InstanceName}, Abstract),
        environmentClass(Worker, "Worker", Executive,
                         {Availability, WorkerCalendar, HourlyWages, TaskDurations}),
        environmentClass(Group, "Group", MeroNoId, {InstanceName}, Abstract),
        environmentClass(Role, "Role", Group),
        environmentClass(OrganisationalUnit, "Organisational unit", Group),
        environmentClass(Resource, "Resource", MeroNoId, {InstanceName, HourlyRate, ResourceCalendar},
                         Abstract),
        environmentClass(Equipment, "Equipment", Resource),
        environmentClass(ItSystem, "IT system", Resource),
        environmentClass(EnvironmentAgentBase, "Environment agent base", MeroNoId, {InstanceName}, Abstract,
                         Agent),
        environmentClass(EnvironmentAgent, "Environment agent", EnvironmentAgentBase,
                         {EnvironmentAgentCalendar, EnvironmentAgentObjects, EnvironmentAgentDefinition,
                          EnvironmentAgentResults, EnvironmentAgentInfoText},
                         !Abstract, Agent),
    };
}

std::vector<Library::RelationClass> relationClassTable() {
    return {
        {SequenceFlow,
         "Sequence flow",
         FlowNode,
         FlowNode,
         ProcessLibrary,
         {FlowProbability, FlowCondition, FlowDefault, FlowWaypoints, BpmnIdentifier, FlowLabel}},
        {MessageFlow, "Message flow", FlowNode, FlowNode, ProcessLibrary, {}},
        {AttachedTo, "Attached to", IntermediateEvent, FlowNode, ProcessLibrary, {}},
        {HasRole, "Has role", Worker, Role, EnvironmentLibrary, {}},
        {BelongsTo, "Belongs to", Worker, OrganisationalUnit, EnvironmentLibrary, {}},
        {ProvidedBy, "Provided by", Resource, OrganisationalUnit, EnvironmentLibrary, {}},
        {UsedBy, "Used by", Resource, Role, EnvironmentLibrary, {}},
        {PartOf, "Part of", OrganisationalUnit, OrganisationalUnit, EnvironmentLibrary, {}},
    };
}

std::vector<std::pair<MeroCoreVarType, MeroId>> coreVariableTable() {
    return {
        {CoreFlowNode, FlowNode},
        {CoreExclusiveGateway, ExclusiveGateway},
        {CoreInclusiveGateway, InclusiveGateway},
        {CoreParallelGateway, ParallelGateway},
        {CoreCall, Call},
        {CoreEndEvent, EndEvent},
        {CoreIntermediateEvent, IntermediateEvent},
        {CoreActivity, Activity},
        {CoreStartEvent, StartEvent},
        {CoreEventBasedGateway, EventBasedGateway},
        {CoreVariable, Variable},
        {CoreProcessAgentBase, ProcessAgentBase},
        {CoreExecutive, Executive},
        {CoreGroup, Group},
        {CoreResource, Resource},
        {CoreEnvironmentAgentBase, EnvironmentAgentBase},
        {CoreStartQuantity, Quantity},
        {CoreStartPeriod, TimePeriod},
        {CoreReferencedModel, ReferencedModel},
        {CoreProcessAgentCalendar, ProcessAgentCalendar},
        {CoreProcessAgentObjects, ProcessAgentObjects},
        {CoreProcessAgentDefinition, ProcessAgentDefinition},
        {CoreProcessAgentResults, ProcessAgentResults},
        {CoreProcessAgentInfoText, ProcessAgentInfoText},
        {CorePredefinedAgents, PredefinedAgents},
        {CoreAvailability, Availability},
        {CoreExecutiveCalendar, WorkerCalendar},
        {CoreEnvironmentAgentCalendar, EnvironmentAgentCalendar},
        {CoreEnvironmentAgentObjects, EnvironmentAgentObjects},
        {CoreEnvironmentAgentDefinition, EnvironmentAgentDefinition},
        {CoreEnvironmentAgentResults, EnvironmentAgentResults},
        {CoreEnvironmentAgentInfoText, EnvironmentAgentInfoText},
    };
}

}  // namespace

StandardLibraryTables makeStandardLibraryTables() {
    return {attributeTable(),
            classTable(),
            relationClassTable(),
            {{"Business process", ProcessModelClass, Simulatable},
             {"Working environment", EnvironmentModelClass, Simulatable},
             {"Company map", ProcessModelClass, !Simulatable}},
            coreVariableTable()};
}

}  // namespace mero
