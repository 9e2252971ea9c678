#include "controls/ctl_CmdBar.h"

#include "controls/ButtonFace.h"
#include "controls/EdgeDock.h"
#include "controls/Theme.h"
#include "forms/Form.h"

#include <QPainter>
#include <QPointer>

namespace fw {

namespace {
bool isKey(const CmdBarButton& row, QStringView key)
{
    return row.Key.compare(key, Qt::CaseInsensitive) == 0;
}

// "|" separates fields, so it and the escape itself are escaped; line breaks
// are escaped too so that a row stays on one line wherever it is stored.
QString escapeField(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (c == u'\\' || c == u'|')
            out += u'\\', out += c;
        else if (c == u'\n')
            out += QStringLiteral("\\n");
        else if (c == u'\r')
            out += QStringLiteral("\\r");
        else
            out += c;
    }
    return out;
}

QStringList splitFields(const QString& text)
{
    QStringList fields(1);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'|') {
            fields.append(QString());
        } else if (c == u'\\' && i + 1 < text.size()) {
            const QChar next = text[++i];
            fields.last() += next == u'n' ? QChar(u'\n') : next == u'r' ? QChar(u'\r') : next;
        } else {
            fields.last() += c;
        }
    }
    return fields;
}

QString flag(bool on)
{
    return on ? QStringLiteral("-1") : QStringLiteral("0");
}
} // namespace

QString CmdBarButton::ToPropertyList() const
{
    const QStringList fields = {QStringLiteral("1.3"), escapeField(Key),    escapeField(Caption),
                                escapeField(IconPath), flag(Visible),       flag(Enabled),
                                escapeField(Key),      escapeField(Script), QStringLiteral("0"),
                                QStringLiteral("0"),   QString(),           QString()};
    return fields.join(u'|');
}

CmdBarButton CmdBarButton::FromPropertyList(const QString& text)
{
    const QStringList f = splitFields(text);
    CmdBarButton row;
    row.Key = f.value(1);
    if (row.Key.isEmpty())
        row.Key = f.value(6);
    row.Caption = f.value(2);
    row.IconPath = f.value(3);
    // Older lists may lack the flags: a row is shown and usable unless it says otherwise.
    row.Visible = f.value(4, QStringLiteral("-1")).toInt() != 0;
    row.Enabled = f.value(5, QStringLiteral("-1")).toInt() != 0;
    row.Script = f.value(7);
    return row;
}

// The band and the buttons it made for the rows. Children that a form places
// on the bar are left where the form put them.
class CmdBarStrip : public QWidget {
  public:
    CmdBarStrip(ctl_CmdBar& owner, QWidget* parent) : QWidget(parent), m_owner(owner)
    {
        resize(640, theme::CmdBarHeight);
    }

    void rebuild(const std::vector<CmdBarButton>& rows, bool helpVisible)
    {
        for (const Face& face : m_faces) {
            // A row's own click may be what rebuilds the bar: delete it later.
            face.button->hide();
            face.button->setObjectName(QString());
            face.button->deleteLater();
        }
        m_faces.clear();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const CmdBarButton& row = rows[i];
            const bool help = isKey(row, u"HELP");
            auto* button = new ButtonFace(this);
            button->setObjectName(QStringLiteral("cmd_") + row.Key);
            button->setCaption(row.Caption);
            if (help) {
                button->setRound(true);
                button->setToolTip(theme::PlainCaption(row.Caption));
            } else {
                button->setPicture(theme::LoadIcon(row.IconPath, theme::ButtonIcon));
                button->setDefaultLook(isKey(row, u"OK"));
            }
            button->setEnabled(row.Enabled);
            button->setVisible(row.Visible && (!help || helpVisible));
            QObject::connect(button, &QAbstractButton::clicked, this,
                             [this, i] { m_owner.pressRow(i); });
            m_faces.push_back({button, i, help});
        }
        layoutFaces();
    }

    /// The row whose button has the keyboard focus, or -1.
    int focusedRow() const
    {
        const QWidget* focus = window()->focusWidget();
        for (const Face& face : m_faces)
            if (face.button == focus)
                return int(face.row);
        return -1;
    }

  protected:
    void resizeEvent(QResizeEvent*) override { layoutFaces(); }

    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), theme::BarBack());
        p.fillRect(QRect(0, 0, width(), 1), theme::Hairline());
    }

  private:
    struct Face {
        ButtonFace* button;
        std::size_t row;
        bool help;
    };

    void layoutFaces()
    {
        const int top = 1 + (height() - 1 - theme::ButtonHeight) / 2;
        int right = width() - theme::Margin + 4;
        for (auto it = m_faces.rbegin(); it != m_faces.rend(); ++it) {
            ButtonFace* button = it->button;
            if (button->isHidden())
                continue;
            if (it->help) {
                button->setGeometry(theme::Margin - 4, top, theme::ButtonHeight,
                                    theme::ButtonHeight);
                continue;
            }
            const int w = button->sizeHint().width();
            button->setGeometry(right - w, top, w, theme::ButtonHeight);
            right -= w + theme::Gap;
        }
    }

    ctl_CmdBar& m_owner;
    std::vector<Face> m_faces;
};

