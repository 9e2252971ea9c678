#include "desktop/DesktopFavorites.h"

#include "host/CoreDevServices.h"

#include <QJsonObject>
#include <algorithm>

namespace fw::desktop {

namespace {

const QString kCurrentUser = QStringLiteral("HKEY_CURRENT_USER");

// More favourites than anyone keeps; bounds the work a damaged Count can cause.
constexpr int kMaxEntries = 10000;

QString fieldName(const char* field, int index)
{
    return QLatin1String(field) + QString::number(index);
}

std::string textOf(const QJsonObject& values, const QString& name)
{
    const QJsonValue value = values.value(name);
    return value.isString() ? value.toString().toStdString() : std::string();
}

int countOf(const QJsonObject& values)
{
    const QJsonValue count = values.value(QStringLiteral("Count"));
    const int number = count.isDouble() ? count.toInt(0) : count.toString().trimmed().toInt();
    return std::clamp(number, 0, kMaxEntries);
}

// "C:\Home\Anna\" and "c:\home\anna" name the same favourite.
QString comparable(const std::string& path)
{
    QString text = QString::fromStdString(path);
    while (text.size() > 1 && (text.endsWith(u'\\') || text.endsWith(u'/')))
        text.chop(1);
    return text.toCaseFolded();
}

} // namespace

DesktopFavoriteList::DesktopFavoriteList(std::shared_ptr<SettingsStore> store)
    : m_store(std::move(store))
{
}

bool DesktopFavoriteList::Contains(const std::string& path) const
{
    const QString wanted = comparable(path);
    return std::any_of(m_items.begin(), m_items.end(),
                       [&](const FavoriteItem& item) { return comparable(item.Path) == wanted; });
}

bool DesktopFavoriteList::Load(std::uint32_t hive, const std::string& key)
{
    m_items.clear();
    if (hive != HiveCurrentUser)
        return false;
    const QJsonObject values = m_store->ReadKey(kCurrentUser, QString::fromStdString(key));
    const int count = countOf(values);
    for (int n = 1; n <= count; ++n) {
        const QJsonValue path = values.value(fieldName("Path", n));
        if (!path.isString())
            break; // a list cut short keeps what stands before the cut
        m_items.push_back({textOf(values, fieldName("Name", n)),
                           textOf(values, fieldName("Description", n)),
                           textOf(values, fieldName("Icon", n)), path.toString().toStdString()});
    }
    return true;
}

bool DesktopFavoriteList::Save(std::uint32_t hive, const std::string& key)
{
    if (hive != HiveCurrentUser)
        return false;
    QJsonObject values;
    values.insert(QStringLiteral("Count"), Count());
    for (int n = 1; n <= Count(); ++n) {
        const FavoriteItem& item = m_items[static_cast<std::size_t>(n - 1)];
        values.insert(fieldName("Name", n), QString::fromStdString(item.Name));
        values.insert(fieldName("Description", n), QString::fromStdString(item.Description));
        values.insert(fieldName("Icon", n), QString::fromStdString(item.Icon));
        values.insert(fieldName("Path", n), QString::fromStdString(item.Path));
    }
    return m_store->ReplaceKey(kCurrentUser, QString::fromStdString(key), values);
}

bool DesktopFavoriteList::RemoveKey(const std::string& path)
{
    const QString wanted = comparable(path);
    return std::erase_if(m_items, [&](const FavoriteItem& item) {
               return comparable(item.Path) == wanted;
           }) > 0;
}

} // namespace fw::desktop
