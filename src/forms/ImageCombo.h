#pragma once
// A drop-down list whose items carry a key, a text, a picture of a bound image
// list and an indentation, as a place combo shows drives and the folders
// between them:
//
//     cbo->SetImageList(img16);
//     cbo->ComboItems().Add(0, "C:\\", "System (C:)", "DRIVE", "DRIVE", 0);
//     cbo->ComboItems().Add(0, "C:\\HOME\\", "home", "CLOSED", "OPEN", 1);
//     cbo->SetSelectedItem(&cbo->ComboItems().Item(2));

#include "forms/Control.h"

#include <QComboBox>
#include <QPointer>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

namespace fw {

class ImageCombo;
class ImageComboModel;
class ImageList;

class ComboItem {
  public:
    ComboItem(const ComboItem&) = delete;
    ComboItem& operator=(const ComboItem&) = delete;

    /// Position from 1, as the items stand now.
    int Index() const { return m_row + 1; }
    const QString& Key() const { return m_key; }
    const QString& Text() const { return m_text; }
    void SetText(const QString& text);
    /// The picture by key or index in the bound list; an invalid QVariant for none.
    const QVariant& Image() const { return m_image; }
    void SetImage(const QVariant& image);
    /// The picture shown while the item is the chosen one; falls back to Image().
    const QVariant& SelImage() const { return m_selImage; }
    void SetSelImage(const QVariant& image);
    /// Levels of indentation in the open list.
    int Indentation() const { return m_indentation; }
    void SetIndentation(int levels);
    const QString& Tag() const { return m_tag; }
    void SetTag(const QString& tag) { m_tag = tag; }

  private:
    friend class ComboItems;
    friend class ImageComboModel;
    friend class ImageCombo;
    ComboItem(ImageCombo& combo, QString key, QString text)
        : m_combo(&combo), m_key(std::move(key)), m_text(std::move(text))
    {
    }
    void changed();

    ImageCombo* m_combo;
    QString m_key;
    QString m_text;
    QVariant m_image;
    QVariant m_selImage;
    QString m_tag;
    int m_indentation = 0;
    int m_row = 0;
};

/// The items of an image combo, as the classic ComboItems collection.
class ComboItems {
  public:
    /// Adds an item at index (from 1; 0 appends). ControlError 35602 for a key
    /// that is taken, 35603 for a numeric one, 35600 for an index beyond
    /// Count() + 1. Adding never changes the chosen item and raises no Click.
    ComboItem& Add(int index = 0, const QString& key = {}, const QString& text = {},
                   const QVariant& image = {}, const QVariant& selImage = {}, int indentation = 0);
    int Count() const { return int(m_items.size()); }
    /// By index from 1 (ControlError 35600) or key (35601).
    ComboItem& Item(int index) const;
    ComboItem& Item(const QString& key) const;
    /// By key, or null.
    ComboItem* Find(const QString& key) const;
    bool Exists(const QString& key) const { return Find(key) != nullptr; }
    /// Removes an item; removing the chosen one leaves none chosen.
    void Remove(int index);
    void Remove(const QString& key) { Remove(Item(key).Index()); }
    void Clear();

  private:
    friend class ImageCombo;
    friend class ImageComboModel;
    explicit ComboItems(ImageCombo& combo) : m_combo(combo) {}
    void renumber(int from);

    ImageCombo& m_combo;
    std::vector<std::unique_ptr<ComboItem>> m_items;
};

class ImageCombo : public Control {
  public:
    ImageCombo(Form& form, const QString& name, QWidget* container = nullptr);
    ~ImageCombo() override;

    fw::ComboItems& ComboItems() { return m_items; }
    const fw::ComboItems& ComboItems() const { return m_items; }

    /// The pictures of the items; may be unbound (null) while a caller fills
    /// the list, and bound again later. The list's picture size is shown.
    fw::ImageList* ImageList() const { return m_images; }
    void SetImageList(fw::ImageList* images);

    /// The chosen item, or null.
    ComboItem* SelectedItem() const { return m_selected; }
    /// Chooses an item (null for none) from code, which raises no Click.
    void SetSelectedItem(ComboItem* item);
    /// Shows the items again, for pictures that changed in the bound list.
    void Refresh();
    /// The chosen item's text, empty for none.
    QString Text() const;

    /// The Qt widget, for drivers that open the list and pick an entry.
    QComboBox* comboBox() const { return m_combo; }

    /// "Text" (read only), "ListCount" (read only), "SelectedIndex" (0 none).
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class ComboItem;
    friend class fw::ComboItems;
    friend class ImageComboModel;
    void showSelection();

    fw::ComboItems m_items;
    fw::ImageList* m_images = nullptr;
    ComboItem* m_selected = nullptr;
    // Qt's parent chain owns the widget and the model.
    QPointer<QComboBox> m_combo;
    QPointer<ImageComboModel> m_model;
    // Set while code moves the box's current row, which is no choice of the user.
    bool m_byCode = false;
};

} // namespace fw
