#include "ControlsTestForm.h"
#include "controls/ctl_Label.h"
#include "forms/Screen.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using fw::ctl_Label;
using fw::ToTwips;

class LabelTest : public ::testing::Test {
  protected:
    LabelTest()
    {
        label = form.Add<ctl_Label>(QStringLiteral("lab_Description"), nullptr);
        label->Move(ToTwips(8), ToTwips(8));
        label->SetWidth(ToTwips(300));
        label->LinkClick = [this](const QString& target) { links << target; };
        form.ShowNow();
    }

    int widthPx() const { return label->widget()->width(); }
    int heightPx() const { return label->widget()->height(); }

    fw::testing::ControlsTestForm form;
    ctl_Label* label = nullptr;
    QStringList links;
};

TEST_F(LabelTest, ClickingALinkRaisesItsTarget)
{
    const QStringList markups = {"<A HREF='SEARCH'>durchsuchen</A>",
                                 "<a href=\"SEARCH\">durchsuchen</a>",
                                 "<A href=SEARCH>durchsuchen</a>"};
    for (const QString& markup : markups) {
        links.clear();
        label->SetCaption(markup);
        EXPECT_EQ(label->DisplayedText(), "durchsuchen") << markup.toStdString();
        QTest::mouseClick(label->widget(), Qt::LeftButton, {}, QPoint(6, heightPx() / 2));
        EXPECT_EQ(links, QStringList{"SEARCH"}) << markup.toStdString();
    }
    links.clear();
    label->SetCaption("Netzwerk <A HREF='SEARCH'>durchsuchen</A>");
    QTest::mouseClick(label->widget(), Qt::LeftButton, {}, QPoint(3, heightPx() / 2));
    EXPECT_TRUE(links.isEmpty()) << "a click beside the link";
}

TEST_F(LabelTest, OnlyTheMarkupTagsAreTakenAsTags)
{
    const std::pair<const char*, const char*> rows[] = {
        {"Hier kommt der <b>Text</b> hin", "Hier kommt der Text hin"},
        {"<I>kursiv</I> und <B>fett</B>", "kursiv und fett"},
        {"a<br>b<BR/>c", "a\nb\nc"},
        {"if a < b && c > d", "if a < b && c > d"},
        {"<script>x</script> <u>u</u> <p>", "<script>x</script> <u>u</u> <p>"},
        {"&lt; &amp; &#65;", "&lt; &amp; &#65;"},
        {"<a href='X'", "<a href='X'"},
        {"Zeile 1\nZeile 2", "Zeile 1\nZeile 2"},
    };
    for (const auto& [text, shown] : rows) {
        label->SetCaption(QString::fromUtf8(text));
        EXPECT_EQ(label->DisplayedText(), QString::fromUtf8(shown)) << text;
    }
}

TEST_F(LabelTest, LeftAlignedLinesGrowTheWidthInsteadOfWrapping)
{
    label->SetAlignment(0);
    label->SetCaption("kurz");
    EXPECT_EQ(widthPx(), 300) << "short lines keep the design width";
    const int oneLine = heightPx();
    label->SetCaption(QString(80, u'-') + "\nPos  Menge  Preis");
    EXPECT_GT(widthPx(), 300);
    EXPECT_LE(heightPx(), 2 * oneLine + 2) << "two lines as written, no wrapping";
    label->SetWidth(ToTwips(300));
    EXPECT_GT(widthPx(), 300) << "a new design width is measured again";
}

TEST_F(LabelTest, WrappedAlignmentsKeepTheWidthAndTakeTheHeight)
{
    for (int alignment : {1, 3}) {
        label->SetAlignment(alignment);
        label->SetCaption("Wort");
        const int oneLine = heightPx();
        label->SetCaption(QString("Ein ganz normaler Satz mit Wörtern. ").repeated(12));
        EXPECT_EQ(widthPx(), 300) << alignment;
        EXPECT_GT(heightPx(), 4 * oneLine) << alignment;
        EXPECT_EQ(label->Height(), ToTwips(heightPx()));
    }
}

TEST_F(LabelTest, NothingGrowsBeyondNineTenthsOfTheScreen)
{
    const int cap = fw::ToPixels(fw::Screen::Width()) * 9 / 10;
    label->SetAlignment(0);
    label->SetCaption(QString(4000, u'-'));
    EXPECT_LE(widthPx(), cap);
    EXPECT_GT(heightPx(), 30) << "wrapped anyway";

    label->SetAlignment(1);
    label->SetCaption("kurz " + QString(200, u'x') + " kurz");
    EXPECT_GT(widthPx(), 300) << "a long word widens the label";
    label->SetCaption(QString(5000, u'x'));
    EXPECT_LE(widthPx(), cap);
}

TEST_F(LabelTest, MissingMonospaceFontFallsBackToTheFixedFont)
{
    label->SetFontName("Lucida Console");
    label->SetFontSize(7);
    label->SetCaption("-------- a table");
    const QFont font = label->Font();
    EXPECT_EQ(font.pointSizeF(), 7);
    if (!QFontDatabase::hasFamily("Lucida Console")) {
        EXPECT_TRUE(QFontInfo(font).fixedPitch()) << font.family().toStdString();
    }
    label->SetFontName("No Such Family At All");
    EXPECT_GT(heightPx(), 0);
}

TEST_F(LabelTest, AMegabyteOfTextScrollsWithinTheMaximumHeight)
{
    label->SetMaxHeight(ToTwips(200));
    label->SetCaption(QString("Lorem ipsum dolor sit amet, consectetur elit. ").repeated(20000) +
                      "<br><A HREF='END'>Ende</A>");
    EXPECT_EQ(heightPx(), 200);
    auto* bar = label->widget()->findChild<QScrollBar*>();
    ASSERT_TRUE(bar && bar->isVisible());
    EXPECT_LE(bar->x() + bar->width(), widthPx()) << "the bar is part of the label";
    // Dragging the slider to the bottom brings the link at the end under the mouse.
    const QPoint slider(bar->width() / 2, 20);
    QTest::mousePress(bar, Qt::LeftButton, {}, slider);
    QTest::mouseMove(bar, QPoint(slider.x(), bar->height() + 50));
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(slider.x(), bar->height() + 50));
    EXPECT_EQ(bar->value(), bar->maximum());
    QTest::mouseClick(label->widget(), Qt::LeftButton, {}, QPoint(6, heightPx() - 6));
    EXPECT_EQ(links, QStringList{"END"});

    label->SetCaption("kurz");
    EXPECT_FALSE(bar->isVisible()) << "a short text needs no bar";
    EXPECT_LT(heightPx(), 200);
}

} // namespace
