#pragma once
// The header band of a dialog: icon, title line and second line on a colour
// of the scheme. It docks to the top of its container. Its close button
// raises CloseRequest, which forms treat as a request to close.

#include "forms/Control.h"

#include <QImage>
#include <functional>

namespace fw {

class TitleBand;

class ctl_Title : public Control {
  public:
    ctl_Title(Form& form, const QString& name, QWidget* container = nullptr);

    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption);
    QString SubCaption() const { return m_subCaption; }
    void SetSubCaption(const QString& caption);
    /// A resource path ("Ico\32\...") loaded through the host's picture service.
    QString IconPath() const { return m_iconPath; }
    void SetIconPath(const QString& path);
    QImage Picture() const { return m_picture; }
    void SetPicture(const QImage& picture);
    /// Colour scheme: 0 the default; 6 errors; 7 questions.
    int Scheme() const { return m_scheme; }
    void SetScheme(int scheme);

    /// The user asked to close (close button, Esc on the band); text names the source.
    std::function<void(const QString& text)> CloseRequest;

    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class TitleBand;
    TitleBand* m_band;
    QString m_caption;
    QString m_subCaption;
    QString m_iconPath;
    QImage m_picture;
    int m_scheme = 0;
};

} // namespace fw
