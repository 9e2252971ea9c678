#pragma once
// What the input dialogs' tests share: a scripted host, a driver for modal
// forms and the texts that tend to break things.

#include "forms/Form.h"
#include "forms/testing/ModalDriver.h"
#include "host/DialogContext.h"
#include "host/mdl_CoreDevWrapper.h"
#include "testing/TestHost.h"

#include <gtest/gtest.h>

namespace fw::testing {

/// Texts every box and prompt must carry through unchanged.
struct TrickyText {
    const char* name;
    QString text;
};

inline std::vector<TrickyText> TrickyTexts()
{
    return {
        {"empty", QString()},
        {"umlauts", QStringLiteral("Grüße aus Köln – ÄÖÜß")},
        {"emoji", QStringLiteral("Ordner 📁 mit 👩‍💻")},
        {"right to left", QStringLiteral("שלום עולם مرحبا")},
        {"separators", QStringLiteral("12:34|\\n\"'<b>&amp;")},
        {"one megabyte of words", QStringLiteral("Wort ").repeated(1 << 18).left(1 << 20)},
    };
}

/// A prompt as a label shows it: whole, or a long one by its beginning.
inline void ExpectPromptShows(const QString& caption, const QString& prompt)
{
    if (prompt.size() <= 4000) {
        EXPECT_EQ(caption, prompt);
        return;
    }
    EXPECT_LE(caption.size(), 4001);
    EXPECT_TRUE(prompt.startsWith(caption.left(caption.size() - 1)));
}

/// Whether the host was asked for the picture of path.
inline bool LoadedPicture(const TestHost& host, const std::string& path)
{
    const auto calls = host.callsTo("LoadPicture");
    return std::find(calls.begin(), calls.end(), "LoadPicture(" + path + ")") != calls.end();
}

/// Shows a form modally and runs action inside it, after its first paint.
/// Fails the test if the form is still open afterwards.
template <class F>
void RunModal(ModalDriver& driver, F& form, const std::function<void(F&)>& action)
{
    driver.OnNextModal([&](Form&) {
        action(form);
        if (!form.IsUnloaded()) {
            ADD_FAILURE() << "the dialog did not close";
            form.Unload();
        }
    });
    form.Show(true);
}

/// RunModal on a fresh form of type F working on ctx; returns the answer left in ctx.
template <class F>
std::int32_t RunFresh(ModalDriver& driver, const std::shared_ptr<DialogContext>& ctx,
                      const std::function<void(F&)>& action)
{
    F form;
    form.Context = ctx;
    RunModal<F>(driver, form, action);
    return ctx->Request.Result;
}

} // namespace fw::testing
