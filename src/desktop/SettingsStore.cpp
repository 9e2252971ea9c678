#include "desktop/SettingsStore.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace fw::desktop {

namespace {

constexpr auto kFileName = "registry.json";
// Long enough for a slow disk, short enough that a dialog never hangs on a
// writer that died; QLockFile takes over a stale lock of a dead process.
constexpr int kLockWaitMs = 5000;

struct SplitName {
    QString keyPath;
    QString valueName;
};

// "Software\\X\\\\Y\\" and "Software\X\Y" are the same key: empty components
// go, and forward slashes count as backslashes.
QStringList componentsOf(const QString& name)
{
    return QString(name).replace(u'/', u'\\').split(u'\\', Qt::SkipEmptyParts);
}

QString keyPathOf(const QString& path)
{
    return componentsOf(path).join(u'\\');
}

SplitName splitName(const QString& name)
{
    QStringList parts = componentsOf(name);
    SplitName result;
    if (parts.isEmpty())
        return result;
    result.valueName = parts.takeLast();
    result.keyPath = parts.join(u'\\');
    return result;
}

// The member of an object whose name matches case-insensitively.
QString findMember(const QJsonObject& object, const QString& name)
{
    for (auto it = object.begin(); it != object.end(); ++it)
        if (it.key().compare(name, Qt::CaseInsensitive) == 0)
            return it.key();
    return {};
}

} // namespace

SettingsStore::SettingsStore(QString folder) : m_folder(std::move(folder)) {}

QString SettingsStore::DefaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/formwerk");
}

QString SettingsStore::FilePath() const
{
    return m_folder + u'/' + QLatin1String(kFileName);
}

SettingsStore::Loaded SettingsStore::load() const
{
    Loaded result;
    QFile file(FilePath());
    if (!file.exists())
        return result;
    // An intact file that merely cannot be opened or read now (permissions,
    // no file descriptors left) is not garbage: it must never be moved aside.
    if (!file.open(QIODevice::ReadOnly)) {
        result.state = Loaded::Unreadable;
        result.problem = file.errorString();
        return result;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        result.state = Loaded::Unreadable;
        result.problem = file.errorString();
        return result;
    }
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        result.state = Loaded::Garbage;
    else
        result.root = document.object();
    return result;
}

bool SettingsStore::usable(const Loaded& loaded) const
{
    if (loaded.state == Loaded::Unreadable && !m_unreadable.exchange(true))
        qWarning().noquote() << "formwerk: the settings in" << FilePath() << "cannot be read ("
                             << loaded.problem
                             << "); defaults are used and no setting is saved while this "
                                "program runs";
    return !m_unreadable;
}

void SettingsStore::moveAside() const
{
    // Kept for the user to look at: a store full of settings that one bad byte
    // made unreadable is worth more than a clean start.
    const QString stamp =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmsszzz"));
    QString target = FilePath() + QStringLiteral(".broken-") + stamp;
    for (int n = 1; QFile::exists(target); ++n)
        target = FilePath() + QStringLiteral(".broken-") + stamp + u'-' + QString::number(n);
    QFile::rename(FilePath(), target);
}

QJsonObject SettingsStore::keysOf(const QString& hive) const
{
    if (m_unreadable)
        return {};
    const Loaded loaded = load();
    if (!usable(loaded))
        return {};
    if (loaded.state == Loaded::Garbage) {
        // Moved aside under the lock only, so that a writer's fresh file is
        // never taken for the broken one it replaced.
        QLockFile lock(FilePath() + QStringLiteral(".lock"));
        if (lock.tryLock(kLockWaitMs) && load().state == Loaded::Garbage)
            moveAside();
        return {};
    }
    const QString hiveName = findMember(loaded.root, hive);
    return hiveName.isEmpty() ? QJsonObject() : loaded.root.value(hiveName).toObject();
}

std::optional<QJsonValue> SettingsStore::Read(const QString& hive, const QString& name) const
{
    const SplitName split = splitName(name);
    if (split.valueName.isEmpty())
        return std::nullopt;
    const QJsonObject values = ReadKey(hive, split.keyPath);
    const QString valueName = findMember(values, split.valueName);
    if (valueName.isEmpty())
        return std::nullopt;
    return values.value(valueName);
}

QJsonObject SettingsStore::ReadKey(const QString& hive, const QString& keyPath) const
{
    const QJsonObject keys = keysOf(hive);
    const QString keyName = findMember(keys, keyPathOf(keyPath));
    return keyName.isEmpty() ? QJsonObject() : keys.value(keyName).toObject();
}

bool SettingsStore::modify(const QString& hive,
                           const std::function<void(QJsonObject& keys)>& change)
{
    if (m_unreadable || !QDir().mkpath(m_folder))
        return false;

    QLockFile lock(FilePath() + QStringLiteral(".lock"));
    if (!lock.tryLock(kLockWaitMs))
        return false;

    // Reread under the lock: another process may have written since we last looked.
    Loaded loaded = load();
    if (!usable(loaded))
        return false; // writing now would replace settings that were never read
    if (loaded.state == Loaded::Garbage)
        moveAside();
    QJsonObject& root = loaded.root;
    QString hiveName = findMember(root, hive);
    if (hiveName.isEmpty())
        hiveName = hive;
    QJsonObject keys = root.value(hiveName).toObject();
    change(keys);
    root.insert(hiveName, keys);

    QSaveFile file(FilePath());
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QByteArray bytes = QJsonDocument(root).toJson(QJsonDocument::Indented);
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool SettingsStore::Write(const QString& hive, const QString& name, const QJsonValue& value)
{
    const SplitName split = splitName(name);
    if (split.valueName.isEmpty())
        return false;
    return modify(hive, [&](QJsonObject& keys) {
        QString keyName = findMember(keys, split.keyPath);
        if (keyName.isEmpty())
            keyName = split.keyPath;
        QJsonObject values = keys.value(keyName).toObject();
        QString valueName = findMember(values, split.valueName);
        if (valueName.isEmpty())
            valueName = split.valueName;
        values.insert(valueName, value);
        keys.insert(keyName, values);
    });
}

bool SettingsStore::ReplaceKey(const QString& hive, const QString& keyPath,
                               const QJsonObject& values)
{
    const QString path = keyPathOf(keyPath);
    if (path.isEmpty())
        return false;
    return modify(hive, [&](QJsonObject& keys) {
        QString keyName = findMember(keys, path);
        if (keyName.isEmpty())
            keyName = path;
        keys.insert(keyName, values);
    });
}

} // namespace fw::desktop
