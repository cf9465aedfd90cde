#include "component/host/basic_services.h"

#include <string>

#include "platform/toolkit/internal_errors.h"

void displayErrorMessage(const char* moduleName, int line) {
    mero::InternalErrorLog::GetGlobal().add({moduleName != nullptr ? moduleName : "", line});
}

SV::String Mero_Mask(const SV::String& text, char toMask, char maskCharacter) {
    std::string masked;
    masked.reserve(text.Len());
    for (const char each : text.view()) {
        if (each == toMask || each == maskCharacter) {
            masked += maskCharacter;
        }
        masked += each;
    }
    return SV::String(masked);
}

SV::String Mero_Unmask(const SV::String& text, char maskCharacter) {
    std::string plain;
    plain.reserve(text.Len());
    bool isMasked = false;
    for (const char each : text.view()) {
        isMasked = !isMasked && each == maskCharacter;
        if (!isMasked) {
            plain += each;
        }
    }
    return SV::String(plain);
}
