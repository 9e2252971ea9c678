#include "forms/Form.h"

#include "forms/KeyCodes.h"
#include "forms/Screen.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QPainter>
#include <QScreen>
#include <QWidget>

Q_LOGGING_CATEGORY(lcForms, "formwerk.forms", QtCriticalMsg)

namespace fw {

namespace {
const char* const kFormProperty = "fw_form";

// An exception must never unwind through Qt's event delivery; a handler that
// fails is as good as a handler that ended early.
template <class F> void guarded(const char* what, F&& handler)
{
    try {
        handler();
    } catch (const std::exception& e) {
        qCWarning(lcForms) << what << "ended by" << e.what();
    } catch (...) {
        qCWarning(lcForms) << what << "ended by an unknown failure";
    }
}
} // namespace

// The window of a form: forwards Qt's events to the form's handlers.
class FormWindow : public QWidget {
  public:
    explicit FormWindow(Form& form) : QWidget(nullptr, Qt::Dialog), m_form(form)
    {
        setProperty(kFormProperty, QVariant::fromValue(static_cast<void*>(&form)));
        setAutoFillBackground(true);
        setFocusPolicy(Qt::StrongFocus);
    }

    QWidget* client() { return this; }

  protected:
    void paintEvent(QPaintEvent* event) override
    {
        QWidget::paintEvent(event);
        m_form.paintEvent();
    }
    void resizeEvent(QResizeEvent* event) override
    {
        QWidget::resizeEvent(event);
        m_form.resizeEvent();
    }
    void closeEvent(QCloseEvent* event) override
    {
        if (m_form.IsUnloaded() || m_form.m_inUnload || m_form.unload(Form::UnloadByUser))
            event->accept();
        else
            event->ignore();
    }
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::WindowActivate)
            m_form.activateEvent(true);
        else if (event->type() == QEvent::WindowDeactivate)
            m_form.activateEvent(false);
        return QWidget::event(event);
    }

  private:
    Form& m_form;
};

// Key events of every form pass here first, so that key preview, the form's
// own key events and the default and cancel buttons work whatever control
// has the focus.
class FormKeyDispatcher : public QObject {
  public:
    static void ensureInstalled()
    {
        static FormKeyDispatcher* dispatcher = nullptr;
        if (!dispatcher && qApp) {
            dispatcher = new FormKeyDispatcher(qApp);
            qApp->installEventFilter(dispatcher);
        }
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const QEvent::Type type = event->type();
        if ((type != QEvent::KeyPress && type != QEvent::KeyRelease) || m_replaying ||
            !watched->isWidgetType())
            return false;
        auto* widget = static_cast<QWidget*>(watched);
        Form* form = Form::fromWindow(widget->window());
        if (!form || !form->eventsLive() || !form->IsLoaded())
            return false;
        // Key events travel up the parents when ignored; act on the first stop only.
        QWidget* focus = widget->window()->focusWidget();
        if (focus ? widget != focus : widget != widget->window())
            return false;
        auto* key = static_cast<QKeyEvent*>(event);
        Control* control = Control::fromWidget(widget);
        return type == QEvent::KeyPress ? keyPress(*form, control, widget, *key)
                                        : keyRelease(*form, control, *key);
    }

  private:
    using QObject::QObject;

    bool keyPress(Form& form, Control* control, QWidget* widget, QKeyEvent& key)
    {
        const bool toForm = form.KeyPreview() || !control;
        int code = KeyCodeOf(key.key());
        const int shift = ShiftOf(key.modifiers());
        if (code) {
            if (toForm)
                guarded("KeyDown", [&] { form.Form_KeyDown(code, shift); });
            if (code == 0 || !form.IsLoaded())
                return true;
            if (control)
                guarded("KeyDown", [&] { control->raise(control->KeyDown, code, shift); });
            if (code == 0 || !form.IsLoaded())
                return true;
        }
        const QString text = key.text();
        if (text.size() == 1 || (text.size() == 2 && text[0].isHighSurrogate())) {
            const int original = text.toUcs4().value(0);
            int ascii = original;
            if (toForm)
                guarded("KeyPress", [&] { form.Form_KeyPress(ascii); });
            if (ascii == 0 || !form.IsLoaded())
                return true;
            if (control)
                guarded("KeyPress", [&] { control->raise(control->KeyPress, ascii); });
            if (ascii == 0 || !form.IsLoaded())
                return true;
            if (ascii != original) {
                const char32_t replaced = char32_t(ascii);
                QKeyEvent changed(QEvent::KeyPress, 0, key.modifiers(),
                                  QString::fromUcs4(&replaced, 1));
                m_replaying = true;
                QCoreApplication::sendEvent(widget, &changed);
                m_replaying = false;
                return true;
            }
        }
        return pressButtonFor(form, control, code);
    }

