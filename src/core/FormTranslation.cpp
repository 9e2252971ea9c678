#include "core/FormTranslation.h"

#include "controls/ctl_CmdBar.h"
#include "forms/Form.h"
#include "forms/TextRows.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QCoreApplication>
#include <array>
#include <optional>

namespace fw {

namespace {

// Kept between walks, as a developer looking for untranslated texts would
// read them after a form has loaded.
QStringList g_missing;
Form* g_form = nullptr;

constexpr int kGerman = 7;

struct RowSet {
    const char* collection;
    std::array<const char*, 5> collectOrder;
    std::array<const char*, 5> applyOrder;
};

// The rows' properties, in the order of collecting and of applying; a null
// ends a shorter list.
constexpr std::array kRowSets{
    RowSet{"BUTTONS",
           {"TEXT", "CAPTION", "TOOLTIPTEXT", "DESCRIPTION", "TAG"},
           {"TEXT", "Caption", "ToolTipText", "Description", "Tag"}},
    RowSet{"PANELS",
           {"TEXT", "CAPTION", "TOOLTIPTEXT", "DESCRIPTION", "TAG"},
           {"TEXT", "ToolTipText", "Caption", "Description", "Tag"}},
    RowSet{"COLUMNHEADERS", {"TEXT", "TOOLTIPTEXT"}, {"TEXT", "ToolTipText"}},
};

// The command bar keeps its rows as plain records; this lends it the row
// interface. Its rows have a caption and none of the other texts.
class CmdBarRows final : public TextRows {
  public:
    explicit CmdBarRows(ctl_CmdBar& bar) : m_bar(bar) {}

    int RowCount(const QString& collection) const override
    {
        return collection == u"BUTTONS" ? int(m_bar.Buttons().size()) : 0;
    }
    QVariant RowProperty(const QString& collection, int row, const QString& property) const override
    {
        if (!isCaption(collection, row, property))
            return {};
        return m_bar.Buttons()[std::size_t(row - 1)].Caption;
    }
    bool SetRowProperty(const QString& collection, int row, const QString& property,
                        const QString& value) override
    {
        if (!isCaption(collection, row, property))
            return false;
        m_bar.MutableButtons()[std::size_t(row - 1)].Caption = value;
        return true;
    }
    void RowsChanged(const QString&) override { m_bar.ButtonsChanged(); }

