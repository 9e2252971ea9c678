#pragma once
// Picture keys of the rows of a list control, kept as small numbers: a row of
// a list with a million rows then holds two bytes per picture instead of a
// string, and rows of one type share the same number.

#include <QHash>
#include <QIcon>
#include <QString>
#include <cstdint>
#include <vector>

namespace fw {

class ImageList;

class ImageKeys {
  public:
    /// The number of a picture key, 0 for the empty key. ControlError 35613
    /// with no list bound, 35601 for a key the list lacks.
    std::uint16_t idOf(const QString& key, const ImageList* list);
    const QString& keyOf(std::uint16_t id) const { return m_keys[id]; }
    /// The list's picture of a number; null for 0, no list or a key the list
    /// no longer holds.
    QIcon iconOf(std::uint16_t id, const ImageList* list) const;

  private:
    // The last key asked of each of the two lists a list control binds: rows
    // of one folder ask for the same few keys over and over.
    struct Recent {
        const ImageList* list = nullptr;
        std::uint64_t clears = 0;
        QString key;
        std::uint16_t id = 0;
    };
    Recent m_recent[2];
    int m_nextRecent = 0;

    std::vector<QString> m_keys{QString()};
    QHash<QString, std::uint16_t> m_ids;
};

} // namespace fw