    bool keyRelease(Form& form, Control* control, QKeyEvent& key)
    {
        int code = KeyCodeOf(key.key());
        if (!code || key.isAutoRepeat())
            return false;
        const int shift = ShiftOf(key.modifiers());
        if (form.KeyPreview() || !control)
            guarded("KeyUp", [&] { form.Form_KeyUp(code, shift); });
        if (code && control && form.IsLoaded())
            guarded("KeyUp", [&] { control->raise(control->KeyUp, code, shift); });
        return code == 0;
    }

    // Return presses the focused button or else the default button; Esc the cancel button.
    static bool pressButtonFor(Form& form, Control* focused, int code)
    {
        if (code != KeyReturn && code != KeyEscape)
            return false;
        if (code == KeyReturn && focused && focused->IsButton())
            return focused->PerformClick();
        for (const auto& control : form.Controls()) {
            const bool match =
                code == KeyReturn ? control->IsDefaultButton() : control->IsCancelButton();
            if (match && control->Visible() && control->Enabled())
                return control->PerformDialogKey(code);
        }
        return false;
    }

    bool m_replaying = false;
};

Form::Form(QString name) : m_name(std::move(name)), m_window(new FormWindow(*this))
{
    FormKeyDispatcher::ensureInstalled();
    m_window->setObjectName(m_name);
}

Form::~Form()
{
    m_dying = true;
    if (m_loop)
        m_loop->quit();
    delete m_window; // takes every control's widget with it
    m_window = nullptr;
    m_controls.clear();
}

QWidget* Form::window() const
{
    return m_window;
}
QWidget* Form::clientArea() const
{
    return m_window;
}

Form* Form::fromWindow(const QWidget* window)
{
    if (!window)
        return nullptr;
    const QVariant v = window->property(kFormProperty);
    return v.isValid() ? static_cast<Form*>(v.value<void*>()) : nullptr;
}

void Form::adopt(std::unique_ptr<Control> control)
{
    if (QWidget* w = control->widget()) {
        if (!w->parentWidget())
            w->setParent(clientArea());
        w->show(); // visible by default, as a newly placed control is
    }
    m_controls.push_back(std::move(control));
}

Control* Form::FindControl(const QString& name, int index) const
{
    for (const auto& control : m_controls)
        if (control->Index() == index && control->Name().compare(name, Qt::CaseInsensitive) == 0)
            return control.get();
    return nullptr;
}

QString Form::Caption() const
{
    return m_window->windowTitle();
}
void Form::SetCaption(const QString& caption)
{
    m_window->setWindowTitle(caption);
}
void Form::SetIcon(const QImage& icon)
{
    m_window->setWindowIcon(QPixmap::fromImage(icon));
}

int Form::frameExtraWidth() const
{
    return m_window->frameGeometry().width() - m_window->geometry().width();
}

int Form::frameExtraHeight() const
{
    return m_window->frameGeometry().height() - m_window->geometry().height();
}

int Form::Left() const
{
    return ToTwips(m_window->frameGeometry().x());
}
int Form::Top() const
{
    return ToTwips(m_window->frameGeometry().y());
}
int Form::Width() const
{
    return ToTwips(m_window->width() + frameExtraWidth());
}
int Form::Height() const
{
    return ToTwips(m_window->height() + frameExtraHeight());
}
int Form::ScaleWidth() const
{
    return ToTwips(m_window->width());
}
int Form::ScaleHeight() const
{
    return ToTwips(m_window->height());
}

void Form::SetLeft(int twips)
{
    m_positioned = true;
    m_window->move(ToPixels(twips), m_window->frameGeometry().y());
}

void Form::SetTop(int twips)
{
    m_positioned = true;
    m_window->move(m_window->frameGeometry().x(), ToPixels(twips));
}

void Form::SetWidth(int twips)
{
    m_window->resize(std::max(1, ToPixels(twips) - frameExtraWidth()), m_window->height());
}

