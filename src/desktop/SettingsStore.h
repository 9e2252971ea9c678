#pragma once
// The desktop host's persistent key store: what the registry of the current
// user is to the dialogs, kept as one JSON file in a folder of its own.
//
// File: <folder>/registry.json, an object of hives, each an object of key
// paths, each an object of named values:
//
//   { "HKEY_CURRENT_USER": { "Software\\Valdrenix\\Core\\Settings":
//                              { "FolderView": 3, "Touchmode": 1 } } }
//
// A dialog names a value by "key path\value name": everything before the last
// backslash is the key path, the rest the value name. Key paths and value
// names compare case-insensitively, as in the registry; the spelling of the
// first write is kept. Values are 32-bit numbers or texts.
//
// Every write rereads the file under a lock file (<folder>/registry.json.lock),
// changes one value and saves through a temporary file and a rename, so that a
// second process writing at the same time neither tears the file nor loses
// its own value. A file whose content is no such object reads as empty and is
// moved aside as registry.json.broken-<timestamp>, never overwritten. A file
// that exists but cannot be opened or read (permissions, no file descriptors
// left) is left alone: the store then reads defaults for the rest of the
// process, refuses every write, and says so once on stderr.

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <atomic>
#include <functional>
#include <optional>

namespace fw::desktop {

class SettingsStore {
  public:
    /// folder is created on the first write.
    explicit SettingsStore(QString folder);

    /// The default folder: the XDG config folder + "/formwerk".
    static QString DefaultFolder();

    const QString& Folder() const { return m_folder; }
    QString FilePath() const;

    /// The value "key path\name" of a hive ("HKEY_CURRENT_USER"); nothing if
    /// the value is absent.
    std::optional<QJsonValue> Read(const QString& hive, const QString& name) const;
    /// Sets one value; false if the store could not be written (the file then
    /// holds what it held before).
    bool Write(const QString& hive, const QString& name, const QJsonValue& value);

    /// All named values of one key path (names in their stored spelling);
    /// empty if the key is absent.
    QJsonObject ReadKey(const QString& hive, const QString& keyPath) const;
    /// Replaces every value of one key path by values in a single write, so
    /// that a reader sees the old set or the new one, never a mix.
    bool ReplaceKey(const QString& hive, const QString& keyPath, const QJsonObject& values);

  private:
    struct Loaded {
        enum State { Fine, Garbage, Unreadable } state = Fine;
        QJsonObject root; ///< empty unless Fine; a missing file is Fine and empty
        QString problem;  ///< why an Unreadable file could not be read
    };
    Loaded load() const;
    /// False once the file was found unreadable; warns the first time.
    bool usable(const Loaded& loaded) const;
    void moveAside() const;
    /// The keys of a hive as read now; empty (and a garbage file moved aside)
    /// when there are none.
    QJsonObject keysOf(const QString& hive) const;
    /// Rereads the file under the lock, lets change edit the keys of one
    /// hive and saves atomically.
    bool modify(const QString& hive, const std::function<void(QJsonObject& keys)>& change);

    QString m_folder;
    mutable std::atomic<bool> m_unreadable{false};
};

} // namespace fw::desktop
