#include "desktop/DesktopMessages.h"
#include "dialogs/MessageBox.h"
#include "dialogs/frm_DialogInput.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

namespace fw::desktop {

void DesktopMessages::ShowError(const std::string& text, const std::string& title)
{
    ShowMessageBox(text, title, 0, "Ico\\20\\Computer\\Signs\\Critical.ico");
}

void DesktopMessages::ShowInfo(const std::string& text, const std::string& title)
{
    ShowMessageBox(text, title, 0, "Ico\\20\\Computer\\Signs\\Info.ico");
}

void DesktopMessages::ShowHelp(const std::string& text, const std::string& title)
{
    ShowMessageBox(text, title, 0, "Ico\\20\\Computer\\Signs\\Help.ico");
}

std::int32_t DesktopMessages::AskQuestion(const std::string& text, const std::string& title,
                                          std::int32_t style, const std::string& icon,
                                          const std::string&)
{
    return ShowMessageBox(text, title, style,
                          icon.empty() ? "Ico\\20\\Computer\\Signs\\Question.ico" : icon);
}

namespace {
// The folder of the last save is kept beside the recent-file list's key.
std::string lastFolderKey(const std::string& recentListKey)
{
    return recentListKey + "\\LastFolder";
}

// "label|pattern|label|pattern..." with patterns as "*.htm;*.html", in Qt's
// form "label (*.htm *.html)".
QStringList nameFilters(const std::string& filter)
{
    const QStringList parts = QString::fromStdString(filter).split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts).join(u' ');
        filters << QStringLiteral("%1 (%2)").arg(parts[i], patterns);
    }
    return filters;
}
} // namespace

// Qt's own widget dialog rather than the platform's: it behaves the same on
// every desktop, offscreen and under a virtual display, until the library's
// file chooser takes this over.
std::string DesktopMessages::AskSaveFile(const std::string&, const std::string& title,
                                         const std::string& filter, int filterIndex,
                                         const std::string& defaultExtension, int,
                                         const std::string& recentListKey)
{
    std::string folder;
    if (!recentListKey.empty()) {
        try {
            folder = GetCoreDevRegistry().Strings().ReadString(
                HiveCurrentUser, lastFolderKey(recentListKey), "", 1000);
        } catch (...) {
        }
    }
    QString start = QString::fromStdString(folder);
    if (start.isEmpty() || !QFileInfo(start).isDir())
        start = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);

    const QStringList filters = nameFilters(filter);
    QString selected = filters.value(filterIndex - 1);
    QString path = QFileDialog::getSaveFileName(
        QApplication::activeWindow(), QString::fromStdString(title), start,
        filters.join(QStringLiteral(";;")), &selected, QFileDialog::DontUseNativeDialog);
    if (path.isEmpty())
        return {};
    QString extension = QString::fromStdString(defaultExtension);
    if (!extension.isEmpty() && QFileInfo(path).suffix().isEmpty()) {
        if (!extension.startsWith(u'.'))
            extension.prepend(u'.');
        path += extension;
    }
    if (!recentListKey.empty()) {
        try {
            GetCoreDevRegistry().Writer().WriteString(HiveCurrentUser, lastFolderKey(recentListKey),
                                                      QFileInfo(path).absolutePath().toStdString());
        } catch (...) {
        }
    }
    return path.toStdString();
}

std::string DesktopMessages::AskText(const std::string& prompt, const std::string& title,
                                     const std::string& defaultText)
{
    frm_DialogInput form;
    form.Context = std::make_shared<DialogContext>();
    DialogContext& context = *form.Context;
    context.Request.Title = title;
    context.Texts.Description = prompt;
    context.Texts.DefaultText = defaultText;
    form.Show(true);
    return context.Request.Result == ResultOk ? context.Texts.InputText : std::string();
}

// The resource picker takes this over.
std::string DesktopMessages::ChooseIcon(const std::string&, const std::string&, int)
{
    return {};
}

void DesktopMessages::RegisterForm(Form& form, const std::string&)
{
    if (std::find(m_forms.begin(), m_forms.end(), &form) == m_forms.end())
        m_forms.push_back(&form);
}

void DesktopMessages::UnregisterForm(Form& form, const std::string&)
{
    m_forms.erase(std::remove(m_forms.begin(), m_forms.end(), &form), m_forms.end());
}

} // namespace fw::desktop
