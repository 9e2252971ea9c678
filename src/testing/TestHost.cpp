#include "testing/TestHost.h"
#include "testing/TestHostParts.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <stdexcept>

namespace fw::testing {

namespace {

std::string lowerAscii(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

std::string hiveText(std::uint32_t hive)
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%08X", hive);
    return buffer;
}

// --- Small services -----------------------------------------------------------

class Settings : public fw::CoreDevSettings {
  public:
    explicit Settings(TestHost& host) : m_host(host) {}
    bool GetBool(const std::string& name) override
    {
        m_host.record("GetBool", {name});
        const auto it = m_host.settings.find(name);
        return it != m_host.settings.end() && it->second;
    }

  private:
    TestHost& m_host;
};

class App : public fw::CoreDevApp, fw::ApplicationFolders {
  public:
    explicit App(TestHost& host) : m_host(host) {}
    ApplicationFolders& Folders() override { return *this; }
    std::string UserFolder() override { return folder("UserFolder", m_host.folders.user); }
    std::string SamplesFolder() override { return folder("SamplesFolder", m_host.folders.samples); }
    std::string SharedFolder() override { return folder("SharedFolder", m_host.folders.shared); }
    std::string RegistryKey() override { return folder("RegistryKey", m_host.appRegistryKey); }

  private:
    std::string folder(const char* operation, const std::string& value)
    {
        m_host.record(operation);
        return value;
    }
    TestHost& m_host;
};

class Clock : public fw::CoreDevClock {
  public:
    explicit Clock(TestHost& host) : m_host(host) {}
    std::string logStamp() override
    {
        m_host.record("logStamp");
        return m_host.logStampText;
    }

  private:
    TestHost& m_host;
};

class Menus : public fw::CoreDevMenus {
  public:
    explicit Menus(TestHost& host) : m_host(host) {}
    std::shared_ptr<PopupMenu> NewPopupMenu() override
    {
        m_host.record("NewPopupMenu");
        auto menu = std::make_shared<TestPopupMenu>(m_host);
        m_host.menus.push_back(menu);
        return menu;
    }

  private:
    TestHost& m_host;
};

class Controls : public fw::CoreDevControls, fw::ListViewHelper, fw::TextBoxHelper {
  public:
    explicit Controls(TestHost& host) : m_host(host) {}
    ListViewHelper& ListViews() override { return *this; }
    TextBoxHelper& TextBoxes() override { return *this; }
    void SetColumnWidths(Control& listView, const std::string& percents) override
    {
        m_host.record("SetColumnWidths", {percents}, &listView);
    }
    void SelectAll(Control& textBox) override { m_host.record("SelectAll", {}, &textBox); }

  private:
    TestHost& m_host;
};

class Monitors : public fw::MonitorList {
  public:
    explicit Monitors(TestHost& host) : m_host(host) {}
    int VirtualLeft() const override
    {
        return bound([](auto& m) { return m.Left; }, true);
    }
    int VirtualTop() const override
    {
        return bound([](auto& m) { return m.Top; }, true);
    }
    int VirtualWidth() const override
    {
        return bound([](auto& m) { return m.Left + m.Width; }, false) - VirtualLeft();
    }
    int VirtualHeight() const override
    {
        return bound([](auto& m) { return m.Top + m.Height; }, false) - VirtualTop();
    }
    int Count() const override { return static_cast<int>(m_host.monitors.size()); }
    MonitorInfo Item(int index) const override
    {
        if (index < 1 || index > Count())
            throw std::out_of_range("no monitor " + std::to_string(index));
        return m_host.monitors[static_cast<std::size_t>(index - 1)];
    }
    MonitorInfo Primary() const override { return Item(1); }
    MonitorInfo ByIndex(int index) const override
    {
        for (const auto& monitor : m_host.monitors)
            if (monitor.Index == index)
                return monitor;
        throw std::out_of_range("no monitor with index " + std::to_string(index));
    }

