// The tree control, driven by clicks and keys on its nodes.
#include "forms/ControlError.h"
#include "forms/Form.h"
#include "forms/ImageList.h"
#include "forms/Resume.h"
#include "forms/Screen.h"
#include "forms/TreeView.h"
#include "forms/testing/TreeInput.h"
#include "forms/testing/UserInput.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QColor>
#include <QIcon>
#include <QWidget>
#include <gtest/gtest.h>

using namespace fw;
using namespace fw::testing;

namespace {

QImage filled(QRgb colour)
{
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

class TreeForm : public Form {
  public:
    TreeForm() : Form(QStringLiteral("frm_Tree"))
    {
        window()->resize(300, 300);
        img = Add<ImageList>(QStringLiteral("img_Tree"));
        img->Add(QStringLiteral("closed"), filled(qRgb(200, 0, 0)));
        img->Add(QStringLiteral("open"), filled(qRgb(0, 200, 0)));
        img->Add(QStringLiteral("leaf"), filled(qRgb(0, 0, 200)));
        tvw = Add<TreeView>(QStringLiteral("tvw_Tree"));
        tvw->Move(0, 0, ToTwips(300), ToTwips(300));
        tvw->SetImageList(img);
    }
    ImageList* img;
    TreeView* tvw;
};

class TreeViewTest : public ::testing::Test {
  protected:
    TreeForm form;
    std::vector<std::string> events;
    TreeNode* a = nullptr;
    TreeNode* b = nullptr;

    void SetUp() override
    {
        TreeNodes& nodes = form.tvw->Nodes();
        a = &nodes.Add(nullptr, tvwLast, "a", "Alpha", "closed");
        a->SetExpandedImage("open");
        nodes.Add(a, tvwChild, "a1", "Eins", "leaf");
        nodes.Add(a, tvwChild, "a2", "Zwei", "leaf");
        b = &nodes.Add(nullptr, tvwLast, "b", "Beta", "closed");
        const auto log = [this](const char* what) {
            return
                [this, what](TreeNode& node) { events.push_back(what + node.Key().toStdString()); };
        };
        form.tvw->NodeClick = log("click:");
        form.tvw->Expand = log("expand:");
        form.tvw->Collapse = log("collapse:");
        form.tvw->DblClick = [this] { events.push_back("dblclick"); };
        form.Show();
        ProcessEvents();
    }
    void TearDown() override { form.Unload(); }

    // The picture the view shows for a node now.
    QImage shown(const TreeNode& node)
    {
        auto* view = static_cast<QAbstractItemView*>(form.tvw->widget());
        const QModelIndex index = view->indexAt(form.tvw->NodeRect(node).center());
        const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
        return icon.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32);
    }
    QImage picture(const char* key) { return form.img->Picture(QString(key)); }
};

TEST_F(TreeViewTest, ClicksAndArrowKeysSelectAndReportEachNodeOnce)
{
    ClickNode(*form.tvw, *b);
    PressKey(form, Qt::Key_Up);
    EXPECT_EQ(events, (std::vector<std::string>{"click:b", "click:a"}));
    EXPECT_EQ(form.tvw->SelectedItem(), a);
    EXPECT_TRUE(a->Selected());
    EXPECT_FALSE(b->Selected());
    form.tvw->SetSelectedItem(b); // code moves the selection without a report
    EXPECT_EQ(events.size(), 2u);
}

TEST_F(TreeViewTest, ANodesColourShowsInItsRowAloneUntilReset)
{
    auto* view = static_cast<QAbstractItemView*>(form.tvw->widget());
    const auto colourShown = [&](const TreeNode& node) {
        return view->indexAt(form.tvw->NodeRect(node).center()).data(Qt::ForegroundRole);
    };
    b->SetForeColor(0x00C0C0C0);
    EXPECT_EQ(colourShown(*b).value<QColor>(), QColor(192, 192, 192));
    a->SetForeColor(0x000000FF); // host colours are blue-green-red
    EXPECT_EQ(colourShown(*a).value<QColor>(), QColor(255, 0, 0));
    b->SetForeColor(TreeNode::DefaultColor);
    EXPECT_FALSE(colourShown(*b).isValid());
}

TEST_F(TreeViewTest, EveryWayOfExpandingShowsTheOpenPictureAndLeftCollapses)
{
    struct Way {
        const char* name;
        std::function<void(TreeForm&, TreeNode&)> act;
    };
    const auto clickThen = [](Qt::Key key) {
        return [key](TreeForm& f, TreeNode& n) {
            ClickNode(*f.tvw, n);
            PressKey(f, key);
        };
    };
    const std::vector<Way> ways{
        {"expander", [](TreeForm& f, TreeNode& n) { ClickExpander(*f.tvw, n); }},
        {"right key", clickThen(Qt::Key_Right)},
        {"plus key", clickThen(Qt::Key_Plus)},
        {"double click", [](TreeForm& f, TreeNode& n) { DoubleClickNode(*f.tvw, n); }},
    };
    for (const Way& way : ways) {
        a->SetExpanded(false);
        events.clear();
        ASSERT_TRUE(form.tvw->NodeRect(*a->Child()).isEmpty()) << way.name;
        EXPECT_EQ(shown(*a), picture("closed")) << way.name;
        way.act(form, *a);
        EXPECT_TRUE(a->Expanded()) << way.name;
        EXPECT_NE(std::find(events.begin(), events.end(), "expand:a"), events.end()) << way.name;
        EXPECT_FALSE(form.tvw->NodeRect(*a->Child()).isEmpty()) << way.name;
        EXPECT_EQ(shown(*a), picture("open")) << way.name;
    }
    EXPECT_EQ(std::count(events.begin(), events.end(), "dblclick"), 1);

    ClickNode(*form.tvw, *a);
    events.clear();
    PressKey(form, Qt::Key_Left);
    EXPECT_EQ(events, std::vector<std::string>{"collapse:a"});
    EXPECT_FALSE(a->Expanded());
    EXPECT_EQ(shown(*a), picture("closed"));
}

TEST_F(TreeViewTest, RelationshipsPlaceTheNewNode)
{
    struct Case {
        TreeRelationship relationship;
        const char* relative;
        QStringList order; ///< the texts of the relative's level afterwards
    };
    const std::vector<Case> cases{
        {tvwFirst, "a2", {"Neu", "Eins", "Zwei"}}, {tvwLast, "a1", {"Eins", "Zwei", "Neu"}},
        {tvwNext, "a1", {"Eins", "Neu", "Zwei"}},  {tvwPrevious, "a2", {"Eins", "Neu", "Zwei"}},
        {tvwChild, "a", {"Eins", "Zwei", "Neu"}},
    };
    TreeNodes& nodes = form.tvw->Nodes();
    for (const Case& c : cases) {
        TreeNode& added = nodes.Add(c.relative, c.relationship, "neu", "Neu");
        QStringList order;
        for (TreeNode* n = added.FirstSibling(); n; n = n->Next())
            order << n->Text();
        EXPECT_EQ(order, c.order) << c.relationship;
        EXPECT_EQ(added.Parent(), a);
        EXPECT_EQ(added.FullPath(), "Alpha\\Neu");
        nodes.Remove("neu");
    }
    EXPECT_EQ(nodes.Count(), 4);
}

TEST_F(TreeViewTest, RefusedAddsRaiseTheClassicErrorsAndAddNothing)
{
    TreeNodes& nodes = form.tvw->Nodes();
    const auto numberOf = [](const std::function<void()>& step) {
        try {
            step();
        } catch (const ControlError& e) {
            return e.Number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf([&] { nodes.Add(a, tvwChild, "a1", "Doppelt"); }), 35602);
    EXPECT_EQ(numberOf([&] { nodes.Add(a, tvwChild, "42", "Zahl"); }), 35603);
    EXPECT_EQ(numberOf([&] { nodes.Add(a, tvwChild, "x", "Bild", "fehlt"); }), 35601);
    EXPECT_EQ(numberOf([&] { nodes.Add("nirgends", tvwChild, "y", "Wo"); }), 35601);
    EXPECT_EQ(numberOf([&] { nodes.Item("nirgends"); }), 35601);
    EXPECT_EQ(nodes.Count(), 4);
    EXPECT_EQ(a->Children(), 2);

    // A handler passes over a refused step and goes on with the next.
    int steps = 0;
    Resume([&] { nodes.Add(nullptr, tvwLast, "b", "Doppelt"); });
    Resume([&] { ++steps; });
    EXPECT_EQ(steps, 1);

    TreeForm bare;
    bare.tvw->SetImageList(nullptr);
    EXPECT_EQ(numberOf([&] { bare.tvw->Nodes().Add(nullptr, tvwLast, "k", "T", "leaf"); }), 35613);
}

TEST_F(TreeViewTest, RemovingANodeFreesTheKeysBelowIt)
{
    TreeNodes& nodes = form.tvw->Nodes();
    ClickExpander(*form.tvw, *a);
    nodes.Remove("a");
    ProcessEvents();
    EXPECT_EQ(nodes.Count(), 1);
    EXPECT_FALSE(nodes.Exists("a1"));
    TreeNode& again = nodes.Add("b", tvwChild, "a1", "Wieder");
    EXPECT_EQ(&nodes.Item("a1"), &again);
    nodes.Clear();
    EXPECT_EQ(nodes.Count(), 0);
    EXPECT_EQ(form.tvw->HitTest(ToTwips(20), ToTwips(8)), nullptr);
}

TEST_F(TreeViewTest, BelowTheShownLevelsANoteComesAndGoesWithTheNodes)
{
    auto* view = static_cast<QAbstractItemView*>(form.tvw->widget());
    // Fails hard on any change the model announces wrongly to the view.
    QAbstractItemModelTester tester(view->model(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal);
    TreeNodes& nodes = form.tvw->Nodes();
    TreeNode* last = b;
    for (int level = 1; level < TreeView::ShownLevels; ++level)
        last = &nodes.Add(last, tvwChild, {}, QString::number(level));
    nodes.Add(last, tvwChild, "hidden", "versteckt");
    ClickNode(*form.tvw, *b);
    PressKey(form, Qt::Key_Asterisk);
    EXPECT_TRUE(last->Expanded());

    QModelIndex lastIndex = view->model()->index(1, 0, {});
    for (int level = 1; level < TreeView::ShownLevels; ++level)
        lastIndex = view->model()->index(0, 0, lastIndex);
    ASSERT_EQ(lastIndex.data().toString(), last->Text());
    const auto noteShown = [&] { return view->model()->index(0, 0, lastIndex).data().toString(); };
    EXPECT_EQ(noteShown(), form.tvw->DepthNote);
    EXPECT_TRUE(form.tvw->NodeRect(nodes.Item("hidden")).isEmpty());

    nodes.Add("hidden", tvwNext, "second", "zweiter");
    nodes.Remove("hidden");
    EXPECT_EQ(noteShown(), form.tvw->DepthNote) << "one node is left below";
    nodes.Remove("second");
    ProcessEvents();
    EXPECT_EQ(view->model()->rowCount(lastIndex), 0);
    nodes.Add(last, tvwChild, "again", "wieder");
    EXPECT_EQ(noteShown(), form.tvw->DepthNote);
    form.tvw->SetSelectedItem(&nodes.Item("again"));
    EXPECT_EQ(form.tvw->SelectedItem(), last) << "the last shown level stands for it";
}

} // namespace
