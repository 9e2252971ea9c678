#include "cli/Members.h"

#include "cli/EscapedBytes.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QJsonArray>
#include <array>
#include <cmath>
#include <limits>

namespace fw::cli {

namespace {

// Texts of the records are bytes: a path in them may be no UTF-8 at all, and
// "\udcXX" in JSON stands for such a byte.
std::string bytesOf(const QJsonValue& v)
{
    return EncodeEscaped(v.toString()).toStdString();
}
QString textOf(const std::string& bytes)
{
    return DecodeEscaped(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
}

// Accessors made from pointers to members: the record in DialogContext, then
// the member in that record.
template <auto Record, auto Field> QJsonValue getText(const DialogContext& c)
{
    return textOf((c.*Record).*Field);
}
template <auto Record, auto Field> void setText(DialogContext& c, const QJsonValue& v)
{
    (c.*Record).*Field = bytesOf(v);
}
template <auto Record, auto Field> void setTextOrPair(DialogContext& c, const QJsonValue& v)
{
    if (!v.isArray()) {
        setText<Record, Field>(c, v);
        return;
    }
    const QJsonArray pair = v.toArray();
    (c.*Record).*Field = GetCoreDevText().Pairs().Pack(bytesOf(pair.at(0)), bytesOf(pair.at(1)));
}
template <auto Record, auto Field> QJsonValue getInt(const DialogContext& c)
{
    return static_cast<qint64>((c.*Record).*Field);
}
template <auto Record, auto Field> void setInt(DialogContext& c, const QJsonValue& v)
{
    using Value = std::remove_reference_t<decltype((c.*Record).*Field)>;
    (c.*Record).*Field = static_cast<Value>(v.toInteger());
}
template <auto Record, auto Field> QJsonValue getBool(const DialogContext& c)
{
    return (c.*Record).*Field;
}
template <auto Record, auto Field> void setBool(DialogContext& c, const QJsonValue& v)
{
    (c.*Record).*Field = v.toBool();
}
template <auto Record, auto Field> QJsonValue getList(const DialogContext& c)
{
    QJsonArray array;
    for (const std::string& item : ((c.*Record).*Field).items())
        array.append(textOf(item));
    return array;
}
template <auto Record, auto Field> void setList(DialogContext& c, const QJsonValue& v)
{
    StringList& list = (c.*Record).*Field;
    list.Clear();
    for (const QJsonValue& item : v.toArray())
        list.Add(bytesOf(item));
}
// Icons travel as text (a resource path); a picture cannot come from the command line.
template <auto Record, auto Field> QJsonValue getIcon(const DialogContext& c)
{
    const PictureOrText& icon = (c.*Record).*Field;
    if (const auto* text = std::get_if<std::string>(&icon))
        return QString::fromStdString(*text);
    return QJsonValue::Null;
}
template <auto Record, auto Field> void setIcon(DialogContext& c, const QJsonValue& v)
{
    (c.*Record).*Field = v.toString().toStdString();
}

template <auto Record, auto Field> constexpr Member text(const char* path)
{
    return {path, Kind::Text, getText<Record, Field>, setText<Record, Field>};
}
template <auto Record, auto Field> constexpr Member textOrPair(const char* path)
{
    return {path, Kind::TextOrPair, getText<Record, Field>, setTextOrPair<Record, Field>};
}
template <auto Record, auto Field> constexpr Member integer(const char* path)
{
    return {path, Kind::Integer, getInt<Record, Field>, setInt<Record, Field>};
}
template <auto Record, auto Field> constexpr Member boolean(const char* path)
{
    return {path, Kind::Boolean, getBool<Record, Field>, setBool<Record, Field>};
}
template <auto Record, auto Field> constexpr Member list(const char* path)
{
    return {path, Kind::TextList, getList<Record, Field>, setList<Record, Field>};
}
template <auto Record, auto Field> constexpr Member icon(const char* path)
{
    return {path, Kind::Text, getIcon<Record, Field>, setIcon<Record, Field>};
}
constexpr Member publicVariable(const char* path, Kind kind)
{
    return {path, kind, nullptr, nullptr};
}

constexpr auto kRequest = &DialogContext::Request;
constexpr auto kTexts = &DialogContext::Texts;
constexpr auto kItems = &DialogContext::Items;

// What a host can hand a dialog as plain data. Event links, placements and
// option lists are objects of a host program and have no command-line form.
const std::array kMembers{
    text<kRequest, &DialogRequest::Title>("Request.Title"),
    text<kRequest, &DialogRequest::Subtitle>("Request.Subtitle"),
    integer<kRequest, &DialogRequest::Flags>("Request.Flags"),
    integer<kRequest, &DialogRequest::Mode>("Request.Mode"),
    integer<kRequest, &DialogRequest::Result>("Request.Result"),
    text<kRequest, &DialogRequest::IconPath>("Request.IconPath"),
    icon<kRequest, &DialogRequest::Icon>("Request.Icon"),
    icon<kRequest, &DialogRequest::Icon2>("Request.Icon2"),
    list<kRequest, &DialogRequest::FilterList>("Request.FilterList"),
    integer<kRequest, &DialogRequest::FilterIndex>("Request.FilterIndex"),
    boolean<kRequest, &DialogRequest::Cancelable>("Request.Cancelable"),
    integer<kRequest, &DialogRequest::Color>("Request.Color"),
    boolean<kRequest, &DialogRequest::OverwritePrompt>("Request.OverwritePrompt"),
    textOrPair<kTexts, &DialogTexts::Description>("Texts.Description"),
    text<kTexts, &DialogTexts::Description2>("Texts.Description2"),
    textOrPair<kTexts, &DialogTexts::DefaultText>("Texts.DefaultText"),
    text<kTexts, &DialogTexts::InputText>("Texts.InputText"),
    text<kTexts, &DialogTexts::OldValue>("Texts.OldValue"),
    list<kItems, &DialogItems::ItemList>("Items.ItemList"),
    text<kItems, &DialogItems::SingleValue>("Items.SingleValue"),
    text<kItems, &DialogItems::DefaultExtension>("Items.DefaultExtension"),
    publicVariable("Public.DialogMode", Kind::Integer),
    publicVariable("Public.PasswordEntry", Kind::Boolean),
};

const QStringList kRecords{"Request", "Texts", "Items", "Public"};

} // namespace

QString Member::shortName() const
{
    const QString full = QString::fromLatin1(path);
    return full.mid(full.indexOf(u'.') + 1);
}

const Member* FindMember(const QString& path)
{
    for (const Member& member : kMembers)
        if (path == QLatin1String(member.path))
            return &member;
    return nullptr;
}

QString KindName(Kind kind)
{
    switch (kind) {
    case Kind::Text:
        return QStringLiteral("a string");
    case Kind::Integer:
        return QStringLiteral("an integer");
    case Kind::Boolean:
        return QStringLiteral("true or false");
    case Kind::TextList:
        return QStringLiteral("an array of strings");
    case Kind::TextOrPair:
        return QStringLiteral("a string or an array of two strings");
    }
    return {};
}

bool HasKind(const QJsonValue& value, Kind kind)
{
    switch (kind) {
    case Kind::Text:
        return value.isString();
    case Kind::Integer: {
        if (!value.isDouble())
            return false;
        const double d = value.toDouble();
        // Flags and colours are 32-bit patterns, so the unsigned range is taken too.
        return std::floor(d) == d && d >= std::numeric_limits<qint32>::min() &&
               d <= std::numeric_limits<quint32>::max();
    }
    case Kind::Boolean:
        return value.isBool();
    case Kind::TextList: {
        if (!value.isArray())
            return false;
        for (const QJsonValue& item : value.toArray())
            if (!item.isString())
                return false;
        return true;
    }
    case Kind::TextOrPair:
        return value.isString() ||
               (value.isArray() && value.toArray().size() == 2 && HasKind(value, Kind::TextList));
    }
    return false;
}

QJsonValue ParseArgument(const QString& text, Kind kind)
{
    switch (kind) {
    case Kind::Text:
    case Kind::TextOrPair:
        return text;
    case Kind::Integer: {
        // Decimal, or hexadecimal after "0x" for bit patterns; never octal.
        const QString t = text.trimmed();
        const bool hex = t.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
        bool ok = false;
        const qint64 n = hex ? t.mid(2).toLongLong(&ok, 16) : t.toLongLong(&ok, 10);
        const QJsonValue value(n);
        return ok && HasKind(value, kind) ? value : QJsonValue(QJsonValue::Undefined);
    }
    case Kind::Boolean:
        if (text == QLatin1String("true") || text == QLatin1String("1"))
            return true;
        if (text == QLatin1String("false") || text == QLatin1String("0"))
            return false;
        return QJsonValue::Undefined;
    case Kind::TextList:
        return QJsonArray{text};
    }
    return QJsonValue::Undefined;
}

QVariant ToVariant(const QJsonValue& value, Kind kind)
{
    switch (kind) {
    case Kind::Integer:
        return static_cast<qint32>(value.toInteger());
    case Kind::Boolean:
        return value.toBool();
    case Kind::Text:
        return value.toString();
    case Kind::TextList:
    case Kind::TextOrPair:
        return value.toVariant();
    }
    return {};
}

QString ApplyRequest(const QJsonObject& request, DialogContext& context, QVariantMap& publics,
                     bool takesPairs)
{
    for (auto record = request.begin(); record != request.end(); ++record) {
        if (!kRecords.contains(record.key()))
            return QStringLiteral("unknown member %1").arg(record.key());
        if (!record->isObject())
            return QStringLiteral("%1 must be an object").arg(record.key());
        const QJsonObject members = record->toObject();
        for (auto it = members.begin(); it != members.end(); ++it) {
            const QString path = record.key() + u'.' + it.key();
            const Member* member = FindMember(path);
            if (!member)
                return QStringLiteral("unknown member %1").arg(path);
            const Kind kind =
                member->kind == Kind::TextOrPair && !takesPairs ? Kind::Text : member->kind;
            if (!HasKind(*it, kind))
                return QStringLiteral("%1 must be %2").arg(path, KindName(kind));
            if (member->isPublic())
                publics.insert(member->shortName(), ToVariant(*it, member->kind));
            else
                member->set(context, *it);
        }
    }
    return {};
}

} // namespace fw::cli
