// The file chooser's two narrowing tools: the filter combo, which changes
// what a listing reads, and the search box, which thins out the rows shown.
#include "filechooser/FolderLister.h"
#include "filechooser/frm_DialogFile.h"

#include "controls/ctl_Label.h"
#include "forms/ListView.h"
#include "forms/Resume.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

namespace fw {

void frm_DialogFile::lst_Filter_Click()
{
    const StringList& pairs = context().Request.FilterList;
    const int pattern = 2 * (lst_Filter->ListIndex() + 1);
    if (pattern >= 2 && pattern <= pairs.Count())
        m_lister->Filter = pairs.Item(pattern);
    hUpdateFolder(false);
}

void frm_DialogFile::txt_SearchFor_Change()
{
    if (m_searchGuard)
        return;
    const QString text = txt_SearchFor->Text();
    // A longer text that extends the last one keeps a superset of its hits,
    // so only a shortened or replaced text needs the rows back.
    if (text.size() < m_lastSearchText.size() || !text.startsWith(m_lastSearchText))
        hUpdateFolder(true);
    m_lastSearchText = text;

    QString pattern = text;
    if (!pattern.startsWith(u'*'))
        pattern.prepend(u'*');
    if (!pattern.endsWith(u'*'))
        pattern.append(u'*');
    const std::string wildcard = us(pattern);
    Resume([&] {
        WordHelper& words = GetCoreDevText().Words();
        lst_Files->ListItems().RemoveIf(
            [&](const ListItem& row) { return !words.Like(us(row.Text()), wildcard); });
    });
    if (pattern == u"**")
        return;
    lab_FileCount->SetCaption(QString::number(lst_Files->ListItems().Count()) +
                              QStringLiteral(" Treffer für ") + pattern);
    if (lst_Files->ListItems().Count() > 0) {
        selectFirstRow();
        lst_Files->ListItems().Item(1).EnsureVisible();
    }
}

void frm_DialogFile::txt_SearchFor_KeyDown(int& keyCode)
{
    if (keyCode != 40 || lst_Files->ListItems().Count() == 0)
        return;
    lst_Files->SetSelectedItem(&lst_Files->ListItems().Item(1));
    lst_Files->SetFocus();
    lst_Files_ItemClick(lst_Files->ListItems().Item(1));
}

void frm_DialogFile::selectFirstRow()
{
    ListItem& first = lst_Files->ListItems().Item(1);
    lst_Files->SetSelectedItem(&first);
    lst_Files_ItemClick(first);
}

} // namespace fw
