#include <algorithm>

#include "platform/resources/catalogues.h"

namespace mero {

namespace {

constexpr Message Messages[] = {
    {0x20051A6, "CALENDAR\nDAILY hours:\"00:00-24:00\""},
};

static_assert(std::ranges::adjacent_find(Messages, std::ranges::greater_equal{}, &Message::id) ==
              std::ranges::end(Messages));

}  // namespace

constinit const MessageCatalogue EnglishMessages{"en", Messages};

}  // namespace mero
