#pragma once
// An image list: pictures of one size, found by 1-based index or by key, for
// the list and tree controls that are bound to it. It has no window.

#include "forms/Control.h"

#include <QHash>
#include <QIcon>
#include <QImage>
#include <QVariant>
#include <cstdint>
#include <vector>

namespace fw {

class ImageList : public Control {
  public:
    ImageList(Form& form, const QString& name);

    /// Size of the pictures in pixels; a picture of another size is scaled.
    int ImageWidth() const { return m_width; }
    int ImageHeight() const { return m_height; }
    /// Only while the list is empty; ControlError 380 otherwise.
    void SetImageSize(int width, int height);

    /// Adds a picture under a key (may be empty) with a free text, and returns
    /// its index. Pixels of exactly the mask colour become transparent.
    /// ControlError 35602 for a key that is taken, 35603 for a numeric key.
    int Add(const QString& key, const QImage& picture, const QString& tag = {});
    int Count() const { return static_cast<int>(m_items.size()); }
    /// The index of a key, 0 if the list has none of that key.
    int IndexOf(const QString& key) const { return m_byKey.value(key, 0); }
    bool Exists(const QString& key) const { return m_byKey.contains(key); }
    /// A picture by 1-based index (a number) or key (a text); ControlError
    /// 35600 for an index and 35601 for a key that the list does not hold.
    QImage Picture(const QVariant& indexOrKey) const;
    /// The picture of index as an icon for item views; null for index 0.
    QIcon Icon(int index) const;
    QString Key(int index) const;
    /// The text given with a picture, by index or key as Picture().
    QString Tag(const QVariant& indexOrKey) const;
    void Clear();
    /// Counts the clears: a key the list held stays held until the next one.
    std::uint64_t Clears() const { return m_clears; }

    /// A host colour (0x00BBGGRR) that pictures added from now on lose to
    /// transparency; until it is set no colour is masked.
    std::uint32_t MaskColor() const { return m_maskColor; }
    void SetMaskColor(std::uint32_t bgr);

    /// "ImageWidth", "ImageHeight", "MaskColor", "ListCount" (read only).
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    struct Item {
        QString key;
        QString tag;
        QImage picture;
        QIcon icon;
    };
    int indexOf(const QVariant& indexOrKey) const;

    int m_width = 16;
    int m_height = 16;
    std::uint32_t m_maskColor = 0;
    bool m_masked = false;
    std::vector<Item> m_items;
    QHash<QString, int> m_byKey;
    std::uint64_t m_clears = 0;
};

/// Keys that read as a number would be taken for an index, so the classic
/// collections refuse them.
bool IsNumericKey(const QString& key);

} // namespace fw
