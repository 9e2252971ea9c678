#pragma once
// A form: a top-level window with controls placed in twips, the classic event
// set (Load, Paint, Resize, KeyDown, KeyPress, QueryUnload, Unload...), modal
// or modeless Show and Unload. A form object serves once: after Unload it
// cannot be shown again.

#include "forms/Control.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QString>
#include <memory>
#include <vector>

class QEventLoop;
class QWidget;

namespace fw {

class FormWindow;

class Form {
  public:
    /// How an unload was asked for, as QueryUnload and Unload are told.
    enum UnloadMode { UnloadByUser = 0, UnloadByCode = 1 };

    explicit Form(QString name);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const QString& Name() const { return m_name; }
    QString Caption() const;
    void SetCaption(const QString& caption);
    void SetIcon(const QImage& icon);

    // Outer frame in twips, in screen coordinates.
    int Left() const;
    int Top() const;
    int Width() const;
    int Height() const;
    void SetLeft(int twips);
    void SetTop(int twips);
    void SetWidth(int twips);
    void SetHeight(int twips);
    void Move(int left, int top, int width = -1, int height = -1);
    // Client area in twips.
    int ScaleWidth() const;
    int ScaleHeight() const;

    QColor BackColor() const;
    void SetBackColor(const QColor& colour);
    /// 0 normal, 1 minimised, 2 maximised.
    int WindowState() const;
    void SetWindowState(int state);
    /// 0 no frame or title bar (veils, touch pads); any other value the
    /// platform's dialog frame.
    int BorderStyle() const;
    void SetBorderStyle(int style);
    /// With key preview the form sees KeyDown and KeyPress before its controls.
    bool KeyPreview() const { return m_keyPreview; }
    void SetKeyPreview(bool on) { m_keyPreview = on; }

    /// Controls in creation order.
    const std::vector<std::unique_ptr<Control>>& Controls() const { return m_controls; }
    /// A control by name (case-insensitive) and array index (-1 for none).
    Control* FindControl(const QString& name, int index = -1) const;

    /// Runs Form_Load on first show. Modal: returns after the form has unloaded.
    void Show(bool modal = false);
    /// Runs QueryUnload and Unload; either may cancel. Hides the window.
    /// Returns false if cancelled.
    bool Unload();
    void Refresh();

    bool IsLoaded() const { return m_state == State::Loaded; }
    bool IsUnloaded() const { return m_state == State::Unloaded; }
    bool IsModal() const { return m_modal; }
    /// True once the first Form_Paint has run.
    bool HasPainted() const { return m_paintCount > 0; }
    int PaintCount() const { return m_paintCount; }

    /// Late-bound public variables of a dialog (Context, DialogMode...);
    /// an invalid QVariant or false for a name the form lacks.
    virtual QVariant GetPublic(const QString& name) const;
    virtual bool SetPublic(const QString& name, const QVariant& value);

    /// The window; created with the form.
    QWidget* window() const;
    /// The form that owns a window, null for other widgets.
    static Form* fromWindow(const QWidget* window);
    bool eventsLive() const { return !m_dying; }

    /// Makes a control of type T in this form: T(Form&, name, args...).
    template <class T, class... Args> T* Add(const QString& name, Args&&... args)
    {
        auto control = std::make_unique<T>(*this, name, std::forward<Args>(args)...);
        T* raw = control.get();
        adopt(std::move(control));
        return raw;
    }
    /// Takes ownership of a control made elsewhere (control arrays).
    void adopt(std::unique_ptr<Control> control);

    /// The widget that controls without a container are placed on.
    QWidget* clientArea() const;

  protected:
    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_Deactivate() {}
    virtual void Form_Paint() {}
    virtual void Form_Resize() {}
    virtual void Form_KeyDown(int& /*keyCode*/, int /*shift*/) {}
    virtual void Form_KeyUp(int& /*keyCode*/, int /*shift*/) {}
    virtual void Form_KeyPress(int& /*keyAscii*/) {}
    virtual void Form_QueryUnload(bool& /*cancel*/, int /*unloadMode*/) {}
    virtual void Form_Unload(bool& /*cancel*/) {}

  private:
    friend class FormWindow;
    friend class FormKeyDispatcher;
    enum class State { Created, Loaded, Unloaded };

    void ensureLoaded();
    bool unload(int mode);
    void paintEvent();
    void resizeEvent();
    void activateEvent(bool active);
    int frameExtraWidth() const;
    int frameExtraHeight() const;
    void centreOnScreen();

    QString m_name;
    FormWindow* m_window;
    std::vector<std::unique_ptr<Control>> m_controls;
    State m_state = State::Created;
    bool m_modal = false;
    bool m_keyPreview = false;
    bool m_positioned = false;
    bool m_dying = false;
    bool m_inUnload = false;
    int m_paintCount = 0;
    QEventLoop* m_loop = nullptr;
};

/// Announces forms as they are shown modally; test drivers and embedding hosts
/// listen here instead of polling for the active modal window.
class FormTracker : public QObject {
    Q_OBJECT
  public:
    static FormTracker& instance();

  signals:
    void modalShown(fw::Form* form);
    void unloaded(fw::Form* form);
};

} // namespace fw
