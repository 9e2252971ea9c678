#pragma once
// A push button with an icon and a caption; "&" marks the accelerator letter
// (shown underlined) and "<br>" breaks the line.

#include "forms/Control.h"

#include <cstdint>

namespace fw {

class ButtonFace;

class ctl_Button : public Control {
  public:
    ctl_Button(Form& form, const QString& name, QWidget* container = nullptr);

    /// The caption as set, "&" and "<br>" included.
    QString Text() const { return m_text; }
    void SetText(const QString& text);
    QString IconPath() const { return m_iconPath; }
    void SetIconPath(const QString& path);
    bool Default() const { return m_default; }
    void SetDefault(bool on);
    /// The frame's two colours as host colours (0x00BBGGRR); the themed frame
    /// until one is set.
    std::uint32_t BorderColor() const { return m_borderColor; }
    void SetBorderColor(std::uint32_t colour);
    std::uint32_t BorderColor2() const { return m_borderColor2; }
    void SetBorderColor2(std::uint32_t colour);

    bool IsButton() const override { return true; }
    bool IsDefaultButton() const override { return m_default; }
    bool PerformClick() override;

    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    ButtonFace* m_face;
    QString m_text;
    QString m_iconPath;
    bool m_default = false;
    std::uint32_t m_borderColor;
    std::uint32_t m_borderColor2;
    void showBorder();
};

} // namespace fw
