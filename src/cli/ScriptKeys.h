#pragma once
// FORMWERK_SCRIPT_KEYS: keys typed into the first dialog after its first
// paint, so that shell scripts and end-to-end tests can answer a dialog that
// runs in its own process. Keys go through the application's normal event
// delivery, as a person's keys do.

#include <QKeyCombination>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <vector>

namespace fw {
class Form;
}

namespace fw::cli {

/// Parsed keys, or an error naming the first key that is not one.
struct KeyScript {
    std::vector<QKeyCombination> keys;
    QString error;
};

/// Reads a space-separated list of key names in Qt's portable notation
/// ("Escape", "k", "Shift+F12", "Return").
KeyScript ParseKeyScript(const QString& text);

/// Types a script into the next form shown modally, once that form has painted,
/// and into the questions it opens while they are open;
/// with a form name, into the next modal form of that name (the dialog behind
/// a veil that opens it).
class KeyTyper : public QObject {
  public:
    explicit KeyTyper(std::vector<QKeyCombination> keys, QString formName = {});
    /// Types into this form, once shown and painted: for a form shown without waiting.
    void TypeInto(Form& form);

  private:
    void onModalShown(Form* form);
    void step();
    QWidget* keyWindow() const;

    std::vector<QKeyCombination> m_keys;
    QString m_formName;
    std::size_t m_next = 0;
    Form* m_form = nullptr;
    /// Null once m_form is gone: a form the dialog made and freed itself (a
    /// confirmation it asked) must not be asked anything afterwards.
    QPointer<QWidget> m_formWindow;
    QTimer m_timer;
    // The windows whose key is still being handled, innermost last.
    QList<QWidget*> m_sendingTo;
};

} // namespace fw::cli