  private:
    bool isCaption(const QString& collection, int row, const QString& property) const
    {
        return row >= 1 && row <= RowCount(collection) &&
               property.compare(u"CAPTION", Qt::CaseInsensitive) == 0;
    }
    ctl_CmdBar& m_bar;
};

// The rows of a control, through its own interface or a loan for the bar.
struct RowsOf {
    explicit RowsOf(Control& control)
    {
        rows = dynamic_cast<TextRows*>(&control);
        if (!rows) {
            if (auto* bar = dynamic_cast<ctl_CmdBar*>(&control))
                rows = &loan.emplace(*bar);
        }
    }
    std::optional<CmdBarRows> loan;
    TextRows* rows = nullptr;
};

QString baseKey(const Control& control)
{
    QString key = control.Name();
    if (control.Index() >= 0)
        key += u'(' + QString::number(control.Index()) + u')';
    return key;
}

bool takesRows(const Control& control, const RowSet& set)
{
    // Column headers are a list view's alone, whatever else has a collection of that name.
    return QLatin1String(set.collection) != QLatin1String("COLUMNHEADERS") ||
           control.TypeName().toUpper() == u"LISTVIEW";
}

QString rowKey(const QString& base, const RowSet& set, int row, const char* property)
{
    return base + u'.' + QLatin1String(set.collection) + u'(' + QString::number(row) +
           QStringLiteral(").") + QString::fromLatin1(property).toUpper();
}

// A property the control lacks reads as an empty text.
QString read(const Control& control, const char* property)
{
    const QVariant value = control.GetProperty(QLatin1String(property));
    return value.isValid() ? value.toString() : QString();
}

int hostLanguage()
{
    try {
        return GetCoreDevLanguage().GetLanguage();
    } catch (...) {
        return 0; // as an unanswered host: English
    }
}

QString lookup(const TranslationTable& table, const QString& key, const QString& defaultValue,
               int language)
{
    if (!table.Exists(key))
        return defaultValue;
    const TextPair pair = table.Item(key);
    return language == kGerman ? pair.German : pair.English;
}

void collect(Form& form, TranslationTable& table)
{
    hCollectKey(table, form.Name() + QStringLiteral(".Caption"), form.Caption());
    for (const auto& owned : form.Controls()) {
        Control& control = *owned;
        const QString base = baseKey(control);
        for (const char* property : {"TITLE", "TEXT", "TOOLTIPTEXT", "CAPTION", "TAG"})
            hCollectKey(table, base + u'.' + QLatin1String(property), read(control, property));
        RowsOf of(control);
        if (!of.rows)
            continue;
        for (const RowSet& set : kRowSets) {
            if (!takesRows(control, set))
                continue;
            const QString collection = QLatin1String(set.collection);
            for (int row = 1; row <= of.rows->RowCount(collection); ++row) {
                for (const char* property : set.collectOrder) {
                    if (!property)
                        break;
                    const QVariant value =
                        of.rows->RowProperty(collection, row, QLatin1String(property));
                    hCollectKey(table, rowKey(base, set, row, property),
                                value.isValid() ? value.toString() : QString());
                }
            }
        }
    }
}

// Writes the looked-up text over one property; a property the control lacks
// is skipped, as the rest of the walk goes on.
void applyProperty(Control& control, const TranslationTable& table, const QString& key,
                   const char* property, const char* defaultFrom, int language)
{
    const QVariant current = control.GetProperty(QLatin1String(defaultFrom));
    if (!current.isValid())
        return;
    control.SetProperty(QLatin1String(property), lookup(table, key, current.toString(), language));
}

void applyRows(Control& control, const TranslationTable& table, const QString& base, int language)
{
    RowsOf of(control);
    if (!of.rows)
        return;
    for (const RowSet& set : kRowSets) {
        if (!takesRows(control, set))
            continue;
        const QString collection = QLatin1String(set.collection);
        const int count = of.rows->RowCount(collection);
        for (int row = 1; row <= count; ++row) {
            for (const char* property : set.applyOrder) {
                if (!property)
                    break;
                const QString name = QLatin1String(property);
                const QVariant current = of.rows->RowProperty(collection, row, name);
                if (!current.isValid())
                    continue;
                of.rows->SetRowProperty(
                    collection, row, name,
                    lookup(table, rowKey(base, set, row, property), current.toString(), language));
            }
        }
        // Buttons are shown anew once; other rows show themselves as they change.
        if (count > 0 && collection == u"BUTTONS")
            of.rows->RowsChanged(collection);
    }
}

void apply(Form& form, const TranslationTable& table)
{
    const int language = hostLanguage();
    form.SetCaption(
        lookup(table, form.Name() + QStringLiteral(".Caption"), form.Caption(), language));
    for (const auto& owned : form.Controls()) {
        Control& control = *owned;
        const QString base = baseKey(control);
        applyProperty(control, table, base + QStringLiteral(".TEXT"), "TEXT", "TEXT", language);
        // TITLE falls back on TEXT: a control without a title key of its own
        // takes its text as title.
        applyProperty(control, table, base + QStringLiteral(".TITLE"), "TITLE", "TEXT", language);
        applyProperty(control, table, base + QStringLiteral(".TOOLTIPTEXT"), "ToolTipText",
                      "ToolTipText", language);
        applyProperty(control, table, base + QStringLiteral(".CAPTION"), "Caption", "Caption",
                      language);
        applyProperty(control, table, base + QStringLiteral(".TAG"), "Tag", "Tag", language);
        applyRows(control, table, base, language);
    }
}

} // namespace

TextPair TranslationTable::Item(const QString& key) const
{
    const auto it = m_items.find(key);
    return it == m_items.end() ? TextPair{} : it->second;
}

void hTranslateForm(Form& form, TranslationTable& table)
{
    g_form = &form;
    g_missing.clear();
    if (table.Count() == 0)
        collect(form, table);
    apply(form, table);
    // A developer's switch: the missing list is weighed against "/DEV" on the
    // command line and nothing follows from it; the list itself is the report.
    const bool report = !g_missing.isEmpty() &&
                        QCoreApplication::arguments().join(u' ').toUpper().contains(u"/DEV");
    Q_UNUSED(report);
}

void hCollectKey(TranslationTable& table, const QString& key, const QString& value)
{
    if (const qsizetype bar = value.indexOf(u'|'); bar >= 0) {
        // A trailing "|" is no pair: the text stands as it is in both languages.
        if (bar != value.size() - 1)
            table.Add(key, {value.left(bar), value.mid(bar + 1)});
        else
            table.Add(key, {value, value});
        return;
    }
    if (value.contains(u'\\') || value == value.toUpper() || value == u"Text" || value == u"Title")
        return;
    static const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZÜÖÄ");
    int found = 0;
    for (const QChar c : value) {
        if (letters.contains(QString(c).toUpper()) && ++found >= 3)
            break;
    }
    if (found < 3)
        return;
    g_missing << key + QStringLiteral(" in ") + (g_form ? g_form->Name() : QString());
}

QString hLookupKey(const TranslationTable& table, const QString& key, const QString& defaultValue)
{
    return lookup(table, key, defaultValue, hostLanguage());
}

const QStringList& MissingTexts()
{
    return g_missing;
}

} // namespace fw
