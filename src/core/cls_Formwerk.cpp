#include "core/cls_Formwerk.h"

#include "dialogs/frm_DialogFlash.h"
#include "dialogs/frm_DialogInput.h"
#include "dialogs/frm_DialogInputDbl.h"
#include "dialogs/frm_DialogInputMulti.h"
#include "dialogs/frm_DialogMessage.h"
#include "dialogs/frm_DialogPassword.h"
#include "dialogs/frm_DialogProcess.h"
#include "dialogs/frm_DialogText.h"
#include "filechooser/frm_DialogFile.h"
#include "folders/frm_DialogFolder.h"
#include "folders/frm_DialogMonitor.h"
#include "forms/Resume.h"
#include "inspect/frm_DialogColor.h"
#include "inspect/frm_DialogXMLInspector.h"
#include "resources/frm_DialogFileResource.h"
#include "sync/SyncConfirmForm.h"
#include "sync/SyncProgressForm.h"
#include "sync/frm_InternetFTPConsole.h"

#include <QMessageBox>
#include <QString>
#include <functional>

namespace fw {

namespace {
using Maker = std::function<std::unique_ptr<Form>()>;

template <class T> Maker make()
{
    return [] { return std::make_unique<T>(); };
}

struct Entry {
    const char* name;
    Maker maker; ///< empty: the form of this name is not part of the library yet
};

// The name table in the order it is tested; the first match wins. Names that
// stand in it twice can never match the second time, so each stands once.
const std::vector<Entry>& table()
{
    static const std::vector<Entry> entries{
        {"frm_InternetFTPConsole", make<frm_InternetFTPConsole>()},
        {"frm_InternetFTPConfirm", make<frm_InternetFTPConfirm>()},
        {"frm_InternetFTPSync", make<frm_InternetFTPSync>()},
        {"frm_DialogFolder", make<frm_DialogFolder>()},
        {"frm_DialogMonitor", make<frm_DialogMonitor>()},
        {"frm_DialogFileSync", make<frm_DialogFileSync>()},
        {"frm_DialogFileSyncConfirm", make<frm_DialogFileSyncConfirm>()},
        {"frm_DialogMessage", make<frm_DialogMessage>()},
        {"frm_DialogFile", make<frm_DialogFile>()},
        {"frm_DialogFileResource", make<frm_DialogFileResource>()},
        {"frm_DialogInput", make<frm_DialogInput>()},
        {"frm_DialogInputDbl", make<frm_DialogInputDbl>()},
        {"frm_DialogPath", make<frm_DialogFolder>()}, // an alias of frm_DialogFolder
        {"frm_DialogText", make<frm_DialogText>()},
        {"frm_DialogColor", make<frm_DialogColor>()},
        {"frm_DialogInputMulti", make<frm_DialogInputMulti>()},
        {"frm_DialogPassword", make<frm_DialogPassword>()},
        {"frm_DialogCritical", make<frm_DialogFlash>()}, // the fading notice opens the choice
        {"frm_DialogXMLInspector", make<frm_DialogXMLInspector>()},
        {"frm_DialogProcess", make<frm_DialogProcess>()},
    };
    return entries;
}

// The one message the library shows by itself, through the platform rather
// than the host: the host may be what is broken.
void reportUnknown(const std::string& name)
{
    QMessageBox box(QMessageBox::Critical, QStringLiteral("KRITISCHER FEHLER"),
                    QStringLiteral("DIALOG '") + QString::fromStdString(name) +
                        QStringLiteral("' WURDE NICHT GEFUNDEN!"),
                    QMessageBox::Ok);
    box.setObjectName(QStringLiteral("fw_UnknownDialog"));
    box.exec();
}
} // namespace

std::unique_ptr<Form> cls_Formwerk::Create(const std::string& pDlg)
{
    s_used = true;
    for (const Entry& entry : table()) {
        if (pDlg != entry.name)
            continue;
        if (!entry.maker)
            break;
        std::unique_ptr<Form> form;
        Resume([&] { form = entry.maker(); });
        return form;
    }
    reportUnknown(pDlg);
    return nullptr;
}

std::vector<std::string> cls_Formwerk::Names()
{
    std::vector<std::string> names;
    for (const Entry& entry : table())
        if (entry.maker)
            names.emplace_back(entry.name);
    return names;
}

} // namespace fw
