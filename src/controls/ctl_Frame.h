#pragma once
// A titled group: a thin rounded outline with its caption in the top line,
// holding the controls of one part of a dialog.

#include "forms/Control.h"

#include <QImage>

namespace fw {

class FrameBox;

class ctl_Frame : public Control {
  public:
    ctl_Frame(Form& form, const QString& name, QWidget* container = nullptr);

    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption);
    /// An icon before the caption: a resource path through the host's picture service.
    QString IconPath() const { return m_iconPath; }
    void SetIconPath(const QString& path);
    /// Controls placed in the frame use this as their container widget.
    QWidget* container() const { return widget(); }
    /// Where the inside begins below the caption, in twips.
    int InsideTop() const;

    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    friend class FrameBox;
    QString m_caption;
    QString m_iconPath;
    QImage m_icon;
};

} // namespace fw
