// A host's test that answers the installed message dialog as a user would.
#include <formwerk/core/HasContext.h>
#include <formwerk/core/cls_Formwerk.h>
#include <formwerk/forms/testing/ModalDriver.h>
#include <formwerk/forms/testing/UserInput.h>

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    std::unique_ptr<fw::Form> form = fw::cls_Formwerk().Create("frm_DialogMessage");
    auto context = std::make_shared<fw::DialogContext>();
    context->Request.Flags = 4;
    dynamic_cast<fw::HasContext&>(*form).Context = context;
    fw::testing::ModalDriver driver;
    driver.OnNextModal([](fw::Form& shown) { fw::testing::PressKey(shown, Qt::Key_Escape); });
    form->Show(true);
    std::printf("driven: Esc answered %d\n", context->Request.Result);
    return context->Request.Result == 7 ? 0 : 1;
}
