#include "controls/ctl_Palette.h"

#include "controls/Theme.h"
#include "forms/Form.h"
#include "forms/Resume.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QWidget>
#include <algorithm>

namespace fw {

namespace {
// Longer than any palette a person makes: 4096 entries of eight characters.
constexpr int kTextLimit = 4096 * 8;

const std::vector<std::uint32_t>& defaultColours()
{
    // The sixteen colours every palette of this kind starts with.
    static const std::vector<std::uint32_t> colours{
        0x000000, 0x808080, 0x000080, 0x0000FF, 0x008080, 0x00FFFF, 0x008000, 0x00FF00,
        0x808000, 0xFFFF00, 0x800000, 0xFF0000, 0x800080, 0xFF00FF, 0xC0C0C0, 0xFFFFFF};
    return colours;
}

QString hexOf(std::uint32_t colour)
{
    return QStringLiteral("#%1%2%3")
        .arg(colour & 0xFF, 2, 16, QLatin1Char('0'))
        .arg(colour >> 8 & 0xFF, 2, 16, QLatin1Char('0'))
        .arg(colour >> 16 & 0xFF, 2, 16, QLatin1Char('0'))
        .toUpper();
}

// Names become parts of registry keys and of the name list.
QString cleanName(QString name)
{
    name.remove(QLatin1Char(';')).remove(QLatin1Char('\\'));
    return name.trimmed();
}
} // namespace

class PaletteView : public QWidget {
  public:
    PaletteView(ctl_Palette& palette, QWidget* parent) : QWidget(parent), m_palette(palette) {}

  protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), theme::Base());
        const QColor frame = theme::FromHostColour(m_palette.m_colorFrame);
        for (int i = 1; i <= m_palette.Count(); ++i) {
            const QRect swatch = m_palette.swatchRect(i);
            p.fillRect(swatch, theme::FromHostColour(m_palette.m_colors[std::size_t(i - 1)]));
            p.setPen(frame);
            p.drawRect(swatch.adjusted(0, 0, -1, -1));
            if (i == m_palette.m_selected) {
                p.setPen(QPen(theme::Accent(), 2));
                p.drawRect(swatch.adjusted(-2, -2, 1, 1));
            }
        }
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() != Qt::LeftButton)
            return;
        const QPoint at = event->position().toPoint();
        if (const int index = m_palette.entryAt(at.x(), at.y()))
            m_palette.pressEntry(index);
    }

  private:
    ctl_Palette& m_palette;
};

ctl_Palette::ctl_Palette(Form& form, const QString& name, QWidget* container)
    : Control(form, name, QStringLiteral("ctl_Palette"), nullptr),
      m_view(new PaletteView(*this, container ? container : form.clientArea())),
      m_colors(defaultColours())
{
    m_view->resize(200, 60);
    setWidget(m_view);
}

void ctl_Palette::SetColorFrame(std::uint32_t colour)
{
    m_colorFrame = colour & 0xFFFFFF;
    m_view->update();
}

void ctl_Palette::SetColorSpace(int pixels)
{
    m_colorSpace = std::max(0, pixels);
    m_view->update();
}

void ctl_Palette::SetColorWidth(int pixels)
{
    m_colorWidth = std::max(1, pixels);
    m_view->update();
}

void ctl_Palette::SetColorHeight(int pixels)
{
    m_colorHeight = std::max(1, pixels);
    m_view->update();
}

std::optional<std::uint32_t> ctl_Palette::Color(int index) const
{
    if (index < 1 || index > Count())
        return std::nullopt;
    return m_colors[std::size_t(index - 1)];
}

bool ctl_Palette::SetColor(int index, std::uint32_t colour)
{
    if (index < 1 || index > Count())
        return false;
    m_colors[std::size_t(index - 1)] = colour & 0xFFFFFF;
    m_view->update();
    return true;
}

void ctl_Palette::AddColor(std::uint32_t colour)
{
    m_colors.push_back(colour & 0xFFFFFF);
    m_view->update();
}

bool ctl_Palette::RemoveColor(int index)
{
    if (index < 1 || index > Count())
        return false;
    m_colors.erase(m_colors.begin() + (index - 1));
    m_view->update();
    return true;
}

void ctl_Palette::SetColors(std::vector<std::uint32_t> colours)
{
    m_colors = std::move(colours);
    m_view->update();
}

void ctl_Palette::SetSelected(int index)
{
    m_selected = index;
    m_view->update();
}

// Swatches fill the rows from the left; as many fit in a row as the width allows.
QRect ctl_Palette::swatchRect(int index) const
{
    const int stepX = m_colorWidth + m_colorSpace;
    const int stepY = m_colorHeight + m_colorSpace;
    const int columns = std::max(1, (m_view->width() - m_colorSpace) / stepX);
    const int i = index - 1;
    return {m_colorSpace + (i % columns) * stepX, m_colorSpace + (i / columns) * stepY,
            m_colorWidth, m_colorHeight};
}

int ctl_Palette::entryAt(int x, int y) const
{
    for (int i = 1; i <= Count(); ++i)
        if (swatchRect(i).contains(x, y))
            return i;
    return 0;
}

void ctl_Palette::pressEntry(int index)
{
    SetSelected(index);
    raise(ColorClick, m_colors[std::size_t(index - 1)], index);
}

QString ctl_Palette::ToText() const
{
    QStringList parts;
    for (const std::uint32_t colour : m_colors)
        parts << hexOf(colour);
    return parts.join(QLatin1Char(';'));
}

