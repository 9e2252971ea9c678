#include "folders/frm_DialogMonitor.h"

#include "controls/Theme.h"
#include "controls/ctl_Button.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Title.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/Text.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QVariantMap>
#include <QWidget>

namespace fw {

namespace {
// Design metrics, in pixels.
constexpr int kClientWidth = 420;
constexpr int kClientHeight = 320;
constexpr int kMargin = 8;
constexpr int kInnerInset = 4;
} // namespace

frm_DialogMonitor::frm_DialogMonitor() : Form(QStringLiteral("frm_DialogMonitor"))
{
    buildControls();
}

frm_DialogMonitor::~frm_DialogMonitor() = default;

void frm_DialogMonitor::buildControls()
{
    window()->resize(kClientWidth, kClientHeight);
    SetCaption(QStringLiteral("Monitor auswählen"));

    ctl_Title1 = Add<ctl_Title>(QStringLiteral("ctl_Title1"));
    ctl_Title1->SetCaption(QStringLiteral("Monitor auswählen"));
    ctl_Title1->SetSubCaption(QStringLiteral("Wählen Sie per Klick den gewünschten Monitor aus"));
    ctl_Title1->SetIconPath(QStringLiteral("Ico\\32\\Computer\\Hardware\\Workstation.ico"));
    ctl_Title1->CloseRequest = [this](const QString&) {
        bar_Buttons_Script(QStringLiteral("DIALOG.ABORT();"));
    };

    bar_Buttons = Add<ctl_CmdBar>(QStringLiteral("bar_Buttons"));
    const QString signs = QStringLiteral("Ico\\20\\Computer\\Signs\\");
    bar_Buttons->AddButton(QStringLiteral("HELP"), QStringLiteral("Hilfe"),
                           signs + QStringLiteral("Help.ico"), QStringLiteral("DIALOG.HELP();"));
    bar_Buttons->AddButton(QStringLiteral("ABORT"), QStringLiteral("&Abbruch"),
                           signs + QStringLiteral("Abort.ico"), QStringLiteral("DIALOG.ABORT();"));
    bar_Buttons->Script = [this](const QString& script) { bar_Buttons_Script(script); };

    const int pxX = Screen::TwipsPerPixelX();
    const int pxY = Screen::TwipsPerPixelY();
    const int top = ctl_Title1->Height() + kMargin * pxY;
    const int outerWidth = ScaleWidth() - 2 * kMargin * pxX;
    const int outerHeight = ScaleHeight() - bar_Buttons->Height() - top - kMargin * pxY;
    frm_Outer = Add<ctl_Pannel>(QStringLiteral("frm_Outer"));
    frm_Outer->Move(kMargin * pxX, top, outerWidth, outerHeight);
    frm_Inner = Add<ctl_Pannel>(QStringLiteral("frm_Inner"), frm_Outer->container());
    frm_Inner->Move(kInnerInset * pxX, kInnerInset * pxY, outerWidth - 2 * kInnerInset * pxX,
                    outerHeight - 2 * kInnerInset * pxY);
    // The map is the desktop: a darker ground lets the monitors stand out.
    frm_Inner->SetBackColor(theme::BarBack());

    but_Monitor = ControlArray<ctl_Button>(
        QStringLiteral("but_Monitor"),
        [this](int index) {
            auto* button = Add<ctl_Button>(QStringLiteral("but_Monitor"), frm_Inner->container());
            // A loaded element starts with the template's colours, as a copy would.
            if (index > 0) {
                button->SetBorderColor(but_Monitor[0].BorderColor());
                button->SetBorderColor2(but_Monitor[0].BorderColor2());
            }
            return button;
        },
        [this](ctl_Button& button) {
            button.Click = [this, &button] { but_Monitor_Click(button.Index()); };
        });
    but_Monitor.Load(0).SetVisible(false);
}

QVariant frm_DialogMonitor::GetPublic(const QString& name) const
{
    if (name.compare(u"Accepted", Qt::CaseInsensitive) == 0)
        return Accepted;
    if (name.compare(u"Monitor", Qt::CaseInsensitive) != 0)
        return Form::GetPublic(name);
    if (!Monitor)
        return {};
    return QVariantMap{{QStringLiteral("Index"), Monitor->Index},
                       {QStringLiteral("Left"), Monitor->Left},
                       {QStringLiteral("Top"), Monitor->Top},
                       {QStringLiteral("Width"), Monitor->Width},
                       {QStringLiteral("Height"), Monitor->Height}};
}

bool frm_DialogMonitor::SetPublic(const QString& name, const QVariant& value)
{
    if (name.compare(u"Accepted", Qt::CaseInsensitive) == 0) {
        Accepted = value.toBool();
        return true;
    }
    if (name.compare(u"Monitor", Qt::CaseInsensitive) != 0)
        return Form::SetPublic(name, value);
    if (!value.isValid() || value.isNull()) {
        Monitor.reset();
        return true;
    }
    const QVariantMap map = value.toMap();
    Monitor = MonitorInfo{
        map.value(QStringLiteral("Index")).toInt(), map.value(QStringLiteral("Left")).toInt(),
        map.value(QStringLiteral("Top")).toInt(), map.value(QStringLiteral("Width")).toInt(),
        map.value(QStringLiteral("Height")).toInt()};
    return true;
}

void frm_DialogMonitor::Form_Load()
{
    ctl_Button& templ = but_Monitor[0];
    const auto tools = []() -> ColourTools& { return GetCoreDevColors().Tools(); };
    Resume([&] {
        const std::uint32_t c = templ.BorderColor2();
        templ.SetBorderColor(tools().ColorShadeB(c, 0, 20));
        templ.SetBorderColor2(tools().ColorShadeA(c, 0, 20));
    });
    Resume([&] { m_monitors = GetCoreDevSystem().Monitors(); });
    if (m_monitors)
        Resume([&] { placeMonitors(*m_monitors); });
}

void frm_DialogMonitor::placeMonitors(const MonitorList& monitors)
{
    const int innerWidth = frm_Inner->Width();
    const int innerHeight = frm_Inner->Height();
    const double scaleX =
        double(innerWidth - 10 * Screen::TwipsPerPixelX()) / monitors.VirtualWidth();
    const double scaleY =
        double(innerHeight - 10 * Screen::TwipsPerPixelY()) / monitors.VirtualHeight();
    const double scale = scaleX < scaleY ? scaleX : scaleY;
    const int offsetX = int((innerWidth - monitors.VirtualWidth() * scale) / 2);
    const int offsetY = int((innerHeight - monitors.VirtualHeight() * scale) / 2);
    const int current = Monitor ? Monitor->Index : 0;
    const int primary = monitors.Primary().Index;

    int secondary = 1;
    for (int i = 1; i <= monitors.Count(); ++i) {
        const MonitorInfo info = monitors.Item(i);
        ctl_Button& button = but_Monitor.Load(i);
        QString caption;
        if (info.Index == primary) {
            caption = QStringLiteral("Primär 1");
        } else {
            ++secondary;
            caption = QString::number(secondary);
        }
        if (info.Index == current) {
            Resume([&] {
                ColourTools& tools = GetCoreDevColors().Tools();
                const std::uint32_t c = tools.GetSchemeColor(1);
                button.SetBorderColor(tools.ColorShadeB(c, 0, 50));
                button.SetBorderColor2(tools.ColorShadeA(c, 0, 50));
            });
            caption += QStringLiteral("<br>(Ausgewählt)");
        }
        button.SetText(caption);
        button.SetToolTipText(
            QStringLiteral("Auflösung: %1 x %2 Pixel").arg(info.Width).arg(info.Height));
        button.Move(int((info.Left - monitors.VirtualLeft()) * scale + offsetX),
                    int((info.Top - monitors.VirtualTop()) * scale + offsetY),
                    int(info.Width * scale), int(info.Height * scale));
        button.SetTag(QString::number(info.Index));
        button.SetVisible(true);
    }
}

void frm_DialogMonitor::but_Monitor_Click(int index)
{
    // The tag holds the monitor's number in the list, which is how the list is read back.
    const int number = but_Monitor[index].Tag().toInt();
    Monitor = m_monitors->Item(number);
    Accepted = true;
    Unload();
}

void frm_DialogMonitor::bar_Buttons_Script(const QString& script)
{
    const QString command = script.toUpper();
    if (command == u"DIALOG.ABORT();") {
        Accepted = false;
        Unload();
    } else if (command == u"DIALOG.HELP();") {
        Resume([&] {
            GetCoreDevMessages().ShowHelp("In diesem Dialog können Sie einen der angeschlossenen "
                                          "Monitor per Klick auswählen",
                                          us(Caption()));
        });
    }
}

} // namespace fw
