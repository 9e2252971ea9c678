// The XML inspector with a scripted XML object and with the desktop one on a
// document, driven through its command bar and window.
#include "controls/ctl_CmdBar.h"
#include "core/HasContext.h"
#include "desktop/DesktopXml.h"
#include "forms/ImageList.h"
#include "forms/TreeView.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/TreeInput.h"
#include "forms/testing/UserInput.h"
#include "inspect/frm_DialogXMLInspector.h"
#include "testing/TestHost.h"

#include <QAbstractItemView>
#include <QWidget>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

// Records how it is asked to fill, and fills one tag with one property.
class ScriptedXml : public XmlObject {
  public:
    void fillTree(Control& tree, TreeNode* parent) override
    {
        calls.push_back(tree.Name().toStdString() + (parent ? "|node" : "|root"));
        auto& nodes = dynamic_cast<TreeView&>(tree).Nodes();
        TreeNode& tag = nodes.Add(parent, tvwChild, "t", "rechnung", "tag.closed");
        tag.SetExpandedImage("tag.open");
        nodes.Add(&tag, tvwChild, "p", "nr = 12", "property");
    }
    std::vector<std::string> calls;
};

class XmlInspector : public ::testing::Test {
  protected:
    ScopedTestHost host;
    ModalDriver driver;
    frm_DialogXMLInspector form;
    std::shared_ptr<ScriptedXml> xml = std::make_shared<ScriptedXml>();

    /// Shows the form modally, runs action in it, and presses OK if it stays open.
    void run(const std::function<void()>& action)
    {
        driver.OnNextModal([&](Form&) {
            action();
            if (!form.IsUnloaded())
                form.bar_Buttons->Press(QStringLiteral("OK"));
        });
        form.Show(true);
    }
};

TEST_F(XmlInspector, AnEmptyCaptionTextKeepsTheDesignCaption)
{
    for (const QString& given : {QString(), QStringLiteral("Rechnung 12.xml")}) {
        frm_DialogXMLInspector inspector;
        inspector.CaptionText = given;
        driver.OnNextModal([&](Form&) {
            EXPECT_EQ(inspector.Caption(), given.isEmpty() ? "XML-Struktur" : given);
            inspector.bar_Buttons->Press(QStringLiteral("OK"));
        });
        inspector.Show(true);
        EXPECT_TRUE(inspector.IsUnloaded());
    }
}

TEST_F(XmlInspector, TheHostFillsTheTreeFromTheRootOnLoadAndReturnCloses)
{
    form.Xml = xml;
    driver.OnNextModal([&](Form&) {
        EXPECT_EQ(xml->calls, std::vector<std::string>{"tvw_XML|root"});
        TreeNode& tag = form.tvw_XML->Nodes().Item("t");
        ClickExpander(*form.tvw_XML, tag);
        EXPECT_TRUE(tag.Expanded());
        EXPECT_FALSE(form.tvw_XML->NodeRect(form.tvw_XML->Nodes().Item("p")).isEmpty());
        PressKey(form, Qt::Key_Return);
    });
    form.Show(true);
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_EQ(xml->calls.size(), 1u);
}

TEST_F(XmlInspector, HelpShowsItsMessageAndLeavesTheFormOpen)
{
    std::string shown;
    run([&] {
        driver.OnNextModal([&](Form& box) {
            shown = dynamic_cast<HasContext&>(box).context().Texts.Description;
            PressKey(box, Qt::Key_Return);
        });
        form.bar_Buttons->Press(QStringLiteral("HELP"));
        EXPECT_FALSE(form.IsUnloaded());
    });
    EXPECT_EQ(shown, "In diesem Dialog sehen Sie die Baumstruktur der erzeugten XML-Datei");
    ASSERT_EQ(driver.Seen().size(), 2u);
}

