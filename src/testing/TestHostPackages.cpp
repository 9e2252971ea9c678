// Resource packages of the test host: named lists of items in the host's
// state, so that a test sees which package was asked what and in which order.
#include "testing/TestHost.h"
#include "testing/TestHostParts.h"

#include <QString>

namespace fw::testing {

namespace {

bool sameNoCase(const std::string& a, const std::string& b)
{
    return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) == 0;
}

class ScriptedPackage : public fw::ResourcePackage {
  public:
    explicit ScriptedPackage(TestHost& host) : m_host(host) {}

    // An unknown name loads an empty package, as a missing file would.
    bool Load(const std::string& name) override
    {
        m_name = name;
        m_host.record("Package.Load", {name});
        return m_host.packages.count(name) > 0;
    }
    bool Exists(const std::string& item) override
    {
        m_host.record("Package.Exists", {m_name, item});
        for (const std::string& held : items())
            if (sameNoCase(held, item))
                return true;
        return false;
    }
    // Nothing is written: a test reads from the record which package gave it.
    bool Extract(const std::string& item, const std::string& destination) override
    {
        m_host.record("Package.Extract", {m_name, item, destination});
        for (const std::string& held : items())
            if (sameNoCase(held, item))
                return true;
        return false;
    }
    // Every item below path, in the order the test gave them.
    StringList Content(const std::string& path, std::uint32_t optionA, std::uint32_t optionB,
                       std::uint32_t optionC) override
    {
        m_host.record("Package.Content", {m_name, path, std::to_string(optionA),
                                          std::to_string(optionB), std::to_string(optionC)});
        StringList found;
        const QString prefix = QString::fromStdString(path);
        for (const std::string& held : items())
            if (QString::fromStdString(held).startsWith(prefix, Qt::CaseInsensitive))
                found.Add(held);
        return found;
    }

  private:
    std::vector<std::string> items() const
    {
        const auto it = m_host.packages.find(m_name);
        return it == m_host.packages.end() ? std::vector<std::string>() : it->second;
    }

    TestHost& m_host;
    std::string m_name;
};

} // namespace

std::shared_ptr<fw::ResourcePackage> makeResourcePackage(TestHost& host)
{
    return std::make_shared<ScriptedPackage>(host);
}

} // namespace fw::testing
