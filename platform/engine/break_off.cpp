#include <algorithm>

#include "platform/engine/process_runner.h"

namespace mero {

// How what goes on is ended before its time.

/// Ends what goes on inside the object; the token leaves it and stays live.
void ProcessRunner::breakOffToken(std::uint32_t token) {
    while (tokens[token].firstPass != None) {
        const std::uint32_t pass = tokens[token].firstPass;
        switch (passes[pass].state) {
            case PassState::Working:
                sendPass(EventWorkSuspended, pass);
                freeHolders(pass);
                break;
            case PassState::Suspended:
                freeHolders(pass);
                break;
            case PassState::Queued:
                workforce->withdraw(passes[pass].ticket);
                break;
            case PassState::Calling:
                if (passes[pass].calledScope != None) {
                    breakOffScope(passes[pass].calledScope);
                }
                break;
            case PassState::Reached:
            case PassState::Resting:
                break;
        }
        removePass(pass);
    }
    removeToken(token);
}

void ProcessRunner::breakOffContent(std::uint32_t index) {
    while (scopes[index].firstToken != None) {
        breakOffToken(scopes[index].firstToken);
    }
    Scope& scope = scopes[index];
    std::fill(scope.slots.begin(), scope.slots.end(), 0U);
    scope.waiting = 0;
    scope.live = 0;
    // Tokens on their way have the old serial and end.
    ++scope.serial;
    scope.touched = false;
    touch(index);
}

void ProcessRunner::breakOffScope(std::uint32_t scope) {
    breakOffContent(scope);
    sendScopeEvent(EventSubInstanceDropped, scope, false);
    scopes.giveBack(scope);
}

}  // namespace mero
