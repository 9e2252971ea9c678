// The desktop XML object: reading files, reporting broken ones by line and
// column, and the tree it fills.
#include "desktop/DesktopHost.h"
#include "desktop/DesktopXml.h"
#include "forms/Form.h"
#include "forms/ImageList.h"
#include "forms/TreeView.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace fw;
using fw::desktop::DesktopXml;

namespace {

class XmlTreeForm : public Form {
  public:
    XmlTreeForm() : Form(QStringLiteral("frm_XmlTree"))
    {
        img = Add<ImageList>(QStringLiteral("img_XML"));
        for (const char* key : {"tag.closed", "tag.open", "property"})
            img->Add(key, QImage(16, 16, QImage::Format_ARGB32));
        tvw = Add<TreeView>(QStringLiteral("tvw_XML"));
        tvw->SetImageList(img);
    }
    ImageList* img;
    TreeView* tvw;
};

QStringList texts(const TreeNode* first)
{
    QStringList out;
    for (const TreeNode* n = first; n; n = n->Next())
        out << n->Text();
    return out;
}

TEST(DesktopXml, BrokenDocumentsNameLineAndColumnAndAMissingFileIsUnreadable)
{
    struct Case {
        const char* name;
        QByteArray data;
        qint64 line, column;
    };
    const std::vector<Case> cases{
        {"wrong end tag", "<a>\n  <b>\n  </a>", 3, 5},
        {"attribute twice", "<a x='1' x='2'/>", 1, 10},
        {"unclosed", "<a>\n<b/>\n", 3, 1},
        {"empty", "", 1, 1},
        {"text after the end", "<a/>zu viel", 1, 5},
    };
    for (const Case& c : cases) {
        DesktopXml xml;
        EXPECT_EQ(xml.LoadData(c.data), DesktopXml::Status::NotWellFormed) << c.name;
        EXPECT_EQ(xml.LastProblem().Line, c.line) << c.name;
        EXPECT_EQ(xml.LastProblem().Column, c.column) << c.name;
        EXPECT_FALSE(xml.LastProblem().Message.isEmpty()) << c.name;
        EXPECT_EQ(xml.NodeCount(), 0) << c.name;
    }
    QTemporaryDir dir;
    const auto xml = desktop::MakeDesktopXml();
    EXPECT_EQ(xml->Load(dir.filePath("fehlt.xml")), DesktopXml::Status::Unreadable);
    EXPECT_FALSE(xml->LastProblem().Message.isEmpty());
}

TEST(DesktopXml, ElementsAttributesAndTextBecomeNodes)
{
    QTemporaryDir dir;
    QFile file(dir.filePath("kunden.xml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<?xml version='1.0' encoding='UTF-8'?>\n<!-- Liste -->\n"
               "<k:kunden xmlns:k='urn:k' stand='2024'>\n"
               "  <kunde id='7' name='M&#252;ller &amp; S&#246;hne'>  Stamm\n  kunde  "
               "<![CDATA[<seit 1990>]]></kunde>\n  <leer/>\n</k:kunden>\n");
    file.close();
    DesktopXml xml;
    ASSERT_EQ(xml.Load(file.fileName()), DesktopXml::Status::Ok);

    XmlTreeForm form;
    xml.fillTree(*form.tvw, nullptr);
    const TreeNode* root = form.tvw->Nodes().Roots().front();
    EXPECT_EQ(form.tvw->Nodes().Roots().size(), 1u);
    EXPECT_EQ(texts(root->Child()),
              (QStringList{"xmlns:k = urn:k", "stand = 2024", "kunde", "leer"}));
    EXPECT_EQ(root->Text(), "k:kunden");
    EXPECT_TRUE(root->Expanded());
    EXPECT_EQ(root->Image(), "tag.closed");
    EXPECT_EQ(root->ExpandedImage(), "tag.open");
    const TreeNode* kunde = root->Child()->Next()->Next();
    EXPECT_EQ(texts(kunde->Child()),
              (QStringList{"id = 7", "name = Müller & Söhne", "Stamm kunde <seit 1990>"}));
    EXPECT_EQ(kunde->Child()->Image(), "property");
    EXPECT_EQ(kunde->Child()->LastSibling()->Image(), "");
    EXPECT_FALSE(kunde->Expanded());

    // Below a given node, the document is added as that node's children.
    TreeNode& holder = form.tvw->Nodes().Add(nullptr, tvwLast, "h", "Datei");
    xml.fillTree(*form.tvw, &holder);
    EXPECT_EQ(texts(holder.Child()), QStringList{"k:kunden"});
    EXPECT_EQ(form.tvw->Nodes().Count(), 2 * xml.NodeCount() + 1);
}

TEST(DesktopXml, SingleByteEncodingsAreReadThroughTheirDeclaration)
{
    DesktopXml xml;
    ASSERT_EQ(xml.LoadData("<?xml version='1.0' encoding='windows-1252'?><m n='M\xfcller \x80'/>"),
              DesktopXml::Status::Ok);
    XmlTreeForm form;
    xml.fillTree(*form.tvw, nullptr);
    EXPECT_EQ(form.tvw->Nodes().Roots().front()->Child()->Text(), "n = Müller €");
}

TEST(DesktopXml, AnElementWithAHundredThousandAttributes)
{
    QByteArray data = "<viele";
    for (int i = 0; i < 100000; ++i)
        data += " a" + QByteArray::number(i) + "='" + QByteArray::number(i) + "'";
    data += "/>";
    DesktopXml xml;
    ASSERT_EQ(xml.LoadData(data), DesktopXml::Status::Ok)
        << xml.LastProblem().Message.toStdString();
    XmlTreeForm form;
    xml.fillTree(*form.tvw, nullptr);
    const TreeNode* root = form.tvw->Nodes().Roots().front();
    EXPECT_EQ(root->Children(), 100000);
    EXPECT_EQ(root->Child()->LastSibling()->Text(), "a99999 = 99999");
}

TEST(DesktopXml, LongTextsAndAttributesAreFoldedAndCutWithAnEllipsis)
{
    const QString cut = QString(256, u'x') + QChar(0x2026);
    const QByteArray manyBlanks(100000, ' ');
    const struct {
        const char* name;
        QByteArray document;
        QString shown; ///< the text of the top element's first child
    } cases[] = {
        {"text", "<a>" + QByteArray(300, 'x') + "</a>", cut},
        {"entity used many times",
         "<!DOCTYPE a [<!ENTITY e 'xx'>]><a>" + QByteArray("&e;").repeated(100000) + "</a>", cut},
        {"blanks do not count", "<a>" + manyBlanks + "x" + manyBlanks + "y" + manyBlanks + "</a>",
         "x y"},
        {"blanks between pieces", "<!DOCTYPE a [<!ENTITY e ' x '>]><a>&e;&e;<![CDATA[ y]]></a>",
         "x x y"},
        {"exactly the limit", "<a>" + QByteArray(256, 'x') + " </a>", QString(256, u'x')},
        {"attribute", "<a v='" + QByteArray(300, 'x') + "'/>",
         "v = " + QString(252, u'x') + QChar(0x2026)},
    };
    for (const auto& c : cases) {
        DesktopXml xml;
        ASSERT_EQ(xml.LoadData(c.document), DesktopXml::Status::Ok) << c.name;
        XmlTreeForm form;
        xml.fillTree(*form.tvw, nullptr);
        EXPECT_EQ(form.tvw->Nodes().Roots().front()->Child()->Text(), c.shown) << c.name;
    }
}

} // namespace
