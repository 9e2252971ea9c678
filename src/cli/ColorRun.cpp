#include "cli/DialogRuns.h"
#include "forms/Form.h"

#include <QRegularExpression>

namespace fw::cli {

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;

// "#RRGGBB" in any case, or the host's own number red + 256 green + 65536 blue.
Outcome takeStartColour(Form&, const Invocation& inv, DialogContext& context)
{
    const QStringList given = inv.extra(QStringLiteral("color"));
    if (given.isEmpty())
        return {};
    const QString text = given.last().trimmed();
    static const QRegularExpression hex(QStringLiteral("^#([0-9A-Fa-f]{6})$"));
    if (const QRegularExpressionMatch match = hex.match(text); match.hasMatch()) {
        const std::uint32_t rgb = match.captured(1).toUInt(nullptr, 16);
        context.Request.Color = (rgb >> 16 & 0xFF) | (rgb & 0xFF00) | (rgb & 0xFF) << 16;
        return {};
    }
    bool isNumber = false;
    const qulonglong value = text.toULongLong(&isNumber, 10);
    if (isNumber && value <= kWhite) {
        context.Request.Color = std::uint32_t(value);
        return {};
    }
    return {ExitUsage, QStringLiteral("--color takes #RRGGBB or a number from 0 to %1 "
                                      "(red + 256 green + 65536 blue), not '%2'")
                           .arg(kWhite)
                           .arg(given.last())};
}

// The request keeps the colour picked last whatever the answer, so it is
// printed with every result.
void answerColour(Form&, const DialogContext& context, QJsonObject& answer)
{
    const std::uint32_t colour = context.Request.Color & kWhite;
    answer.insert(QStringLiteral("Color"), qint64(colour));
    answer.insert(QStringLiteral("ColorHex"), QStringLiteral("#%1%2%3")
                                                  .arg(colour & 0xFF, 2, 16, QLatin1Char('0'))
                                                  .arg(colour >> 8 & 0xFF, 2, 16, QLatin1Char('0'))
                                                  .arg(colour >> 16 & 0xFF, 2, 16, QLatin1Char('0'))
                                                  .toUpper());
}

} // namespace

DialogRun ColorRun()
{
    return {{QStringLiteral("color")}, takeStartColour, nullptr, answerColour};
}

} // namespace fw::cli
