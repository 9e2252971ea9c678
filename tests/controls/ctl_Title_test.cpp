#include "ControlsTestForm.h"
#include "controls/ctl_Pannel.h"
#include "controls/ctl_Seperator.h"
#include "controls/ctl_Title.h"
#include "testing/TestHost.h"

#include <QAbstractButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using fw::ctl_Title;

class TitleTest : public ::testing::Test {
  protected:
    TitleTest()
    {
        title = form.Add<ctl_Title>(QStringLiteral("bar_Header"), nullptr);
        title->SetCaption("Fehler");
        title->SetSubCaption("Datei fehlt");
        title->CloseRequest = [this](const QString& source) { requests << source; };
        form.ShowNow();
    }

    // A point of the band away from icon, text and close button.
    QColor bandColour() const
    {
        const QImage image = title->widget()->grab().toImage();
        return image.pixelColor(image.width() / 2, image.height() - 6);
    }

    fw::testing::ScopedTestHost host;
    fw::testing::ControlsTestForm form;
    ctl_Title* title = nullptr;
    QStringList requests;
};

TEST_F(TitleTest, ErrorAndQuestionSchemesColourTheBandDifferently)
{
    std::map<int, QColor> band;
    for (int scheme : {0, 6, 7}) {
        title->SetScheme(scheme);
        band[scheme] = bandColour();
    }
    EXPECT_NE(band[0], band[6]);
    EXPECT_NE(band[0], band[7]);
    EXPECT_NE(band[6], band[7]);
    EXPECT_GT(band[6].red(), band[6].blue()) << "errors are reddish";
    EXPECT_GT(band[7].blue(), band[7].green()) << "questions are blue or violet";
}

TEST_F(TitleTest, TheHostsSchemeColourTintsTheBand)
{
    host->schemeColours[6] = 0x000080u; // 0x00BBGGRR: a dark red
    host->clearCalls();
    title->SetScheme(6);
    const QColor band = bandColour();
    EXPECT_GT(band.red(), band.green() + 5);
    EXPECT_GT(band.lightness(), 180) << "a calm tint, not the raw colour";
    EXPECT_EQ(host->callsTo("GetSchemeColor"), std::vector<std::string>{"GetSchemeColor(6)"});
    title->Refresh();
    EXPECT_EQ(host->callsTo("GetSchemeColor").size(), 1u) << "asked once per scheme";
}

TEST_F(TitleTest, CloseButtonRaisesCloseRequest)
{
    auto* close = title->widget()->findChild<QAbstractButton*>("cmd_Close");
    ASSERT_NE(close, nullptr);
    EXPECT_GT(close->x(), title->widget()->width() / 2);
    QTest::mouseClick(close, Qt::LeftButton);
    EXPECT_EQ(requests, QStringList{"CLOSE"});
}

TEST_F(TitleTest, DocksToTheTopAndFollowsTheWidth)
{
    EXPECT_EQ(title->widget()->geometry(), QRect(0, 0, 480, 64));
    form.window()->resize(700, 400);
    fw::testing::ProcessEvents();
    EXPECT_EQ(title->widget()->geometry(), QRect(0, 0, 700, 64));
    EXPECT_EQ(title->GetProperty("Height").toInt(), fw::ToTwips(64));
}

TEST_F(TitleTest, HostWithoutServicesStillGetsABand)
{
    host->failing.insert("LoadPicture");
    host->failing.insert("GetSchemeColor");
    title->SetIconPath("Ico\\32\\Computer\\Signs\\question.ico");
    title->SetScheme(7);
    EXPECT_TRUE(title->Picture().isNull());
    EXPECT_NE(bandColour(), QColor(Qt::black));
}

TEST_F(TitleTest, PropertiesByNameReachTheirLinesAndTheHostsIcon)
{
    EXPECT_TRUE(title->SetProperty("caption", "Hinweis"));
    EXPECT_TRUE(title->SetProperty("TEXT", "Zweite Zeile"));
    EXPECT_TRUE(title->SetProperty("IconPath", "Ico\\32\\x.ico"));
    EXPECT_EQ(title->Caption(), "Hinweis");
    EXPECT_EQ(title->SubCaption(), "Zweite Zeile");
    EXPECT_EQ(title->Picture().size(), QSize(32, 32));
    EXPECT_FALSE(title->GetProperty("NoSuchThing").isValid());
}

TEST(Pannel, HoldsControlsOnTheBaseColour)
{
    fw::testing::ControlsTestForm form;
    auto* pannel = form.Add<fw::ctl_Pannel>(QStringLiteral("pan_Holder"), nullptr);
    auto* rule = form.Add<fw::ctl_Seperator>(QStringLiteral("ctl_Seperator"), pannel->container());
    EXPECT_EQ(rule->widget()->parentWidget(), pannel->widget());
    EXPECT_EQ(rule->widget()->height(), 1);
    EXPECT_EQ(pannel->BackColor(), QColor(Qt::white));
    pannel->SetProperty("BackColor", 0x0000FF); // host order: red
    EXPECT_EQ(pannel->BackColor(), QColor(Qt::red));
    form.ShowNow();
    EXPECT_EQ(pannel->widget()->grab().toImage().pixelColor(50, 80), QColor(Qt::red));
}

} // namespace