TEST_F(XmlInspector, TheTreeKeepsItsMarginsAndATooSmallWindowPassesUnnoticed)
{
    run([&] {
        TreeView& tree = *form.tvw_XML;
        form.window()->resize(600, 500);
        ProcessEvents();
        EXPECT_EQ(form.ScaleWidth() - tree.Left() - tree.Width(), tree.Left());
        EXPECT_EQ(form.bar_Buttons->Top() - tree.Top() - tree.Height(), tree.Top());
        const int width = tree.Width();
        const int height = tree.Height();

        form.window()->resize(10, 10);
        ProcessEvents();
        EXPECT_EQ(tree.Width(), width);
        EXPECT_EQ(tree.Height(), height);
        EXPECT_TRUE(form.IsLoaded());
    });
    EXPECT_EQ(driver.Seen().size(), 1u); // no message on the way
}

TEST_F(XmlInspector, TheDesktopObjectShowsADocumentWithItsPictures)
{
    auto desktopXml = std::make_shared<desktop::DesktopXml>();
    ASSERT_EQ(
        desktopXml->LoadData("<auftrag nr='4711'><posten menge='2'>Schrauben</posten></auftrag>"),
        desktop::DesktopXml::Status::Ok);
    form.Xml = desktopXml;
    run([&] {
        TreeView& tree = *form.tvw_XML;
        TreeNode* root = tree.Nodes().Roots().front();
        EXPECT_EQ(root->Text(), "auftrag");
        EXPECT_TRUE(root->Expanded());
        TreeNode* posten = root->Child()->Next();
        ClickExpander(tree, *posten);
        EXPECT_EQ(posten->Child()->Text(), "menge = 2");
        ClickNode(tree, *posten->Child());
        EXPECT_EQ(tree.SelectedItem(), posten->Child());
        EXPECT_FALSE(form.img_XML->Picture(QStringLiteral("tag.open")).isNull());
    });
}

TEST_F(XmlInspector, StarExpandsADeepDocumentDownToANoteWithoutOverflowingTheStack)
{
    constexpr int depth = 100000;
    auto deepXml = std::make_shared<desktop::DesktopXml>();
    ASSERT_EQ(
        deepXml->LoadData(QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth)),
        desktop::DesktopXml::Status::Ok);
    form.Xml = deepXml;
    run([&] {
        TreeView& tree = *form.tvw_XML;
        Type(form, QStringLiteral("*"));
        ProcessEvents();
        TreeNode* last = tree.Nodes().Roots().front();
        for (int level = 1; level < TreeView::ShownLevels; ++level)
            last = last->Child();
        EXPECT_TRUE(last->Expanded());
        EXPECT_FALSE(last->Child()->Expanded()) << "the levels below stay as they were";
        // What the view shows: every level expanded down to the last shown
        // one, and under it a note in place of the rest.
        auto* view = static_cast<QAbstractItemView*>(tree.widget());
        QModelIndex index = view->model()->index(0, 0, {});
        for (int level = 1; level < TreeView::ShownLevels; ++level)
            index = view->model()->index(0, 0, index);
        EXPECT_EQ(index.data().toString(), "a");
        const QModelIndex note = view->model()->index(0, 0, index);
        EXPECT_EQ(note.data().toString(), tree.DepthNote);
        EXPECT_FALSE(view->model()->hasChildren(note));
        // End walks to the deepest shown row, and the view scrolls right to it.
        PressKey(form, Qt::Key_End);
        EXPECT_EQ(tree.SelectedItem(), last);
        EXPECT_TRUE(tree.viewport()->rect().contains(tree.NodeRect(*last).topLeft()));

        // Collapsing by key and removing the expanded levels stay quick and flat.
        PressKey(form, Qt::Key_Home);
        PressKey(form, Qt::Key_Left);
        EXPECT_FALSE(tree.Nodes().Roots().front()->Expanded());
        tree.Nodes().Remove(*tree.Nodes().Roots().front()->Child());
        EXPECT_EQ(tree.Nodes().Count(), 1);
    });
}

} // namespace
