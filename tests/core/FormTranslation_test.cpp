// The translation walk over a form with standard, in-house and row-holding
// controls, under both languages.
#include "controls/ButtonFace.h"
#include "controls/ctl_CmdBar.h"
#include "controls/ctl_Title.h"
#include "core/FormTranslation.h"
#include "forms/ControlArray.h"
#include "forms/Form.h"
#include "forms/StdControls.h"
#include "forms/TextRows.h"
#include "forms/testing/UserInput.h"
#include "testing/TestHost.h"

#include <QWidget>
#include <gtest/gtest.h>
#include <map>

using namespace fw;
using namespace fw::testing;

namespace {

// A control with rows of texts, as a status bar's panels or a list view's
// column headers would be; it notes the order in which rows are written.
class RowControl : public Control, public TextRows {
  public:
    RowControl(Form& form, const QString& name, const QString& typeName, QString collection,
               int rows)
        : Control(form, name, typeName, new QWidget(form.clientArea())),
          m_collection(std::move(collection)), m_rows(std::size_t(rows))
    {
    }

    int RowCount(const QString& collection) const override
    {
        return collection == m_collection ? int(m_rows.size()) : 0;
    }
    QVariant RowProperty(const QString& collection, int row, const QString& property) const override
    {
        if (collection != m_collection || row < 1 || row > RowCount(collection))
            return {};
        const auto& texts = m_rows[std::size_t(row - 1)];
        const auto it = texts.find(property.toUpper());
        return it == texts.end() ? QVariant() : QVariant(it->second);
    }
    bool SetRowProperty(const QString& collection, int row, const QString& property,
                        const QString& value) override
    {
        if (!RowProperty(collection, row, property).isValid())
            return false;
        m_rows[std::size_t(row - 1)][property.toUpper()] = value;
        writes << QStringLiteral("%1.%2").arg(row).arg(property.toUpper());
        return true;
    }
    void RowsChanged(const QString& collection) override { changed << collection; }

    void set(int row, const QString& property, const QString& value)
    {
        m_rows[std::size_t(row - 1)][property] = value;
    }
    QString text(int row, const QString& property) const
    {
        return m_rows[std::size_t(row - 1)].at(property);
    }

    QStringList writes;
    QStringList changed;

  private:
    QString m_collection;
    std::vector<std::map<QString, QString>> m_rows;
};

class TranslatedForm : public Form {
  public:
    TranslatedForm() : Form("frm_Sample")
    {
        SetCaption("Datei öffnen|Open file");
        lab_Path = Add<Label>("lab_Path");
        lab_Path->SetCaption("Pfad:|Path:");
        lab_Path->SetToolTipText("Der Ordner|The folder");
        txt_Name = Add<TextBox>("txt_Name");
        txt_Name->SetText("Öffnen");
        txt_Name->SetTag("Name|Name");
        bar_Header = Add<ctl_Title>("bar_Header");
        bar_Header->SetCaption("Dateien|Files");
        bar_Header->SetSubCaption("Wählen Sie|Choose");
        bar_Buttons = Add<ctl_CmdBar>("bar_Buttons");
        bar_Buttons->AddButton("OK", "&Öffnen|&Open", QString(), "DIALOG.OK();");
        bar_Buttons->AddButton("ABORT", "Abbrechen", QString(), "DIALOG.ABORT();");
        opt_View = ControlArray<OptionButton>(
            "opt_View", [this](int) { return Add<OptionButton>("opt_View"); });
        opt_View.Load(0);
        opt_View.Load(1);
        opt_View[0].SetCaption("Liste|List");
        opt_View[1].SetCaption("Details|Details");
        sta_Bar = Add<RowControl>("sta_Bar", "StatusBar", "PANELS", 2);
        for (const char* p : {"TEXT", "CAPTION", "TOOLTIPTEXT", "DESCRIPTION", "TAG"})
            sta_Bar->set(1, QLatin1String(p), "Bereit|Ready");
        sta_Bar->set(2, "TEXT", "Zeilen");
        lst_Files = Add<RowControl>("lst_Files", "ListView", "COLUMNHEADERS", 1);
        lst_Files->set(1, "TEXT", "Name|Name");
        lst_Files->set(1, "TOOLTIPTEXT", "Dateiname|File name");
        lst_Other = Add<RowControl>("lst_Other", "TreeView", "COLUMNHEADERS", 1);
        lst_Other->set(1, "TEXT", "Spalte|Column");
    }

