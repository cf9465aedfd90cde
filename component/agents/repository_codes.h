#pragma once

#include "component/host/basic_services.h"
#include "component/host/repository.h"

/// Tests a code of the repository; anything but success is an internal error at `line`.
inline bool succeeded(int code, int line) {
    if (code == RepositoryOk) {
        return true;
    }
    displayErrorMessage("aeagents", line);
    return false;
}
