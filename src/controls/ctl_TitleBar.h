#pragma once
// A slim heading strip over a list or tree: a small icon and a bold caption
// on a light tint of the accent, with a rule along its foot. Unlike ctl_Title
// it does not dock; the form places it.

#include "forms/Control.h"

#include <QImage>

namespace fw {

class ctl_TitleBar : public Control {
  public:
    ctl_TitleBar(Form& form, const QString& name, QWidget* container = nullptr);

    /// The height that fits the icon and one caption line, in pixels.
    static constexpr int PreferredHeight = 24;

    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption);
    /// A resource path ("Ico\16\...") loaded through the host's picture service.
    QString IconPath() const { return m_iconPath; }
    void SetIconPath(const QString& path);
    QImage Picture() const { return m_picture; }

    /// "Caption", "IconPath".
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class TitleStrip;
    QString m_caption;
    QString m_iconPath;
    QImage m_picture;
};

} // namespace fw
