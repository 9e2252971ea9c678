#include "controls/ctl_Pannel.h"

#include "controls/Theme.h"
#include "forms/Form.h"

#include <QWidget>

namespace fw {

ctl_Pannel::ctl_Pannel(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Pannel"),
              new QWidget(container ? container : form.clientArea()))
{
    widget()->setAutoFillBackground(true);
    widget()->resize(200, 100);
    SetBackColor(theme::Base());
}

void ctl_Pannel::SetBackColor(const QColor& colour)
{
    QPalette palette = widget()->palette();
    palette.setColor(QPalette::Window, colour);
    widget()->setPalette(palette);
}

QColor ctl_Pannel::BackColor() const
{
    return widget()->palette().color(QPalette::Window);
}

QVariant ctl_Pannel::GetProperty(const QString& name) const
{
    if (name.compare(u"BackColor", Qt::CaseInsensitive) == 0)
        return BackColor();
    return Control::GetProperty(name);
}

bool ctl_Pannel::SetProperty(const QString& name, const QVariant& value)
{
    if (name.compare(u"BackColor", Qt::CaseInsensitive) != 0)
        return Control::SetProperty(name, value);
    // Host code passes its 0x00BBGGRR numbers, Qt code a QColor.
    SetBackColor(value.canConvert<QColor>() && value.typeId() != QMetaType::Int &&
                         value.typeId() != QMetaType::UInt && value.typeId() != QMetaType::LongLong
                     ? value.value<QColor>()
                     : theme::FromHostColour(std::uint32_t(value.toLongLong())));
    return true;
}

} // namespace fw