  private:
    template <class Edge> int bound(Edge edge, bool lowest) const
    {
        if (m_host.monitors.empty())
            return 0;
        int value = edge(m_host.monitors.front());
        for (const auto& monitor : m_host.monitors)
            value = lowest ? std::min(value, edge(monitor)) : std::max(value, edge(monitor));
        return value;
    }
    TestHost& m_host;
};

class System : public fw::CoreDevSystem, fw::WindowHelper, fw::SystemFolders {
  public:
    explicit System(TestHost& host) : m_host(host) {}
    WindowHelper& Windows() override { return *this; }
    SystemFolders& Folders() override { return *this; }
    std::shared_ptr<MonitorList> Monitors() override
    {
        m_host.record("Monitors");
        return std::make_shared<testing::Monitors>(m_host);
    }
    void setWindowColorKey(Form& form, int level, int mode, std::uint32_t colour) override
    {
        m_host.record("setWindowColorKey",
                      {std::to_string(level), std::to_string(mode), std::to_string(colour)}, &form);
    }
    int windowTop(const Control& control) override { return edge("windowTop", control); }
    int windowLeft(const Control& control) override { return edge("windowLeft", control); }
    int windowBottom(const Control& control) override { return edge("windowBottom", control); }
    int windowRight(const Control& control) override { return edge("windowRight", control); }
    std::string DesktopFolder() override
    {
        m_host.record("DesktopFolder");
        return m_host.folders.desktop;
    }
    std::string DocumentsFolder() override
    {
        m_host.record("DocumentsFolder");
        return m_host.folders.documents;
    }

  private:
    int edge(const char* operation, const Control& control)
    {
        m_host.record(operation, {}, &control);
        return m_host.nextNumber(operation);
    }
    TestHost& m_host;
};

class Language : public fw::CoreDevLanguage {
  public:
    explicit Language(TestHost& host) : m_host(host) {}
    std::int32_t GetLanguage() override
    {
        m_host.record("GetLanguage");
        return m_host.language;
    }

  private:
    TestHost& m_host;
};

class Messages : public fw::CoreDevMessages {
  public:
    explicit Messages(TestHost& host) : m_host(host) {}
    void ShowError(const std::string& text, const std::string& title) override
    {
        m_host.record("ShowError", {text, title});
    }
    std::string AskSaveFile(const std::string& defaultPattern, const std::string& title,
                            const std::string& filter, int filterIndex,
                            const std::string& defaultExtension, int flag,
                            const std::string& recentListKey) override
    {
        m_host.record("AskSaveFile", {defaultPattern, title, filter, std::to_string(filterIndex),
                                      defaultExtension, std::to_string(flag), recentListKey});
        return m_host.nextAnswer("AskSaveFile");
    }
    std::string AskText(const std::string& prompt, const std::string& title,
                        const std::string& defaultText) override
    {
        m_host.record("AskText", {prompt, title, defaultText});
        return m_host.nextAnswer("AskText");
    }
    void ShowInfo(const std::string& text, const std::string& title) override
    {
        m_host.record("ShowInfo", {text, title});
    }
    void ShowHelp(const std::string& text, const std::string& title) override
    {
        m_host.record("ShowHelp", {text, title});
    }
    std::int32_t AskQuestion(const std::string& text, const std::string& title, std::int32_t style,
                             const std::string& icon, const std::string& messageKey) override
    {
        m_host.record("AskQuestion", {text, title, std::to_string(style), icon, messageKey});
        return m_host.nextNumber("AskQuestion");
    }
    void RegisterForm(Form& form, const std::string& text) override
    {
        m_host.record("RegisterForm", {text}, &form);
    }
    void UnregisterForm(Form& form, const std::string& text) override
    {
        m_host.record("UnregisterForm", {text}, &form);
    }
    std::string ChooseIcon(const std::string& current, const std::string& title, int size) override
    {
        m_host.record("ChooseIcon", {current, title, std::to_string(size)});
        return m_host.nextAnswer("ChooseIcon");
    }

  private:
    TestHost& m_host;
};

class Registry : public fw::CoreDevRegistry, fw::RegistryStrings, fw::RegistryWriter {
  public:
    explicit Registry(TestHost& host) : m_host(host) {}
    RegistryStrings& Strings() override { return *this; }
    RegistryWriter& Writer() override { return *this; }
    std::shared_ptr<FavoriteList> NewFavoriteList() override
    {
        m_host.record("NewFavoriteList");
        return makeFavoriteList(m_host);
    }

