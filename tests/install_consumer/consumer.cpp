// Asks the installed library for the message dialog, fills its host record,
// shows it and closes it again: headers, library and Qt all have to be found.
#include <formwerk/core/HasContext.h>
#include <formwerk/core/cls_Formwerk.h>

#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    std::unique_ptr<fw::Form> form = fw::cls_Formwerk().Create("frm_DialogMessage");
    auto* dialog = dynamic_cast<fw::HasContext*>(form.get());
    if (!dialog) {
        std::fputs("consumer: no message dialog\n", stderr);
        return 1;
    }
    dialog->Context = std::make_shared<fw::DialogContext>();
    dialog->Context->Request.Title = "Installiert";
    form->Show(false);
    QElapsedTimer clock;
    clock.start();
    while (!form->HasPainted() && clock.elapsed() < 5000)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    const bool painted = form->HasPainted();
    form->Unload();
    std::puts(painted ? "consumer: dialog painted" : "consumer: dialog did not paint");
    return painted ? 0 : 1;
}
