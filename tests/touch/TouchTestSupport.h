#pragma once
// What the touch keyboard's and the numeric pad's tests edit: a host form with
// a text box, and a target that answers under any type name.

#include "forms/Control.h"
#include "forms/Form.h"
#include "forms/Screen.h"
#include "forms/StdControls.h"

#include <QStringList>
#include <QWidget>

namespace fw::testing {

class HostForm : public Form {
  public:
    HostForm() : Form(QStringLiteral("frm_Host"))
    {
        window()->resize(300, 100);
        txt = Add<TextBox>(QStringLiteral("txt_Value"));
        txt->Move(ToTwips(10), ToTwips(10), ToTwips(200), ToTwips(24));
    }
    TextBox* txt;
};

// Answers every late-bound read with value and notes reads and writes.
class NamedTarget : public Control {
  public:
    NamedTarget(Form& form, const QString& name, const QString& typeName,
                QString value = QStringLiteral("alt"))
        : Control(form, name, typeName, nullptr), m_value(std::move(value))
    {
    }
    QVariant GetProperty(const QString& name) const override
    {
        read << name;
        return m_value;
    }
    bool SetProperty(const QString& name, const QVariant& value) override
    {
        written << name + u'=' + value.toString();
        return true;
    }
    mutable QStringList read;
    QStringList written;

  private:
    QString m_value;
};

} // namespace fw::testing
