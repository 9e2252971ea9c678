#include "desktop/DesktopMessages.h"
#include "dialogs/MessageBox.h"
#include "dialogs/frm_DialogInput.h"
#include "host/mdl_CoreDevWrapper.h"
#include "resources/frm_DialogFileResource.h"

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

std::string DesktopMessages::ChooseIcon(const std::string& current, const std::string& title,
                                        int size)
{
    frm_DialogFileResource form;
    form.Context = std::make_shared<DialogContext>();
    form.Context->Request.Title = title;
    form.FilterText = QStringLiteral("*.ico;*.png");
    // An overlay after "#" is part of the picture, not of where it lies.
    const QString icon = QString::fromStdString(current).section(u'#', 0, 0);
    const qsizetype slash = icon.lastIndexOf(u'\\');
    if (slash >= 0) {
        form.StartFolder = icon.left(slash + 1);
        form.StartItem = icon;
    } else if (size > 0) {
        form.StartFolder = QStringLiteral("Ico\\%1\\Computer\\Signs\\").arg(size);
    }
    form.Show(true);
    return form.Context->Request.Result == ResultOk ? form.Context->Items.SingleValue
                                                    : std::string();
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
