#pragma once

#include <istream>
#include <memory>
#include <string>
#include <string_view>

#include "platform/support/result.h"

namespace mero {

/// What an event of a log says, as far as a run needs it; texts that are missing are empty.
struct XesEvent {
    std::string activity;    ///< `concept:name`, else the plain attribute `Activity`
    std::string resource;    ///< `org:resource`, else the plain attribute `Resource`
    std::string role;        ///< `org:role`
    std::string group;       ///< `org:group`
    std::string transition;  ///< `lifecycle:transition`
    std::string time;        ///< `time:timestamp`
    std::string start;       ///< `start_timestamp`, the beginning of an event that stands for an interval
    std::size_t line = 0;    ///< where the event stands
};

/// What `XesReader::next` has found.
enum class XesStep { TraceBegin, Event, TraceEnd, LogEnd };

/// Reads an event log in the XML form of XES (IEEE 1849), versions 1 and 2, plain or compressed by gzip, as a
/// stream: a tag is all that is held of the file. Names count without their namespace. Extensions, globals,
/// classifiers, nested attributes, lists and containers are read over. Documents in UTF-8, US-ASCII and
/// ISO-8859-1 are read; entities are the predefined and numeric ones, a document type with declarations is
/// refused.
class XesReader {
public:
    /// `source` names the input in errors; the input has to outlive the reader.
    XesReader(std::istream& input, std::string source);
    XesReader(const XesReader&) = delete;
    XesReader& operator=(const XesReader&) = delete;
    ~XesReader();

    /// The next step; `event` is set by `XesStep::Event`. An error gives source, line, column and reason;
    /// nothing can be read behind it. Events outside of traces are refused.
    Result<XesStep> next(XesEvent& event);
    /// `concept:name` of the log, once its traces have begun; empty if it has none.
    [[nodiscard]] const std::string& logName() const;

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation;
};

}  // namespace mero
