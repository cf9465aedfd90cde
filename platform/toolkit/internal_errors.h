#pragma once

#include <functional>
#include <string>
#include <vector>

namespace mero {

/// A fault that shouldn't happen, as `displayErrorMessage` was told of it.
struct InternalError {
    std::string module;
    int line;
};

/// Keeps the internal errors of the program in order, and hands each to a sink if one is installed.
class InternalErrorLog {
public:
    using Sink = std::function<void(const InternalError&)>;

    [[nodiscard]] static InternalErrorLog& GetGlobal();

    void add(InternalError error);
    [[nodiscard]] const std::vector<InternalError>& getErrors() const { return errors; }
    void clear() { errors.clear(); }
    /// An empty sink is none.
    void setSink(Sink newSink) { sink = std::move(newSink); }

private:
    std::vector<InternalError> errors;
    Sink sink;
};

}  // namespace mero
