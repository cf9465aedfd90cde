#pragma once

#include "component/host/sv_string.h"

namespace mero {

/// Messages of the platform's own dialogs and menus.
inline constexpr SV::ResId MessageSaveTable{0x2010100};
inline constexpr SV::ResId MessageTableNotWritten{0x2010101};
inline constexpr SV::ResId MessageSearchTitle{0x2010102};
inline constexpr SV::ResId MessageSearchPrompt{0x2010103};
inline constexpr SV::ResId MessageNotFound{0x2010104};
inline constexpr SV::ResId MessageExpandAll{0x2010105};
inline constexpr SV::ResId MessageShrinkAll{0x2010106};
inline constexpr SV::ResId MessageCopy{0x2010107};
inline constexpr SV::ResId MessageSearchItem{0x2010108};
inline constexpr SV::ResId MessageTableFiles{0x2010109};
inline constexpr SV::ResId MessageObject{0x201010A};

}  // namespace mero
