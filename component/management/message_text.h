#pragma once

#include <initializer_list>

#include "component/host/sv_string.h"

/// A place in the text of a message, as "%s1", and what is to stand there.
struct MeroMessageValue {
    const char* place;
    SV::String value;
};

/// Text of the message with its places filled, each wherever it stands. What a value holds is left as it is,
/// even if it looks like a place: names are up to the user.
[[nodiscard]] SV::String fillMessage(SV::ResId message, std::initializer_list<MeroMessageValue> values);
