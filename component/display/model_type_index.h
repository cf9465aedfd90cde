#pragma once

#include "component/host/containers.h"

/// Predefined agents that are offered for models of one type alone, by their element in the library's text.
struct MeroModelTypeIndex {
    ISortedSet<int> elements;
};
