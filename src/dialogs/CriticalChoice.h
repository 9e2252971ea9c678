#pragma once
// The public variables that the critical choice and the fading notice in
// front of it share: the host sets them on the notice, the notice hands them
// to the choice and brings the answer back.

#include "host/StringList.h"

#include <QString>
#include <QVariant>
#include <cstdint>
#include <string>

namespace fw {

struct CriticalChoice {
    std::int32_t OwnerValue = 0;  ///< handed on; nothing reads it
    std::string Text;             ///< the warning
    std::string Title;            ///< the title line
    StringList Choices;           ///< option captions, from 1
    StringList ChoiceIcons;       ///< option icons; the first serves every option
    bool Confirmed = false;       ///< true after "&Weiter"
    std::int32_t ChoiceIndex = 0; ///< the chosen option, from 1

    /// The variables by name, case-insensitive; lists as QStringList.
    /// Invalid / false for a name that is none of them.
    QVariant Get(const QString& name) const;
    bool Set(const QString& name, const QVariant& value);

    /// What the host sets before showing, copied onto another form's variables.
    void HandOn(CriticalChoice& to) const;
    /// What the choice answers, copied back.
    void TakeAnswer(const CriticalChoice& from);
};

} // namespace fw
