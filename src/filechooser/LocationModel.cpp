#include "filechooser/LocationModel.h"

#include "forms/Resume.h"
#include "host/mdl_CoreDevWrapper.h"

#include <QString>

namespace fw {

namespace {

const std::string kDesktop = "DESKTOP:\\";
const std::string kWorkstation = "WORKSTATION:\\";
const std::string kNethood = "NETHOOD:\\";
const std::string kFavorites = "FAVORITES:\\";

bool StartsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool EqualNoCase(const std::string& a, const std::string& b)
{
    return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) == 0;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string BeforeLastBackslash(const std::string& text)
{
    const auto at = text.rfind('\\');
    return at == std::string::npos ? std::string() : text.substr(0, at);
}

// UNC parents are cut by text, not by the host's path tool, because the
// share level must stop at "\\host\" and turn into the network's host level.
std::string UncUpPath(const std::string& path, const std::string& domain)
{
    const std::string parent = BeforeLastBackslash(BeforeLastBackslash(path)) + "\\";
    const auto hostEnd = path.find('\\', 2);
    const std::string host =
        path.substr(2, hostEnd == std::string::npos ? std::string::npos : hostEnd - 2);
    if (EqualNoCase(parent, "\\\\" + host + "\\"))
        return kNethood + domain + "\\" + host + "\\";
    return parent;
}

std::string NetworkUpPath(const std::string& path)
{
    std::string rest = path.substr(kNethood.size());
    if (!rest.empty() && rest.back() == '\\')
        rest.pop_back();
    if (rest.empty())
        return kDesktop;
    const auto slash = rest.find('\\');
    if (slash == std::string::npos)
        return kNethood;
    return kNethood + rest.substr(0, slash) + "\\";
}

} // namespace

bool LocationModel::Enter(std::string path)
{
    if (path == "NEXT:\\") {
        if (ForwardList.Count() == 0)
            return false;
        path = ForwardList.Item(ForwardList.Count());
        ForwardList.Remove(ForwardList.Count());
        BackList.Add(path);
    } else if (path == "PREVIOUS:\\") {
        if (BackList.Count() < 2)
            return false;
        ForwardList.Add(BackList.Item(BackList.Count()));
        path = BackList.Item(BackList.Count() - 1);
        BackList.Remove(BackList.Count());
    } else {
        ForwardList.Clear();
        BackList.Add(path);
    }
    CurrentPath = Resolve(path);
    CurrentDrive.clear();
    Resume([&] { CurrentDrive = GetCoreDevText().Paths().DrivePart(CurrentPath); });
    // Drives are compared as "C:" throughout; some path tools keep the "\".
    if (CurrentDrive.size() == 3 && CurrentDrive.compare(1, 2, ":\\") == 0)
        CurrentDrive.pop_back();
    return true;
}

std::string LocationModel::Resolve(const std::string& path) const
{
    std::string resolved = path;
    ReplaceAll(resolved, "USER:\\", UserPath);
    ReplaceAll(resolved, "SHARED:\\", SharedPath);
    ReplaceAll(resolved, "SAMPLES:\\", SamplesPath);
    ReplaceAll(resolved, "DEFAULT:\\", DefaultPath);
    // A favourite's key carries its folder behind the first ":\"; the bare
    // "FAVORITES:\" is the favourites view and stays.
    if (resolved.find(kFavorites) != std::string::npos) {
        const auto colon = resolved.find(":\\");
        if (colon + 2 < resolved.size())
            resolved = resolved.substr(colon + 2);
    }
    return resolved;
}

void LocationModel::ComputeUpPath()
{
    const std::string& path = CurrentPath;
    if (path == kDesktop) {
        UpPath.clear();
    } else if (path == kWorkstation) {
        UpPath = kDesktop;
    } else if (path == kFavorites) {
        // Staying put tells the delete command that the favourites are shown.
        UpPath = kFavorites;
    } else if (StartsWith(path, kNethood)) {
        UpPath = NetworkUpPath(path);
    } else if (StartsWith(path, "\\\\")) {
        UpPath = UncUpPath(path, Domain);
    } else {
        UpPath.clear();
        Resume([&] { UpPath = GetCoreDevText().Paths().ParentPath(path); });
        if (path.size() == 3 && path.compare(1, 2, ":\\") == 0)
            UpPath = kWorkstation;
        if (EqualNoCase(path, UserPath))
            UpPath = kDesktop;
    }
}

bool LocationModel::IsPseudo() const
{
    for (const std::string* place : {&kDesktop, &kWorkstation, &kNethood, &kFavorites})
        if (StartsWith(CurrentPath, *place))
            return true;
    return false;
}

} // namespace fw
