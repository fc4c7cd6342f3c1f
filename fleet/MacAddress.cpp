// SPDX-License-Identifier: MIT
#include "MacAddress.h"

#include <QRegularExpression>
#include <QString>

namespace fleet {

std::optional<std::uint64_t> parseMacAddress(std::string_view text)
{
    static const QRegularExpression spelling(QStringLiteral("^(?:[0-9a-f]{12}"
                                                            "|[0-9a-f]{2}(?::[0-9a-f]{2}){5}"
                                                            "|[0-9a-f]{2}(?:-[0-9a-f]{2}){5}"
                                                            "|[0-9a-f]{4}(?:\\.[0-9a-f]{4}){2})$"),
                                             QRegularExpression::CaseInsensitiveOption);
    QString digits = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
    if (!spelling.match(digits).hasMatch())
        return std::nullopt;
    digits.remove(QRegularExpression(QStringLiteral("[:.-]")));
    return digits.toULongLong(nullptr, 16);
}

std::string formatMacAddress(std::uint64_t address)
{
    QString text = QStringLiteral("%1").arg(address & 0xffff'ffff'ffff, 12, 16, QLatin1Char('0'));
    for (const int position : {2, 5, 8, 11, 14})
        text.insert(position, QLatin1Char(':'));
    return text.toStdString();
}

std::string formatIpAddress(std::uint32_t address)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(address >> 24)
        .arg(address >> 16 & 0xff)
        .arg(address >> 8 & 0xff)
        .arg(address & 0xff)
        .toStdString();
}

} // namespace fleet
