// The resource picker driven as a user drives it, over the scripted host's
// resources: tree clicks, drop-downs answered from the host's menu queue,
// double clicks and keys; then what reached the host and the records.
#include "controls/ctl_Button.h"
#include "core/cls_Formwerk.h"
#include "forms/ImageList.h"
#include "forms/ListView.h"
#include "forms/Text.h"
#include "forms/TreeView.h"
#include "forms/testing/ListInput.h"
#include "forms/testing/ModalDriver.h"
#include "forms/testing/TreeInput.h"
#include "forms/testing/UserInput.h"
#include "resources/frm_DialogFileResource.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

#include <functional>

using namespace fw;
using namespace fw::testing;
using Texts = std::vector<std::string>;

namespace {

const Texts kStore{
    "Ico\\16\\Computer\\Folders\\Generic.ico",
    "Ico\\20\\Computer\\Signs\\OK.ico",
    "Ico\\20\\Computer\\Signs\\Abort.ico",
    "Ico\\20\\Computer\\Signs\\Ding.wav",
    "Ico\\20\\Computer\\Signs\\Notes.txt",
    "Ico\\20\\Computer\\Hardware\\Drive.ico",
    "Ico\\20\\_Cache\\Hidden.ico",
    "Ico\\32\\Computer\\Files\\wav.ico",
    "Ico\\32\\Computer\\Files\\bmp.ico",
};
const std::string kNoSelection = "ShowInfo(Sie müssen erst eine Ressource auswählen, bevor Sie "
                                 "auf OK klicken können!|)";

Texts rowTexts(frm_DialogFileResource& form)
{
    Texts texts;
    for (int i = 1; i <= form.lst_Files->ListItems().Count(); ++i)
        texts.push_back(us(form.lst_Files->ListItems().Item(i).Text()));
    return texts;
}

ListItem& row(frm_DialogFileResource& form, const char* text)
{
    for (int i = 1; i <= form.lst_Files->ListItems().Count(); ++i)
        if (form.lst_Files->ListItems().Item(i).Text() == QLatin1String(text))
            return form.lst_Files->ListItems().Item(i);
    throw std::runtime_error(std::string("no row ") + text);
}

TreeNode& node(frm_DialogFileResource& form, const char* key)
{
    return form.lst_Tree->Nodes().Item(QString::fromLatin1(key));
}

// A drop-down answered by the host's menu with key.
void choose(TestHost& host, ctl_Button& button, const char* key)
{
    host.queueMenuChoice(key);
    Click(button);
}

struct PickCase {
    const char* name;
    const char* startItem;
    std::function<void(frm_DialogFileResource&, TestHost&)> act;
    int result;
    std::string chosen, message;
};

TEST(ResourcePicker, PicksByClicksKeysAndDropDowns)
{
    using Form = frm_DialogFileResource;
    // clang-format off
    const PickCase cases[] = {
        {"a double click answers OK with the full path", "", [](Form& f, TestHost&) {
             DoubleClickItem(*f.lst_Files, row(f, "Ok.ico"));
         }, 1, "Ico\\20\\Computer\\Signs\\OK.ico", ""},
        {"OK without a selection stays open", "", [](Form& f, TestHost&) {
             PressKey(f, Qt::Key_Return);
             EXPECT_FALSE(f.IsUnloaded());
             PressKey(f, Qt::Key_Escape);
         }, 2, "", kNoSelection},
        {"the start item is found in another case", "ico\\20\\COMPUTER\\signs\\ding.WAV",
         [](Form& f, TestHost&) { PressKey(f, Qt::Key_Return); },
         1, "Ico\\20\\Computer\\Signs\\Ding.wav", ""},
        {"a tree click shows that folder", "", [](Form& f, TestHost&) {
             ClickNode(*f.lst_Tree, node(f, "ICO\\20\\COMPUTER\\HARDWARE\\"));
             EXPECT_EQ(rowTexts(f), Texts{"Drive.ico"});
             DoubleClickItem(*f.lst_Files, row(f, "Drive.ico"));
         }, 1, "Ico\\20\\Computer\\Hardware\\Drive.ico", ""},
        {"a filter without a match empties the list and keeps the folder", "", [](Form& f, TestHost& h) {
             choose(h, *f.but_Filter, "FILTER.AVI");
             EXPECT_EQ(rowTexts(f), Texts{});
             choose(h, *f.but_Filter, "FILTER.ALL");
             EXPECT_EQ(rowTexts(f).size(), 4u);
             PressKey(f, Qt::Key_Escape);
         }, 2, "", ""},
        {"an own filter is asked for with the current one", "", [](Form& f, TestHost& h) {
             h.queueTextAnswer("*.wav;*.TXT");
             choose(h, *f.but_Filter, "FILTER.OWN");
             EXPECT_EQ(h.callsTo("AskText"), Texts{"AskText(Geben Sie den gewünschten Suchfilter ein:|Suchfilter|*.*)"});
             EXPECT_EQ(rowTexts(f), (Texts{"Ding.wav", "Notes.txt"}));
             h.queueTextAnswer(""); // cancelled: the filter stays
             choose(h, *f.but_Filter, "FILTER.OWN");
             EXPECT_EQ(rowTexts(f).size(), 2u);
             PressKey(f, Qt::Key_Escape);
         }, 2, "", ""},
        {"the view drop-down switches the list", "", [](Form& f, TestHost& h) {
             EXPECT_EQ(f.lst_Files->View(), lvwIcon);
             choose(h, *f.but_View, "VIEW.DETAILS");
             EXPECT_EQ(f.lst_Files->View(), lvwReport);
             choose(h, *f.but_View, "VIEW.LIST");
             EXPECT_EQ(f.lst_Files->View(), lvwList);
             choose(h, *f.but_View, ""); // the menu closed without a choice
             EXPECT_EQ(f.lst_Files->View(), lvwList);
             PressKey(f, Qt::Key_Escape);
         }, 2, "", ""},
        {"places lead to the store's folders", "", [](Form& f, TestHost& h) {
             choose(h, *f.but_Favorit, "GOTO.ROOT");
             EXPECT_EQ(f.StartFolder, QStringLiteral("Ico\\"));
             EXPECT_EQ(rowTexts(f), Texts{});
             choose(h, *f.but_Favorit, "GOTO.SIGNS");
             EXPECT_EQ(rowTexts(f).size(), 4u);
             EXPECT_TRUE(node(f, "ICO\\20\\COMPUTER\\SIGNS\\").Selected());
             PressKey(f, Qt::Key_Escape);
         }, 2, "", ""},
    };
    // clang-format on
    for (const PickCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedTestHost host;
        host->resources = kStore;
        ModalDriver driver;
        auto made = cls_Formwerk().Create("frm_DialogFileResource");
        auto& form = dynamic_cast<frm_DialogFileResource&>(*made);
        form.StartItem = QString::fromLatin1(c.startItem);
        form.Context = std::make_shared<DialogContext>();
        driver.OnNextModal([&](fw::Form&) { c.act(form, *host); });
        form.Show(true);
        ASSERT_TRUE(form.IsUnloaded());
        EXPECT_EQ(form.Context->Request.Result, c.result);
        EXPECT_EQ(form.Context->Items.SingleValue, c.chosen);
        const Texts infos = host->callsTo("ShowInfo");
        EXPECT_EQ(infos.empty() ? std::string() : infos.back(), c.message);
    }
}

TEST(ResourcePicker, OpensAtTheSignsWithTypeAndOwnPicturesAndHidesUnderscoreFolders)
{
    ScopedTestHost host;
    host->resources = kStore;
    ModalDriver driver;
    frm_DialogFileResource form;
    form.Context = std::make_shared<DialogContext>();
    form.Context->Request.Title = "Symbol wählen";
    driver.OnNextModal([&](Form&) {
        EXPECT_EQ(form.Caption(), QStringLiteral("Symbol wählen"));
        EXPECT_EQ(form.StartFolder, QStringLiteral("Ico\\20\\Computer\\Signs\\"));
        EXPECT_EQ(form.FilterText, QStringLiteral("*.*"));
        EXPECT_EQ(rowTexts(form), (Texts{"Ok.ico", "Abort.ico", "Ding.wav", "Notes.txt"}));
        EXPECT_TRUE(node(form, "ICO\\20\\COMPUTER\\SIGNS\\").Selected());
        EXPECT_EQ(node(form, "ICO\\20\\").Text(), QStringLiteral("20"));
        EXPECT_FALSE(form.lst_Tree->Nodes().Exists(QStringLiteral("ICO\\20\\_CACHE\\")));
        // Each icon its own picture, a type with an icon the type's, the rest the unknown sign.
        const auto icon = [&](const char* text) { return us(row(form, text).Icon()); };
        EXPECT_EQ(icon("Ok.ico"), "k1");
        EXPECT_EQ(icon("Abort.ico"), "k2");
        EXPECT_EQ(icon("Ding.wav"), ".WAV");
        EXPECT_EQ(icon("Notes.txt"), "@UKN@");
        EXPECT_NE(form.img_Files32->Picture(QStringLiteral("k1")),
                  form.img_Files32->Picture(QStringLiteral("k2")));
        EXPECT_EQ(us(row(form, "Ok.ico").SmallIcon()), "k1");
        PressKey(form, Qt::Key_Escape);
    });
    form.Show(true);
    EXPECT_EQ(form.Context->Request.Result, ResultAbort);
}

TEST(ResourcePicker, ExpandingANodeListsItsFoldersAfresh)
{
    ScopedTestHost host;
    host->resources = kStore;
    ModalDriver driver;
    frm_DialogFileResource form;
    driver.OnNextModal([&](Form&) {
        TreeNode& computer = node(form, "ICO\\20\\COMPUTER\\");
        ClickExpander(*form.lst_Tree, computer); // closed
        host->resources.push_back("Ico\\20\\Computer\\Network\\Nethood.ico");
        ClickExpander(*form.lst_Tree, computer); // opened: listed again
        EXPECT_TRUE(form.lst_Tree->Nodes().Exists(QStringLiteral("ICO\\20\\COMPUTER\\NETWORK\\")));
        // A click toggles the node and shows its folder.
        ClickNode(*form.lst_Tree, computer);
        EXPECT_FALSE(computer.Expanded());
        EXPECT_EQ(form.StartFolder, QStringLiteral("Ico\\20\\Computer\\"));
        PressKey(form, Qt::Key_Escape);
    });
    form.Show(true);
}

TEST(ResourcePicker, OwnPlacesAreKeptOnceAndCanBeDeleted)
{
    ScopedTestHost host;
    host->resources = kStore;
    const std::string key = frm_DialogFileResource::UserFoldersKey;
    host->setRegistry(HiveCurrentUser, key, "not a list");
    const auto run = [&](std::function<void(frm_DialogFileResource&)> act) {
        ModalDriver driver;
        frm_DialogFileResource form;
        driver.OnNextModal([&](Form&) {
            act(form);
            PressKey(form, Qt::Key_Escape);
        });
        form.Show(true);
        return StringList::FromText(host->registryValue(HiveCurrentUser, key).value_or(""));
    };
    const std::string signs = "Ico\\20\\Computer\\Signs\\";
    const std::string hardware = "Ico\\20\\Computer\\Hardware\\";
    StringList saved = run([&](frm_DialogFileResource& f) {
        choose(*host, *f.but_Favorit, "EDIT.ADD");
        choose(*host, *f.but_Favorit, "EDIT.ADD");
        ClickNode(*f.lst_Tree, node(f, "ICO\\20\\COMPUTER\\HARDWARE\\"));
        choose(*host, *f.but_Favorit, "EDIT.ADD");
        const Texts& rows = host->menus.back()->rows;
        EXPECT_EQ(std::count(rows.begin(), rows.end(),
                             "> " + hardware + "|GOTO." + hardware + "|-1|-1|0|" +
                                 "Ico\\16\\Computer\\Folders\\Generic.ico"),
                  1);
    });
    EXPECT_EQ(saved, (StringList{signs, hardware})) << "garbage read as no places";

    saved = run([&](frm_DialogFileResource& f) {
        choose(*host, *f.but_Favorit, ("GOTO." + hardware).c_str());
        EXPECT_EQ(rowTexts(f), Texts{"Drive.ico"});
        choose(*host, *f.but_Favorit, ("EDIT.DELETE." + signs).c_str());
    });
    EXPECT_EQ(saved, StringList{hardware});
}

} // namespace
