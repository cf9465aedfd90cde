#pragma once

#include <filesystem>
#include <istream>
#include <memory>
#include <ostream>
#include <string>

#include "platform/engine/event_trace.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Reads a trace of events, one line an event, as CSV (RFC 4180) with a header of column names: code, time,
/// main_model, main_key, model, key, called_model, called_key, calling_object, object, pass, executive,
/// assigned, resource. Names are looked up in the repository: models, objects of the row's `model`, and
/// workers and resources of the working environment; "#" and an identifier in decimal is taken as it stands.
/// An empty cell gives 0 or the empty text; `code` is always needed. Neither codes nor the order of times are
/// judged.
class EventTraceReader {
public:
    /// `environmentId` may be 0: then workers and resources can only be given by identifier. `source` names
    /// the input in errors; input and repository have to outlive the reader, unchanged.
    EventTraceReader(std::istream& input, std::string source, const Repository& repository,
                     MeroId environmentId);
    EventTraceReader(const EventTraceReader&) = delete;
    EventTraceReader& operator=(const EventTraceReader&) = delete;
    ~EventTraceReader();

    /// The next event, whose keys live until the next call; false at the end. An error gives the place as
    /// "source:line:column: column name: reason"; nothing can be read behind it.
    Result<bool> next(SimEvent& event);

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation;
};

/// All of a trace, or the first error.
Result<EventTrace> readEventTrace(std::istream& input, const std::string& source,
                                  const Repository& repository, MeroId environmentId);
Result<EventTrace> readEventTraceFile(const std::filesystem::path& file, const Repository& repository,
                                      MeroId environmentId);

/// Writes what `EventTraceReader` reads, all columns, LF at the ends of lines. Every field of an event is
/// written, so that it reads back to an equal event; a name that wouldn't lead back to its identifier is
/// written as "#" and the identifier.
class EventTraceWriter final : public EventSink {
public:
    /// Writes the header. All three references have to outlive the writer.
    EventTraceWriter(std::ostream& output, const Repository& repository, MeroId environmentId);
    ~EventTraceWriter() override;

    void record(const SimEvent& event) override;
    /// Writes what is still held back; an error if any of the writing failed.
    Result<void> finish();

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation;
};

}  // namespace mero
