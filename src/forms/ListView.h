#pragma once
// The standard list control: rows with key, text, pictures of two bound image
// lists, texts of further columns, tag, ghosted, checked and selected state,
// shown as large symbols, small symbols, a list or details with column
// headers. Rows live in a light Qt model, so that folders of a million files
// fill and thin out in time linear in the rows.
//
//     lst->SetIcons(img32);
//     lst->SetSmallIcons(img16);
//     lst->ColumnHeaders().Add("Dateiname");
//     ListItem& row = lst->ListItems().Add("C:\\A.TXT", "a.txt", "FILE", "FILE");
//     row.SetSubItem(2, "Textdatei");

#include "forms/Control.h"
#include "forms/ImageKeys.h"
#include "forms/TextRows.h"

#include <QByteArray>
#include <QMultiHash>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class QAbstractItemView;
class QHeaderView;
class QItemSelectionModel;
class QStackedWidget;

namespace fw {

class ImageList;
class ListModel;
class ListView;
class ListListWidget;
class ListTreeWidget;

/// How the rows are shown.
enum ListViewMode {
    lvwIcon = 0,      ///< large symbols with the text below, in rows
    lvwSmallIcon = 1, ///< small symbols with the text beside, in rows
    lvwList = 2,      ///< small symbols in columns, top to bottom
    lvwReport = 3,    ///< details: one line per row with the column texts
};

class ListItem {
  public:
    ListItem(const ListItem&) = delete;
    ~ListItem();
    ListItem& operator=(const ListItem&) = delete;

    fw::ListView& ListView() const { return *m_list; }
    /// Position from 1, as the rows stand now.
    int Index() const { return m_row + 1; }
    const QString& Key() const { return m_key; }
    const QString& Text() const { return m_text; }
    void SetText(const QString& text);
    /// Picture keys of the large and the small list; empty for none. A key the
    /// list lacks raises ControlError 35601 (35613 with no list bound).
    QString Icon() const;
    void SetIcon(const QString& key);
    QString SmallIcon() const;
    void SetSmallIcon(const QString& key);
    /// The text of column column + 1 (sub item 1 is the second column);
    /// empty where none was set.
    QString SubItem(int column) const;
    void SetSubItem(int column, const QString& text);
    const QString& Tag() const;
    void SetTag(const QString& tag);
    /// Shown dimmed, as a hidden share is.
    bool Ghosted() const { return m_ghosted; }
    void SetGhosted(bool ghosted);
    /// The check box's state; setting it from code raises no ItemCheck.
    bool Checked() const { return m_checked; }
    void SetChecked(bool checked);
    bool Selected() const;
    /// Selecting from code raises no ItemClick.
    void SetSelected(bool selected);
    /// Scrolls the row into view.
    void EnsureVisible();

  private:
    friend class ListView;
    friend class ListItems;
    friend class ListModel;
    ListItem(fw::ListView& list, QString key, QString text);

    fw::ListView* m_list;
    QString m_key;
    QString m_text;
    QByteArray& subItemSlot(int column);
    struct Extras;
    Extras& extras();

    // Lists mostly show a few columns: their texts live in the row itself,
    // sparing a list of a million rows a million small allocations. They are
    // kept as UTF-8, half the size of a path in UTF-16, and equal texts of
    // neighbouring rows (a type, a dash) share one copy.
    static constexpr int kInlineSubItems = 4;
    std::array<QByteArray, kInlineSubItems> m_subItems;
    // What few rows have, beside the row: made when first set.
    std::unique_ptr<Extras> m_extras;
    int m_row = 0;
    // Numbers in the list's picture key table, 0 for none.
    std::uint16_t m_icon = 0;
    std::uint16_t m_smallIcon = 0;
    bool m_ghosted = false;
    bool m_checked = false;
};

/// The rows of a list, as the classic ListItems collection, with bulk removal.
class ListItems {
  public:
    /// Adds a row at index (from 1; 0 appends). ControlError 35603 for a
    /// numeric key, 35600 for an index beyond Count() + 1, 35601/35613 for a
    /// picture key the bound list lacks. Unlike the classic collection a key
    /// may repeat: two files may differ only in case while keys are the path
    /// in capitals, and both rows must show.
    ListItem& Add(int index = 0, const QString& key = {}, const QString& text = {},
                  const QString& icon = {}, const QString& smallIcon = {});
    /// The same, appended.
    ListItem& Add(const QString& key, const QString& text, const QString& icon = {},
                  const QString& smallIcon = {})
    {
        return Add(0, key, text, icon, smallIcon);
    }
    int Count() const { return int(m_rows.size()); }
    /// A row by index from 1 (ControlError 35600) or by key (35601); of rows
    /// with the same key, one of them.
    ListItem& Item(int index) const;
    ListItem& Item(const QString& key) const;
    /// A row by key, or null.
    ListItem* Find(const QString& key) const;
    bool Exists(const QString& key) const { return Find(key) != nullptr; }
    void Remove(int index) { RemoveRange(index, 1); }
    void Remove(const QString& key) { Remove(Item(key).Index()); }
    /// Removes count rows from index on in one step; ControlError 35600 for a
    /// range beyond the rows.
    void RemoveRange(int index, int count);
    /// Removes every row the test rejects, each run of neighbouring rows in one
    /// step (or, for thousands of runs, all in one new layout); the test is
    /// asked once per row and the rows that stay keep their order. Returns the
    /// number removed.
    int RemoveIf(const std::function<bool(const ListItem&)>& reject);
    void Clear();

