#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace mero {

/// What an element of a BPMN file tells about itself; `offset` is its byte position in the decoded text.
struct BpmnElement {
    std::string kind;  ///< local name, for instance "userTask"
    std::string id;
    std::string name;
    std::size_t offset = 0;
};

struct BpmnScope;

struct BpmnNode : BpmnElement {
    std::vector<std::string> eventKinds;  ///< one word an event definition, such as "timer"
    std::string linkName;
    std::string timerKind;  ///< "timeDuration", "timeCycle" or "timeDate"
    std::string timerText;  ///< ISO 8601
    std::string attachedTo;
    bool interrupting = true;
    std::string loop = "none";
    int loopMaximum = 0;
    std::string loopText;           ///< what `loopMaximum` was read of
    std::string performer;          ///< expression of a resource role
    std::string performerResource;  ///< reference of a resource role
    std::string calledElement;
    std::string defaultFlow;
    bool triggeredByEvent = false;
    bool forCompensation = false;
    std::vector<BpmnScope> content;  ///< one for a sub-process, none for other nodes
};

struct BpmnFlow : BpmnElement {
    std::string source;
    std::string target;
    std::string condition;
};

struct BpmnLane : BpmnElement {
    std::vector<std::string> members;  ///< identifiers of nodes; inner lanes come behind the lane around them
};

/// A process or sub-process.
struct BpmnScope : BpmnElement {
    std::vector<BpmnNode> nodes;
    std::vector<BpmnFlow> flows;
    std::vector<BpmnLane> lanes;
    std::vector<BpmnElement> others;  ///< data, annotations and whatever else has no part in a run
};

struct BpmnParticipant : BpmnElement {
    std::string process;
};

/// A BPMN 2.0 file, read but not judged: references are texts.
struct BpmnFile {
    std::vector<BpmnScope> processes;
    std::vector<BpmnParticipant> participants;
    std::vector<BpmnFlow> messageFlows;
    std::vector<BpmnElement> resources;
    std::vector<BpmnElement> others;
    std::map<std::string, std::string> bounds;           ///< "x y width height" by element
    std::map<std::string, std::string> waypoints;        ///< "x,y x,y …" by flow
    std::map<std::string, std::size_t> extensionCounts;  ///< elements by foreign namespace
};

}  // namespace mero