    std::string ReadString(std::uint32_t hive, const std::string& key,
                           const std::string& defaultValue, int limit) override
    {
        m_host.record("ReadString", {hiveText(hive), key, defaultValue, std::to_string(limit)});
        auto value = m_host.registryValue(hive, key);
        if (!value)
            return defaultValue;
        if (limit >= 0 && value->size() > static_cast<std::size_t>(limit))
            value->resize(static_cast<std::size_t>(limit));
        return *value;
    }
    std::int32_t ReadNumber(std::uint32_t hive, const std::string& key,
                            std::int32_t defaultValue) override
    {
        m_host.record("ReadNumber", {hiveText(hive), key, std::to_string(defaultValue)});
        const auto value = m_host.registryValue(hive, key);
        if (!value)
            return defaultValue;
        std::int32_t number = 0;
        const auto [end, error] =
            std::from_chars(value->data(), value->data() + value->size(), number);
        return error == std::errc() && end == value->data() + value->size() ? number : defaultValue;
    }
    bool WriteNumber(std::uint32_t hive, const std::string& key, std::int32_t value) override
    {
        m_host.record("WriteNumber", {hiveText(hive), key, std::to_string(value)});
        m_host.setRegistry(hive, key, std::to_string(value));
        return true;
    }
    bool WriteString(std::uint32_t hive, const std::string& key, const std::string& value) override
    {
        m_host.record("WriteString", {hiveText(hive), key, value});
        m_host.setRegistry(hive, key, value);
        return true;
    }

  private:
    TestHost& m_host;
};

class Colours : public fw::CoreDevColors, fw::ColourTools {
  public:
    explicit Colours(TestHost& host) : m_host(host) {}
    ColourTools& Tools() override { return *this; }

    void splitColour(std::uint32_t colour, int& red, int& green, int& blue) override
    {
        m_host.record("splitColour", {std::to_string(colour)});
        red = static_cast<int>(colour & 0xFFu);
        green = static_cast<int>((colour >> 8) & 0xFFu);
        blue = static_cast<int>((colour >> 16) & 0xFFu);
    }
    std::uint32_t GetSchemeColor(int index) override
    {
        m_host.record("GetSchemeColor", {std::to_string(index)});
        const auto it = m_host.schemeColours.find(index);
        return it == m_host.schemeColours.end() ? 0u : it->second;
    }
    std::uint32_t ColorShadeA(std::uint32_t colour, int flag, int amount) override
    {
        m_host.record("ColorShadeA",
                      {std::to_string(colour), std::to_string(flag), std::to_string(amount)});
        return shade(colour, amount, true);
    }
    std::uint32_t ColorShadeB(std::uint32_t colour, int flag, int amount) override
    {
        m_host.record("ColorShadeB",
                      {std::to_string(colour), std::to_string(flag), std::to_string(amount)});
        return shade(colour, amount, false);
    }

  private:
    // Each channel moves linearly by amount/255 of its way to white or black.
    static std::uint32_t shade(std::uint32_t colour, int amount, bool towardsLight)
    {
        const auto a = static_cast<std::uint32_t>(std::clamp(amount, 0, 255));
        std::uint32_t result = 0;
        for (int shift = 0; shift <= 16; shift += 8) {
            const std::uint32_t c = (colour >> shift) & 0xFFu;
            const std::uint32_t moved = towardsLight ? c + (255u - c) * a / 255u : c - c * a / 255u;
            result |= moved << shift;
        }
        return result;
    }
    TestHost& m_host;
};

} // namespace

// --- TestPopupMenu ------------------------------------------------------------

void TestPopupMenu::AddItem(const std::string& icon, const std::string& caption,
                            const std::string& key)
{
    m_host.record("PopupMenu.AddItem", {icon, caption, key});
    rows.push_back(caption + "|" + key + "|-1|-1|0|" + icon);
}

void TestPopupMenu::AddRows(const std::vector<fw::MenuEntry>& entries)
{
    m_host.record("PopupMenu.AddRows", {std::to_string(entries.size())});
    for (const auto& entry : entries) {
        rows.push_back(entry.Row);
        if (auto* sub = dynamic_cast<TestPopupMenu*>(entry.Submenu.get()))
            for (const auto& row : sub->rows)
                rows.push_back("> " + row);
    }
}

std::string TestPopupMenu::Popup(int x, int y)
{
    m_host.record("PopupMenu.Popup", {std::to_string(x), std::to_string(y)});
    return m_host.nextAnswer("PopupMenu.Popup");
}

// --- TestHost -----------------------------------------------------------------

TestHost::TestHost()
{
    CoreDevSettings = std::make_shared<Settings>(*this);
    CoreDevApp = std::make_shared<App>(*this);
    CoreDevClock = std::make_shared<Clock>(*this);
    CoreDevMenus = std::make_shared<Menus>(*this);
    CoreDevText = makeTextService(*this);
    CoreDevControls = std::make_shared<Controls>(*this);
    CoreDevSystem = std::make_shared<System>(*this);
    CoreDevLanguage = std::make_shared<Language>(*this);
    CoreDevMessages = std::make_shared<Messages>(*this);
    CoreDevRegistry = std::make_shared<Registry>(*this);
    CoreDevPictures = makePictureService(*this);
    CoreDevFiles = makeFileService(*this);
    CoreDevColors = std::make_shared<Colours>(*this);
}

TestHost::~TestHost() = default;

std::vector<std::string> TestHost::callsTo(const std::string& operation) const
{
    const std::string prefix = operation + "(";
    std::vector<std::string> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const std::string& call) { return call.starts_with(prefix); });
    return found;
}