  private:
    friend class ListView;
    friend class ListItem;
    friend class ListModel;
    explicit ListItems(fw::ListView& list) : m_list(list) {}
    void indexKeys() const;
    void forget(ListItem& item);
    int removeRuns(const std::vector<bool>& rejected);
    int removeByLayout(const std::vector<bool>& rejected);

    fw::ListView& m_list;
    std::vector<std::unique_ptr<ListItem>> m_rows;
    // Built at the first lookup by key and kept from then on, so that a fill
    // that never looks up pays nothing for it.
    mutable QMultiHash<QString, ListItem*> m_byKey;
    mutable bool m_keysIndexed = false;
};

class ColumnHeader {
  public:
    int Index() const { return m_index + 1; }
    const QString& Key() const { return m_key; }
    const QString& Text() const { return m_text; }
    void SetText(const QString& text);
    /// Width in twips.
    int Width() const;
    void SetWidth(int twips);
    /// 0 left, 1 right, 2 centre.
    int Alignment() const { return m_alignment; }
    void SetAlignment(int alignment);
    const QString& Tag() const { return m_tag; }
    void SetTag(const QString& tag) { m_tag = tag; }

  private:
    friend class ColumnHeaders;
    friend class ListView;
    friend class ListModel;
    explicit ColumnHeader(fw::ListView& list) : m_list(&list) {}

    fw::ListView* m_list;
    int m_index = 0;
    QString m_key;
    QString m_text;
    QString m_tag;
    int m_widthPixels = 100;
    int m_alignment = 0;
};

class ColumnHeaders {
  public:
    /// Adds a column at index (from 1; 0 appends); width in twips, negative for
    /// the default. ControlError 35602 for a key that is taken, 35603 for a
    /// numeric one.
    ColumnHeader& Add(int index = 0, const QString& key = {}, const QString& text = {},
                      int width = -1, int alignment = 0);
    ColumnHeader& Add(const QString& text, int width = -1) { return Add(0, {}, text, width); }
    int Count() const { return int(m_columns.size()); }
    /// By index from 1 (ControlError 35600) or key (35601).
    ColumnHeader& Item(int index) const;
    ColumnHeader& Item(const QString& key) const;
    void Remove(int index);
    void Clear();

  private:
    friend class ListView;
    friend class ListModel;
    explicit ColumnHeaders(fw::ListView& list) : m_list(list) {}
    void renumber();

    fw::ListView& m_list;
    std::vector<std::unique_ptr<ColumnHeader>> m_columns;
};

class ListView : public Control, public TextRows {
  public:
    ListView(Form& form, const QString& name, QWidget* container = nullptr);
    ~ListView() override;

    fw::ListItems& ListItems() { return m_items; }
    const fw::ListItems& ListItems() const { return m_items; }
    fw::ColumnHeaders& ColumnHeaders() { return m_columns; }
    const fw::ColumnHeaders& ColumnHeaders() const { return m_columns; }

    /// The large pictures (view 0) and the small ones (all other views).
    /// Either may be unbound (null) and bound again at any time; rows keep
    /// their keys and show the pictures of whatever list is bound.
    ImageList* Icons() const { return m_icons; }
    void SetIcons(ImageList* images);
    ImageList* SmallIcons() const { return m_smallIcons; }
    void SetSmallIcons(ImageList* images);

