#pragma once

#include "apps/mero/console.h"
#include "platform/support/result.h"

namespace CLI {
class App;
}

namespace mero {

/// One command of the program. It describes its options once: help, defaults and checks of single values are
/// made of that.
class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    /// Adds the command to `program`; gives what was added.
    virtual CLI::App* describe(CLI::App& program) = 0;
    /// What the options can't tell one by one; an error is wrong usage.
    [[nodiscard]] virtual Result<void> checkUsage() const { return {}; }
    /// An error is a refusal with its reason; nothing has been changed then.
    virtual Result<void> run(Console& console) = 0;
};

}  // namespace mero