void TestHost::clearCalls()
{
    calls.clear();
    callTargets.clear();
}

std::deque<std::string>& TestHost::answers(const std::string& operation)
{
    return m_answers[operation];
}

void TestHost::queueQuestionAnswer(std::int32_t resultCode)
{
    answers("AskQuestion").push_back(std::to_string(resultCode));
}
void TestHost::queueSavePath(std::string path)
{
    answers("AskSaveFile").push_back(std::move(path));
}
void TestHost::queueTextAnswer(std::string text)
{
    answers("AskText").push_back(std::move(text));
}
void TestHost::queueIconChoice(std::string iconPath)
{
    answers("ChooseIcon").push_back(std::move(iconPath));
}
void TestHost::queueMenuChoice(std::string key)
{
    answers("PopupMenu.Popup").push_back(std::move(key));
}
void TestHost::queueConnectResult(bool ok, std::string message)
{
    answers("Connect").push_back((ok ? "1" : "0") + message);
}

void TestHost::setRegistry(std::uint32_t hive, const std::string& key, std::string value)
{
    registry[{hive, lowerAscii(key)}] = std::move(value);
}

std::optional<std::string> TestHost::registryValue(std::uint32_t hive, const std::string& key) const
{
    const auto it = registry.find({hive, lowerAscii(key)});
    if (it == registry.end())
        return std::nullopt;
    return it->second;
}

int TestHost::mouseX()
{
    record("mouseX");
    return mouse.x;
}

int TestHost::mouseY()
{
    record("mouseY");
    return mouse.y;
}

double TestHost::parseNumber(const std::string& text, bool& ok)
{
    record("parseNumber", {text});
    const auto first = text.find_first_not_of(" \t");
    const auto last = text.find_last_not_of(" \t");
    ok = false;
    if (first == std::string::npos)
        return 0;
    std::string number = text.substr(first, last - first + 1);
    std::replace(number.begin(), number.end(), ',', '.');
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    ok = error == std::errc() && end == number.data() + number.size();
    return ok ? value : 0;
}

void TestHost::record(const std::string& operation, const std::vector<std::string>& args,
                      const void* target)
{
    std::string entry = operation + "(";
    for (std::size_t i = 0; i < args.size(); ++i)
        entry += (i ? "|" : "") + args[i];
    entry += ")";
    calls.push_back(entry);
    callTargets.push_back(target);
    if (forbidden.count(operation)) {
        forbiddenCalls.push_back(entry);
        if (ForbiddenCallHandler)
            ForbiddenCallHandler(entry);
    }
    if (failing.count(operation))
        throw std::runtime_error("test host fails " + operation);
}

std::string TestHost::nextAnswer(const std::string& operation, const std::string& fallback)
{
    auto& queue = m_answers[operation];
    if (queue.empty())
        return fallback;
    std::string answer = std::move(queue.front());
    queue.pop_front();
    return answer;
}

bool TestHost::nextBool(const std::string& operation)
{
    const std::string answer = nextAnswer(operation);
    return !answer.empty() && answer != "0" && lowerAscii(answer) != "false";
}

std::int32_t TestHost::nextNumber(const std::string& operation)
{
    const std::string answer = nextAnswer(operation);
    std::int32_t number = 0;
    std::from_chars(answer.data(), answer.data() + answer.size(), number);
    return number;
}

} // namespace fw::testing
