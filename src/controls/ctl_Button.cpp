#include "controls/ctl_Button.h"

#include "controls/ButtonFace.h"
#include "controls/Theme.h"
#include "forms/Form.h"

namespace fw {

ctl_Button::ctl_Button(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Button"), nullptr),
      m_face(new ButtonFace(container ? container : form.clientArea()))
{
    const QColor frame = theme::ButtonBorder();
    m_borderColor = m_borderColor2 = std::uint32_t(frame.red()) |
                                     std::uint32_t(frame.green()) << 8 |
                                     std::uint32_t(frame.blue()) << 16;
    m_face->resize(theme::ButtonWidth, theme::ButtonHeight);
    setWidget(m_face);
    QObject::connect(m_face, &QAbstractButton::clicked, m_face, [this] { PerformClick(); });
}

void ctl_Button::SetText(const QString& text)
{
    m_text = text;
    m_face->setCaption(text);
}

void ctl_Button::SetIconPath(const QString& path)
{
    m_iconPath = path;
    m_face->setPicture(theme::LoadIcon(path, theme::ButtonIcon));
}

void ctl_Button::SetDefault(bool on)
{
    m_default = on;
    m_face->setDefaultLook(on);
}

void ctl_Button::SetBorderColor(std::uint32_t colour)
{
    m_borderColor = colour;
    showBorder();
}

void ctl_Button::SetBorderColor2(std::uint32_t colour)
{
    m_borderColor2 = colour;
    showBorder();
}

void ctl_Button::showBorder()
{
    m_face->setBorderColours(theme::FromHostColour(m_borderColor),
                             theme::FromHostColour(m_borderColor2));
}

bool ctl_Button::PerformClick()
{
    // Direct event delivery can reach a hidden face; a user could not click it.
    if (!Enabled() || !Visible())
        return false;
    raise(Click);
    return true;
}

QVariant ctl_Button::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"TEXT" || key == u"CAPTION")
        return m_text;
    if (key == u"ICONPATH")
        return m_iconPath;
    if (key == u"DEFAULT")
        return m_default;
    if (key == u"BORDERCOLOR")
        return m_borderColor;
    if (key == u"BORDERCOLOR2")
        return m_borderColor2;
    return Control::GetProperty(name);
}

bool ctl_Button::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"TEXT" || key == u"CAPTION")
        SetText(value.toString());
    else if (key == u"ICONPATH")
        SetIconPath(value.toString());
    else if (key == u"DEFAULT")
        SetDefault(value.toBool());
    else if (key == u"BORDERCOLOR")
        SetBorderColor(value.toUInt());
    else if (key == u"BORDERCOLOR2")
        SetBorderColor2(value.toUInt());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