void Form::SetHeight(int twips)
{
    m_window->resize(m_window->width(), std::max(1, ToPixels(twips) - frameExtraHeight()));
}

void Form::Move(int left, int top, int width, int height)
{
    SetLeft(left);
    SetTop(top);
    if (width >= 0)
        SetWidth(width);
    if (height >= 0)
        SetHeight(height);
}

QColor Form::BackColor() const
{
    return m_window->palette().color(QPalette::Window);
}

void Form::SetBackColor(const QColor& colour)
{
    QPalette palette = m_window->palette();
    palette.setColor(QPalette::Window, colour);
    m_window->setPalette(palette);
}

int Form::WindowState() const
{
    const Qt::WindowStates state = m_window->windowState();
    if (state & Qt::WindowMinimized)
        return 1;
    if (state & Qt::WindowMaximized)
        return 2;
    return 0;
}

void Form::SetWindowState(int state)
{
    m_window->setWindowState(state == 1   ? Qt::WindowMinimized
                             : state == 2 ? Qt::WindowMaximized
                                          : Qt::WindowNoState);
}

int Form::BorderStyle() const
{
    return m_window->windowFlags().testFlag(Qt::FramelessWindowHint) ? 0 : 3;
}

void Form::SetBorderStyle(int style)
{
    m_window->setWindowFlag(Qt::FramelessWindowHint, style == 0);
}

QVariant Form::GetPublic(const QString&) const
{
    return {};
}
bool Form::SetPublic(const QString&, const QVariant&)
{
    return false;
}

void Form::ensureLoaded()
{
    if (m_state != State::Created)
        return;
    m_state = State::Loaded;
    guarded("Form_Load", [this] { Form_Load(); });
}

void Form::centreOnScreen()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    const QSize outer = m_window->size() + QSize(frameExtraWidth(), frameExtraHeight());
    m_window->move(area.center() - QPoint(outer.width() / 2, outer.height() / 2));
}

void Form::Show(bool modal)
{
    if (m_state == State::Unloaded)
        throw std::logic_error("a form serves once: it was unloaded already");
    ensureLoaded();
    if (m_state != State::Loaded)
        return; // Form_Load unloaded the form
    if (!m_window->isVisible() && !m_positioned)
        centreOnScreen();
    if (modal) {
        m_modal = true;
        m_window->setWindowModality(Qt::ApplicationModal);
    }
    m_window->show();
    // The offscreen platform has no stacking order and says so on every raise.
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        m_window->raise();
    m_window->activateWindow();
    if (!modal)
        return;
    emit FormTracker::instance().modalShown(this);
    if (m_state != State::Loaded)
        return;
    QEventLoop loop;
    m_loop = &loop;
    loop.exec(QEventLoop::DialogExec);
    m_loop = nullptr;
}

bool Form::Unload()
{
    return unload(UnloadByCode);
}

bool Form::unload(int mode)
{
    if (m_state == State::Created) {
        m_state = State::Unloaded; // never loaded: nothing to ask, nothing to show again
        return true;
    }
    if (m_state == State::Unloaded || m_inUnload)
        return m_state == State::Unloaded;
    m_inUnload = true;
    bool cancel = false;
    guarded("Form_QueryUnload", [&] { Form_QueryUnload(cancel, mode); });
    if (!cancel)
        guarded("Form_Unload", [&] { Form_Unload(cancel); });
    m_inUnload = false;
    if (cancel)
        return false;
    m_state = State::Unloaded;
    m_window->hide();
    if (m_loop)
        m_loop->quit();
    emit FormTracker::instance().unloaded(this);
    return true;
}

void Form::Refresh()
{
    m_window->repaint();
}

void Form::paintEvent()
{
    if (m_state != State::Loaded)
        return;
    guarded("Form_Paint", [this] { Form_Paint(); });
    ++m_paintCount;
}

void Form::resizeEvent()
{
    if (m_state == State::Loaded)
        guarded("Form_Resize", [this] { Form_Resize(); });
}

void Form::activateEvent(bool active)
{
    if (m_state != State::Loaded)
        return;
    if (active)
        guarded("Form_Activate", [this] { Form_Activate(); });
    else
        guarded("Form_Deactivate", [this] { Form_Deactivate(); });
}

FormTracker& FormTracker::instance()
{
    static FormTracker tracker;
    return tracker;
}

} // namespace fw
