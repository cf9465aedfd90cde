#pragma once

#include <string>

#include "apps/mero/console.h"

namespace mero {

/// While it lives it answers every box of the agents - a question by Yes, the others by OK - and writes
/// its text to the console. It begins with empty records of boxes and internal errors.
class MessagePrinter {
public:
    explicit MessagePrinter(const Console& console);
    MessagePrinter(const MessagePrinter&) = delete;
    MessagePrinter& operator=(const MessagePrinter&) = delete;
    ~MessagePrinter();

    [[nodiscard]] int errorCount() const { return errors; }
    /// Text put before each message, such as the agent that it is about.
    void setContext(std::string newContext) { context = std::move(newContext); }

private:
    const Console& target;
    std::string context;
    int errors = 0;
};

}  // namespace mero
