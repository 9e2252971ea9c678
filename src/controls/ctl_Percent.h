#pragma once
// A percent bar: a lower and an upper bound and a current value, all doubles,
// drawn as a filled track with the percentage in its middle. The value is
// kept as given; what the bar shows is clamped to the track.

#include "forms/Control.h"

namespace fw {

class ctl_Percent : public Control {
  public:
    ctl_Percent(Form& form, const QString& name, QWidget* container = nullptr);

    double Min() const { return m_min; }
    double Max() const { return m_max; }
    double Value() const { return m_value; }
    void SetMin(double value);
    void SetMax(double value);
    void SetValue(double value);

    /// The filled share of the track, 0 to 1; 0 while the bounds are equal.
    double Fraction() const;

    /// "Min", "Max" and "Value".
    QVariant GetProperty(const QString& name) const override;
    bool SetProperty(const QString& name, const QVariant& value) override;

  private:
    double m_min = 0;
    double m_max = 100;
    double m_value = 0;
};

} // namespace fw
