#include "controls/ctl_Seperator.h"

#include "controls/Theme.h"
#include "forms/Form.h"

#include <QPainter>
#include <QWidget>

namespace fw {

namespace {
// One hairline across the middle, whatever height the form gives the control.
class Rule : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(QRect(0, (height() - 1) / 2, width(), 1), theme::Hairline());
    }
};
} // namespace

ctl_Seperator::ctl_Seperator(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Seperator"),
              new Rule(container ? container : form.clientArea()))
{
    widget()->resize(200, 1);
}

} // namespace fw
