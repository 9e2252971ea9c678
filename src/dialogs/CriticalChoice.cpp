#include "dialogs/CriticalChoice.h"

#include <QStringList>

namespace fw {

namespace {

QStringList toQt(const StringList& list)
{
    QStringList out;
    for (const std::string& item : list.items())
        out << QString::fromStdString(item);
    return out;
}

StringList fromQt(const QVariant& value)
{
    StringList list;
    for (const QString& item : value.toStringList())
        list.Add(item.toStdString());
    return list;
}

bool is(const QString& name, const char16_t* wanted)
{
    return name.compare(QStringView(wanted), Qt::CaseInsensitive) == 0;
}

} // namespace

QVariant CriticalChoice::Get(const QString& name) const
{
    if (is(name, u"OwnerValue"))
        return OwnerValue;
    if (is(name, u"Text"))
        return QString::fromStdString(Text);
    if (is(name, u"Title"))
        return QString::fromStdString(Title);
    if (is(name, u"Choices"))
        return toQt(Choices);
    if (is(name, u"ChoiceIcons"))
        return toQt(ChoiceIcons);
    if (is(name, u"Confirmed"))
        return Confirmed;
    if (is(name, u"ChoiceIndex"))
        return ChoiceIndex;
    return {};
}

bool CriticalChoice::Set(const QString& name, const QVariant& value)
{
    if (is(name, u"OwnerValue"))
        OwnerValue = value.toInt();
    else if (is(name, u"Text"))
        Text = value.toString().toStdString();
    else if (is(name, u"Title"))
        Title = value.toString().toStdString();
    else if (is(name, u"Choices"))
        Choices = fromQt(value);
    else if (is(name, u"ChoiceIcons"))
        ChoiceIcons = fromQt(value);
    else if (is(name, u"Confirmed"))
        Confirmed = value.toBool();
    else if (is(name, u"ChoiceIndex"))
        ChoiceIndex = value.toInt();
    else
        return false;
    return true;
}

void CriticalChoice::HandOn(CriticalChoice& to) const
{
    to.OwnerValue = OwnerValue;
    to.Text = Text;
    to.Title = Title;
    to.Choices = Choices;
    to.ChoiceIcons = ChoiceIcons;
}

void CriticalChoice::TakeAnswer(const CriticalChoice& from)
{
    Confirmed = from.Confirmed;
    ChoiceIndex = from.ChoiceIndex;
}

} // namespace fw
