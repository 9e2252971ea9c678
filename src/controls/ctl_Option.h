#pragma once
// A large option for one of a few choices: a picture on a card whose two
// colours and shades the form sets, so that the chosen card stands out. The
// form decides what is chosen; a click or Space raises Click.

#include "forms/Control.h"

#include <QImage>
#include <cstdint>

namespace fw {

class OptionCard;

class ctl_Option : public Control {
  public:
    ctl_Option(Form& form, const QString& name, QWidget* container = nullptr);

    /// A resource path loaded through the host's picture service.
    QString IconPath() const { return m_iconPath; }
    void SetIconPath(const QString& path);
    /// Card colours, top and bottom, as host colours (0x00BBGGRR).
    std::uint32_t ColorA() const { return m_colorA; }
    void SetColorA(std::uint32_t colour);
    std::uint32_t ColorB() const { return m_colorB; }
    void SetColorB(std::uint32_t colour);
    /// Shades of the two colours: above 0 towards light, below 0 towards dark,
    /// in the host's shade amounts (0 to 255).
    int ShadeA() const { return m_shadeA; }
    void SetShadeA(int amount);
    int ShadeB() const { return m_shadeB; }
    void SetShadeB(int amount);
    /// Whether the card is drawn as the chosen one.
    bool Value() const { return m_value; }
    void SetValue(bool on);

    bool IsButton() const override { return true; }
    bool PerformClick() override;
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class OptionCard;
    OptionCard* m_card;
    QString m_iconPath;
    QImage m_icon;
    std::uint32_t m_colorA = 0xF5F3F1;
    std::uint32_t m_colorB = 0xF5F3F1;
    int m_shadeA = 0;
    int m_shadeB = 0;
    bool m_value = false;
};

} // namespace fw
