#include "platform/toolkit/qt/field_dress.h"

#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <array>

#include "component/host/core_time.h"

#include "platform/toolkit/qt/text_conversion.h"
#include "platform/toolkit/toolkit_messages.h"

namespace mero::qt {

QString dressedTime(const SV::String& text) {
    if (!MeroCoreTime::isTime(text)) {
        return {};
    }
    static constexpr std::array Units{MessageUnitYear, MessageUnitDay, MessageUnitHour, MessageUnitMinute,
                                      MessageUnitSecond};
    constexpr int PartsShown = 3;
    QString digits = plain(text);
    const bool isNegative = digits.startsWith('-');
    const QStringList parts = digits.remove('-').split(':');
    QStringList shown;
    for (qsizetype each = 0; each < parts.size() && shown.size() < PartsShown; ++each) {
        const int number = parts[each].toInt();
        if (number != 0) {
            shown += QLocale().toString(number) + QChar(QChar::Nbsp) +
                     plain(SV::String(Units.at(static_cast<std::size_t>(each))));
        }
    }
    if (shown.isEmpty()) {
        return "0" + QString(QChar(QChar::Nbsp)) + plain(SV::String(MessageUnitSecond));
    }
    return (isNegative ? QStringLiteral("-") : QString()) + shown.join(' ');
}

QString dressed(const SV::String& field, int decimals) {
    const QString text = plain(field);
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (isNumber) {
        constexpr double TooLong = 1e15;
        return qAbs(number) < TooLong ? QLocale().toString(number, 'f', decimals) : text;
    }
    const QString time = dressedTime(field);
    return time.isEmpty() ? text : time;
}

int decimalsOf(const MeroShrinkExpandBrowserObjects& objects, int column) {
    constexpr int RowsLookedAt = 200;
    constexpr int MostDecimals = 4;
    int decimals = 0;
    const int rows = std::min(objects.getNumberOfRows(), RowsLookedAt);
    for (int row = 0; row < rows; ++row) {
        const SV::String field = objects.getField(row, column);
        const std::size_t point = field.Search(".");
        if (point != SV::String::NotFound && field.IsNumeric()) {
            decimals = std::max(decimals, static_cast<int>(field.Len() - point) - 1);
        }
    }
    return std::min(decimals, MostDecimals);
}

}  // namespace mero::qt