ctl_CmdBar::ctl_CmdBar(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_CmdBar"), nullptr),
      m_strip(new CmdBarStrip(*this, container ? container : form.clientArea()))
{
    setWidget(m_strip);
    new EdgeDock(m_strip, EdgeDock::Bottom);
}

QWidget* ctl_CmdBar::container() const
{
    return m_strip;
}

void ctl_CmdBar::AddButton(const QString& key, const QString& caption, const QString& iconPath,
                           const QString& script)
{
    m_buttons.push_back({key, caption, iconPath, script});
    ButtonsChanged();
}

void ctl_CmdBar::ClearButtons()
{
    m_buttons.clear();
    ButtonsChanged();
}

void ctl_CmdBar::ButtonsChanged()
{
    m_strip->rebuild(m_buttons, m_helpVisible);
}

void ctl_CmdBar::SetHelpVisible(bool on)
{
    m_helpVisible = on;
    ButtonsChanged();
}

int ctl_CmdBar::usableRow(QStringView key) const
{
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        const CmdBarButton& row = m_buttons[i];
        if (!isKey(row, key))
            continue;
        if (row.Visible && row.Enabled && (m_helpVisible || !isKey(row, u"HELP")))
            return int(i);
    }
    return -1;
}

bool ctl_CmdBar::Press(const QString& key)
{
    const int row = usableRow(key);
    if (row < 0 || !Enabled())
        return false;
    pressRow(std::size_t(row));
    return true;
}

void ctl_CmdBar::pressRow(std::size_t index)
{
    if (index >= m_buttons.size())
        return;
    // The handlers may change the rows or unload and delete the form.
    const QString script = m_buttons[index].Script;
    const QString key = m_buttons[index].Key;
    QPointer<QWidget> alive(m_strip);
    raise(Script, script);
    if (alive)
        raise(Key, key);
}

bool ctl_CmdBar::IsDefaultButton() const
{
    return usableRow(u"OK") >= 0;
}
bool ctl_CmdBar::IsCancelButton() const
{
    return usableRow(u"ABORT") >= 0;
}

// The form presses a focused button on Return; a focused row is such a button,
// and Return there must press that row, not the OK row.
bool ctl_CmdBar::IsButton() const
{
    return m_strip->focusedRow() >= 0;
}

bool ctl_CmdBar::PerformClick()
{
    const int row = m_strip->focusedRow();
    if (row < 0 || !Enabled())
        return false;
    pressRow(std::size_t(row));
    return true;
}

bool ctl_CmdBar::PerformDialogKey(int keyCode)
{
    if (keyCode == 13)
        return Press(QStringLiteral("OK"));
    if (keyCode == 27)
        return Press(QStringLiteral("ABORT"));
    return false;
}

QVariant ctl_CmdBar::GetProperty(const QString& name) const
{
    const QString key = name.toUpper();
    if (key == u"HELPVISIBLE")
        return m_helpVisible;
    if (key == u"DOEVENTS")
        return m_doEvents;
    if (key == u"BUTTONS") {
        QStringList rows;
        for (const CmdBarButton& row : m_buttons)
            rows << row.ToPropertyList();
        return rows;
    }
    return Control::GetProperty(name);
}

bool ctl_CmdBar::SetProperty(const QString& name, const QVariant& value)
{
    const QString key = name.toUpper();
    if (key == u"HELPVISIBLE") {
        SetHelpVisible(value.toBool());
        return true;
    }
    if (key == u"DOEVENTS") {
        SetDoEvents(value.toBool());
        return true;
    }
    if (key == u"BUTTONS") {
        m_buttons.clear();
        for (const QString& row : value.toStringList())
            m_buttons.push_back(CmdBarButton::FromPropertyList(row));
        ButtonsChanged();
        return true;
    }
    return Control::SetProperty(name, value);
}

} // namespace fw