    Label* lab_Path;
    TextBox* txt_Name;
    ctl_Title* bar_Header;
    ctl_CmdBar* bar_Buttons;
    ControlArray<OptionButton> opt_View;
    RowControl* sta_Bar;
    RowControl* lst_Files;
    RowControl* lst_Other;
};

class Translation : public ::testing::Test {
  protected:
    ScopedTestHost host;
};

TEST_F(Translation, EveryTextTakesTheHostsLanguage)
{
    struct Row {
        int language;
        const char *caption, *path, *tip, *header, *second, *ok, *option1, *panel, *column,
            *columnTip;
    };
    const Row rows[] = {
        {7, "Datei öffnen", "Pfad:", "Der Ordner", "Dateien", "Wählen Sie", "&Öffnen", "Details",
         "Bereit", "Name", "Dateiname"},
        {9, "Open file", "Path:", "The folder", "Files", "Choose", "&Open", "Details", "Ready",
         "Name", "File name"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.language);
        host->language = row.language;
        TranslatedForm form;
        TranslationTable table;
        hTranslateForm(form, table);
        EXPECT_EQ(form.Caption(), row.caption);
        EXPECT_EQ(form.lab_Path->Caption(), row.path);
        EXPECT_EQ(form.lab_Path->ToolTipText(), row.tip);
        EXPECT_EQ(form.bar_Header->Caption(), row.header);
        EXPECT_EQ(form.bar_Header->SubCaption(), row.second);
        EXPECT_EQ(form.bar_Buttons->Buttons()[0].Caption, row.ok);
        EXPECT_EQ(form.opt_View[1].Caption(), row.option1);
        EXPECT_EQ(form.sta_Bar->text(1, "TEXT"), row.panel);
        EXPECT_EQ(form.sta_Bar->text(1, "DESCRIPTION"), row.panel);
        EXPECT_EQ(form.lst_Files->text(1, "TEXT"), row.column);
        EXPECT_EQ(form.lst_Files->text(1, "TOOLTIPTEXT"), row.columnTip);
        // Texts without a pair stay as they are.
        EXPECT_EQ(form.txt_Name->Text(), "Öffnen");
        EXPECT_EQ(form.bar_Buttons->Buttons()[1].Caption, "Abbrechen");
        EXPECT_EQ(form.sta_Bar->text(2, "TEXT"), "Zeilen");
        EXPECT_EQ(form.txt_Name->Tag(), "Name");
    }
}

TEST_F(Translation, OneWalkFilesEveryPairWritesRowsInOrderAndNotesTheRest)
{
    TranslatedForm form;
    TranslationTable table;
    hTranslateForm(form, table);
    for (const char* key :
         {"frm_Sample.Caption", "lab_Path.CAPTION", "lab_Path.TEXT", "lab_Path.TOOLTIPTEXT",
          "txt_Name.TAG", "bar_Header.TITLE", "bar_Header.TEXT", "bar_Header.CAPTION",
          "opt_View(0).CAPTION", "opt_View(1).CAPTION", "bar_Buttons.BUTTONS(1).CAPTION",
          "sta_Bar.PANELS(1).TEXT", "sta_Bar.PANELS(1).CAPTION", "sta_Bar.PANELS(1).TOOLTIPTEXT",
          "sta_Bar.PANELS(1).DESCRIPTION", "sta_Bar.PANELS(1).TAG",
          "lst_Files.COLUMNHEADERS(1).TEXT", "lst_Files.COLUMNHEADERS(1).TOOLTIPTEXT"})
        EXPECT_TRUE(table.Exists(QString::fromLatin1(key))) << key;
    EXPECT_EQ(table.Item("opt_View(0).CAPTION").German, "Liste");
    EXPECT_EQ(table.Item("opt_View(0).CAPTION").English, "List");
    // Column headers are a list view's alone.
    EXPECT_FALSE(table.Exists("lst_Other.COLUMNHEADERS(1).TEXT"));
    EXPECT_EQ(form.lst_Other->text(1, "TEXT"), "Spalte|Column");
    EXPECT_TRUE(form.lst_Other->writes.isEmpty());

    EXPECT_EQ(form.sta_Bar->writes.mid(0, 5),
              QStringList({"1.TEXT", "1.TOOLTIPTEXT", "1.CAPTION", "1.DESCRIPTION", "1.TAG"}));
    EXPECT_EQ(form.lst_Files->writes, QStringList({"1.TEXT", "1.TOOLTIPTEXT"}));
    // Only button rows are announced; the bar shows its translated rows.
    EXPECT_TRUE(form.sta_Bar->changed.isEmpty());
    ProcessEvents();
    QStringList shown;
    for (const auto* face : form.bar_Buttons->container()->findChildren<ButtonFace*>())
        if (!face->objectName().isEmpty())
            shown << face->caption();
    EXPECT_TRUE(shown.contains("&Öffnen") || shown.contains("&Open"))
        << shown.join(',').toStdString();
    EXPECT_FALSE(shown.contains("&Öffnen|&Open"));

    for (const char* text :
         {"txt_Name.TEXT in frm_Sample", "bar_Buttons.BUTTONS(2).CAPTION in frm_Sample",
          "sta_Bar.PANELS(2).TEXT in frm_Sample"})
        EXPECT_TRUE(MissingTexts().contains(text)) << text;
    hTranslateForm(form, table);
    EXPECT_TRUE(MissingTexts().isEmpty()) << "a second walk starts afresh and collects nothing";
}

TEST_F(Translation, SecondWalkWithTheSameTableOnlyApplies)
{
    host->language = 7;
    TranslatedForm form;
    TranslationTable table;
    hTranslateForm(form, table);
    const int filed = table.Count();
    // The form now holds German texts only; collecting again would lose English.
    host->language = 9;
    hTranslateForm(form, table);
    EXPECT_EQ(table.Count(), filed);
    EXPECT_EQ(form.Caption(), "Open file");
    EXPECT_EQ(form.bar_Buttons->Buttons()[0].Caption, "&Open");
    EXPECT_EQ(form.sta_Bar->text(1, "TEXT"), "Ready");
}

TEST_F(Translation, TitleFallsBackOnTheControlsText)
{
    TranslationTable table;
    table.Add("bar_Header.TEXT", {"Zweite", "Second"});
    TranslatedForm form;
    form.bar_Header->SetCaption("Alt");
    host->language = 9;
    hTranslateForm(form, table);
    // No key of its own: the title takes the (translated) text.
    EXPECT_EQ(form.bar_Header->SubCaption(), "Second");
    EXPECT_EQ(form.bar_Header->Caption(), "Second");
}

TEST_F(Translation, CollectKeyFilesPairsAndNotesUntranslatedTexts)
{
    struct Row {
        const char* value;
        bool filed;
        const char *german, *english;
        bool missing;
    };
    const Row rows[] = {
        {"Datei|File", true, "Datei", "File", false},
        {"Datei|", true, "Datei|", "Datei|", false},
        {"|File", true, "", "File", false},
        {"a|b|c", true, "a", "b|c", false},
        {"Öffnen", false, "", "", true},
        {"Äöü", false, "", "", true},
        {"OK", false, "", "", false},
        {"ÖFFNEN", false, "", "", false},
        {"C:\\x", false, "", "", false},
        {"Ordner\\Datei", false, "", "", false},
        {"Text", false, "", "", false},
        {"Title", false, "", "", false},
        {"Texts", false, "", "", true},
        {"ab", false, "", "", false},
        {"a1b2", false, "", "", false},
        {"a1b2c", false, "", "", true},
        {"", false, "", "", false},
    };
    TranslatedForm form;
    TranslationTable empty;
    hTranslateForm(form, empty); // the walk names the form of later notes
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        TranslationTable table;
        const int before = int(MissingTexts().size());
        hCollectKey(table, "k", QString::fromUtf8(row.value));
        EXPECT_EQ(table.Exists("k"), row.filed);
        EXPECT_EQ(table.Item("k").German, QString::fromUtf8(row.german));
        EXPECT_EQ(table.Item("k").English, QString::fromUtf8(row.english));
        EXPECT_EQ(int(MissingTexts().size()) - before, row.missing ? 1 : 0);
        if (row.missing) {
            EXPECT_EQ(MissingTexts().back(), "k in frm_Sample");
        }
    }
}

} // namespace
