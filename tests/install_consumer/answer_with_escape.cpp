// Linked into the README's example so that it can run unattended: presses Esc
// on the first dialog it shows, as its reader would. Hooked into the
// QApplication's start, so the example's own text stays exactly as a host
// would copy it.
#include <formwerk/forms/testing/ModalDriver.h>
#include <formwerk/forms/testing/UserInput.h>

#include <QCoreApplication>

static void answerFirstDialogWithEscape()
{
    // Reachable for the whole run: the driver must outlive the modal loop.
    static auto* driver = new fw::testing::ModalDriver;
    driver->OnNextModal([](fw::Form& shown) { fw::testing::PressKey(shown, Qt::Key_Escape); });
}
Q_COREAPP_STARTUP_FUNCTION(answerFirstDialogWithEscape)
