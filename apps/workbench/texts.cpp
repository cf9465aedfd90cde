#include "apps/workbench/texts.h"

#include "platform/toolkit/qt/text_conversion.h"

namespace mero {

QString say(SV::ResId message, std::initializer_list<QString> values) {
    QString text = qt::withoutMnemonic(SV::String(message));
    int number = 0;
    for (const QString& value : values) {
        const QString numbered = "%s" + QString::number(++number);
        text.replace(text.contains(numbered) ? numbered : QStringLiteral("%s"), value);
    }
    return text;
}

QString label(SV::ResId message) {
    return qt::withMnemonic(SV::String(message));
}

}  // namespace mero
