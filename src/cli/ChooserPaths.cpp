#include "cli/ChooserPaths.h"

#include "cli/EscapedBytes.h"
#include "desktop/DesktopFiles.h"
#include "desktop/LocationPaths.h"
#include "desktop/SmbUrls.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QDir>

namespace fw::cli {

namespace {

// The lettered volumes of the desktop host, so that a path on a USB stick
// goes in as "E:\..." and comes back as its mount point; another host has none.
std::vector<desktop::DriveRoot> driveRoots()
{
    if (auto* files = dynamic_cast<desktop::DesktopFiles*>(&GetCoreDevFiles()))
        return files->Drives().Roots();
    return {};
}

// A shell user names files relative to where they stand, with "." and ".."
// as the shell spells them; the dialog shows the plain path. The escaped
// text carries any bytes through the cleaning unchanged.
std::string absoluteBytes(const std::string& posix)
{
    if (posix.empty())
        return posix;
    QString path = DecodeEscaped(QByteArrayView(posix.data(), qsizetype(posix.size())));
    if (!path.startsWith(u'/'))
        path = QDir::currentPath() + u'/' + path;
    const bool folder = path.endsWith(u'/') || path.endsWith(u"/.") || path.endsWith(u"/..");
    path = QDir::cleanPath(path);
    if (folder && !path.endsWith(u'/'))
        path += u'/';
    return EncodeEscaped(path).toStdString();
}

bool isSmbUrl(const std::string& text)
{
    return QString::fromStdString(text.substr(0, 6)).compare(u"smb://", Qt::CaseInsensitive) == 0;
}

QString posixText(const std::string& posix)
{
    return DecodeEscaped(QByteArrayView(posix.data(), qsizetype(posix.size())));
}

// "NETHOOD:\domain\host\" names a host, which a shell reaches as smb://host/.
std::optional<std::string> hostOfNetworkPlace(const std::string& location)
{
    const std::string head = "NETHOOD:\\";
    if (location.rfind(head, 0) != 0)
        return std::nullopt;
    std::string rest = location.substr(head.size());
    if (!rest.empty() && rest.back() == '\\')
        rest.pop_back();
    const auto slash = rest.find('\\');
    if (slash == std::string::npos || slash + 1 >= rest.size())
        return std::nullopt;
    return "\\\\" + rest.substr(slash + 1) + "\\";
}

} // namespace

std::string ArgumentToLocation(const std::string& argument, bool folder)
{
    if (argument.empty())
        return {};
    if (isSmbUrl(argument)) {
        std::string unc = desktop::SmbUrlToUnc(argument).value_or(std::string());
        if (folder && !unc.empty() && unc.back() != '\\')
            unc += '\\';
        return unc;
    }
    std::string posix = absoluteBytes(argument);
    if (folder && posix.back() != '/')
        posix += '/';
    return desktop::PosixToLocation(posix, driveRoots());
}

QString LocationToArgument(const std::string& location)
{
    std::string place = location;
    if (QString::fromStdString(place).trimmed().toUpper() == u"DESKTOP:\\") {
        place = GetCoreDevSystem().Folders().DesktopFolder();
        if (!place.empty() && place.back() != '\\')
            place += '\\';
    }
    if (const auto host = hostOfNetworkPlace(place))
        place = *host;
    if (desktop::IsUnc(place))
        return QString::fromStdString(desktop::UncToSmbUrl(place).value_or(std::string()));
    if (const auto posix = desktop::LocationToPosix(place, driveRoots()))
        return posixText(*posix);
    return {};
}

void AnswerLocation(const std::string& location, const QString& member, QJsonObject& answer)
{
    if (const QString shell = LocationToArgument(location); !shell.isEmpty())
        answer.insert(member, shell);
    // A folder on a drive is told by its path alone; a place or a share also
    // as the dialog names it.
    if (!desktop::LocationToPosix(location, driveRoots()))
        answer.insert(QStringLiteral("Location"), QString::fromStdString(location));
}

} // namespace fw::cli
