// The desktop host's save question: Qt's own dialog, answered as a user would.
#include "desktop/DesktopHost.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace {

const std::string kKey = "Software\\Valdrenix\\Shared\\MRU\\TXT";

struct Seen {
    QString title;
    QString folder;
    QStringList filters;
    QString selectedFilter;
};

// Answers the next save dialog: types name and saves, or cancels if name is empty.
std::string answerWith(const QString& name, Seen& seen, const std::function<std::string()>& ask)
{
    QTimer::singleShot(0, [&] {
        QFileDialog* dialog = nullptr;
        for (int i = 0; i < 500 && !dialog; ++i) {
            dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                QTest::qWait(10);
        }
        if (!dialog) {
            ADD_FAILURE() << "no save dialog showed";
            return;
        }
        seen = {dialog->windowTitle(), dialog->directory().absolutePath(), dialog->nameFilters(),
                dialog->selectedNameFilter()};
        if (name.isEmpty()) {
            dialog->reject();
            return;
        }
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        edit->setText(name);
        auto* buttons = dialog->findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
        QTest::mouseClick(buttons->button(QDialogButtonBox::Save), Qt::LeftButton);
    });
    return ask();
}

class DesktopSaveFile : public ::testing::Test {
  protected:
    QTemporaryDir store;
    QTemporaryDir target;
    fw::ScopedCoreDev scope{fw::desktop::MakeDesktopCoreDev({store.path(), {}})};

    std::string ask(int index = 1)
    {
        return fw::GetCoreDevMessages().AskSaveFile(
            "*.txt", "Datei speichern", "Text-Dokument|*.txt|HTML-Dokument|*.htm;*.html", index,
            ".txt", -1, kKey);
    }
};

TEST_F(DesktopSaveFile, NameWithoutExtensionGetsTheDefaultOneAndItsFolderIsRemembered)
{
    fw::GetCoreDevRegistry().Writer().WriteString(fw::HiveCurrentUser, kKey + "\\LastFolder",
                                                  target.path().toStdString());
    Seen seen;
    const std::string path = answerWith("bericht", seen, [&] { return ask(); });
    EXPECT_EQ(path, QDir(target.path()).filePath("bericht.txt").toStdString());
    EXPECT_EQ(seen.title, "Datei speichern");
    EXPECT_EQ(seen.folder, QDir(target.path()).absolutePath());
    EXPECT_EQ(seen.filters, QStringList({"Text-Dokument (*.txt)", "HTML-Dokument (*.htm *.html)"}));
    EXPECT_EQ(seen.selectedFilter, "Text-Dokument (*.txt)");

    // A name with its own extension keeps it; the next question starts where
    // the last one saved.
    QDir(target.path()).mkdir("unter");
    const QString sub = QDir(target.path()).filePath("unter");
    const std::string second = answerWith(sub + "/seite.html", seen, [&] { return ask(2); });
    EXPECT_EQ(second, QDir(sub).filePath("seite.html").toStdString());
    EXPECT_EQ(fw::GetCoreDevRegistry().Strings().ReadString(fw::HiveCurrentUser,
                                                            kKey + "\\LastFolder", "", 1000),
              sub.toStdString());
}

TEST_F(DesktopSaveFile, CancelGivesNothingAndRemembersNothing)
{
    Seen seen;
    EXPECT_EQ(answerWith({}, seen, [&] { return ask(); }), "");
    EXPECT_EQ(fw::GetCoreDevRegistry().Strings().ReadString(fw::HiveCurrentUser,
                                                            kKey + "\\LastFolder", "-", 1000),
              "-");
}

} // namespace