std::vector<std::uint32_t> ctl_Palette::ColorsFromText(const QString& text)
{
    static const QRegularExpression hex(QStringLiteral("^#([0-9A-Fa-f]{6})$"));
    std::vector<std::uint32_t> colours;
    for (const QString& part : text.split(QLatin1Char(';'))) {
        const auto match = hex.match(part.trimmed());
        if (!match.hasMatch())
            continue;
        const std::uint32_t rgb = match.captured(1).toUInt(nullptr, 16);
        colours.push_back((rgb >> 16 & 0xFF) | (rgb & 0xFF00) | (rgb & 0xFF) << 16);
    }
    return colours;
}

QStringList ctl_Palette::storedNames() const
{
    std::string names;
    Resume([&] {
        names = GetCoreDevRegistry().Strings().ReadString(
            HiveCurrentUser, us(m_storeKey + QStringLiteral("\\Names")), {}, kTextLimit);
    });
    return qs(names).split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

QString ctl_Palette::askName(const QString& title, const QString& proposed) const
{
    QString prompt = QStringLiteral("Name der Palette:");
    const QStringList names = storedNames();
    if (!names.isEmpty())
        prompt += QStringLiteral("\nGespeichert: ") + names.join(QStringLiteral(", "));
    std::string answer;
    Resume([&] { answer = GetCoreDevMessages().AskText(us(prompt), us(title), us(proposed)); });
    return cleanName(qs(answer));
}

bool ctl_Palette::LoadPalette()
{
    if (m_storeKey.isEmpty())
        return false;
    const QString title = QStringLiteral("Palette laden");
    const QStringList names = storedNames();
    const QString name =
        askName(title, m_paletteName.isEmpty() && !names.isEmpty() ? names.first() : m_paletteName);
    if (name.isEmpty())
        return false;
    std::string text;
    Resume([&] {
        text = GetCoreDevRegistry().Strings().ReadString(
            HiveCurrentUser, us(m_storeKey + QStringLiteral("\\Palettes\\") + name), {},
            kTextLimit);
    });
    if (text.empty()) {
        Resume([&] {
            GetCoreDevMessages().ShowInfo(
                us(QStringLiteral("Eine Palette \"%1\" ist nicht gespeichert.").arg(name)),
                us(title));
        });
        return false;
    }
    SetColors(ColorsFromText(qs(text)));
    m_paletteName = name;
    return true;
}

bool ctl_Palette::SavePalette()
{
    if (m_storeKey.isEmpty())
        return false;
    const QString name = askName(QStringLiteral("Palette speichern"), m_paletteName);
    if (name.isEmpty())
        return false;
    bool saved = false;
    Resume([&] {
        RegistryWriter& writer = GetCoreDevRegistry().Writer();
        saved = writer.WriteString(
            HiveCurrentUser, us(m_storeKey + QStringLiteral("\\Palettes\\") + name), us(ToText()));
        QStringList names = storedNames();
        if (saved && !names.contains(name)) {
            names << name;
            writer.WriteString(HiveCurrentUser, us(m_storeKey + QStringLiteral("\\Names")),
                               us(names.join(QLatin1Char(';'))));
        }
    });
    if (saved)
        m_paletteName = name;
    return saved;
}

void ctl_Palette::NewPalette()
{
    SetColors({});
    m_paletteName.clear();
}

void ctl_Palette::AddEntry(std::uint32_t colour)
{
    AddColor(colour);
    pressEntry(Count());
}

void ctl_Palette::RemoveEntry()
{
    RemoveColor(m_selected);
}

void ctl_Palette::BindButtons(Control* load, Control* save, Control* newPalette, Control* add,
                              Control* remove, const Control* colourSource)
{
    if (load)
        load->Click = [this] { LoadPalette(); };
    if (save)
        save->Click = [this] { SavePalette(); };
    if (newPalette)
        newPalette->Click = [this] { NewPalette(); };
    if (remove)
        remove->Click = [this] { RemoveEntry(); };
    if (add)
        add->Click = [this, colourSource] {
            const QVariant shown =
                colourSource ? colourSource->GetProperty(QStringLiteral("BackColor")) : QVariant();
            const QColor colour = shown.value<QColor>();
            AddEntry(colour.isValid()
                         ? std::uint32_t(colour.red()) | std::uint32_t(colour.green()) << 8 |
                               std::uint32_t(colour.blue()) << 16
                         : 0xFFFFFFu);
        };
}

QVariant ctl_Palette::GetProperty(const QString& name) const
{
    const auto is = [&](const char16_t* candidate) {
        return name.compare(QStringView(candidate), Qt::CaseInsensitive) == 0;
    };
    if (is(u"colorframe"))
        return QVariant::fromValue(m_colorFrame);
    if (is(u"colorspace"))
        return m_colorSpace;
    if (is(u"colorwidth"))
        return m_colorWidth;
    if (is(u"colorheight"))
        return m_colorHeight;
    if (is(u"Count"))
        return Count();
    if (is(u"Selected"))
        return m_selected;
    return Control::GetProperty(name);
}

bool ctl_Palette::SetProperty(const QString& name, const QVariant& value)
{
    const auto is = [&](const char16_t* candidate) {
        return name.compare(QStringView(candidate), Qt::CaseInsensitive) == 0;
    };
    if (is(u"colorframe"))
        SetColorFrame(std::uint32_t(value.toLongLong()));
    else if (is(u"colorspace"))
        SetColorSpace(value.toInt());
    else if (is(u"colorwidth"))
        SetColorWidth(value.toInt());
    else if (is(u"colorheight"))
        SetColorHeight(value.toInt());
    else if (is(u"Selected"))
        SetSelected(value.toInt());
    else
        return Control::SetProperty(name, value);
    return true;
}

} // namespace fw
