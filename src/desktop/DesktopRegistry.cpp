#include "desktop/DesktopRegistry.h"

#include "desktop/DesktopFavorites.h"
#include "desktop/MimeClasses.h"

#include <QRegularExpression>

namespace fw::desktop {

namespace {

const QString kCurrentUser = QStringLiteral("HKEY_CURRENT_USER");

std::optional<bool> truthOf(QString text)
{
    text = text.trimmed().toLower();
    if (text == u"1" || text == u"true" || text == u"yes" || text == u"on")
        return true;
    if (text == u"0" || text == u"false" || text == u"no" || text == u"off" || text.isEmpty())
        return false;
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok ? std::optional<bool>(number != 0) : std::nullopt;
}

} // namespace

DesktopRegistry::DesktopRegistry(std::shared_ptr<SettingsStore> store) : m_store(std::move(store))
{
}

std::optional<QString> DesktopRegistry::textOf(std::uint32_t hive, const std::string& key) const
{
    if (hive == HiveClassesRoot) {
        const auto value = ReadMimeClass(key);
        return value ? std::optional(QString::fromStdString(*value)) : std::nullopt;
    }
    if (hive != HiveCurrentUser)
        return std::nullopt;
    const auto value = m_store->Read(kCurrentUser, QString::fromStdString(key));
    if (value && value->isString())
        return value->toString();
    if (value && value->isDouble())
        return QString::number(value->toInteger());
    return std::nullopt;
}

std::string DesktopRegistry::ReadString(std::uint32_t hive, const std::string& key,
                                        const std::string& defaultValue, int limit)
{
    std::optional<QString> text = textOf(hive, key);
    if (!text)
        return defaultValue;
    if (limit > 0 && text->size() > limit)
        text->truncate(limit);
    return text->toStdString();
}

std::int32_t DesktopRegistry::ReadNumber(std::uint32_t hive, const std::string& key,
                                         std::int32_t defaultValue)
{
    if (hive != HiveCurrentUser)
        return defaultValue;
    const auto value = m_store->Read(kCurrentUser, QString::fromStdString(key));
    if (!value)
        return defaultValue;
    if (value->isDouble())
        return static_cast<std::int32_t>(value->toInteger(defaultValue));
    bool ok = false;
    const int number = value->toString().trimmed().toInt(&ok);
    return ok ? number : defaultValue;
}

bool DesktopRegistry::WriteNumber(std::uint32_t hive, const std::string& key, std::int32_t value)
{
    return hive == HiveCurrentUser &&
           m_store->Write(kCurrentUser, QString::fromStdString(key), QJsonValue(value));
}

bool DesktopRegistry::WriteString(std::uint32_t hive, const std::string& key,
                                  const std::string& value)
{
    return hive == HiveCurrentUser && m_store->Write(kCurrentUser, QString::fromStdString(key),
                                                     QJsonValue(QString::fromStdString(value)));
}

DesktopSettings::DesktopSettings(std::shared_ptr<SettingsStore> store) : m_store(std::move(store))
{
}

bool DesktopSettings::GetBool(const std::string& name)
{
    const QString setting = QString::fromStdString(name).trimmed();
    if (setting.isEmpty())
        return false;
    // Only letters, digits and underscores make a usable variable name.
    QString variable = QStringLiteral("FORMWERK_") + setting.toUpper();
    variable.replace(QRegularExpression(QStringLiteral("[^A-Z0-9_]")), QStringLiteral("_"));
    if (qEnvironmentVariableIsSet(variable.toLocal8Bit().constData())) {
        if (const auto truth = truthOf(qEnvironmentVariable(variable.toLocal8Bit().constData())))
            return *truth;
    }
    const auto value = m_store->Read(kCurrentUser, QLatin1String(SettingsKey) + u'\\' + setting);
    if (!value)
        return false;
    if (value->isBool())
        return value->toBool();
    if (value->isDouble())
        return value->toDouble() != 0;
    return truthOf(value->toString()).value_or(false);
}

std::shared_ptr<FavoriteList> DesktopRegistry::NewFavoriteList()
{
    return std::make_shared<DesktopFavoriteList>(m_store);
}

} // namespace fw::desktop
