#pragma once

#include "component/host/sv_string.h"

/// Reports a fault that shouldn't happen to the platform's log, for developers. It ends nothing.
void displayErrorMessage(const char* moduleName, int line);

/// Puts `maskCharacter` before each `toMask` and before each `maskCharacter`.
[[nodiscard]] SV::String Mero_Mask(const SV::String& text, char toMask, char maskCharacter);
/// Takes each `maskCharacter` away and keeps what follows it.
[[nodiscard]] SV::String Mero_Unmask(const SV::String& text, char maskCharacter);
