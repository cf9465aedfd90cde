#include "component/management/message_text.h"

#include <algorithm>

SV::String fillMessage(SV::ResId message, std::initializer_list<MeroMessageValue> values) {
    SV::String text(message);
    for (std::size_t at = text.Search("%"); at != SV::String::NotFound; at = text.Search("%", at)) {
        const auto* const found = std::ranges::find_if(values, [&](const MeroMessageValue& value) {
            return text.view().substr(at).starts_with(value.place);
        });
        at = found != values.end() ? text.Replace(found->place, found->value, at) : at + 1;
    }
    return text;
}
