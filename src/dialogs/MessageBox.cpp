#include "dialogs/MessageBox.h"

#include "dialogs/frm_DialogMessage.h"

namespace fw {

std::int32_t ShowMessageBox(const std::string& text, const std::string& title, std::int32_t flags,
                            const std::string& iconPath)
{
    auto context = std::make_shared<DialogContext>();
    context->Request.Title = title;
    context->Request.Flags = flags;
    context->Request.IconPath = iconPath;
    context->Texts.Description = text;
    frm_DialogMessage form;
    form.Context = context;
    form.DialogMode = 0;
    form.Show(true);
    return context->Request.Result;
}

} // namespace fw
