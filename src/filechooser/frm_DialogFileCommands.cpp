// The file chooser's commands: the scripts of the command bar and the count
// line, the deferred help and preview events, a click and a double click on a
// row, and what OK makes of the name box.
#include "filechooser/ChooserForms.h"
#include "filechooser/FolderLister.h"
#include "filechooser/frm_DialogFile.h"

#include "controls/ctl_Executor.h"
#include "controls/ctl_Label.h"
#include "controls/ctl_ReEvent.h"
#include "core/hLangText.h"
#include "forms/ListView.h"
#include "forms/Resume.h"
#include "forms/StdControls.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

namespace fw {

namespace {
bool endsWithBackslash(const QString& text)
{
    return text.endsWith(u'\\');
}

bool isBlankOrDash(const QString& text)
{
    const QString t = text.trimmed();
    return t.isEmpty() || t == u"-";
}
} // namespace

void frm_DialogFile::runScript(const QString& script)
{
    const QString command = script.toUpper();
    if (command == u"SHOWALL") {
        m_lister->Filter = "*.*";
        hUpdateFolder(false);
    } else if (command == u"DIALOG.OK();") {
        okLogic();
    } else if (command == u"DIALOG.ABORT();") {
        closeWith(ResultAbort);
    } else if (command == u"DIALOG.HELP();") {
        if (context().EventLink.EventSink)
            evt_Deferred->Raise(QStringLiteral("HELP"));
    }
}

void frm_DialogFile::raiseDeferred(const QString& name)
{
    const DialogEventLink& link = context().EventLink;
    if (name == u"HELP" && link.EventSink) {
        Resume([&] { link.EventSink->Notify(*this, "FILE.HELP"); });
    } else if (name == u"PREVIEW" && link.PreviewSink) {
        std::string key;
        if (ListItem* row = lst_Files->SelectedItem())
            key = us(row->Key());
        Resume([&] { link.PreviewSink->Notify(*this, "FILE.PREVIEW", key, pic_Preview); });
    }
}

void frm_DialogFile::closeWith(int result)
{
    context().Request.Result = result;
    tmr_IconLoad->SetEnabled(false);
    // The form must not unload inside its own button's event.
    tmr_Unload->SetEnabled(true);
}

void frm_DialogFile::lst_Files_ItemClick(ListItem& item)
{
    QString info = QStringLiteral("Typ: ") + item.SubItem(2);
    if (!isBlankOrDash(item.SubItem(1)))
        info += QStringLiteral(", Größe: ") + item.SubItem(1);
    if (!isBlankOrDash(item.SubItem(3)))
        info += QStringLiteral(", Letzte Änderung: ") + item.SubItem(3);
    lab_FileInfo->SetCaption(info);

    ListItem* selected = lst_Files->SelectedItem();
    if (!selected)
        return;
    hResetPreview();
    if (selected->SubItem(4).startsWith(u'B') && context().EventLink.PreviewSink)
        evt_Deferred->Raise(QStringLiteral("PREVIEW"));

    QString names = selected->Text();
    if (lst_Files->MultiSelect()) {
        QStringList texts;
        const ListItems& rows = lst_Files->ListItems();
        for (int i = 1; i <= rows.Count(); ++i)
            if (rows.Item(i).Selected())
                texts << rows.Item(i).Text();
        names = texts.join(QStringLiteral("; "));
    }
    // Folders leave the name box alone.
    if (!endsWithBackslash(selected->Tag()))
        txt_Filename->SetText(names);
}

void frm_DialogFile::lst_Files_DblClick()
{
    ListItem* selected = lst_Files->SelectedItem();
    if (!selected)
        return;
    if (!selected->Tag().isEmpty()) {
        hGotoFolder(us(selected->Tag()), false, {});
        return;
    }
    m_listHasFocus = false;
    exe_Commands->Execute(QStringLiteral("DIALOG.OK();"));
}

void frm_DialogFile::OpenSelected()
{
    lst_Files_DblClick();
}

void frm_DialogFile::okLogic()
{
    ListItems& rows = lst_Files->ListItems();
    if (txt_Filename->Text().isEmpty() || m_listHasFocus) {
        ListItem* selected = lst_Files->SelectedItem();
        if (!selected) {
            if (rows.Count() == 0)
                return;
            selected = &rows.Item(1);
            lst_Files->SetSelectedItem(selected);
        }
        lst_Files_ItemClick(*selected);
    }
    if (txt_Filename->Text().isEmpty() || m_listHasFocus) {
        lst_Files_DblClick();
        return;
    }
    const QString typed = txt_Filename->Text();
    for (int i = 1; i <= rows.Count(); ++i) {
        const ListItem& row = rows.Item(i);
        if (row.Text().compare(typed, Qt::CaseInsensitive) == 0 && endsWithBackslash(row.Key())) {
            // Keys are in capitals; a folder row's tag keeps the path as the
            // file system spells it, which a case-sensitive system needs.
            const std::string key = us(row.Tag().isEmpty() ? row.Key() : row.Tag());
            txt_Filename->SetText({});
            hGotoFolder(key, false, {});
            return;
        }
    }
    std::string box = us(typed);
    Resume([&] { box = GetCoreDevText().Paths().TypedPath(box); });
    if (box.rfind("\\\\", 0) == 0) {
        Resume([&] { hGotoFolder(GetCoreDevText().Paths().AddBackslash(box), false, {}); });
        txt_Filename->SetText({});
        return;
    }
    std::string name;
    if (enterTypedFolder(box, name))
        return;
    acceptName(name);
}

// Moves to the folder part of what was typed, then to a folder of the typed
// name; true when nothing is left to accept.
bool frm_DialogFile::enterTypedFolder(const std::string& box, std::string& name)
{
    PathHelper& paths = GetCoreDevText().Paths();
    std::string drive, folder;
    Resume([&] {
        drive = paths.DrivePart(box);
        folder = paths.FolderPart(box);
        // The name is what follows the drive: "D:" alone names no file.
        std::string rest = box;
        std::string bareDrive = drive;
        while (!bareDrive.empty() && bareDrive.back() == '\\')
            bareDrive.pop_back();
        if (!bareDrive.empty() && rest.rfind(bareDrive, 0) == 0)
            rest.erase(0, bareDrive.size());
        name = paths.FileName(rest);
    });
    if (folder.empty() && !drive.empty())
        folder = paths.AddBackslash(drive);
    if (!folder.empty()) {
        Resume([&] {
            // A folder with a drive of its own stands for itself, as the
            // platform's path combination has always treated it.
            if (drive.empty())
                folder = paths.Combine(m_places.CurrentPath, folder);
            if (GetCoreDevFiles().FolderExists(folder))
                hGotoFolder(folder, false, {});
        });
    }
    if (name == "." || name.empty())
        return true;
    bool entered = false;
    Resume([&] {
        const std::string sub = paths.Combine(m_places.CurrentPath, name + "\\");
        if (GetCoreDevFiles().FolderExists(sub)) {
            hGotoFolder(sub, false, {});
            entered = true;
        }
    });
    if (entered)
        return true;
    if (name.find_first_of("?*") != std::string::npos) {
        m_lister->Filter = name;
        hUpdateFolder(false);
        return true;
    }
    return false;
}

void frm_DialogFile::acceptName(const std::string& name)
{
    DialogContext& ctx = context();
    txt_Filename->SetText({});
    ctx.Request.Result = ResultOk;

    std::string folder = m_places.CurrentPath;
    const std::string place = UpperTrimmed(folder);
    if (place == "DESKTOP:\\")
        Resume([&] {
            folder =
                GetCoreDevText().Paths().AddBackslash(GetCoreDevSystem().Folders().DesktopFolder());
        });
    else if (place == "USER:\\")
        folder = m_places.UserPath;
    else if (place == "SAMPLES:\\")
        folder = m_places.SamplesPath;
    else if (place == "SHARED:\\")
        folder = m_places.SharedPath;
    std::string full = folder + name;

    if (ctx.Request.Mode == 1) {
        // Asked, but a missing file is still handed back: the host decides.
        Resume([&] { GetCoreDevFiles().FileExists(full); });
    } else {
        const std::string& ext = ctx.Items.DefaultExtension;
        std::string current;
        Resume([&] { current = GetCoreDevText().Paths().Extension(full); });
        if (!ext.empty() && current.empty())
            full += (ext.front() == '.' ? "" : ".") + ext;
        if (!confirmOverwrite(full))
            return;
    }
    StringList& items = ctx.Items.ItemList;
    if (items.Count() == 0)
        items.Add(full);
    // The proposal keeps its own spelling where it names the same file. File
    // names here tell case apart: "BERICHT.txt" is another file than the
    // proposed "Bericht.txt", so only blanks around it are forgiven.
    else if (qs(items.Item(1)).trimmed() != qs(full).trimmed())
        items.SetItem(1, full);
    tmr_IconLoad->SetEnabled(false);
    tmr_Unload->SetEnabled(true);
}

bool frm_DialogFile::confirmOverwrite(const std::string& full)
{
    if (!context().Request.OverwritePrompt)
        return true;
    bool exists = false;
    Resume([&] { exists = GetCoreDevFiles().FileExists(full); });
    if (!exists)
        return true;
    std::int32_t answer = ResultYes;
    Resume([&] {
        answer = GetCoreDevMessages().AskQuestion(
            hLangText("Wollen Sie die Datei '" + full + "' wirklich überschreiben?",
                      "Do you really want to overwrite file '" + full + "'?"),
            hLangText("Achtung!", "Attention!"), 4, "Ico\\32\\Computer\\Signs\\Attention.ico", {});
    });
    return answer != ResultNo;
}

} // namespace fw
