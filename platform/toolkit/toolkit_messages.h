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
inline constexpr SV::ResId MessageSearchHint{0x201010B};
inline constexpr SV::ResId MessageHelp{0x201010C};
inline constexpr SV::ResId MessagePrintToFile{0x201010D};
inline constexpr SV::ResId MessageBadCalendar{0x2010120};
/// Short names of the units of time.
inline constexpr SV::ResId MessageUnitYear{0x2010111};
inline constexpr SV::ResId MessageUnitDay{0x2010112};
inline constexpr SV::ResId MessageUnitHour{0x2010113};
inline constexpr SV::ResId MessageUnitMinute{0x2010114};
inline constexpr SV::ResId MessageUnitSecond{0x2010115};
/// Answers of boxes.
inline constexpr SV::ResId MessageOk{0x2011010};
inline constexpr SV::ResId MessageCancel{0x2011011};
inline constexpr SV::ResId MessageYes{0x2011012};
inline constexpr SV::ResId MessageNo{0x2011013};
inline constexpr SV::ResId MessageGoOn{0x2011014};

}  // namespace mero
