#pragma once
// A control of a form: a named widget with geometry in twips, relative to its
// container, and events as plain callbacks. Forms own their controls.

#include <QImage>
#include <QString>
#include <QVariant>
#include <functional>

class QWidget;

namespace fw {

class Form;

/// Shift state of key and mouse events: 1 Shift, 2 Ctrl, 4 Alt.
enum ShiftMask { ShiftDown = 1, CtrlDown = 2, AltDown = 4 };

class Control {
  public:
    /// widget may be null for controls without a window (timers). The widget
    /// belongs to Qt's parent chain; the control never deletes it.
    Control(Form& form, QString name, QString typeName, QWidget* widget);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const QString& Name() const { return m_name; }
    /// Position in a control array; -1 for a control that stands alone.
    int Index() const { return m_index; }
    void SetIndex(int index) { m_index = index; }
    /// "TextBox", "Label", "ctl_Button"...: what late-bound code asks for.
    const QString& TypeName() const { return m_typeName; }
    Form& form() const { return m_form; }
    QWidget* widget() const { return m_widget; }

    // Geometry in twips, relative to the container's client area.
    int Left() const;
    int Top() const;
    virtual int Width() const;
    virtual int Height() const;
    void SetLeft(int twips);
    void SetTop(int twips);
    virtual void SetWidth(int twips);
    virtual void SetHeight(int twips);
    void Move(int left, int top, int width = -1, int height = -1);

    /// The control's own flag, whether or not its form is shown.
    bool Visible() const;
    void SetVisible(bool visible);
    virtual bool Enabled() const;
    virtual void SetEnabled(bool enabled);
    const QString& Tag() const { return m_tag; }
    void SetTag(const QString& tag) { m_tag = tag; }
    QString ToolTipText() const;
    void SetToolTipText(const QString& text);
    void SetFocus();
    bool HasFocus() const;
    /// The control that contains this one, null for the form itself.
    Control* Container() const;
    void Refresh();

    /// The pointer over the control: 0 default, 1 arrow, 2 cross, 3 I-beam,
    /// 11 hourglass, 99 the MouseIcon; other numbers show the default.
    int MousePointer() const { return m_mousePointer; }
    void SetMousePointer(int pointer);
    /// The picture of pointer 99; its centre is the hot spot.
    const QImage& MouseIcon() const { return m_mouseIcon; }
    void SetMouseIcon(const QImage& icon);

    /// Buttons: the form presses its default button on Return and its cancel
    /// button on Esc, and Return on a focused button presses that button.
    virtual bool IsButton() const { return false; }
    virtual bool IsDefaultButton() const { return false; }
    virtual bool IsCancelButton() const { return false; }
    /// Acts as a click by the user; false if the control cannot be clicked now.
    virtual bool PerformClick();
    /// Return (13) on a default button or Esc (27) on a cancel button; a
    /// control that holds several buttons picks the one the key means.
    virtual bool PerformDialogKey(int /*keyCode*/) { return PerformClick(); }

    /// Late-bound property access, names case-insensitive ("TEXT", "Caption").
    /// Get returns an invalid QVariant and Set false for a name the control lacks.
    virtual QVariant GetProperty(const QString& name) const;
    virtual bool SetProperty(const QString& name, const QVariant& value);

    // Events. Unset callbacks are ignored.
    std::function<void()> Click;
    std::function<void()> DblClick;
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
    /// keyCode may be set to 0 to swallow the key.
    std::function<void(int& keyCode, int shift)> KeyDown;
    std::function<void(int& keyCode, int shift)> KeyUp;
    /// keyAscii may be set to 0 to swallow the character.
    std::function<void(int& keyAscii)> KeyPress;
    std::function<void(int button, int shift, float x, float y)> MouseDown;
    std::function<void(int button, int shift, float x, float y)> MouseMove;
    std::function<void(int button, int shift, float x, float y)> MouseUp;

    /// Runs an event callback unless the form is being torn down.
    template <class F, class... Args> void raise(const F& callback, Args&&... args) const
    {
        if (callback && eventsLive())
            callback(std::forward<Args>(args)...);
    }
    bool eventsLive() const;

    /// The control that owns a widget (or the nearest owning ancestor).
    static Control* fromWidget(const QWidget* widget);

  protected:
    /// For derived controls that make their widget after the base is built.
    void setWidget(QWidget* widget);
    /// For widgets without a click signal: a left release inside is a click.
    void setClickOnRelease(bool on) { m_clickOnRelease = on; }

  private:
    Form& m_form;
    QString m_name;
    QString m_typeName;
    QWidget* m_widget;
    int m_index = -1;
    bool m_clickOnRelease = false;
    int m_mousePointer = 0;
    QImage m_mouseIcon;
    void showMousePointer();
    friend class ControlEvents;
    QString m_tag;
};

} // namespace fw
