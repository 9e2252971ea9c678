#pragma once
// The translation walk: a form's design texts hold both languages in one
// string, "Deutsch|English". The walk files them in a table under a key per
// form, control and row, and writes back the text of the host's language.
// A second walk with the same table collects nothing and only applies.

#include <QString>
#include <QStringList>
#include <map>

namespace fw {

class Form;

/// The two texts of one key.
struct TextPair {
    QString German;
    QString English;
};

/// Key to pair of texts. A key is filed once: a later Add under the same key
/// is ignored.
class TranslationTable {
  public:
    int Count() const { return int(m_items.size()); }
    void Add(const QString& key, TextPair pair) { m_items.try_emplace(key, std::move(pair)); }
    bool Exists(const QString& key) const { return m_items.count(key) != 0; }
    /// The pair under key; two empty texts if there is none.
    TextPair Item(const QString& key) const;

  private:
    std::map<QString, TextPair> m_items;
};

/// Collects the form's texts into table if it is empty, then applies the
/// host's language to the form and every control.
void hTranslateForm(Form& form, TranslationTable& table);

/// Files value under key if it holds both languages; otherwise notes a text
/// that looks as if it ought to have them in the missing list.
void hCollectKey(TranslationTable& table, const QString& key, const QString& value);

/// The text of the host's language under key, or defaultValue if the table
/// has no such key.
QString hLookupKey(const TranslationTable& table, const QString& key, const QString& defaultValue);

/// What the last walk found without a translation: key + " in " + form name.
const QStringList& MissingTexts();

} // namespace fw
