#pragma once

#include "platform/resources/messages.h"

namespace mero {

extern const MessageCatalogue EnglishMessages;
extern const MessageCatalogue GermanMessages;

}  // namespace mero
