#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mero {

/// A calendar text made of another format's, and what of that it can't say.
struct TranslatedCalendar {
    std::string text;  ///< empty where nothing could be made
    std::vector<std::string> notes;
};

/// Calendar text of the events (VEVENT) and available times (AVAILABLE) of an iCalendar object (RFC 5545, RFC
/// 7953): daily and weekly rules become weekly hours, yearly rules and single events dates, which come again
/// every year. Times are taken as the clock shows them, without regard to their zone; ends of repetition,
/// excluded dates and other rules can't be told. A rule behind the events of a calendar belongs to the last
/// event.
TranslatedCalendar translateICalendar(std::string_view object, std::string_view name);

}  // namespace mero