    int View() const { return m_view; }
    /// Any value is taken; values beyond 3 show as the list (2).
    void SetView(int view);
    bool MultiSelect() const { return m_multiSelect; }
    void SetMultiSelect(bool on);
    bool Checkboxes() const { return m_checkboxes; }
    void SetCheckboxes(bool on);

    /// The row with the focus if it is selected, else the first selected row;
    /// null for none.
    ListItem* SelectedItem() const;
    /// Selects only this row and gives it the focus; null clears the selection.
    void SetSelectedItem(ListItem* item);
    /// The row at a point of the control in twips, or null.
    ListItem* HitTest(float x, float y) const;

    /// Sorting by the texts of column SortKey (0 the row text), ascending
    /// (SortOrder 0) or descending (1), case-blind and stable; rows are sorted
    /// when Sorted is switched on and whenever SortKey or SortOrder change while
    /// it is on. Rows added later stand where they were added.
    bool Sorted() const { return m_sorted; }
    void SetSorted(bool on);
    int SortKey() const { return m_sortKey; }
    void SetSortKey(int column);
    int SortOrder() const { return m_sortOrder; }
    void SetSortOrder(int order);

    /// Where a row is shown, in the viewport's pixels; empty while it is not
    /// laid out. For drivers that click on rows.
    QRect ItemRect(const ListItem& item) const;
    /// Where a column header is shown in view 3, in headerWidget()'s pixels.
    QRect HeaderRect(const ColumnHeader& column) const;
    QWidget* viewport() const;
    QWidget* headerWidget() const;

    /// A click on a row, or a move of the focus by key or type-ahead.
    std::function<void(ListItem& item)> ItemClick;
    /// The user ticked or cleared a row's check box.
    std::function<void(ListItem& item)> ItemCheck;
    std::function<void(ColumnHeader& column)> ColumnClick;
    /// How a row's text is shown, if it differs from Text (names with line
    /// breaks, say); asked only for rows being painted. Text stays as it is.
    std::function<QString(const QString& text)> DisplayText;

    /// "View", "MultiSelect", "Checkboxes", "Sorted", "SortKey", "SortOrder";
    /// "ListItems.Count" and "ColumnHeaders.Count" read only.
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

    /// "COLUMNHEADERS" with "TEXT", "KEY" (read only) and "TAG".
    int RowCount(const QString& collection) const override;
    QVariant RowProperty(const QString& collection, int row,
                         const QString& property) const override;
    bool SetRowProperty(const QString& collection, int row, const QString& property,
                        const QString& value) override;
    void RowsChanged(const QString& collection) override;

  private:
    friend class ListItem;
    friend class fw::ListItems;
    friend class ColumnHeader;
    friend class fw::ColumnHeaders;
    friend class ListModel;
    template <class> friend class ListWidget;

    QIcon iconOf(const ListItem& item) const;
    void itemChanged(const ListItem& item);
    void columnsChanged();
    void showView();
    /// Cells of the symbol and list views as wide as the longest text needs.
    void fitListCells();
    void sortRows();
    QAbstractItemView* activeView() const;
    void attach(QAbstractItemView* view);
    /// The details view's header while that view shows the rows, else null.
    QHeaderView* detailsHeader() const;
    /// Announces rows added since the last announcement to the view.
    void flush() const;

    fw::ListItems m_items;
    fw::ColumnHeaders m_columns;
    ImageKeys m_imageKeys;
    ImageList* m_icons = nullptr;
    ImageList* m_smallIcons = nullptr;
    // Qt's parent chain owns the widgets and the model.
    QPointer<QStackedWidget> m_stack;
    QPointer<ListModel> m_model;
    QPointer<ListListWidget> m_listWidget;
    QPointer<ListTreeWidget> m_treeWidget;
    QPointer<QItemSelectionModel> m_selection;
    int m_view = lvwList;
    bool m_multiSelect = false;
    bool m_checkboxes = false;
    bool m_sorted = false;
    int m_sortKey = 0;
    int m_sortOrder = 0;
    // The longest row text so far: one row's width for every cell, since
    // measuring a million rows is what uniform cells are there to avoid.
    QString m_longestText;
    QSize m_cellSize; // invalid where the view sizes its own cells
    // Set while code, not the user, moves the selection or the checks.
    bool m_byCode = false;
};

} // namespace fw
