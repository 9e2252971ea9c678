#pragma once
// The members of a dialog's host records that the command line can fill and
// print, by the names the host records use ("Request.Title", "Texts.InputText").
// One table serves the options, the --request file and the printed answer, so
// a member added here is reachable from all three.

#include "host/DialogContext.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace fw::cli {

/// The JSON type a member takes.
/// TextOrPair: a text, or an array of two texts that the host's pair helper
/// packs into one (the two-field input's prompts and defaults).
enum class Kind { Text, Integer, Boolean, TextList, TextOrPair };

struct Member {
    const char* path; ///< "Record.Member", or "Public.Name" for a form's public variable
    Kind kind;
    /// Null for public variables, which live on the form, not in the records.
    QJsonValue (*get)(const DialogContext&);
    void (*set)(DialogContext&, const QJsonValue&);

    bool isPublic() const { return get == nullptr; }
    /// The last part of the path: the name a result is printed under.
    QString shortName() const;
};

/// The member of that path, or null.
const Member* FindMember(const QString& path);

/// Human name of a kind for messages: "a text", "an integer"...
QString KindName(Kind kind);

/// True if the value has the member's kind. Integers must be whole and fit 32 bits.
bool HasKind(const QJsonValue& value, Kind kind);

/// A command-line argument as a value of the kind; null (undefined) if it is not one.
QJsonValue ParseArgument(const QString& text, Kind kind);

/// A public variable's value as the form takes it.
QVariant ToVariant(const QJsonValue& value, Kind kind);

/// Fills records and public variables from a request object such as
/// {"Request":{"Title":"…"},"Texts":{…},"Public":{"DialogMode":1}}.
/// Pair members take an array of two only where the dialog takesPairs; any
/// other dialog would show the packed form to its user.
/// Returns an empty string, or what is wrong, naming the member.
QString ApplyRequest(const QJsonObject& request, DialogContext& context, QVariantMap& publics,
                     bool takesPairs);

} // namespace fw::cli
